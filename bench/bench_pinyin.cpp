// Throughput of the two text routines that run most often: PinyinToMarks for every word shown
// in a list, HasNonChinese at every key stroke of a text box.

#include "core/pinyin.h"
#include "core/syllable_table.h"

#include <benchmark/benchmark.h>

#include <QStringList>

using namespace vt;

namespace {

// Every syllable of the table in every tone it has, in the dotted form: the words of a long list.
QStringList dottedSyllables() {
    QStringList out;
    for (const SyllableInfo& s : AllSyllables())
        for (int tone = 1; tone <= 4; ++tone)
            if (s.tones[static_cast<size_t>(tone - 1)])
                out << s.before + u'.' + s.rest + QString::number(tone);
    return out;
}

void runOverList(benchmark::State& state, const QStringList& items, QString (*fn)(const QString&)) {
    qint64 chars = 0;
    for (const QString& s : items)
        chars += s.size();
    for (auto _ : state)
        for (const QString& s : items)
            benchmark::DoNotOptimize(fn(s));
    state.SetItemsProcessed(state.iterations() * items.size());
    state.SetBytesProcessed(state.iterations() * chars * 2);
}

void BM_PinyinToMarks_Syllables(benchmark::State& state) {
    runOverList(state, dottedSyllables(), PinyinToMarks);
}
BENCHMARK(BM_PinyinToMarks_Syllables);

void BM_PinyinToMarks_Words(benchmark::State& state) {
    const QStringList words = {
        QStringLiteral("n.i3 h.ao3"),        QStringLiteral("zh.ong1 g.uo2 r.en2"),
        QStringLiteral("x.ie4 x.ie0"),       QStringLiteral("lv.e4 d.uo2"),
        QStringLiteral("p.eng2 y.ou0"),      QStringLiteral("t.u2 sh.u1 gu.an3"),
        QStringLiteral("y.i1 d.ian3 .er0"),  QStringLiteral("zh.ong1 hu.a2 r.en2 m.in2"),
        QStringLiteral("g.ong4 h.e2 g.uo2"), QStringLiteral("n.v3 h.ai2 z.i0")};
    runOverList(state, words, PinyinToMarks);
}
BENCHMARK(BM_PinyinToMarks_Words);

// A text without "." passes through untouched.
void BM_PinyinToMarks_PassThrough(benchmark::State& state) {
    runOverList(state, {QStringLiteral("to go by car; ride"), QStringLiteral("ni3 hao3")},
                PinyinToMarks);
}
BENCHMARK(BM_PinyinToMarks_PassThrough);

// The usual case at a key stroke: a sentence that is all Chinese is scanned to its end.
void BM_HasNonChinese_AllChinese(benchmark::State& state) {
    const QString text = QString::fromUtf8("我们明天下午三点在图书馆门口见面好不好");
    for (auto _ : state)
        benchmark::DoNotOptimize(HasNonChinese(text));
    state.SetItemsProcessed(state.iterations());
    state.SetBytesProcessed(state.iterations() * text.size() * 2);
}
BENCHMARK(BM_HasNonChinese_AllChinese);

// A sentence that ends in a mark: found at the last character.
void BM_HasNonChinese_MarkAtEnd(benchmark::State& state) {
    const QString text = QString::fromUtf8("我们明天下午三点在图书馆门口见面好不好？");
    for (auto _ : state)
        benchmark::DoNotOptimize(HasNonChinese(text));
    state.SetItemsProcessed(state.iterations());
    state.SetBytesProcessed(state.iterations() * text.size() * 2);
}
BENCHMARK(BM_HasNonChinese_MarkAtEnd);

void BM_NumericToDotted_Words(benchmark::State& state) {
    const QString text = QStringLiteral("zhong1 hua2 ren2 min2 gong4 he2 guo2");
    for (auto _ : state)
        benchmark::DoNotOptimize(NumericToDotted(text));
    state.SetItemsProcessed(state.iterations() * 7);
}
BENCHMARK(BM_NumericToDotted_Words);

} // namespace

BENCHMARK_MAIN();
