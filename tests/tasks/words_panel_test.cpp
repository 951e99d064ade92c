// The list of new words beside the read-text task: its rows, what a click says and where it marks.

#include "core/speech.h"
#include "support/sound_fixtures.h"
#include "support/test_env.h"
#include "tasks/words_panel.h"

#include <gtest/gtest.h>

namespace vt {
namespace {

// Stands for the read-text task (or, by its name, the TV play): a form with the text box that
// the panel marks words in.
class TextStandIn final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "Text";
    explicit TextStandIn(Runtime& runtime) : AppForm(runtime, kName) {
        AddTextArea(NAMED(Text1), {0, 0, 4000, 2000}, QStringLiteral("我是老师。他是学生。"));
    }
    TextArea* Text1 = nullptr;
};

struct Panel : ::testing::Test {
    test::TestEnv env;
    WordsPanel* panel = nullptr;
    TextStandIn* text = nullptr;

    void SetUp() override {
        AppState& app = env.rt->app;
        app.OpenLesson = 4;
        const std::vector<LessonWord> words = {{"是", "to be", "sh.i4"},
                                               {"老师", "teacher", "l.ao3 sh.i1"},
                                               {"他", "he", "t.a1"},
                                               {"是", "to be", "sh.i4"},
                                               {"学生", "student", "x.ue2 sh.eng1"}};
        for (const LessonWord& w : words)
            app.LessonWords.Append(w);
        app.LessonWordRows = int16_t(words.size());
        text = env.rt->forms.Load<TextStandIn>();
        panel = env.rt->forms.Load<WordsPanel>();
        panel->Show();
    }
    void click(int row) { panel->ListView1->ItemClick(row); }
};

TEST_F(Panel, AClickMarksTheWordWhereItsRowStandsInTheText) {
    click(1);
    EXPECT_EQ(text->Text1->SelStart(), 1);
    EXPECT_EQ(text->Text1->SelLength(), 1);
    click(4); // the second 是
    EXPECT_EQ(text->Text1->SelStart(), 6);
    EXPECT_EQ(text->Text1->SelText(), "是");
    click(5);
    EXPECT_EQ(text->Text1->SelText(), "学生");

    // From lesson 81 on the words are marked in the TV play, which is not open here.
    env.rt->app.OpenLesson = 81;
    click(2);
    EXPECT_EQ(text->Text1->SelText(), "学生");
}

TEST_F(Panel, OneCharacterPlaysOnThePanelsOwnPlayerAWordIsSpoken) {
    QString tone;
    env.rt->ShowToneCurve = [&tone](const QString& t) { tone = t; };
    click(3);
    ASSERT_NE(panel->MMControl1, nullptr);
    EXPECT_TRUE(panel->MMControl1->FileName().endsWith("Phonetic Symbols/T/ta1.wav"));
    EXPECT_EQ(env.sound->MMControl1->FileName(), "") << "the shared player is left alone";
    EXPECT_EQ(tone, "1");

    click(2);
    ASSERT_EQ(env.rt->app.SpeechSyllableCount, 2);
    EXPECT_EQ(env.rt->app.SpeechQueue[1].Sound, "lao3");

    // Leaving the panel lets its player go.
    panel->Form_Deactivate();
    EXPECT_EQ(panel->MMControl1->Mode(), MMControl::ModeNotOpen);
}

TEST_F(Panel, AClickWhileTheSharedPlayerPlaysDoesNothing) {
    env.WriteFile("Lessons/Sound/Lesson_4/1.wav", test::ToneWav(440, 2000));
    PlayWave(*env.rt, env.Path("Lessons/Sound/Lesson_4/1.wav"), OwnerTag::None);
    click(2);
    EXPECT_EQ(text->Text1->SelLength(), 0);
    EXPECT_EQ(env.rt->app.SpeechSyllableCount, 0);
}

} // namespace
} // namespace vt

#include "words_panel_test.moc"
