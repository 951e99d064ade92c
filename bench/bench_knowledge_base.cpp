// The start-up load of the knowledge base, measured the way the program meets it: once, in a
// fresh process, beside the time of merely reading the same bytes, and beside the plain row-by-row
// build of the character table on the same words. Each run is a child process of its own, so
// every load starts on a fresh heap; the table shows the medians of the processor time spent.
// Prints figures; asserts nothing.
//
//   bench_knowledge_base [data-folder] [runs]    (default: a generated full-size course; 7 runs)
//   bench_knowledge_base --generate <folder>     writes the generated course into folder
//
// The generated course has the size of a real one (301 files, about 6.8 MB, 32,200 words) and
// draws its characters with a real word list's skew: a few very often, a long tail seldom.

#include "bench_services.h"
#include "core/knowledge_base.h"
#include "core/runtime.h"
#include "course_generator.h"
#include "support/knowledge_base_reference.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <memory>

using namespace vt;

namespace {

// The processor time of this thread, user and system, in ms. On a machine that others share, the
// wall clock counts their work as well; the processor time counts ours only.
double nowMs() {
    timespec ts{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
    return ts.tv_sec * 1e3 + ts.tv_nsec / 1e6;
}

// A figure of this process from the kernel's own account, in MiB ("VmRSS", "VmHWM").
double statusMiB(const char* key) {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith(key))
            return line.mid(qsizetype(strlen(key)) + 1).trimmed().split(' ')[0].toDouble() / 1024;
    return 0;
}

// The script files of a data folder: the families the load reads.
QStringList courseFiles(const QString& folder) {
    QStringList out;
    QDirIterator it(folder, {QStringLiteral("*.zvk")}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        const QString name = QFileInfo(path).fileName().toLower();
        if (name == QLatin1String("title.zvk") || name == QLatin1String("icwp.zvk") ||
            name == QLatin1String("lifr.zvk") ||
            (name.startsWith(QLatin1String("ci")) && path.contains(QLatin1String("Vocabulary"))))
            out << path;
    }
    return out;
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

// One run in this fresh process: the bytes read, then the load as the program does it, then the
// row-by-row character table. Prints one line of figures for the parent.
int runOnce(const QString& folder) {
    bench::Services services(folder + u'/');
    Runtime& rt = *services.rt;
    FileStore& files = services.files;

    // The bytes are read the way the load reads them: each file whole, into one buffer.
    const QStringList paths = courseFiles(folder);
    const double r0 = nowMs();
    qint64 bytes = 0;
    QByteArray buffer;
    for (const QString& p : paths)
        if (files.ReadAllInto(p, buffer)) bytes += buffer.size();
    const double readMs = nowMs() - r0;

    LoadProgress progress;
    const double t0 = nowMs();
    LoadTitles(rt, progress);
    LoadWordsAndSentences(rt, progress);
    const double t1 = nowMs();
    BuildCharTable(rt, progress);
    const double t2 = nowMs();
    const double peakMiB = statusMiB("VmHWM:");

    const Array1<CharEntry> indexed = rt.app.CharTable;
    LoadProgress scanProgress;
    const double s0 = nowMs();
    test::BuildCharTableByScanning(rt, scanProgress);
    const double scanMs = nowMs() - s0;
    const bool same = sameTable(indexed, rt.app.CharTable);

    int readings = 0;
    for (const CharEntry& e : indexed)
        readings += e.ReadingCount;
    std::printf("%lld %lld %.3f %.3f %.3f %.3f %.1f %d %d %d %d %d %d %d %d %d %d\n",
                static_cast<long long>(paths.size()), static_cast<long long>(bytes), readMs,
                t1 - t0, t2 - t1, scanMs, peakMiB, same ? 1 : 0, rt.app.WordCount,
                rt.app.LessonWordCount, rt.app.SentenceCount, indexed.Count(), readings,
                services.boxes.Count(), progress.Value[VocabularyBar], progress.Value[SentenceBar],
                progress.Value[CharacterBar]);
    return 0;
}

double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    if (v.empty()) return 0;
    const size_t n = v.size();
    return n % 2 ? v[n / 2] : (v[n / 2 - 1] + v[n / 2]) / 2;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    if (args.size() == 2 && args[0] == QLatin1String("--once")) return runOnce(args[1]);
    if (args.size() == 2 && args[0] == QLatin1String("--generate")) {
        FileStore files;
        files.SyncToDisk = false;
        const coursegen::CourseFiles course =
            coursegen::GenerateCourse(files, QDir(args[1]).absolutePath() + u'/');
        std::printf("%lld files, %d words written into %s\n",
                    static_cast<long long>(course.paths.size()), course.words, qPrintable(args[1]));
        return 0;
    }

    QString folder;
    int runs = 7;
    for (const QString& a : args) {
        bool number = false;
        const int n = a.toInt(&number);
        if (number)
            runs = std::max(1, n);
        else
            folder = QDir(a).absolutePath();
    }
    QTemporaryDir temp;
    if (folder.isEmpty()) {
        folder = temp.path();
        FileStore files;
        files.SyncToDisk = false;
        coursegen::GenerateCourse(files, folder + u'/');
        std::printf("generated course in %s\n", qPrintable(folder));
    }

    // Read once ahead, so that every run finds the files in the page cache.
    FileStore files;
    for (const QString& p : courseFiles(folder))
        files.ReadAll(p);

    std::vector<double> read, words, chars, scan, peak;
    QList<QByteArray> last;
    for (int i = 0; i < runs; ++i) {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--once"), folder});
        child.waitForFinished(-1);
        const QList<QByteArray> f = child.readAllStandardOutput().trimmed().split(' ');
        if (f.size() < 17) {
            std::printf("run %d failed: %s\n", i + 1, child.readAllStandardError().constData());
            return 1;
        }
        read.push_back(f[2].toDouble());
        words.push_back(f[3].toDouble());
        chars.push_back(f[4].toDouble());
        scan.push_back(f[5].toDouble());
        peak.push_back(f[6].toDouble());
        last = f;
    }
    std::vector<double> load(read.size());
    for (size_t i = 0; i < load.size(); ++i)
        load[i] = words[i] + chars[i];
    const double readMs = median(read), loadMs = median(load), charsMs = median(chars),
                 scanMs = median(scan);

    std::printf("data folder: %s\n", qPrintable(folder));
    std::printf("course: %s files, %.2f MB\n", last[0].constData(), last[1].toDouble() / 1e6);
    std::printf("tables: %s words (%s from lessons), %s sentences, %s characters with %s "
                "readings, %s messages; bars %s/160 %s/140 %s/%s\n",
                last[8].constData(), last[9].constData(), last[10].constData(),
                last[11].constData(), last[12].constData(), last[13].constData(),
                last[14].constData(), last[15].constData(), last[16].constData(),
                last[8].constData());
    std::printf("medians of %d runs, each the first load in a fresh process (processor time):\n",
                runs);
    std::printf("  %-44s %9.1f ms\n", "read all file bytes", readMs);
    std::printf("  %-44s %9.1f ms\n", "titles, words and sentences", median(words));
    std::printf("  %-44s %9.1f ms\n", "character table, indexed", charsMs);
    std::printf("  %-44s %9.1f ms   (%.2f x reading the bytes; aim <= 5)\n", "whole load", loadMs,
                loadMs / readMs);
    std::printf("  %-44s %9.1f ms   (%.1f x the indexed build; aim >= 20)%s\n",
                "character table, row-by-row search", scanMs, scanMs / charsMs,
                last[7] == "1" ? "" : "   RESULTS DIFFER");
    std::printf("peak resident memory of a run after the load: %.1f MiB\n", median(peak));
    return 0;
}
