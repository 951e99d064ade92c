// The related-expressions list as a form: what its three operations show, and what a click says.

#include "core/speech.h"
#include "search/expressions_related.h"
#include "support/sound_fixtures.h"
#include "support/test_env.h"

#include <gtest/gtest.h>

namespace vt {
namespace {

struct RelatedList : ::testing::Test {
    test::TestEnv env;
    ExpressionsRelated* form = nullptr;

    void SetUp() override {
        AppState& app = env.rt->app;
        const std::vector<std::array<const char*, 3>> words = {{"好", " good ", "h.ao3"},
                                                               {"好", " to like ", "h.ao4"},
                                                               {"你好", " hello ", "n.i3 h.ao3"},
                                                               {"好", " well ", "h.ao"}};
        for (const auto& [c, m, p] : words) {
            app.WordTable.Append(WordRow{QString::fromUtf8(c), QString::fromUtf8(m)});
            app.WordPinyin.Append(QString::fromUtf8(p));
            app.WordOrigin.Append(WordSource{2, 1});
        }
        app.WordCount = app.WordCountCopy = app.LessonWordCount = int16_t(words.size());
        form = env.rt->forms.Load<ExpressionsRelated>();
        form->Show();
    }
    void click(int row) { form->ListView1->ItemClick(row); }
};

TEST_F(RelatedList, ShowsTheRowsWithTheirReadingOutOfSightAndClears) {
    form->Common02(QStringLiteral("好"), QStringLiteral("good"));
    ListView* list = form->ListView1;
    ASSERT_EQ(list->Count(), 3);
    EXPECT_EQ(form->RowCount, 3);
    EXPECT_TRUE(form->HasRows);
    EXPECT_EQ(list->Text(1, 2), "hào");
    EXPECT_EQ(list->Text(1, 4), "h.ao4");
    EXPECT_TRUE(list->isColumnHidden(4) || list->columnWidth(4) == 0);

    // Another call replaces the list; clearing empties it and its count.
    form->Common04(QStringLiteral("好"), {}, 3, false, false);
    EXPECT_EQ(list->Count(), 1);
    form->Clear();
    EXPECT_EQ(list->Count(), 0);
    EXPECT_EQ(form->RowCount, 0);
    EXPECT_FALSE(form->HasRows);
    EXPECT_TRUE(form->RowOrigin.empty());
}

TEST_F(RelatedList, WordsHoldingACharacter) {
    form->Common03(QStringLiteral("你"));
    EXPECT_EQ(form->ListView1->Count(), 1);
    EXPECT_EQ(form->ListView1->Text(1, 1), "你好");
}

TEST_F(RelatedList, AClickSaysOneCharacterFromItsRecordingAndAWordBySyllables) {
    QString tone;
    env.rt->ShowToneCurve = [&tone](const QString& t) { tone = t; };
    form->Common02(QStringLiteral("好"), QStringLiteral("good"));
    MMControl* shared = env.sound->MMControl1;

    click(1);
    EXPECT_TRUE(shared->FileName().endsWith("Phonetic Symbols/H/hao4.wav"))
        << qPrintable(shared->FileName());
    EXPECT_EQ(tone, "4");
    EXPECT_EQ(env.rt->app.SpeechSyllableCount, 0);

    // A reading without a tone is said with the first tone and shows none.
    click(3);
    EXPECT_TRUE(shared->FileName().endsWith("Phonetic Symbols/H/hao1.wav"))
        << qPrintable(shared->FileName());
    EXPECT_EQ(tone, "0");

    click(2);
    ASSERT_EQ(env.rt->app.SpeechSyllableCount, 2);
    EXPECT_EQ(env.rt->app.SpeechQueue[1].Sound, "ni3");
    EXPECT_EQ(env.rt->app.SpeechQueue[2].Sound, "hao3");
}

TEST_F(RelatedList, AClickWaitsWhileTheSharedPlayerPlaysAndAnEmptyListSaysNothing) {
    click(1);
    EXPECT_EQ(env.sound->MMControl1->FileName(), "");

    form->Common02(QStringLiteral("好"), QStringLiteral("good"));
    env.WriteFile("Lessons/Sound/Lesson_1/1.wav", test::ToneWav(440, 2000));
    const QString sentence = env.Path("Lessons/Sound/Lesson_1/1.wav");
    PlayWave(*env.rt, sentence, OwnerTag::None);
    ASSERT_EQ(env.sound->MMControl1->Mode(), MMControl::ModePlaying);
    click(1);
    EXPECT_EQ(env.sound->MMControl1->FileName(), sentence);
    EXPECT_EQ(env.sound->MMControl1->Mode(), MMControl::ModePlaying);
}

} // namespace
} // namespace vt
