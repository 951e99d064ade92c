// Vantoria 2007: the program starts with the start form, which runs the start chain.
#include "platform/application.h"
#include "shell/program.h"

int main(int argc, char** argv) {
    vt::Application app(argc, argv);
    return vt::RunProgram(app);
}
