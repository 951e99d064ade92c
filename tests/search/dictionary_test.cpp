// The dictionary form on a small course: a search fills the list in table order and shows the
// entry of the word itself; the open task decides what the entry holds back and whether it
// speaks; Locate walks through the entry; the box keeps a history and answers Escape and Enter.
#include "search/dictionary.h"
#include "support/small_course.h"
#include "support/test_env.h"

#include <QTest>
#include <gtest/gtest.h>

using namespace vt;

namespace {

struct DictionaryTest : ::testing::Test {
    void SetUp() override {
        test::WriteSmallCourse(env.rt->app);
        dictionary = env.rt->forms.Load<Dictionary>();
        ASSERT_NE(dictionary, nullptr);
    }
    void TearDown() override { env.rt->forms.Unload(dictionary); }

    void Search(const char* text, bool inLesson = false) {
        QString t = QString::fromUtf8(text);
        dictionary->Common01(t, inLesson);
    }
    QStringList Column(int column) const {
        QStringList cells;
        for (int row = 1; row <= dictionary->ListView1->Count(); ++row)
            cells << dictionary->ListView1->Text(row, column);
        return cells;
    }
    QString Entry() const { return dictionary->Text1->Text(); }
    void ClickRow(int row) {
        dictionary->ListView1->SelectRow(row);
        Q_EMIT dictionary->ListView1->ItemClick(row);
    }

    test::TestEnv env;
    Dictionary* dictionary = nullptr;
};

} // namespace

TEST_F(DictionaryTest, ASearchListsItsHitsAndShowsTheWordItself) {
    Search("你好");
    EXPECT_EQ(Column(1), QStringList({"你好", "你好"}));
    EXPECT_EQ(Column(0), QStringList({"  1", "  2"}));
    EXPECT_EQ(Column(5), QStringList({"1", "3"}));
    EXPECT_EQ(Column(4), QStringList({"1", "1"}));
    EXPECT_EQ(dictionary->ListView1->SelectedRow(), 1);
    EXPECT_TRUE(dictionary->Command2->isEnabled());
    EXPECT_TRUE(
        Entry().startsWith(QString::fromUtf8("你好  ( nǐ hǎo )  \nhello\n[Lesson 第 1 课]"
                                             "\nExample Sentences  例句：\n1）你好，老师！")))
        << Entry().toStdString();
    // Spoken syllable by syllable.
    ASSERT_EQ(env.rt->app.SpeechSyllableCount, 2);
    EXPECT_EQ(env.rt->app.SpeechQueue[2].Sound, "hao3");

    // No row is the word itself: nothing is chosen and the entry stays empty.
    Search("teacher");
    EXPECT_EQ(Column(1), QStringList({"老师"}));
    EXPECT_EQ(dictionary->ListView1->SelectedRow(), 0);
    EXPECT_TRUE(Entry().isEmpty());
    Search("wo3");
    EXPECT_EQ(Column(1), QStringList({"我", "我们"}));
    EXPECT_EQ(dictionary->Combo1->count(), 3); // the history of searches with hits
}

TEST_F(DictionaryTest, ASearchWithoutHitsSaysSorryAndForgetsTheLastSearch) {
    for (const char* text : {"wo", "3"}) {
        Search("你好");
        Search(text);
        EXPECT_EQ(dictionary->ListView1->Count(), 0) << text;
        EXPECT_EQ(dictionary->Combo1->currentText(), QString::fromUtf8("Sorry 对不起.")) << text;
        EXPECT_FALSE(dictionary->Command2->isEnabled());
        EXPECT_TRUE(dictionary->LastSearch.isEmpty());
    }
    EXPECT_EQ(dictionary->Combo1->count(), 1); // only the search with hits
}

TEST_F(DictionaryTest, TheSameSearchAgainKeepsTheListAndTheSelection) {
    Search("好");
    ASSERT_EQ(dictionary->ListView1->Count(), 4);
    EXPECT_EQ(dictionary->ListView1->SelectedRow(), 2); // the word 好 itself
    ClickRow(4);
    const QString entry = Entry();
    Search("好");
    EXPECT_EQ(dictionary->ListView1->Count(), 4);
    EXPECT_EQ(dictionary->ListView1->SelectedRow(), 4);
    EXPECT_EQ(Entry(), entry);
    // Walking up the list with the keys shows each row's entry.
    QTest::keyClick(dictionary->ListView1, Qt::Key_Up);
    EXPECT_EQ(dictionary->ListView1->SelectedRow(), 3);
    EXPECT_TRUE(Entry().startsWith(QString::fromUtf8("你好  ( nǐ hǎo )  \nhi")))
        << Entry().toStdString();
}

TEST_F(DictionaryTest, TheVocabularyTaskChoosesTheOpenLessonsRowAndHidesTheMeaningSilently) {
    AppState& app = env.rt->app;
    app.VocabularyTaskOpen = true;
    app.OpenTask = 3;
    app.OpenLesson = 3;
    Search("你好", true);
    EXPECT_EQ(dictionary->ListView1->SelectedRow(), 2); // lesson 3, though lesson 1 has it too
    EXPECT_EQ(Entry(), QString::fromUtf8("你好  ( nǐ hǎo )  \n1）你好吗？ [Lesson  第 3 课]"
                                         "\n2）老师，你好。 [Lesson  第 3 课]"));
    EXPECT_EQ(app.SpeechSyllableCount, 0);
}

TEST_F(DictionaryTest, TasksThreeAndSixAreSilentAndFourFiveSevenHideTheSentences) {
    AppState& app = env.rt->app;
    for (int task : {3, 6}) {
        app.OpenTask = static_cast<int16_t>(task);
        Search("我们");
        Search("我");
        EXPECT_EQ(app.SpeechSyllableCount, 0) << task;
        EXPECT_TRUE(dictionary->MMControl1->FileName().isEmpty()) << task;
    }
    app.OpenTask = 1;
    ClickRow(1);
    EXPECT_TRUE(dictionary->MMControl1->FileName().endsWith("W/wo3.wav"))
        << dictionary->MMControl1->FileName().toStdString();

    for (int task : {4, 5, 7}) {
        app.OpenTask = static_cast<int16_t>(task);
        app.DictionaryFeedsTask = true;
        ClickRow(1);
        EXPECT_TRUE(Entry().endsWith(QString::fromUtf8("Example Sentences  例句：(being hid)")))
            << task;
        EXPECT_FALSE(Entry().contains(QString::fromUtf8("我很好"))) << task;
    }
}

TEST_F(DictionaryTest, LocateWalksThroughTheEntryAndStartsAgain) {
    Search("好"); // the word 好 itself is chosen: its entry and sentences
    const QString entry = Entry();
    const QString word = QString::fromUtf8("好");
    // Every place of 好 after the head's first character, then round again.
    std::vector<int> places;
    for (qsizetype at = entry.indexOf(word, 1); at >= 0; at = entry.indexOf(word, at + 1))
        places.push_back(static_cast<int>(at));
    ASSERT_GE(places.size(), 3u);
    for (int round = 0; round < 2; ++round) {
        for (int place : places) {
            dictionary->Command2->click();
            EXPECT_EQ(dictionary->Text1->SelStart(), place);
            EXPECT_EQ(dictionary->Text1->SelLength(), 1);
        }
    }
}

TEST_F(DictionaryTest, TheBoxSearchesOnEnterEmptiesOnEscapeAndKeepsNoDuplicate) {
    dictionary->Show();
    auto* box = dictionary->Combo1;
    box->setEditText(QStringLiteral("  hello "));
    QTest::keyClick(box->lineEdit(), Qt::Key_Return);
    EXPECT_EQ(Column(1), QStringList({"你好"}));
    dictionary->Command1->click(); // the same again: no second history item
    EXPECT_EQ(box->count(), 1);
    QTest::keyClick(box->lineEdit(), Qt::Key_Escape);
    EXPECT_TRUE(box->currentText().isEmpty());
    EXPECT_EQ(dictionary->ListView1->Count(), 1); // the list stays
    // Coming back to the box marks its text, so that typing replaces it.
    box->setEditText(QStringLiteral("teacher"));
    QApplication::setActiveWindow(dictionary->window());
    dictionary->ListView1->setFocus();
    box->setFocus();
    EXPECT_EQ(box->lineEdit()->selectedText(), "teacher");
    // A choice from the history searches it again.
    Search("wo3");
    box->SetListIndex(0);
    EXPECT_EQ(Column(1), QStringList({"你好"}));
}
