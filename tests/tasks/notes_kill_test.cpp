// Notes saved by a process that is killed at random moments: the file is always the notes that
// stood before or a whole save of the killed process, never cut and never empty.

#include "support/notes_sample.h"
#include "support/record_files.h"
#include "tasks/notes_file.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

namespace vt {
namespace {

TEST(NotesKills, AKilledSaveLeavesTheOldNotesOrTheNewOnesWhole) {
    constexpr int kRounds = 400;
    test::ScratchFolder folder;
    const QString name = QStringLiteral("Translation_1.txt");
    folder.Write(name, NotesFileBytes(test::SampleNotes(0, 1)));
    const QRegularExpression heading(QStringLiteral("^round (\\d+) save (\\d+)\r\n"));
    test::RunKillRounds(
        QStringLiteral("notekills"), folder.Path(name), folder, name, 1, kRounds, 5 * 60, 30000,
        [&](int round, const QByteArray& after) {
            const QRegularExpressionMatch m = heading.match(QString::fromUtf8(after.left(40)));
            ASSERT_TRUE(m.hasMatch()) << "round " << round << ": " << after.left(40).constData();
            ASSERT_EQ(m.captured(1).toInt(), round) << "round " << round;
            ASSERT_EQ(after, NotesFileBytes(test::SampleNotes(round, m.captured(2).toInt())))
                << "round " << round << ": the notes are not whole";
        });
}

} // namespace
} // namespace vt
