// What a click of the blank-filling task costs besides painting: "Start" lays out and cuts a
// long text, each blank picked draws its four characters and looks them up in the character
// table, and "Done" looks up the character of every blank for the list of results.

#include "core/knowledge_base.h"
#include "platform/random.h"
#include "tasks/blank_filling.h"

#include <benchmark/benchmark.h>

using namespace vt;

namespace {

// A long read text: a title and 60 sentences of 20 characters, a new paragraph every fifth,
// with Latin letters and digits now and then.
AppState longLesson() {
    AppState app;
    app.OpenLesson = 1;
    app.TextTitle = QStringLiteral("我们的学校");
    app.TextLines.Append(app.TextTitle);
    const QString sentence = QStringLiteral("今天下午三点我们在图书馆门口见面，好不好？");
    for (int i = 1; i <= 60; ++i) {
        QString line = i % 5 == 0 ? QStringLiteral("  ") + sentence : sentence;
        if (i % 7 == 0) line += QStringLiteral("Wang Ming 2024");
        app.TextLines.Append(line);
    }
    app.TextLineCount = static_cast<int16_t>(app.TextLines.Count());
    return app;
}

// A character table of the full course's size: 6,500 distinct characters.
AppState fullCharTable() {
    AppState app;
    for (int i = 0; i < 6500; ++i) {
        CharEntry e;
        e.Character = QString(QChar(0x4E00 + i));
        app.CharTable.Append(e);
    }
    app.CharCount = static_cast<int16_t>(app.CharTable.Count());
    return app;
}

void BM_Start_CutLongText(benchmark::State& state) {
    const AppState app = longLesson();
    SeededRandom random(1);
    int blanks = 0;
    for (auto _ : state) {
        const BlankCut cut = CutLessonBlanks(app, random);
        blanks = cut.blanks.Count();
        benchmark::DoNotOptimize(cut.Shown());
    }
    state.counters["blanks"] = blanks;
}
BENCHMARK(BM_Start_CutLongText)->Unit(benchmark::kMicrosecond);

// One blank picked: four characters drawn, each looked up in a full table (the worst case, a
// character at the end of the table).
void BM_PickBlank_CandidatesAndLookUps(benchmark::State& state) {
    const AppState table = fullCharTable();
    SeededRandom random(1);
    const BlankCut cut = CutLessonBlanks(longLesson(), random);
    const QString last = table.CharTable[table.CharCount].Character;
    int current = 1;
    for (auto _ : state) {
        const auto offered = CandidatesFor(cut.blanks, current, random);
        for (const QString& c : offered)
            benchmark::DoNotOptimize(CharRowOf(table, c));
        benchmark::DoNotOptimize(CharRowOf(table, last));
        current = current % cut.blanks.Count() + 1;
    }
}
BENCHMARK(BM_PickBlank_CandidatesAndLookUps)->Unit(benchmark::kMicrosecond);

// "Done": every blank judged and its character looked up in a full table.
void BM_Done_JudgeAndLookUpAll(benchmark::State& state) {
    const AppState table = fullCharTable();
    SeededRandom random(1);
    const BlankCut cut = CutLessonBlanks(longLesson(), random);
    std::vector<QString> characters;
    for (const Blank& b : cut.blanks)
        characters.push_back(b.Character);
    for (auto _ : state) {
        benchmark::DoNotOptimize(CorrectnessRate(ScoreBlanks(cut.blanks)));
        for (const Blank& b : cut.blanks)
            benchmark::DoNotOptimize(BlankVerdict(b));
        benchmark::DoNotOptimize(CharRowsOf(table, characters));
    }
    state.counters["blanks"] = cut.blanks.Count();
}
BENCHMARK(BM_Done_JudgeAndLookUpAll)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
