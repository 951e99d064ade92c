#pragma once
// For tests of the files the program writes: a scratch folder, child processes run to their end,
// and the record writer, the child that saves the learner's records as the program does
// (tests/helpers/record_writer.cpp).

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <functional>

namespace vt::test {

struct ScratchFolder {
    QTemporaryDir dir;
    QString Path(const QString& name) const { return dir.filePath(name); }
    // Writes a file directly, not through the program's file store.
    void Write(const QString& name, const QByteArray& bytes) const;
    // The file's bytes, or "<missing>".
    QByteArray Read(const QString& name) const;
    // The names of the files in the folder, sorted.
    QStringList Files() const;
};

// The names of the files in folder (regular or not), sorted.
QStringList FilesIn(const QString& folder);

struct ChildResult {
    bool exitedNormally = false; // false when it crashed, was killed or did not end in time
    int exitCode = -1;
    QString output; // standard output
    QString errors; // standard error
};

ChildResult
RunChild(const QString& program, const QStringList& arguments,
         const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

QString RecordWriterPath();

// Runs the record writer to its end; its output has one "title: text" line per message box.
// fsizeLimit >= 0 is its file size limit in bytes, as `ulimit -f` sets it.
ChildResult RunRecordWriter(const QStringList& arguments, qint64 fsizeLimit = -1);

// Kill rounds of the record writer's command ("kills" or "notekills") on target: rounds numbered
// first, first + 1, ...; in each a child saves over and over and is killed after a random wait
// (up to longWaitUs every fourth round, up to 3 ms otherwise). A file that is no longer as it
// was before the round must pass checkNew(round, bytes); the leftovers of the killed save are
// counted and removed, and nothing else may stand in the folder. Prints what was found.
void RunKillRounds(const QString& command, const QString& target, const ScratchFolder& folder,
                   const QString& file, int first, int rounds, quint32 seed, int longWaitUs,
                   const std::function<void(int, const QByteArray&)>& checkNew);

} // namespace vt::test
