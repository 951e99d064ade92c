// The additional page of a lesson: opened from the lesson menu with its stack, word by word with
// sound and related words, the pad, and the way back.

#include "search/expressions_related.h"
#include "shell/form_stacks.h"
#include "support/test_env.h"
#include "tasks/newwords.h"

#include <QApplication>
#include <QMouseEvent>
#include <gtest/gtest.h>

namespace vt {
namespace {

void mouse(QWidget* w, QEvent::Type type, QPoint at, Qt::MouseButton button,
           Qt::MouseButtons held) {
    QMouseEvent e(type, QPointF(at), w->mapToGlobal(QPointF(at)), button, held, Qt::NoModifier);
    QApplication::sendEvent(w, &e);
}

struct Page : ::testing::Test {
    test::TestEnv env;
    Newwords* page = nullptr;

    void SetUp() override {
        AppState& app = env.rt->app;
        app.OpenLesson = 1;
        const std::vector<LessonWord> words = {{"你好", "hello", "n.i3 h.ao3"},
                                               {"好", "good", "h.ao3"},
                                               {"老师", "teacher", "l.ao3 sh.i1"}};
        for (const LessonWord& w : words) {
            app.LessonWords.Append(w);
            app.WordTable.Append(WordRow{w.Chinese, u' ' + w.Meaning + u' '});
            app.WordPinyin.Append(w.Pinyin);
            app.WordOrigin.Append(WordSource{1, 1});
        }
        app.LessonWordRows = app.WordCount = app.WordCountCopy = int16_t(words.size());
    }
    void open() {
        ASSERT_TRUE(OpenTaskStack(*env.rt, kAdditionalPage));
        page = env.rt->forms.Get<Newwords>();
        ASSERT_NE(page, nullptr);
    }
};

TEST_F(Page, TheLessonMenuOpensItWithTheRelatedWordsBelow) {
    open();
    EXPECT_EQ(env.rt->app.OpenTask, 8);
    auto* related = env.rt->forms.Get<ExpressionsRelated>();
    ASSERT_NE(related, nullptr);
    EXPECT_TRUE(page->Visible());
    EXPECT_TRUE(related->Visible());
    EXPECT_EQ(related->Top(), page->Top() + page->Height() + 15);
    EXPECT_EQ(related->Left(), page->Left());

    // Escape closes the page with its companion.
    int key = 27;
    page->Form_KeyDown(key, 0);
    EXPECT_EQ(env.rt->forms.Get<Newwords>(), nullptr);
    EXPECT_EQ(env.rt->forms.Get<ExpressionsRelated>(), nullptr);
    EXPECT_EQ(env.rt->app.OpenTask, 0);
}

TEST_F(Page, StepsThroughTheWordsSayingEachAndListingItsRelatedWords) {
    open();
    EXPECT_EQ(page->Combo1->itemText(1), "2. 好");
    env.clock.Advance(500);
    EXPECT_EQ(page->WordIndex, 1);
    EXPECT_EQ(page->Label1[1]->Caption(), "nǐ hǎo");
    EXPECT_EQ(page->Label3->Caption(), "1 / 3");
    EXPECT_FALSE(page->Command6->isEnabled());
    EXPECT_TRUE(page->Command2->isEnabled());
    ASSERT_EQ(env.rt->app.SpeechSyllableCount, 2);
    EXPECT_EQ(env.rt->app.SpeechQueue[2].Sound, "hao3");
    auto* related = env.rt->forms.Get<ExpressionsRelated>();
    EXPECT_EQ(related->ListView1->Count(), 1) << "好, for the word 你好";

    page->Command2->click();
    EXPECT_EQ(page->WordIndex, 2);
    EXPECT_TRUE(env.sound->MMControl1->FileName().endsWith("Phonetic Symbols/H/hao3.wav"));
    EXPECT_EQ(related->ListView1->Text(1, 1), "你好") << "the word itself is left out";
    EXPECT_TRUE(page->Command6->isEnabled());

    page->Command2->click();
    EXPECT_EQ(page->Label3->Caption(), "3 / 3");
    EXPECT_FALSE(page->Command2->isEnabled());
    page->Command6->click();
    EXPECT_EQ(page->WordIndex, 2);

    env.sound->MMControl1->SetCommand("Close");
    page->Command3->click();
    EXPECT_TRUE(env.sound->MMControl1->FileName().endsWith("hao3.wav")) << "Playback";
}

TEST_F(Page, TheLeftButtonWritesAcrossTheLabelsAnyOtherWipes) {
    open();
    env.clock.Advance(500);
    QWidget* client = page->Client();
    const QRect word = page->Label1[0]->geometry();
    // The word's label and the ink let the mouse through to the face of the form.
    EXPECT_EQ(client->childAt(word.center()), nullptr);

    const QPoint from(word.left() - 20, word.center().y());
    const QPoint to(word.left() + 60, word.center().y() + 10);
    mouse(client, QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    EXPECT_TRUE(page->Drawing);
    mouse(client, QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
    mouse(client, QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
    EXPECT_FALSE(page->Drawing);
    const int inked = page->Pad->InkedPixels();
    EXPECT_GT(inked, 80) << "one stroke from the face of the form onto the word";

    mouse(client, QEvent::MouseMove, from, Qt::NoButton, Qt::NoButton);
    EXPECT_EQ(page->Pad->InkedPixels(), inked) << "a move without the button writes nothing";

    mouse(client, QEvent::MouseButtonPress, to, Qt::RightButton, Qt::RightButton);
    EXPECT_EQ(page->Pad->InkedPixels(), 0);
    EXPECT_FALSE(page->Drawing);
}

TEST_F(Page, ALessonWithoutNewWordsLeavesTheControlsDisabled) {
    env.rt->app.LessonWords.Erase();
    env.rt->app.LessonWordRows = 0;
    open();
    env.clock.Advance(500);
    EXPECT_FALSE(page->Combo1->isEnabled());
    EXPECT_FALSE(page->Command3->isEnabled());
}

} // namespace
} // namespace vt
