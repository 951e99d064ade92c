// The typing task's work at every key: the list of characters for the letters typed, walked over
// the whole character table, with the page of nine and the prompt built. Measured on a full-size
// made-up course, and on the same table with further readings from the real syllable table so
// that it holds more readings than any real course does. Prints a table; asserts nothing.
//
//   bench_typing_candidates [rounds]     (default 200; each key's best, median and worst)

#include "bench_services.h"
#include "core/knowledge_base.h"
#include "core/runtime.h"
#include "core/syllable_table.h"
#include "course_generator.h"
#include "tasks/typing_logic.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <random>

using namespace vt;
using vt::bench::Services;

namespace {

double nowUs() {
    return bench::NowMs() * 1000;
}

int readingsOf(const Array1<CharEntry>& table) {
    int n = 0;
    for (const CharEntry& e : table)
        n += e.Readings.Count();
    return n;
}

// Gives every character further readings from the real syllables until the table holds at
// least `wanted` readings.
void addReadings(Array1<CharEntry>& table, int wanted) {
    std::vector<QString> plains;
    for (const SyllableInfo& s : AllSyllables())
        plains.push_back(s.plain());
    std::mt19937 rng(2007);
    int have = readingsOf(table);
    for (int round = 0; have < wanted; ++round)
        for (CharEntry& e : table) {
            if (have >= wanted) break;
            CharReading r;
            r.Plain = plains[rng() % plains.size()];
            r.Pinyin = r.Plain;
            r.Initial = r.Plain.left(1);
            r.Tone = r.ToneKey = r.ToneSound = QString::number(1 + int(rng() % 4));
            e.Readings.Append(r);
            e.ReadingCount = static_cast<int16_t>(e.Readings.Count());
            ++have;
        }
}

// Types the letters one by one, as the learner does, and times each key's search, page and
// prompt.
void measure(const Array1<CharEntry>& table, const QStringList& typings, int rounds) {
    InputMethod im(table);
    const QString target = table[1].Character;
    std::printf("  %-10s %8s %10s %10s %10s\n", "typed", "listed", "best us", "median us",
                "worst us");
    std::vector<double> medians;
    for (const QString& typed : typings) {
        for (int len = 1; len <= typed.size(); ++len) {
            std::vector<double> times;
            int listed = 0;
            for (int r = 0; r < rounds; ++r) {
                im.Clear();
                for (int i = 0; i < len - 1; ++i)
                    im.TypeLetter(typed[i]);
                const double t0 = nowUs();
                im.TypeLetter(typed[len - 1]);
                im.Search();
                const QString line = im.PageLine();
                const QString prompt = im.Prompt(target);
                times.push_back(nowUs() - t0);
                listed = im.CandidateCount();
                if (line.isEmpty() && prompt.isEmpty()) std::printf("?");
            }
            std::sort(times.begin(), times.end());
            medians.push_back(times[times.size() / 2]);
            std::printf("  %-10s %8d %10.1f %10.1f %10.1f\n", qPrintable(typed.left(len)), listed,
                        times.front(), medians.back(), times.back());
        }
    }
    std::sort(medians.begin(), medians.end());
    std::printf("  medians over %zu keys: %.1f us at the most, %.1f us in the middle\n",
                medians.size(), medians.back(), medians[medians.size() / 2]);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int rounds = argc > 1 ? std::max(1, atoi(argv[1])) : 200;

    QTemporaryDir dir;
    const QString appPath = dir.path() + u'/';
    Services s(appPath);
    coursegen::GenerateCourse(s.files, appPath);
    LoadProgress progress;
    LoadKnowledgeBase(*s.rt, progress);
    Array1<CharEntry>& table = s.rt->app.CharTable;

    const QStringList typings = {QStringLiteral("zhong"), QStringLiteral("shuang"),
                                 QStringLiteral("xiao"),  QStringLiteral("ma"),
                                 QStringLiteral("a"),     QStringLiteral("qqq")};

    const double t0 = nowUs();
    InputMethod once(table);
    const double buildUs = nowUs() - t0;
    std::printf("made-up course: %d characters with %d readings; the search's keys made in "
                "%.0f us\n",
                table.Count(), readingsOf(table), buildUs);
    measure(table, typings, rounds);

    addReadings(table, 30000);
    std::printf("\nthe same characters with real syllables added: %d characters, %d readings\n",
                table.Count(), readingsOf(table));
    measure(table, typings, rounds);
    return 0;
}
