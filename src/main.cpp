// Vantoria 2007: the program starts with the start form, which runs the start chain.
#include "platform/application.h"
#include "platform/display_check.h"
#include "program/program.h"

#include <csignal>
#include <cstdio>
#include <optional>

int main(int argc, char** argv) {
    // A write past the file size limit then fails like a full disk, and the save that tried it
    // keeps the old file and says so, instead of the signal ending the program.
    std::signal(SIGXFSZ, SIG_IGN);
    const QString displayProblem = vt::DisplayProblem(argc, argv);
    if (!displayProblem.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(displayProblem));
        return 1;
    }
    std::optional<vt::Application> app;
    {
        vt::DisplayStartGuard guard;
        app.emplace(argc, argv);
    }
    return vt::RunProgram(*app);
}
