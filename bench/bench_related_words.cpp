// The related-expressions searches run at every word the learner steps to or clicks. The worst
// case is a word with few relatives: the whole word table of 32,767 rows is scanned.

#include "search/related_words.h"

#include <benchmark/benchmark.h>

#include <QRandomGenerator>

using namespace vt;

namespace {

// A full word table of words of one to four common characters, as the course's table holds.
const AppState& fullTable() {
    static const AppState app = [] {
        AppState a;
        QRandomGenerator random(2007);
        for (int i = 0; i < 32767; ++i) {
            QString word;
            const int length = 1 + int(random.bounded(4));
            for (int c = 0; c < length; ++c)
                word += QChar(char16_t(0x4E00 + random.bounded(3000)));
            a.WordTable.Append(WordRow{word, QStringLiteral(" meaning %1 ").arg(i)});
            a.WordPinyin.Append(QStringLiteral("h.ao3"));
            a.WordOrigin.Append(WordSource{2, 1});
        }
        a.WordCount = a.WordCountCopy = a.LessonWordCount = 32767;
        return a;
    }();
    return app;
}

// A character that no word of the table holds: every row is tested.
const QString kRare = QString(QChar(char16_t(0x9F00)));

void BM_RelatedByCharacter_WholeTable(benchmark::State& state) {
    const AppState& app = fullTable();
    for (auto _ : state)
        benchmark::DoNotOptimize(RelatedByCharacter(app, kRare, "x"));
    state.SetItemsProcessed(state.iterations() * 32767);
}
BENCHMARK(BM_RelatedByCharacter_WholeTable)->Unit(benchmark::kMicrosecond);

void BM_RelatedByCharacter_LongWord(benchmark::State& state) {
    const AppState& app = fullTable();
    const QString word = kRare + kRare;
    for (auto _ : state)
        benchmark::DoNotOptimize(RelatedByCharacter(app, word, "x"));
    state.SetItemsProcessed(state.iterations() * 32767);
}
BENCHMARK(BM_RelatedByCharacter_LongWord)->Unit(benchmark::kMicrosecond);

void BM_EntryWithRelated_WholeTable(benchmark::State& state) {
    const AppState& app = fullTable();
    for (auto _ : state)
        benchmark::DoNotOptimize(EntryWithRelated(app, kRare, {}, 1, false, true));
    state.SetItemsProcessed(state.iterations() * 32767);
}
BENCHMARK(BM_EntryWithRelated_WholeTable)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
