// The translation notes: when they are saved, what the file holds, and what a failed save does.

#include "support/test_env.h"
#include "tasks/notepad.h"
#include "tasks/notes_file.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <gtest/gtest.h>

namespace vt {
namespace {

constexpr qint64 kMinute = 60000;

struct Notes : ::testing::Test {
    test::TestEnv env;
    Notepad* pad = nullptr;

    void SetUp() override { env.rt->app.OpenLesson = 3; }
    Notepad* open() {
        pad = env.rt->forms.Load<Notepad>();
        pad->Show();
        return pad;
    }
    void type(const QString& text) {
        pad->Text1->moveCursor(QTextCursor::End);
        QTest::keyClicks(pad->Text1, text);
    }
    QByteArray file() const {
        QFile f(env.Path("Translation_3.txt"));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
    }
};

TEST_F(Notes, SavedFiveMinutesAfterTheFirstChangeWhateverFollows) {
    open();
    type("I am");
    env.clock.Advance(4 * kMinute);
    type(" a student");
    env.clock.Advance(kMinute - 1);
    EXPECT_EQ(file(), "<missing>");
    env.clock.Advance(1);
    EXPECT_EQ(file(), "I am a student\r\n") << "later changes do not put the save off";
    EXPECT_FALSE(pad->NoteDirty);

    // The next change starts a new count of its own.
    type(".");
    env.clock.Advance(5 * kMinute - 1);
    EXPECT_EQ(file(), "I am a student\r\n");
    env.clock.Advance(1);
    EXPECT_EQ(file(), "I am a student.\r\n");
    EXPECT_EQ(env.files.writesAttempted, 2);
}

TEST_F(Notes, LeavingBeforeTheFiveMinutesSavesAtOnceAndUnchangedNotesAreNotWritten) {
    open();
    type("Hello");
    EXPECT_TRUE(env.rt->forms.Unload(pad));
    EXPECT_EQ(file(), "Hello\r\n");

    open();
    EXPECT_EQ(pad->Text1->Text(), "Hello");
    EXPECT_FALSE(pad->NoteDirty) << "notes as read are not a change";
    EXPECT_TRUE(env.rt->forms.Unload(pad));
    EXPECT_EQ(env.files.writesAttempted, 1);
}

TEST_F(Notes, ALineEndIsAddedPerSaveAndDroppedPerReadSoTheNotesNeverGrow) {
    // Notes of another editor: bare line feeds, an empty last line.
    env.WriteFile("Translation_3.txt", "He is my teacher.\nShe is\r\n\r\n");
    for (int round = 0; round < 3; ++round) {
        open();
        EXPECT_EQ(pad->Text1->Text(), "He is my teacher.\nShe is\n") << round;
        type("x");
        QTest::keyClick(pad->Text1, Qt::Key_Backspace);
        ASSERT_TRUE(pad->NoteDirty);
        EXPECT_TRUE(env.rt->forms.Unload(pad));
        EXPECT_EQ(file(), "He is my teacher.\r\nShe is\r\n\r\n") << round;
    }
    EXPECT_EQ(NotesFromFileBytes(NotesFileBytes("\n\n")), "\n\n");
}

TEST_F(Notes, AFailedSaveWarnsKeepsTheTextAndTriesAgain) {
    env.WriteFile("Translation_3.txt", "old notes\r\n");
    open();
    env.files.failWrites = true;
    type(" and more");
    env.clock.Advance(5 * kMinute);
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().title, "Warning");
    EXPECT_TRUE(env.boxes.Last().text.contains("could not be saved"));
    EXPECT_EQ(pad->Text1->Text(), "old notes and more");
    EXPECT_TRUE(pad->NoteDirty);
    EXPECT_EQ(file(), "old notes\r\n") << "the old notes stay whole";

    env.clock.Advance(5 * kMinute);
    EXPECT_EQ(env.boxes.Count(), 2) << "tried again five minutes later";

    // Leaving: the learner may keep the window to copy the notes ...
    env.boxes.Answer(Mb::OK);
    env.boxes.Answer(Mb::Yes);
    EXPECT_FALSE(env.rt->forms.Unload(pad));
    EXPECT_EQ(env.boxes.Last().title, "Warning");
    EXPECT_EQ(env.rt->forms.Get<Notepad>(), pad);
    EXPECT_EQ(pad->Text1->Text(), "old notes and more");

    // ... or let it go; once the disk takes them, they are saved.
    env.files.failWrites = false;
    EXPECT_TRUE(env.rt->forms.Unload(pad));
    EXPECT_EQ(file(), "old notes and more\r\n");
}

TEST_F(Notes, AFolderThatCannotBeWrittenGivesAWarningAndKeepsTheText) {
    // A folder without write permission; the super-user writes there all the same, so for it
    // the folder's place is taken by a plain file, which nobody can write into either.
    const QString folder = env.Path("locked");
    QDir().mkpath(folder);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
    if (QFile probe(folder + "/probe"); probe.open(QIODevice::WriteOnly)) {
        probe.remove();
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QDir(folder).removeRecursively();
        env.WriteFile("locked", "a file where the folder should be");
    }
    env.rt->app.AppPath = folder + u'/';
    open();
    type("notes that must not get lost");
    env.boxes.Answer(Mb::Yes);
    EXPECT_FALSE(env.rt->forms.Unload(pad));
    ASSERT_EQ(env.boxes.Count(), 2);
    EXPECT_EQ(env.boxes.Boxes()[0].title, "Warning");
    EXPECT_EQ(pad->Text1->Text(), "notes that must not get lost");
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace
} // namespace vt
