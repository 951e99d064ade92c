#pragma once
// Whether the program can open its window, asked before the application object exists. Without
// a display the windowing layer would end the process with an abort and a page of text; the
// learner reads one plain sentence instead, and the program exits with a non-zero code.
//
// The check follows the platform the program will use: the "-platform" argument, else
// QT_QPA_PLATFORM (a list such as "wayland;xcb" is usable when one of its entries is), else the
// X server of DISPLAY or the Wayland compositor of WAYLAND_DISPLAY. Platforms that need no display
// server ("offscreen", "vnc", "linuxfb", ...) always pass.

#include <QString>

namespace vt {

// Empty when a window can be opened; otherwise the sentence that says why not.
QString DisplayProblem(int argc, char** argv);

// Guards the construction of the application object: a fatal message of the windowing layer
// while it lasts is printed as one sentence, and the process exits with code 1 instead of
// aborting. For what the check above cannot foresee (an X server that refuses the program's
// extensions, a missing platform plug-in).
class DisplayStartGuard {
public:
    DisplayStartGuard();
    ~DisplayStartGuard();
    DisplayStartGuard(const DisplayStartGuard&) = delete;
    DisplayStartGuard& operator=(const DisplayStartGuard&) = delete;
};

} // namespace vt
