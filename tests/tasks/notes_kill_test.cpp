// Notes saved by a process that is killed at random moments: the file is always the notes that
// stood before or a whole save of the killed process, never cut and never empty.

#include "platform/files.h"
#include "support/notes_sample.h"
#include "support/record_files.h"
#include "tasks/notes_file.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace vt {
namespace {

TEST(NotesKills, AKilledSaveLeavesTheOldNotesOrTheNewOnesWhole) {
    constexpr int kRounds = 400;
    test::ScratchFolder folder;
    const QString name = QStringLiteral("Translation_1.txt");
    folder.Write(name, NotesFileBytes(test::SampleNotes(0, 1)));
    QByteArray before = folder.Read(name);
    QRandomGenerator random(5 * 60);
    const QRegularExpression heading(QStringLiteral("^round (\\d+) save (\\d+)\r\n"));

    QProcess killer;
    killer.start(test::RecordWriterPath(), {QStringLiteral("notekills"), folder.Path(name)});
    ASSERT_TRUE(killer.waitForStarted());
    int foundOld = 0, foundNew = 0, leftovers = 0;
    for (int round = 1; round <= kRounds; ++round) {
        // Most kills fall within the first saves, some after dozens of them.
        const int waitUs = round % 4 == 0 ? int(random.bounded(30000)) : int(random.bounded(3000));
        killer.write(QStringLiteral("%1 %2\n").arg(round).arg(waitUs).toUtf8());
        while (!killer.canReadLine())
            ASSERT_TRUE(killer.waitForReadyRead(10000)) << "round " << round;
        ASSERT_EQ(killer.readLine(), "killed\n");

        const QByteArray after = folder.Read(name);
        if (after == before) {
            ++foundOld;
        } else {
            const QRegularExpressionMatch m = heading.match(QString::fromUtf8(after.left(40)));
            ASSERT_TRUE(m.hasMatch()) << "round " << round << ": " << after.left(40).constData();
            ASSERT_EQ(m.captured(1).toInt(), round) << "round " << round;
            ASSERT_EQ(after, NotesFileBytes(test::SampleNotes(round, m.captured(2).toInt())))
                << "round " << round << ": the notes are not whole";
            ++foundNew;
        }
        before = after;
        leftovers += int(folder.Files().size()) - 1;
        FileStore::RemoveLeftoverSaves(folder.dir.path());
        ASSERT_EQ(folder.Files(), QStringList{name}) << "round " << round;
    }
    killer.closeWriteChannel();
    ASSERT_TRUE(killer.waitForFinished(10000));
    EXPECT_EQ(foundOld + foundNew, kRounds);
    std::printf("%d kills: notes found old %d times, new %d times; %d temporary files left by "
                "the kills, all removed\n",
                kRounds, foundOld, foundNew, leftovers);
}

} // namespace
} // namespace vt
