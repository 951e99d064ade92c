#include "platform/display_check.h"

#include <QByteArray>
#include <QList>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace vt {

namespace {

// The X client library is asked through the loader, so that the program has no build-time tie
// to it: the X platform plug-in needs the same library, so where it is missing X is unusable.
bool xServerAnswers(const QByteArray& display) {
    if (display.isEmpty()) return false;
    void* xcb = ::dlopen("libxcb.so.1", RTLD_LAZY | RTLD_LOCAL);
    if (!xcb) return false;
    using Connect = void* (*)(const char*, int*);
    using HasError = int (*)(void*);
    using Disconnect = void (*)(void*);
    const auto connect = reinterpret_cast<Connect>(::dlsym(xcb, "xcb_connect"));
    const auto hasError = reinterpret_cast<HasError>(::dlsym(xcb, "xcb_connection_has_error"));
    const auto disconnect = reinterpret_cast<Disconnect>(::dlsym(xcb, "xcb_disconnect"));
    bool answers = false;
    if (connect && hasError && disconnect) {
        // A connection object comes back even on failure; its error state tells, and it is
        // released in both cases.
        void* c = connect(display.constData(), nullptr);
        answers = c && hasError(c) == 0;
        if (c) disconnect(c);
    }
    ::dlclose(xcb);
    return answers;
}

bool waylandAnswers() {
    if (qEnvironmentVariableIsSet("WAYLAND_SOCKET")) return true; // handed over by the compositor
    QByteArray name = qgetenv("WAYLAND_DISPLAY");
    if (name.isEmpty()) name = "wayland-0";
    QByteArray path = name;
    if (!name.startsWith('/')) {
        const QByteArray runtimeDir = qgetenv("XDG_RUNTIME_DIR");
        if (runtimeDir.isEmpty()) return false;
        path = runtimeDir + '/' + name;
    }
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (size_t(path.size()) >= sizeof address.sun_path) return false;
    std::memcpy(address.sun_path, path.constData(), size_t(path.size()));
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (fd < 0) return false;
    const bool answers =
        ::connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(fd);
    return answers;
}

// The platforms asked for, by name without their options ("xcb", "wayland"); empty when
// nothing was asked for and the toolkit chooses.
QList<QByteArray> requestedPlatforms(int argc, char** argv) {
    QByteArray request;
    for (int i = 1; i + 1 < argc; ++i) {
        if (std::strcmp(argv[i], "-platform") == 0 || std::strcmp(argv[i], "--platform") == 0)
            request = argv[i + 1];
    }
    if (request.isEmpty()) request = qgetenv("QT_QPA_PLATFORM");
    QList<QByteArray> names;
    for (const QByteArray& entry : request.split(';')) {
        const QByteArray name = entry.split(':').first().trimmed();
        if (!name.isEmpty()) names << name;
    }
    return names;
}

QString noServerSentence(const QByteArray& display) {
    if (display.isEmpty())
        return QStringLiteral(
            "Vantoria 2007 needs a graphical display, and none is available here (DISPLAY is "
            "not set and no Wayland display answers); start it from a desktop session, or "
            "under a virtual display with xvfb-run.");
    return QStringLiteral("Vantoria 2007 needs a graphical display, and the display \"%1\" named "
                          "by DISPLAY does not answer; start it from a desktop session, or "
                          "under a virtual display with xvfb-run.")
        .arg(QString::fromLocal8Bit(display));
}

QtMessageHandler previousHandler = nullptr;

void fatalAsSentence(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type != QtFatalMsg) {
        if (previousHandler) previousHandler(type, context, text);
        return;
    }
    const QString first = text.section(u'\n', 0, 0).trimmed();
    std::fprintf(stderr, "Vantoria 2007 could not open its window: %s\n", qPrintable(first));
    std::fflush(stderr);
    ::_exit(1);
}

} // namespace

QString DisplayProblem(int argc, char** argv) {
    const QByteArray display = qgetenv("DISPLAY");
    const QList<QByteArray> names = requestedPlatforms(argc, argv);
    if (names.isEmpty())
        return xServerAnswers(display) || waylandAnswers() ? QString() : noServerSentence(display);
    for (const QByteArray& name : names) {
        if (name == "xcb") {
            if (xServerAnswers(display)) return {};
        } else if (name.startsWith("wayland")) {
            if (waylandAnswers()) return {};
        } else {
            return {}; // a platform without a display server
        }
    }
    return noServerSentence(display);
}

DisplayStartGuard::DisplayStartGuard() {
    previousHandler = qInstallMessageHandler(fatalAsSentence);
}

DisplayStartGuard::~DisplayStartGuard() {
    qInstallMessageHandler(previousHandler);
    previousHandler = nullptr;
}

} // namespace vt
