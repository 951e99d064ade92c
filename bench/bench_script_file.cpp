// Throughput of the script file reader on a multi-megabyte enciphered file: from disk into
// ScriptLines, from memory alone, and the writer that the course compiler uses. Figures are
// printed as MB/s (10^6 bytes of script file per second).
#include "core/runtime.h"
#include "core/script_file.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

// About 3 MB of script file: 18000 lines of mixed Chinese, Pinyin and English.
QStringList courseLikeLines() {
    const QStringList samples = {
        QStringLiteral("我们今天学习第三课，请大家打开书。"),
        QStringLiteral("Wo3men tian1 xue2xi2 di4 san1 ke4."),
        QStringLiteral("We are studying lesson three today; please open your books."),
        QString(),
    };
    QStringList lines;
    for (int i = 0; i < 18000; ++i)
        lines << samples[i % samples.size()];
    return lines;
}

struct Fixture {
    Fixture() : rt(clock, boxes, random, files, screen) {
        path = dir.path() + QStringLiteral("/Lessons/Script/Lesson_1/lifr.zvk");
        WriteScriptFile(files, path, courseLikeLines(), QStringLiteral("RT"), 2007);
        bytes = *files.ReadAll(path);
    }
    QTemporaryDir dir;
    vt::VirtualClock clock;
    vt::ScriptedMessageBoxes boxes;
    vt::SeededRandom random{1};
    vt::FileStore files;
    vt::FixedScreenInfo screen;
    vt::Runtime rt;
    QString path;
    QByteArray bytes;
};

Fixture& fixture() {
    static Fixture f;
    return f;
}

void report(benchmark::State& state, qsizetype bytesPerRun) {
    const auto total = static_cast<double>(bytesPerRun) * static_cast<double>(state.iterations());
    state.SetBytesProcessed(static_cast<int64_t>(total));
    state.counters["MB/s"] = benchmark::Counter(total / 1e6, benchmark::Counter::kIsRate);
    state.counters["file_MB"] = static_cast<double>(bytesPerRun) / 1e6;
}

void BM_ReadScriptFile(benchmark::State& state) {
    Fixture& f = fixture();
    for (auto _ : state) {
        vt::ReadScriptFile(f.rt, f.path, QStringLiteral("RT"), 0);
        benchmark::DoNotOptimize(f.rt.app.ScriptLineCount);
    }
    state.counters["lines"] = f.rt.app.ScriptLineCount;
    report(state, f.bytes.size());
}
BENCHMARK(BM_ReadScriptFile)->Unit(benchmark::kMillisecond);

void BM_DecodeScriptFromMemory(benchmark::State& state) {
    Fixture& f = fixture();
    for (auto _ : state) {
        vt::ScriptText text = vt::DecodeScript(f.bytes, QStringLiteral("RT"), 0, f.random);
        benchmark::DoNotOptimize(text.lines.Count());
    }
    report(state, f.bytes.size());
}
BENCHMARK(BM_DecodeScriptFromMemory)->Unit(benchmark::kMillisecond);

void BM_EncodeScriptLines(benchmark::State& state) {
    Fixture& f = fixture();
    const QStringList lines = courseLikeLines();
    for (auto _ : state) {
        QByteArray out = vt::EncodeScriptLines(lines, QStringLiteral("RT"), 7);
        benchmark::DoNotOptimize(out.data());
    }
    report(state, f.bytes.size());
}
BENCHMARK(BM_EncodeScriptLines)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
