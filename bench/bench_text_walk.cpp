// The reading-aloud walk of the read texts: one step finds the word at the walk's place (lesson
// words first, then the whole word table, with the longest match) and the syllables to say for
// it. Measured over the whole text of every read lesson of a full-size made-up course; the
// tables are indexed once per run (the word table) and once per lesson (its words), and those
// times are shown apart. Prints a table; asserts nothing.
//
//   bench_text_walk [lessons]     (default 80)

#include "bench_services.h"
#include "core/knowledge_base.h"
#include "core/lesson_content.h"
#include "core/runtime.h"
#include "course_generator.h"
#include "tasks/text_logic.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

using namespace vt;
using vt::bench::NowMs;
using vt::bench::Services;

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int lessons = argc > 1 ? std::clamp(atoi(argv[1]), 1, 80) : 80;

    QTemporaryDir dir;
    const QString appPath = dir.path() + u'/';
    Services s(appPath);
    coursegen::GenerateCourse(s.files, appPath);
    LoadProgress progress;
    LoadKnowledgeBase(*s.rt, progress);
    AppState& a = s.rt->app;

    WordWalk walk;
    double t0 = NowMs();
    walk.SetWordTable(a.WordTable, a.WordCount);
    const double tableMs = NowMs() - t0;
    std::printf("made-up course: %d words; the word table indexed once in %.1f ms\n", a.WordCount,
                tableMs);

    std::vector<double> steps;
    double lessonIndexMax = 0;
    int words = 0;
    double worst = 0;
    int worstLesson = 0;
    int worstPlace = 0;
    for (int lesson = 1; lesson <= lessons; ++lesson) {
        a.OpenLesson = static_cast<int16_t>(lesson);
        LoadLessonScripts(*s.rt);
        const QString text = BuildLessonText(a.TextTitle, a.TextLines, a.TextLineCount);
        t0 = NowMs();
        walk.SetLesson(a.LessonWords, a.LessonWordRows);
        lessonIndexMax = std::max(lessonIndexMax, NowMs() - t0);

        // The form's steps: pass over what is not Chinese, take the word, find its syllables.
        int pos = 0;
        while (pos < text.size()) {
            const double s0 = NowMs();
            std::optional<WalkWord> w;
            while (pos < text.size() && !w) {
                if (IsChineseCharacter(text[pos])) w = walk.WordAt(text, pos);
                if (!w) ++pos;
            }
            if (!w) break;
            const bool lessonRow = w->fromLesson;
            const QString kept = KeptSyllables(
                lessonRow ? a.LessonWords[w->row].Chinese : a.WordTable[w->row].Chinese,
                lessonRow ? a.LessonWords[w->row].Pinyin : a.WordPinyin[w->row], w->word);
            steps.push_back(NowMs() - s0);
            if (steps.back() > worst) {
                worst = steps.back();
                worstLesson = lesson;
                worstPlace = pos;
            }
            if (kept.isEmpty()) std::printf("?");
            pos += static_cast<int>(w->word.size());
            ++words;
        }
    }
    std::sort(steps.begin(), steps.end());
    std::printf("%d lessons, %d steps: median %.4f ms, 99th %.4f ms, worst %.4f ms; "
                "a lesson's words indexed in %.3f ms at the most\n",
                lessons, words, steps[steps.size() / 2], steps[steps.size() * 99 / 100],
                steps.back(), lessonIndexMax);
    std::printf("the worst step: lesson %d, place %d\n", worstLesson, worstPlace);
    return 0;
}
