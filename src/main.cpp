// Vantoria 2007: the program starts with the start form, which runs the start chain.
#include "platform/application.h"
#include "shell/program.h"

#include <csignal>

int main(int argc, char** argv) {
    // A write past the file size limit then fails like a full disk, and the save that tried it
    // keeps the old file and says so, instead of the signal ending the program.
    std::signal(SIGXFSZ, SIG_IGN);
    vt::Application app(argc, argv);
    return vt::RunProgram(app);
}
