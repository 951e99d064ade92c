// coursepack: compiles the plain-text course sources into the program's data folder.
//
//   coursepack --course <course dir> --out <data folder> [--npm <dir with node_modules>]
//              [--check-only] [--no-audio] [--jobs N]
//   coursepack --course <course dir> --npm <dir> --readings [sentence ...]
//
// Faults in the sources are printed as "file:line: reason", and nothing is built.

#include "course_build.h"
#include "course_sources.h"
#include "lexicon.h"

#include "platform/files.h"

#include <QCommandLineParser>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <cstdio>

using namespace vt::coursepack;

namespace {
void print(const QString& s, FILE* to = stdout) {
    std::fputs(qPrintable(s + u'\n'), to);
}

qint64 folderBytes(const QString& dir, int* count) {
    qint64 total = 0;
    *count = 0;
    QDirIterator it(dir, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        it.next();
        total += it.fileInfo().size();
        ++*count;
    }
    return total;
}
// Every spoken sentence of the course as "file:line<tab>Chinese<tab>Pinyin", or the sentences
// given as "Chinese<tab>Pinyin": a writer of lessons sees how the voice will read a text.
int printReadings(const Course& course, const QString& npmDir, const QStringList& sentences) {
    Lexicon lexicon;
    QString error;
    if (npmDir.isEmpty() || !lexicon.Load(QDir(npmDir).absolutePath(), &error)) {
        print(QStringLiteral("coursepack: --readings needs the dictionary: ") +
                  (error.isEmpty() ? QStringLiteral("give --npm <dir>") : error),
              stderr);
        return 2;
    }
    AddCourseReadings(lexicon, course);
    for (const QString& s : sentences)
        print(s + u'\t' + lexicon.ToSpokenPinyin(s));
    if (!sentences.isEmpty()) return 0;
    for (const SpokenText& t : SpokenTexts(course))
        print(t.place.Text() + u'\t' + t.chinese.trimmed() + u'\t' +
              lexicon.ToSpokenPinyin(t.chinese));
    return 0;
}
} // namespace

int main(int argc, char** argv) {
    // Pictures are drawn with fonts, which needs a GUI application, but never a screen.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QCommandLineParser cli;
    cli.setApplicationDescription(
        QStringLiteral("Compiles the course sources into the program's data folder."));
    cli.addHelpOption();
    const QCommandLineOption courseOpt(QStringLiteral("course"),
                                       QStringLiteral("The course sources."), QStringLiteral("dir"),
                                       QStringLiteral("course"));
    const QCommandLineOption outOpt(
        QStringLiteral("out"), QStringLiteral("The data folder to fill."), QStringLiteral("dir"));
    const QCommandLineOption npmOpt(
        QStringLiteral("npm"),
        QStringLiteral("Folder holding node_modules with the data packages."),
        QStringLiteral("dir"));
    const QCommandLineOption checkOpt(QStringLiteral("check-only"),
                                      QStringLiteral("Only read and check the sources."));
    const QCommandLineOption noAudioOpt(QStringLiteral("no-audio"),
                                        QStringLiteral("Make no recordings or tracks."));
    const QCommandLineOption readingsOpt(
        QStringLiteral("readings"),
        QStringLiteral("Print the Pinyin every spoken sentence is read with, build nothing."));
    const QCommandLineOption jobsOpt(QStringLiteral("jobs"),
                                     QStringLiteral("Speech processes at a time."),
                                     QStringLiteral("n"), QStringLiteral("2"));
    cli.addOptions({courseOpt, outOpt, npmOpt, checkOpt, noAudioOpt, readingsOpt, jobsOpt});
    cli.addPositionalArgument(QStringLiteral("sentence"),
                              QStringLiteral("With --readings: sentences to read instead of the "
                                             "course's."),
                              QStringLiteral("[sentence ...]"));
    cli.process(app);

    QElapsedTimer clock;
    clock.start();
    Course course;
    std::vector<SourceError> errors;
    if (!ReadCourse(cli.value(courseOpt), course, errors)) {
        for (const SourceError& e : errors)
            print(e.Text(), stderr);
        print(QStringLiteral("coursepack: %1 fault(s) in the sources; nothing was built")
                  .arg(errors.size()),
              stderr);
        return 1;
    }
    for (const QString& w : course.warnings)
        print(QStringLiteral("warning: ") + w, stderr);
    if (cli.isSet(checkOpt)) {
        print(QStringLiteral("coursepack: the sources are fine"));
        return 0;
    }
    if (cli.isSet(readingsOpt))
        return printReadings(course, cli.value(npmOpt), cli.positionalArguments());
    if (!cli.isSet(outOpt)) {
        print(QStringLiteral("coursepack: --out <data folder> is needed"), stderr);
        return 2;
    }

    BuildOptions options;
    options.outDir = QDir(cli.value(outOpt)).absolutePath();
    options.audio = !cli.isSet(noAudioOpt);
    options.workers = std::max(1, cli.value(jobsOpt).toInt());
    Lexicon lexicon;
    if (cli.isSet(npmOpt)) {
        options.npmDir = QDir(cli.value(npmOpt)).absolutePath();
        QString error;
        if (!lexicon.Load(options.npmDir, &error))
            print(QStringLiteral("warning: ") + error, stderr);
    }
    vt::FileStore files;
    files.SyncToDisk = false; // a course can be built again; thousands of syncs only slow it down
    BuildReport report;
    const bool ok = BuildCourse(course, lexicon, options, files, report);
    for (const QString& w : report.warnings)
        print(QStringLiteral("warning: ") + w, stderr);
    for (const QString& e : report.errors)
        print(e, stderr);
    if (!ok) {
        print(QStringLiteral("coursepack: the build failed"), stderr);
        return 1;
    }
    int count = 0;
    const qint64 bytes = folderBytes(options.outDir, &count);
    print(
        QStringLiteral(
            "coursepack: %1 script files, %2 recordings, %3 tracks, %4 pictures, %5 stroke files, "
            "%6 vocabulary entries")
            .arg(report.scriptFiles)
            .arg(report.recordings)
            .arg(report.tracks)
            .arg(report.pictures)
            .arg(report.strokeFiles)
            .arg(report.vocabularyEntries));
    const VocabularyFigures& v = report.vocabulary;
    print(QStringLiteral("coursepack: vocabulary glosses: %1 with notes on other readings dropped, "
                         "%2 with \"also written\" the word itself dropped, %3 with measure "
                         "words, %4 marked vulgar; left out: %5 bare names, %6 with nothing to "
                         "teach; word table: %7 lesson words + %8 vocabulary = %9 of 32,767 rows")
              .arg(v.pronunciation)
              .arg(v.selfReference)
              .arg(v.classifier)
              .arg(v.vulgar)
              .arg(v.leftOutNames)
              .arg(v.leftOutEmpty)
              .arg(report.lessonWords)
              .arg(report.vocabularyEntries)
              .arg(report.lessonWords + report.vocabularyEntries));
    print(QStringLiteral("coursepack: built in %1 s; data folder %2 holds %3 files, %4 MB")
              .arg(clock.elapsed() / 1000.0, 0, 'f', 1)
              .arg(options.outDir)
              .arg(count)
              .arg(bytes / 1048576.0, 0, 'f', 1));
    return 0;
}
