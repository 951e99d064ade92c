// Checks a built course folder: the 200 stroke files unscramble to points inside the drawing
// area with as many strokes as the stroke data says, and every syllable that any script file
// of the course uses has its recording. It prints what each lesson holds for its tasks, and
// measures the tone contour of every syllable recording: the figures per tone, and a fault when
// a tone is not carried clearly or a recording clicks. Exits 77 (skipped) when no course has
// been built.
//
//   coursepack_check --data <data folder> [--npm <dir with node_modules>]

#include "audio.h"
#include "course_build.h"
#include "lesson_checks.h"
#include "pitch.h"
#include "script_output.h"
#include "strokes.h"

#include "core/data_paths.h"
#include "core/pinyin.h"
#include "core/script_file.h"
#include "core/stroke_offsets.h"
#include "platform/files.h"
#include "platform/helpers.h"
#include "platform/random.h"

#include <QCommandLineParser>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <algorithm>
#include <cstdio>
#include <map>

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
        const QString file = StrokeFile(QString(), n);
        const auto bytes = files.ReadAll(DataFolderRoot(data) + file);
        if (!bytes) {
            fault(QStringLiteral("%1 (%2) is missing").arg(file).arg(chars[n - 1]));
            continue;
        }
        const auto points = DecodeStrokeRecords(*bytes);
        for (const StrokePoint& p : points)
            if (!p.IsSeparator() &&
                (p.x < 0 || p.y < 0 || p.x > kStrokeAreaTwips || p.y > kStrokeAreaTwips)) {
                fault(QStringLiteral("%1: point (%2, %3) outside the drawing area")
                          .arg(file)
                          .arg(p.x)
                          .arg(p.y));
                break;
            }
        if (points.empty() || !points.back().IsSeparator())
            fault(QStringLiteral("%1: the last stroke is not closed").arg(file));
        if (npm.isEmpty()) continue;
        QFile json(StrokeJsonPath(npm, chars[n - 1]));
        if (!json.open(QIODevice::ReadOnly)) continue;
        const int expected = static_cast<int>(QJsonDocument::fromJson(json.readAll())
                                                  .object()
                                                  .value(QStringLiteral("medians"))
                                                  .toArray()
                                                  .size());
        if (CountStrokes(points) != expected)
            fault(QStringLiteral("%1 (%2): %3 strokes, the stroke data has %4")
                      .arg(file)
                      .arg(chars[n - 1])
                      .arg(CountStrokes(points))
                      .arg(expected));
    }
}

// Every script file whose rows begin with dotted Pinyin, with its family.
std::vector<std::pair<QString, QString>> pinyinFiles(const QString& data) {
    std::vector<std::pair<QString, QString>> out;
    for (int n = 1; n <= kLessonCount; ++n)
        out.push_back({LessonWordsFile(QString(), n), QStringLiteral("RW")});
    for (int n = 1; n <= kVocabularyFileCount; ++n)
        out.push_back({VocabularyFile(QString(), n), QStringLiteral("VO")});
    for (int n = 1; n <= kSentenceCategoryCount; ++n)
        out.push_back({SentenceCategoryFile(QString(), n), QStringLiteral("SP")});
    for (int n = 1;
         QFile::exists(FileStore::Resolve(DataFolderRoot(data) + SpokenSentenceFile(QString(), n)));
         ++n)
        out.push_back({SpokenSentenceFile(QString(), n), QStringLiteral("SP")});
    return out;
}

void checkRecordings(const QString& data) {
    FileStore files;
    SeededRandom random(1);
    Course uses; // only its word lists are filled: one lesson holding every Pinyin found
    uses.lessons.resize(1);
    int filesRead = 0;
    for (const auto& [path, family] : pinyinFiles(data)) {
        const auto bytes = files.ReadAll(DataFolderRoot(data) + path);
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
        if (!files.Exists(SyllableSoundFile(DataFolderRoot(data), s)))
            fault(QStringLiteral("%1 is missing").arg(SyllableSoundFile(QString(), s)));
    }
    std::printf("checked %d syllable recordings used by %d script files\n", checked, filesRead);
}

QStringList scriptLines(const QString& data, const QString& path, const QString& family) {
    FileStore files;
    SeededRandom random(1);
    const auto bytes = files.ReadAll(DataFolderRoot(data) + path);
    if (!bytes) return {};
    const ScriptText text = DecodeScript(*bytes, family, 0, random);
    QStringList lines;
    for (int i = 1; i <= text.lines.Count(); ++i)
        lines << text.lines[i];
    return lines;
}

// What each lesson holds for its tasks: new words (vocabulary drill), characters that no
// earlier lesson's words hold (typing), text lines (translation, reading aloud), lines of four
// or more Chinese characters (finding the sentence to a sound) and questions.
void reportLessons(const QString& data) {
    QSet<QChar> known;
    int lessons = 0;
    std::printf("lesson  words  new characters  lines  lines of 4+  questions\n");
    for (int n = 1; n <= kLessonCount; ++n) {
        const QStringList words =
            scriptLines(data, LessonWordsFile(QString(), n), QStringLiteral("RW"));
        const QStringList text =
            scriptLines(data, LessonTextFile(QString(), n), QStringLiteral("RT"));
        const QStringList questions =
            scriptLines(data, LessonQuestionsFile(QString(), n), QStringLiteral("RQ"));
        if (words.isEmpty() && text.isEmpty()) continue;
        ++lessons;
        QSet<QChar> fresh;
        for (qsizetype i = 1; i < words.size(); i += 3)
            for (QChar c : StripPunctuation(words[i]))
                if (!known.contains(c)) fresh.insert(c);
        known.unite(fresh);
        // Line 1 is read by nobody; a play's line 2 is its title, a read text's its sentence 1.
        const QStringList sentences = text.mid(IsPlayLesson(n) ? 2 : 1);
        const auto longLines = std::count_if(sentences.begin(), sentences.end(), LineIsAsked);
        const auto asked = std::count_if(questions.begin(), questions.end(),
                                         [](const QString& l) { return IsNumeric(l); });
        std::printf("%6d  %5lld  %14lld  %5lld  %11lld  %9lld\n", n,
                    static_cast<long long>(words.size() / 3), static_cast<long long>(fresh.size()),
                    static_cast<long long>(sentences.size()), static_cast<long long>(longLines),
                    static_cast<long long>(asked));
    }
    std::printf("%d lessons written\n", lessons);
}

float percentile(std::vector<float> v, double p) {
    if (v.empty()) return 0;
    std::sort(v.begin(), v.end());
    return v[static_cast<size_t>(p * static_cast<double>(v.size() - 1) + 0.5)];
}

// The tone contour of every syllable recording, as figures per tone; a tone whose typical
// recording does not carry it clearly is a fault, and so is a recording that clicks.
void checkTones(const QString& data) {
    constexpr float kClick = 3.0f; // a step this many times any step around it is a click
    struct Figures {
        std::vector<float> startToEnd, lowest, highest, steps;
        int count = 0, unvoiced = 0, clear = 0;
        QStringList unclear;
    };
    std::map<int, Figures> tones;
    FileStore files;
    QDirIterator it(FileStore::Resolve(SyllableSoundFolder(DataFolderRoot(data))),
                    {QStringLiteral("*.wav")}, QDir::Files, QDirIterator::Subdirectories);
    QStringList clicks;
    while (it.hasNext()) {
        const QString path = it.next();
        const QString name = it.fileInfo().completeBaseName();
        const int tone = name.isEmpty() ? 0 : name.back().digitValue();
        if (tone < 1 || tone > 4) continue;
        const auto bytes = files.ReadAll(path);
        if (!bytes) continue;
        const Pcm pcm = DecodeWav(*bytes);
        Figures& f = tones[tone];
        ++f.count;
        const float step = LargestStepRatio(pcm);
        f.steps.push_back(step);
        if (step > kClick) clicks << QStringLiteral("%1 (%2)").arg(name).arg(step, 0, 'f', 1);
        const ToneContour c = MeasureContour(pcm);
        if (!c.voiced) {
            ++f.unvoiced;
            continue;
        }
        f.startToEnd.push_back(c.startToEnd);
        f.lowest.push_back(c.lowest);
        f.highest.push_back(c.highest);
        if (ContourIsClear(tone, c))
            ++f.clear;
        else
            f.unclear << name;
    }
    if (tones.empty()) return;
    std::printf("tone contours of the syllable recordings, semitones against the start "
                "(10th percentile / median / 90th percentile):\n");
    std::printf("tone  recordings  start to end         lowest               highest          "
                "    clear  largest step\n");
    auto three = [](const std::vector<float>& v) {
        return QStringLiteral("%1 / %2 / %3")
            .arg(percentile(v, 0.1), 5, 'f', 1)
            .arg(percentile(v, 0.5), 5, 'f', 1)
            .arg(percentile(v, 0.9), 5, 'f', 1);
    };
    for (const auto& [tone, f] : tones) {
        const int measured = f.count - f.unvoiced;
        std::printf("%4d  %10d  %s  %s  %s  %4d%%  %6.1f\n", tone, f.count,
                    qPrintable(three(f.startToEnd)), qPrintable(three(f.lowest)),
                    qPrintable(three(f.highest)), measured > 0 ? 100 * f.clear / measured : 0,
                    static_cast<double>(percentile(f.steps, 1.0)));
        if (!f.unclear.isEmpty())
            std::printf("      not clear: %s%s\n", qPrintable(f.unclear.mid(0, 12).join(u' ')),
                        f.unclear.size() > 12 ? " ..." : "");
        if (f.unvoiced > 0)
            std::printf("      %d recording(s) of tone %d have no voiced part to measure\n",
                        f.unvoiced, tone);
        ToneContour typical;
        typical.voiced = measured > 0;
        typical.startToEnd = percentile(f.startToEnd, 0.5);
        typical.lowest = percentile(f.lowest, 0.5);
        typical.highest = percentile(f.highest, 0.5);
        if (!ContourIsClear(tone, typical))
            fault(QStringLiteral("tone %1 is not carried clearly by its typical recording "
                                 "(start to end %2, lowest %3, highest %4 semitones)")
                      .arg(tone)
                      .arg(typical.startToEnd, 0, 'f', 1)
                      .arg(typical.lowest, 0, 'f', 1)
                      .arg(typical.highest, 0, 'f', 1));
    }
    for (const QString& c : clicks)
        fault(QStringLiteral("Phonetic Symbols: %1 has a step that clicks").arg(c));
}

// The tracked pitch of single recordings, frame by frame, for a closer look at a contour.
void printContours(const QString& data, const QStringList& syllables) {
    FileStore files;
    for (const QString& s : syllables) {
        const auto bytes = files.ReadAll(SyllableSoundFile(DataFolderRoot(data), s));
        if (!bytes) {
            std::printf("%s: no recording\n", qPrintable(s));
            continue;
        }
        const Pcm pcm = DecodeWav(*bytes);
        const PitchTrack track = TrackPitch(pcm);
        const VoicedPart part = FindVoicedPart(track);
        const ToneContour c = MeasureContour(pcm);
        std::printf("%s: %d ms, voiced from %.0f ms, %zu frames, start %.0f Hz, start to end %.1f, "
                    "lowest %.1f, highest %.1f semitones, largest step %.1f\n",
                    qPrintable(s), pcm.Milliseconds(),
                    track.CentreOf(part.first) * 1000.0 / pcm.rate, part.hz.size(),
                    static_cast<double>(c.startHz), static_cast<double>(c.startToEnd),
                    static_cast<double>(c.lowest), static_cast<double>(c.highest),
                    static_cast<double>(LargestStepRatio(pcm)));
        QString line;
        for (size_t i = 0; i < track.hz.size(); ++i)
            line += QStringLiteral(" %1").arg(track.hz[i], 0, 'f', 0);
        std::printf("  Hz per 5 ms:%s\n", qPrintable(line));
    }
}
} // namespace

int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    QCommandLineParser cli;
    const QCommandLineOption dataOpt(QStringLiteral("data"), QStringLiteral("The data folder."),
                                     QStringLiteral("dir"));
    const QCommandLineOption npmOpt(
        QStringLiteral("npm"), QStringLiteral("Folder with node_modules."), QStringLiteral("dir"));
    const QCommandLineOption contourOpt(
        QStringLiteral("contour"),
        QStringLiteral("Only print the tracked pitch of these syllable recordings (ma1,ma2,...)."),
        QStringLiteral("syllables"));
    cli.addOptions({dataOpt, npmOpt, contourOpt});
    cli.process(app);
    const QString data = cli.value(dataOpt);
    if (!QFile::exists(TitleFile(DataFolderRoot(data)))) {
        std::printf("skipped: no course has been built into %s (run scripts/build_course.sh)\n",
                    qPrintable(data));
        return 77;
    }
    if (cli.isSet(contourOpt)) {
        printContours(data, cli.value(contourOpt).split(u',', Qt::SkipEmptyParts));
        return 0;
    }
    QString npm = cli.value(npmOpt);
    if (!QDir(npm + QStringLiteral("/node_modules/hanzi-writer-data")).exists()) {
        std::printf("note: no stroke data in %s; stroke counts are not compared\n",
                    qPrintable(npm));
        npm.clear();
    }
    checkStrokes(data, npm);
    checkRecordings(data);
    reportLessons(data);
    checkTones(data);
    if (faults > 0) {
        std::fprintf(stderr, "%d fault(s) in the built course\n", faults);
        return 1;
    }
    std::printf("the built course is complete: 200 stroke files and every syllable recording\n");
    return 0;
}
