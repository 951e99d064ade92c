// Checks a built course folder: the 200 stroke files unscramble to points inside the drawing
// area with as many strokes as the stroke data says, and every syllable that any script file
// of the course uses has its recording. Exits 77 (skipped) when no course has been built.
//
//   coursepack_check --data <data folder> [--npm <dir with node_modules>]

#include "course_build.h"
#include "strokes.h"

#include "core/script_file.h"
#include "core/stroke_offsets.h"
#include "platform/files.h"
#include "platform/random.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cstdio>

using namespace vt;
using namespace vt::coursepack;

namespace {
int faults = 0;
void fault(const QString& s) {
    ++faults;
    std::fprintf(stderr, "%s\n", qPrintable(s));
}

void checkStrokes(const QString& data, const QString& npm) {
    FileStore files;
    const QString& chars = SampleCharacters();
    for (int n = 1; n <= chars.size(); ++n) {
        const auto bytes = files.ReadAll(data + QStringLiteral("/Characters/%1.zvk").arg(n));
        if (!bytes) {
            fault(QStringLiteral("Characters/%1.zvk (%2) is missing").arg(n).arg(chars[n - 1]));
            continue;
        }
        const auto points = DecodeStrokeRecords(*bytes);
        for (const StrokePoint& p : points)
            if (!p.IsSeparator() &&
                (p.x < 0 || p.y < 0 || p.x > kStrokeAreaTwips || p.y > kStrokeAreaTwips)) {
                fault(QStringLiteral("Characters/%1.zvk: point (%2, %3) outside the drawing area")
                          .arg(n)
                          .arg(p.x)
                          .arg(p.y));
                break;
            }
        if (points.empty() || !points.back().IsSeparator())
            fault(QStringLiteral("Characters/%1.zvk: the last stroke is not closed").arg(n));
        if (npm.isEmpty()) continue;
        QFile json(StrokeJsonPath(npm, chars[n - 1]));
        if (!json.open(QIODevice::ReadOnly)) continue;
        const int expected = static_cast<int>(QJsonDocument::fromJson(json.readAll())
                                                  .object()
                                                  .value(QStringLiteral("medians"))
                                                  .toArray()
                                                  .size());
        if (CountStrokes(points) != expected)
            fault(QStringLiteral("Characters/%1.zvk (%2): %3 strokes, the stroke data has %4")
                      .arg(n)
                      .arg(chars[n - 1])
                      .arg(CountStrokes(points))
                      .arg(expected));
    }
}

// Every script file whose rows begin with dotted Pinyin, with its family.
std::vector<std::pair<QString, QString>> pinyinFiles(const QString& data) {
    std::vector<std::pair<QString, QString>> out;
    for (int n = 1; n <= 140; ++n)
        out.push_back(
            {QStringLiteral("Lessons/Script/Lesson_%1/icwp.zvk").arg(n), QStringLiteral("RW")});
    for (int n = 1; n <= 20; ++n) {
        out.push_back({QStringLiteral("Vocabulary/ci%1.zvk").arg(n), QStringLiteral("VO")});
        out.push_back({QStringLiteral("Spoken/Script_%1.zvk").arg(n), QStringLiteral("SP")});
    }
    for (int n = 1;
         QFile::exists(FileStore::Resolve(data + QStringLiteral("/Spoken/Script%1.zvk").arg(n)));
         ++n)
        out.push_back({QStringLiteral("Spoken/Script%1.zvk").arg(n), QStringLiteral("SP")});
    return out;
}

void checkRecordings(const QString& data) {
    FileStore files;
    SeededRandom random(1);
    Course uses; // only its word lists are filled: one lesson holding every Pinyin found
    uses.lessons.resize(1);
    int filesRead = 0;
    for (const auto& [path, family] : pinyinFiles(data)) {
        const auto bytes = files.ReadAll(data + u'/' + path);
        if (!bytes) continue;
        ++filesRead;
        const ScriptText text = DecodeScript(*bytes, family, 0, random);
        for (int i = 1; i + 2 <= text.lines.Count(); i += 3) {
            Word w;
            w.dotted = text.lines[i];
            uses.lessons[0].words.push_back(w);
        }
    }
    int checked = 0;
    for (const QString& s : NeededSyllables(uses, {})) {
        ++checked;
        if (!files.Exists(data + u'/' + SyllableFile(s).replace(u'\\', u'/')))
            fault(QStringLiteral("%1 is missing").arg(SyllableFile(s)));
    }
    std::printf("checked %d syllable recordings used by %d script files\n", checked, filesRead);
}
} // namespace

int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    QCommandLineParser cli;
    const QCommandLineOption dataOpt(QStringLiteral("data"), QStringLiteral("The data folder."),
                                     QStringLiteral("dir"));
    const QCommandLineOption npmOpt(
        QStringLiteral("npm"), QStringLiteral("Folder with node_modules."), QStringLiteral("dir"));
    cli.addOptions({dataOpt, npmOpt});
    cli.process(app);
    const QString data = cli.value(dataOpt);
    if (!QFile::exists(data + QStringLiteral("/Lessons/Title.zvk"))) {
        std::printf("skipped: no course has been built into %s (run scripts/build_course.sh)\n",
                    qPrintable(data));
        return 77;
    }
    QString npm = cli.value(npmOpt);
    if (!QDir(npm + QStringLiteral("/node_modules/hanzi-writer-data")).exists()) {
        std::printf("note: no stroke data in %s; stroke counts are not compared\n",
                    qPrintable(npm));
        npm.clear();
    }
    checkStrokes(data, npm);
    checkRecordings(data);
    if (faults > 0) {
        std::fprintf(stderr, "%d fault(s) in the built course\n", faults);
        return 1;
    }
    std::printf("the built course is complete: 200 stroke files and every syllable recording\n");
    return 0;
}
