#include "support/record_files.h"

#include <QDir>
#include <QFile>
#include <QProcess>

namespace vt::test {

void ScratchFolder::Write(const QString& name, const QByteArray& bytes) const {
    QFile f(Path(name));
    if (f.open(QIODevice::WriteOnly)) f.write(bytes);
}

QByteArray ScratchFolder::Read(const QString& name) const {
    QFile f(Path(name));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}

QStringList ScratchFolder::Files() const {
    return FilesIn(dir.path());
}

QStringList FilesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::Files | QDir::System | QDir::Hidden, QDir::Name);
}

ChildResult RunChild(const QString& program, const QStringList& arguments,
                     const QProcessEnvironment& environment) {
    QProcess child;
    child.setProcessEnvironment(environment);
    child.start(program, arguments);
    ChildResult r;
    if (!child.waitForFinished(60000)) {
        child.kill();
        child.waitForFinished();
        return r;
    }
    r.exitedNormally = child.exitStatus() == QProcess::NormalExit;
    r.exitCode = child.exitCode();
    r.output = QString::fromLocal8Bit(child.readAllStandardOutput());
    r.errors = QString::fromLocal8Bit(child.readAllStandardError());
    return r;
}

QString RecordWriterPath() {
    return QStringLiteral(VANTORIA_RECORD_WRITER);
}

ChildResult RunRecordWriter(const QStringList& arguments, qint64 fsizeLimit) {
    QStringList all;
    if (fsizeLimit >= 0) all << QStringLiteral("--fsize-limit") << QString::number(fsizeLimit);
    return RunChild(RecordWriterPath(), all + arguments);
}

} // namespace vt::test
