#include "support/record_files.h"

#include "platform/files.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <cstdio>
#include <gtest/gtest.h>

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

void RunKillRounds(const QString& command, const QString& target, const ScratchFolder& folder,
                   const QString& file, int first, int rounds, quint32 seed, int longWaitUs,
                   const std::function<void(int, const QByteArray&)>& checkNew) {
    int foundOld = 0, foundNew = 0, leftovers = 0;
    QRandomGenerator random(seed);
    QProcess killer;
    killer.start(RecordWriterPath(), {command, target});
    [&] {
        ASSERT_TRUE(killer.waitForStarted());
        QByteArray before = folder.Read(file);
        for (int round = first; round < first + rounds; ++round) {
            const int waitUs =
                round % 4 == 0 ? int(random.bounded(longWaitUs)) : int(random.bounded(3000));
            killer.write(QStringLiteral("%1 %2\n").arg(round).arg(waitUs).toUtf8());
            while (!killer.canReadLine())
                ASSERT_TRUE(killer.waitForReadyRead(10000)) << "round " << round;
            ASSERT_EQ(killer.readLine(), "killed\n");

            const QByteArray after = folder.Read(file);
            if (after == before) {
                ++foundOld;
            } else {
                checkNew(round, after);
                if (::testing::Test::HasFatalFailure()) return;
                ++foundNew;
            }
            before = after;
            leftovers += int(folder.Files().size()) - 1;
            FileStore::RemoveLeftoverSaves(folder.dir.path());
            ASSERT_EQ(folder.Files(), QStringList{file}) << "round " << round;
        }
        killer.closeWriteChannel();
        ASSERT_TRUE(killer.waitForFinished(10000));
        EXPECT_EQ(foundOld + foundNew, rounds);
        std::printf("%d kills: %s found old %d times, new %d times; %d temporary files left by "
                    "the kills, all removed\n",
                    rounds, qPrintable(file), foundOld, foundNew, leftovers);
    }();
}

} // namespace vt::test
