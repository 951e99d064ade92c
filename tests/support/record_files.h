#pragma once
// For tests of the files the program writes: a scratch folder, child processes run to their end,
// and the record writer, the child that saves the learner's records as the program does
// (tests/helpers/record_writer.cpp).

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

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

} // namespace vt::test
