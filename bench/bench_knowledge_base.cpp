// The start-up load of the knowledge base on a full-size made-up course, measured side by side
// with what cannot be avoided (reading the files' bytes) and with the plain row-by-row build of
// the character table. Prints a table; asserts nothing.
//
//   bench_knowledge_base [runs]     (default 15; the best run of each is shown)

#include "bench_services.h"
#include "core/knowledge_base.h"
#include "core/runtime.h"
#include "core/script_file.h"
#include "course_generator.h"
#include "support/char_table_reference.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <memory>

using namespace vt;
using bench::NowMs;
using bench::Services;

namespace {

// Resident memory of this process in MiB, from the kernel's own account.
double residentMiB() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ')[0].toDouble() / 1024;
    return 0;
}

bool sameTable(const Array1<CharEntry>& a, const Array1<CharEntry>& b) {
    auto sameReading = [](const CharReading& x, const CharReading& y) {
        return x.Initial == y.Initial && x.Pinyin == y.Pinyin && x.Plain == y.Plain &&
               x.ToneKey == y.ToneKey && x.ToneSound == y.ToneSound && x.Tone == y.Tone;
    };
    if (a.Count() != b.Count()) return false;
    for (int i = 1; i <= a.Count(); ++i) {
        const CharEntry& x = a[i];
        const CharEntry& y = b[i];
        if (x.Character != y.Character || x.ReadingCount != y.ReadingCount ||
            x.Readings.Count() != y.Readings.Count())
            return false;
        for (int k = 1; k <= x.Readings.Count(); ++k)
            if (!sameReading(x.Readings[k], y.Readings[k])) return false;
    }
    return true;
}

template <class F> double best(int runs, F&& f) {
    double bestMs = 1e300;
    for (int i = 0; i < runs; ++i) {
        const double t0 = NowMs();
        f();
        bestMs = std::min(bestMs, NowMs() - t0);
    }
    return bestMs;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, atoi(argv[1])) : 15;
    const double rssAtStart = residentMiB();

    QTemporaryDir dir;
    const QString appPath = dir.path() + u'/';
    FileStore files;
    const double g0 = NowMs();
    const coursegen::CourseFiles course = coursegen::GenerateCourse(files, appPath);
    const double generateMs = NowMs() - g0;
    qint64 bytes = 0;
    for (const QString& p : course.paths)
        bytes += QFile(FileStore::Resolve(p)).size();

    // The floor: every byte of every file, read whole.
    const double readMs = best(runs, [&] {
        qint64 n = 0;
        for (const QString& p : course.paths)
            n += files.ReadAll(p).value_or(QByteArray()).size();
        if (n != bytes) std::printf("short read: %lld of %lld bytes\n", n, bytes);
    });

    // The script reader's share: every file decoded from memory into lines.
    double decodeMs = 0;
    {
        std::vector<std::pair<QByteArray, QString>> contents;
        for (const QString& p : course.paths) {
            const QString family = p.contains(QLatin1String("icwp"))   ? QStringLiteral("RW")
                                   : p.contains(QLatin1String("\\ci")) ? QStringLiteral("VO")
                                                                       : QStringLiteral("RT");
            contents.emplace_back(files.ReadAll(p).value_or(QByteArray()), family);
        }
        ClockRandom random;
        decodeMs = best(runs, [&] {
            for (const auto& [bytes, family] : contents)
                DecodeScript(bytes, family, 0, random);
        });
    }

    const double rssBeforeLoad = residentMiB();
    // The whole load as the program runs it, and its stages, each on fresh tables.
    double titlesAndWordsMs = 1e300, charTableMs = 1e300, loadMs = 1e300;
    double rssAfterLoad = 0;
    std::unique_ptr<Services> kept;
    for (int i = 0; i < runs; ++i) {
        auto s = std::make_unique<Services>(appPath);
        LoadProgress progress;
        const double t0 = NowMs();
        LoadTitles(*s->rt, progress);
        LoadWordsAndSentences(*s->rt, progress);
        const double t1 = NowMs();
        BuildCharTable(*s->rt, progress);
        const double t2 = NowMs();
        titlesAndWordsMs = std::min(titlesAndWordsMs, t1 - t0);
        charTableMs = std::min(charTableMs, t2 - t1);
        loadMs = std::min(loadMs, t2 - t0);
        kept = std::move(s);
        if (i == 0) rssAfterLoad = residentMiB(); // one set of tables, before any churn
    }
    const AppState& kb = kept->rt->app;

    // The plain build of the character table, row by row, on the same words.
    const Array1<CharEntry> indexed = kb.CharTable;
    LoadProgress progress;
    const double s0 = NowMs();
    test::BuildCharTableByScanning(*kept->rt, progress);
    const double scanMs = NowMs() - s0;
    const bool same = sameTable(indexed, kb.CharTable);

    int readings = 0;
    for (const CharEntry& e : kb.CharTable)
        readings += e.ReadingCount;

    std::printf("course: %lld files, %.2f MB, generated in %.0f ms\n",
                static_cast<long long>(course.paths.size()), bytes / 1e6, generateMs);
    std::printf("tables: %d words (%d from lessons), %d sentences, %d characters with %d "
                "readings, %d messages\n",
                kb.WordCount, kb.LessonWordCount, kb.SentenceCount, kb.CharCount, readings,
                kept->boxes.Count());
    std::printf("best of %d runs:\n", runs);
    std::printf("  %-44s %9.1f ms\n", "read all file bytes", readMs);
    std::printf("  %-44s %9.1f ms\n", "decode all files from memory (reader only)", decodeMs);
    std::printf("  %-44s %9.1f ms\n", "titles, words and sentences", titlesAndWordsMs);
    std::printf("  %-44s %9.1f ms\n", "character table, indexed", charTableMs);
    std::printf("  %-44s %9.1f ms   (%.2f x reading the bytes; aim <= 5)\n", "whole load", loadMs,
                loadMs / readMs);
    std::printf("  %-44s %9.1f ms   (%.0f x the indexed build; aim >= 20)%s\n",
                "character table, row-by-row search (1 run)", scanMs, scanMs / charTableMs,
                same ? "" : "   RESULTS DIFFER");
    std::printf("resident memory: %.1f MiB at start, %.1f MiB before the load, %.1f MiB with the "
                "tables loaded\n",
                rssAtStart, rssBeforeLoad, rssAfterLoad);
    return 0;
}
