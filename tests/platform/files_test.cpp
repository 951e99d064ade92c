// Files found whatever the case of their names, writing files so that a failed or interrupted
// save loses nothing, and reading without ever waiting on something that is not a file.
#include "platform/files.h"
#include "support/record_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace vt {
namespace {

using test::RunRecordWriter;

using Folder = test::ScratchFolder;

TEST(FileReads, NamesAreFoundWhateverTheirCase) {
    QTemporaryDir dir;
    const QString root = dir.path() + u'/';
    QDir().mkpath(root + "Sound");
    QFile f(root + "Sound/right.wav");
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("RIFF");
    f.close();

    FileStore files;
    EXPECT_TRUE(files.Exists(root + "Sound\\right.WAV"));
    EXPECT_TRUE(files.Exists(root + "SOUND/Right.wav"));
    EXPECT_FALSE(files.Exists(root + "Sound")) << "a folder is no file";
    EXPECT_FALSE(files.Exists(root + "Sound/wrong.WAV"));
    EXPECT_EQ(files.ReadAll(root + "sound\\RIGHT.WAV").value_or(""), "RIFF");

    // Writing under another case replaces the file that is there: no second one appears.
    ASSERT_TRUE(files.WriteAll(root + "SOUND/RIGHT.WAV", "WAVE"));
    EXPECT_EQ(QDir(root + "Sound").entryList(QDir::Files), QStringList{"right.wav"});
    EXPECT_EQ(files.ReadAll(root + "Sound/right.wav").value_or(""), "WAVE");
    EXPECT_EQ(QDir(root).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList{"Sound"});
}

TEST(FileWrites, AWriteStoppedByTheSizeLimitKeepsTheOldFileAndLeavesNothing) {
    struct Row {
        const char* name;
        qint64 limit;
        int size;
    } rows[] = {
        {"no byte may be written", 0, 4},
        {"the write stops part way", 512, 4096},
        {"the last block does not fit", 4096, 4097},
    };
    for (const Row& r : rows) {
        Folder folder;
        folder.Write("Study.zvk", "old!");
        const auto got = RunRecordWriter(
            {QStringLiteral("write"), folder.Path("Study.zvk"), QString::number(r.size)}, r.limit);
        EXPECT_TRUE(got.exitedNormally) << r.name;
        EXPECT_EQ(got.exitCode, 3) << r.name << ": the failure is reported";
        EXPECT_EQ(folder.Read("Study.zvk"), "old!") << r.name;
        EXPECT_EQ(folder.Files(), QStringList{"Study.zvk"}) << r.name;
    }

    Folder folder;
    const auto got = RunRecordWriter(
        {QStringLiteral("write"), folder.Path("Notes.txt"), QStringLiteral("4")}, 0);
    EXPECT_EQ(got.exitCode, 3);
    EXPECT_TRUE(folder.Files().isEmpty()) << "no empty file where there was none";
}

TEST(FileWrites, ASaveReplacesTheFileKeepsItsModeAndFollowsALink) {
    Folder folder;
    FileStore files;
    folder.Write("Setting.zvk", "old");
    ASSERT_TRUE(QFile::setPermissions(folder.Path("Setting.zvk"),
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
    ASSERT_TRUE(files.WriteAll(folder.Path("setting.ZVK"), "new record"));
    EXPECT_EQ(folder.Read("Setting.zvk"), "new record") << "found without regard to case";
    struct stat st {};
    ASSERT_EQ(::stat(QFile::encodeName(folder.Path("Setting.zvk")).constData(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0640u);
    EXPECT_EQ(folder.Files(), QStringList{"Setting.zvk"});

    QDir(folder.dir.path()).mkdir("keep");
    folder.Write("keep/Chat.txt", "old chat");
    ASSERT_TRUE(QFile::link(folder.Path("keep/Chat.txt"), folder.Path("Chat.txt")));
    ASSERT_TRUE(files.WriteAll(folder.Path("Chat.txt"), "new chat"));
    EXPECT_TRUE(QFileInfo(folder.Path("Chat.txt")).isSymLink());
    EXPECT_EQ(folder.Read("keep/Chat.txt"), "new chat");

    ASSERT_TRUE(files.WriteAll(folder.Path("Numbers\\cardinal.txt"), "1\n"));
    EXPECT_EQ(folder.Read("Numbers/cardinal.txt"), "1\n") << "its folder is made";
}

// A FIFO where a record should be would hold any open for ever; it reads as missing.
TEST(FileReads, WhatIsNotARegularFileReadsAsMissingWithoutWaiting) {
    Folder folder;
    FileStore files;
    ASSERT_EQ(::mkfifo(QFile::encodeName(folder.Path("Study.zvk")).constData(), 0600), 0);
    ASSERT_TRUE(QDir(folder.dir.path()).mkdir("Setting.zvk"));

    for (const char* name : {"Study.zvk", "Setting.zvk"}) {
        const QString path = folder.Path(name);
        EXPECT_FALSE(files.Exists(path)) << name;
        EXPECT_FALSE(files.ReadAll(path)) << name;
        EXPECT_EQ(files.ReadRecord(path, 4), QByteArray(4, '\0')) << name;
    }
    EXPECT_FALSE(QFileInfo(folder.Path("Study.zvk")).isFile()) << "the FIFO is left as it was";

    // A save puts a real file in the FIFO's place; a folder cannot be replaced.
    EXPECT_TRUE(files.WriteRecord(folder.Path("Study.zvk"), 4, PackInt16LE({3, 2})));
    EXPECT_EQ(files.ReadRecord(folder.Path("Study.zvk"), 4), PackInt16LE({3, 2}));
    EXPECT_FALSE(files.WriteAll(folder.Path("Setting.zvk"), "x"));
    EXPECT_EQ(folder.Files(), QStringList{"Study.zvk"});
}

TEST(FileReads, ARecordBeyondTheEndReadsAsZerosAndAMissingFileIsCreated) {
    Folder folder;
    FileStore files;
    folder.Write("Study.zvk", PackInt16LE({1, 2, 3, 4, 5}));
    EXPECT_EQ(files.ReadRecord(folder.Path("Study.zvk"), 4, 2), PackInt16LE({3, 4}));
    EXPECT_EQ(files.ReadRecord(folder.Path("Study.zvk"), 4, 3), PackInt16LE({5, 0}));
    EXPECT_EQ(files.ReadRecord(folder.Path("Study.zvk"), 4, 4), QByteArray(4, '\0'));
    EXPECT_EQ(files.ReadRecord(folder.Path("New.zvk"), 12), QByteArray(12, '\0'));
    EXPECT_EQ(folder.Read("New.zvk"), QByteArray());
    EXPECT_EQ(ReadRegularFile(folder.Path("Study.zvk"), 3), PackInt16LE({1}) + '\2');
}

TEST(FileWrites, LeftoversOfOurOwnSavesAndNothingElseAreRemoved) {
    Folder folder;
    const QStringList ours = {"Study.zvk.vtsave-Ab12Cd", "Chat.txt.vtsave-000000"};
    const QStringList others = {
        "Study.zvk",
        "Study.zvk.vtsave-Ab12C",   // one letter short
        "Study.zvk.Ab12Cd",         // not our mark
        "Study.zvk.vtsave-Ab12Cd~", // something after it
        "notes.vtsave-abcdef.txt",
    };
    for (const QString& name : ours + others)
        folder.Write(name, "x");
    QDir(folder.dir.path()).mkpath("Numbers");
    folder.Write("Numbers/cardinal.txt.vtsave-abcdef", "x");
    QDir(folder.dir.path()).mkdir("Spoken.vtsave-abcdef");

    EXPECT_EQ(FileStore::RemoveLeftoverSaves(folder.dir.path() + u'/'), 2);
    QStringList left = others;
    left.sort();
    EXPECT_EQ(folder.Files(), left);
    EXPECT_TRUE(QFileInfo::exists(folder.Path("Numbers/cardinal.txt.vtsave-abcdef")))
        << "only the folder itself";
    EXPECT_TRUE(QFileInfo(folder.Path("Spoken.vtsave-abcdef")).isDir());
}

} // namespace
} // namespace vt
