// The TV-play form on a built course: how long the form takes to load a play (opening and
// decoding its track, reading the line positions, building the text and counting the pictures),
// first with the track not yet decoded and then from the sound cache, and what one tick of the
// line watcher costs while the whole play runs. Prints figures; asserts nothing.
//
//   bench_listening_tv <data folder> [lesson]     (a folder built by scripts/build_course.sh;
//                                                  lesson 81 unless told)

#include "bench_services.h"
#include "core/lesson_content.h"
#include "core/speech.h"
#include "platform/media_control.h"
#include "tasks/listening_tv.h"

#include <QApplication>
#include <QFile>
#include <algorithm>
#include <cstdio>
#include <vector>

using namespace vt;
using vt::bench::NowMs;
using vt::bench::Services;

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (argc < 2) {
        std::printf("usage: bench_listening_tv <data folder> [lesson]\n");
        return 0;
    }
    const QString appPath = QString::fromLocal8Bit(argv[1]) + u'/';
    const int lesson = argc > 2 ? std::clamp(atoi(argv[2]), 81, 140) : 81;
    if (!QFile::exists(appPath + QStringLiteral("Lessons/Sound/%1.mp3").arg(lesson))) {
        std::printf("no track of lesson %d in %s\n", lesson, argv[1]);
        return 0;
    }
    Services s(appPath);
    auto sound = SoundSystem::CreateForProgram(s.time, 0);
    s.rt->sound = sound.get();
    AppState& a = s.rt->app;
    a.OpenLesson = static_cast<int16_t>(lesson);
    a.OpenTask = 1;
    a.StudyLesson = 1; // away from the study position: leaving writes nothing
    LoadLessonScripts(*s.rt);

    std::vector<double> loads;
    for (int i = 0; i < 6; ++i) {
        const double t0 = NowMs();
        ListeningTV* form = s.rt->forms.Load<ListeningTV>();
        loads.push_back(NowMs() - t0);
        if (i == 0)
            std::printf("lesson %d: %d lines, track %d ms, %d pictures, a picture every %d ms\n",
                        lesson, a.TextLineCount, form->PlayLength, form->PictureCount,
                        form->Timer2->Interval());
        s.rt->forms.Unload(form);
    }
    std::printf("load: first %.1f ms (track decoded), then %.1f to %.1f ms (from the cache)\n",
                loads[0], *std::min_element(loads.begin() + 1, loads.end()),
                *std::max_element(loads.begin() + 1, loads.end()));

    // The watcher's tick while the whole play runs: a second of ticks, each timed.
    ListeningTV* form = s.rt->forms.Load<ListeningTV>();
    form->Combo2->SetListIndex(kPlayWhole);
    std::vector<double> ticks;
    const double end = NowMs() + 1000;
    while (NowMs() < end) {
        const double t0 = NowMs();
        form->Timer3->Fire();
        ticks.push_back(NowMs() - t0);
        QCoreApplication::processEvents();
    }
    std::sort(ticks.begin(), ticks.end());
    std::printf("watcher tick: %zu ticks, median %.4f ms, 99th %.4f ms, worst %.4f ms "
                "(it runs every 100 ms)\n",
                ticks.size(), ticks[ticks.size() / 2], ticks[ticks.size() * 99 / 100],
                ticks.back());
    s.rt->forms.Unload(form);
    s.rt.reset(); // the forms go before the sound system their players belong to
    return 0;
}
