// The zoom window and the look-up on a selection: a single character shows large with its
// readings and speaks one after the mouse rests on it; anything else leaves the window alone.
#include "search/dictionary.h"
#include "search/selection_lookup.h"
#include "search/zoom.h"
#include "support/events.h"
#include "support/small_course.h"
#include "support/test_env.h"

#include <gtest/gtest.h>

using namespace vt;

namespace {

// A form with one text area, as any form of the program has.
class Pad final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "Pad";
    explicit Pad(Runtime& runtime) : AppForm(runtime, kName) {
        Move(600, 600, 6000, 3000);
        AddTextArea(NAMED(Text1), {120, 120, 5000, 2000});
    }
    TextArea* Text1 = nullptr;
};

struct ZoomTest : ::testing::Test {
    void SetUp() override {
        test::WriteSmallCourse(env.rt->app);
        dictionary = env.rt->forms.Load<Dictionary>();
        pad = env.rt->forms.Load<Pad>();
        pad->Text1->SetText(QString::fromUtf8("你好 a，我\n长好好好好好好"));
    }
    void TearDown() override {
        for (Form* f : env.rt->forms.All())
            env.rt->forms.Unload(f);
    }
    // The learner selects length characters from start and lets the mouse up.
    void Select(int start, int length) {
        env.rt->SelectionStarts(*pad->Text1);
        pad->Text1->Select(start, length);
        env.rt->SelectionMade(*pad->Text1, 300, 150);
    }
    Zoom* zoom() const { return env.rt->forms.Get<Zoom>(); }
    QString played() const { return zoom() ? zoom()->MMControl1->FileName() : QString(); }

    test::TestEnv env;
    Dictionary* dictionary = nullptr;
    Pad* pad = nullptr;
};

} // namespace

TEST(SelectionPlan, OnlyASingleCharacterZoomsAndOnlyChineseFeedsTheDictionary) {
    const struct {
        const char* selected;
        bool automatic;
        const char* text;
        bool zoom, feed, clear;
    } cases[] = {
        {"好", true, "好", true, true, false},
        {"  好 ", true, "好", true, true, false},
        {"好", false, "好", true, false, false},
        {"你好", true, "你好", false, true, false},
        {"a", true, "a", true, false, false},        // the zoom window itself turns it down
        {"我\n", true, "我\n", false, false, false}, // a line break never zooms
        {"\n", true, "\n", false, false, false},
        {"好好好好好好好", true, "好好好好好", false, true, true},
        {"   ", true, "", false, false, false},
    };
    for (const auto& c : cases) {
        const SelectionPlan plan = PlanSelectionLookUp(QString::fromUtf8(c.selected), c.automatic);
        EXPECT_EQ(plan.text, QString::fromUtf8(c.text)) << c.selected;
        EXPECT_EQ(plan.showZoom, c.zoom) << c.selected;
        EXPECT_EQ(plan.feedDictionary, c.feed) << c.selected;
        EXPECT_EQ(plan.clearSelection, c.clear) << c.selected;
    }
}

TEST_F(ZoomTest, ASingleCharacterShowsBesideTheMouseWithItsOneReadingSpoken) {
    Select(5, 1); // 我
    ASSERT_NE(zoom(), nullptr);
    EXPECT_TRUE(zoom()->Visible());
    EXPECT_EQ(zoom()->Label1->Caption(), QString::fromUtf8("我"));
    EXPECT_EQ(zoom()->ReadingCount, 1);
    EXPECT_EQ(zoom()->Label2[1]->Caption(), QString::fromUtf8("wǒ"));
    EXPECT_TRUE(played().endsWith("W/wo3.wav")) << played().toStdString();
    EXPECT_GT(zoom()->Left(), pad->Left() + 300);
    EXPECT_GT(zoom()->Top(), pad->Top() + 150);
    // The dictionary looked it up too, since it does so automatically.
    EXPECT_EQ(dictionary->LastSearch, QString::fromUtf8("我"));
    // The next mouse down in a text box closes the window.
    env.rt->SelectionStarts(*pad->Text1);
    EXPECT_EQ(zoom(), nullptr);
}

TEST_F(ZoomTest, ThreeReadingsWaitForTheMouseToRestOnOne) {
    Select(7, 1); // 长
    ASSERT_NE(zoom(), nullptr);
    ASSERT_EQ(zoom()->ReadingCount, 3);
    EXPECT_EQ(zoom()->Label2[3]->Caption(), QString::fromUtf8("zhàng"));
    EXPECT_GT(zoom()->Height(), TopTwips(zoom()->Label2[3]) + HeightTwips(zoom()->Label2[3]));
    EXPECT_TRUE(played().isEmpty());

    // Resting less than 400 ms and moving away plays nothing.
    test::MouseMoveOver(zoom()->Label2[1]);
    env.clock.Advance(300);
    test::MouseMoveOver(zoom()->Label1);
    env.clock.Advance(1000);
    EXPECT_TRUE(played().isEmpty());
    // Moving from one line to another starts the wait again.
    test::MouseMoveOver(zoom()->Label2[1]);
    env.clock.Advance(300);
    test::MouseMoveOver(zoom()->Label2[2]);
    env.clock.Advance(399);
    ASSERT_NE(zoom(), nullptr);
    EXPECT_EQ(zoom()->HoverReading, 2);
    EXPECT_TRUE(played().isEmpty());
    env.clock.Advance(1);
    EXPECT_TRUE(played().endsWith("Z/zhang3.wav")) << played().toStdString();
    EXPECT_EQ(env.rt->app.CurrentTone, "3");
}

TEST_F(ZoomTest, WhatIsNotOneChineseCharacterLeavesTheWindowAsItWas) {
    Select(7, 1); // 长 shows
    ASSERT_NE(zoom(), nullptr);
    QString latin = QStringLiteral("a"), mark = QString::fromUtf8("，");
    for (QString* text : {&latin, &mark}) {
        int16_t result = -1;
        zoom()->ChaZhao(*text, result);
        EXPECT_EQ(result, 0);
        EXPECT_EQ(zoom()->Label1->Caption(), QString::fromUtf8("长"));
        EXPECT_EQ(zoom()->ReadingCount, 3);
    }
    // A character the course does not have shows alone, large.
    QString unknown = QString::fromUtf8("猫");
    int16_t result = -1;
    zoom()->ChaZhao(unknown, result);
    EXPECT_EQ(result, 2);
    EXPECT_EQ(zoom()->ReadingCount, 0);

    // Selections that never open it: a Latin letter, two characters, a line break.
    env.rt->forms.Unload<Zoom>();
    for (auto [start, length] : {std::pair{3, 1}, {0, 2}, {5, 2}, {6, 1}}) {
        Select(start, length);
        EXPECT_TRUE(!zoom() || !zoom()->Visible()) << start << "," << length;
    }
}

TEST_F(ZoomTest, ALongSelectionIsLookedUpByItsFirstFiveAndThenCleared) {
    test::AddWord(env.rt->app, "好好好好好", "very well", "h.ao3 h.ao3 h.ao3 h.ao3 h.ao3", 2, 2);
    Select(8, 6); // 好好好好好好
    EXPECT_EQ(dictionary->LastSearch, QString::fromUtf8("好好好好好"));
    EXPECT_EQ(pad->Text1->SelLength(), 0);
    EXPECT_EQ(pad->Text1->SelStart(), 14);
    dictionary->Check2->setChecked(false);
    Select(0, 2); // 你好: not looked up now
    EXPECT_EQ(dictionary->LastSearch, QString::fromUtf8("好好好好好"));
}

TEST_F(ZoomTest, AWordShownWithItsPinyinIsSpoken) {
    Zoom* z = env.rt->forms.Load<Zoom>();
    QString text = QString::fromUtf8("你好"), pinyin = QStringLiteral("n.i3 h.ao3");
    z->ShowPinYin(text, pinyin);
    EXPECT_EQ(z->Label2[1]->Caption(), QString::fromUtf8("nǐ hǎo"));
    ASSERT_EQ(env.rt->app.SpeechSyllableCount, 2);
    EXPECT_EQ(env.rt->app.SpeechQueue[1].Sound, "ni3");
}

#include "zoom_test.moc"
