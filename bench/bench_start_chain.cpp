// How long the start takes beyond its fixed timer stages, on the real clock and offscreen:
// from loading the start form to the main screen on the desktop (after the 100 ms stage), and to
// the lesson menu (after the 100 + 200 + 200 + 200 ms stages, with the whole knowledge base
// loaded in between). Run it from the build folder: it uses the course in app/ beside the program.
// Prints figures; asserts nothing.

#include "core/runtime.h"
#include "platform/application.h"
#include "shell/begin.h"
#include "shell/begin1.h"
#include "shell/start_or_not.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTimer>
#include <cstdio>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    vt::Application app(argc, argv);
    const QString folder =
        argc > 1 ? QString::fromLocal8Bit(argv[1])
                 : QDir(QCoreApplication::applicationDirPath() + "/../app").absolutePath();
    vt::QtTimeService time;
    vt::ScriptedMessageBoxes boxes;
    vt::ClockRandom random;
    vt::FileStore files;
    vt::FixedScreenInfo screen;
    vt::Runtime rt(time, boxes, random, files, screen);
    rt.ProgramFolder = folder + u'/';

    QElapsedTimer clock;
    qint64 atBegin = -1, atMenu = -1;
    QTimer poll;
    poll.setInterval(1);
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (atBegin < 0 && rt.forms.Get<vt::Begin>() && rt.forms.Get<vt::Begin>()->Visible())
            atBegin = clock.nsecsElapsed() / 1000;
        if (auto* menu = rt.forms.Get<vt::Begin1>(); menu && menu->Visible()) {
            atMenu = clock.nsecsElapsed() / 1000;
            QCoreApplication::quit();
        }
    });
    QTimer::singleShot(10'000, [] { QCoreApplication::quit(); });
    clock.start();
    poll.start();
    rt.forms.Load<vt::StartOrNot>();
    app.exec();

    std::printf("data folder: %s\n", qPrintable(folder));
    std::printf("words %d, sentences %d, characters %d, message boxes %d\n", rt.app.WordCount,
                rt.app.SentenceCount, rt.app.CharCount, boxes.Count());
    if (atBegin >= 0)
        std::printf("main screen shown after %.1f ms: %.1f ms beyond the 100 ms stage\n",
                    atBegin / 1000.0, atBegin / 1000.0 - 100);
    if (atMenu >= 0)
        std::printf("lesson menu shown after %.1f ms: %.1f ms beyond the 700 ms of stages\n",
                    atMenu / 1000.0, atMenu / 1000.0 - 700);
    return 0;
}
