// The learner's records on disk when a save fails for real (a file size limit, as a full disk
// gives) or is cut off by a kill: the study position and the settings are found whole, old or
// new, and a failed save says so.
#include "platform/files.h"
#include "support/record_files.h"

#include <gtest/gtest.h>

namespace vt {
namespace {

using test::RunRecordWriter;

TEST(RecordFiles, AFailedSaveKeepsTheOldRecordAndWarns) {
    test::ScratchFolder folder;
    const QByteArray position = PackInt16LE({4, 2});
    const QByteArray setting = PackInt16LE({1, 192, 168, 0, 7, 1980});
    folder.Write("Study.zvk", position);
    folder.Write("Setting.zvk", setting);

    const auto study = RunRecordWriter({QStringLiteral("advance"), folder.dir.path()}, 0);
    ASSERT_TRUE(study.exitedNormally);
    EXPECT_TRUE(study.output.startsWith(
        "Warning: Your progress could not be saved in Study.zvk; the disk may be full"))
        << study.output.toStdString();
    EXPECT_TRUE(study.output.contains("(lesson 4, task 3)")) << "the place it keeps in memory";
    EXPECT_EQ(folder.Read("Study.zvk"), position);

    const auto mode =
        RunRecordWriter({QStringLiteral("mode"), folder.dir.path(), QStringLiteral("2")}, 0);
    ASSERT_TRUE(mode.exitedNormally);
    EXPECT_EQ(mode.output, "Warning: The setting could not be saved in the file Setting.zvk.\n");
    EXPECT_EQ(folder.Read("Setting.zvk"), setting);
    EXPECT_EQ(folder.Files(), QStringList({"Setting.zvk", "Study.zvk"}));

    // With room on the disk the same saves go through without a word.
    EXPECT_EQ(RunRecordWriter({QStringLiteral("advance"), folder.dir.path()}).output, "");
    EXPECT_EQ(folder.Read("Study.zvk"), PackInt16LE({4, 3}));
    EXPECT_EQ(
        RunRecordWriter({QStringLiteral("mode"), folder.dir.path(), QStringLiteral("2")}).output,
        "");
    EXPECT_EQ(folder.Read("Setting.zvk"), PackInt16LE({2, 192, 168, 0, 7, 1980}));
}

// A child saves the study position over and over and is killed at a random moment, three
// hundred times. In round r it writes task r with lessons 1, 2, 3, ...; after the kill the file
// must hold the record that stood before the round or one that the round wrote, whole.
TEST(RecordFiles, KilledInTheMiddleOfSavesTheRecordIsOldOrNew) {
    constexpr int kRounds = 300;
    test::ScratchFolder folder;
    folder.Write("Study.zvk", PackInt16LE({1, 999}));
    test::RunKillRounds(
        QStringLiteral("kills"), folder.dir.path(), folder, QStringLiteral("Study.zvk"), 1000,
        kRounds, 20070, 20000, [](int task, const QByteArray& after) {
            ASSERT_EQ(after.size(), 4) << "round " << task;
            ASSERT_EQ(ReadInt16LE(after, 2), task) << "round " << task << ": not a record of it";
            ASSERT_GE(ReadInt16LE(after, 0), 1) << "round " << task;
        });
}

} // namespace
} // namespace vt
