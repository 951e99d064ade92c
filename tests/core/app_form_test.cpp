// The kit forms are written with: controls named after their members (arrays too), a form's
// sound-end handler and the hooks it fills living exactly as long as the form, and the look-up
// on a selection that every text box makes.
#include "core/app_form.h"
#include "core/runtime.h"
#include "core/speech.h"
#include "support/events.h"
#include "support/sound_fixtures.h"
#include "support/test_env.h"

#include <QApplication>
#include <QMouseEvent>
#include <gtest/gtest.h>

namespace vt {
namespace {

class Kit final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "Kit";
    explicit Kit(Runtime& runtime) : AppForm(runtime, kName) {
        for (int i = 1; i <= 3; ++i)
            AddLabel(NAMED(Label2, i), {0, 300 * i, 1000, 300}, QString::number(i));
        AddTextBox(NAMED(Text1), {0, 1200, 3000, 360}, "你好吗");
        AddTextArea(NAMED(Text2), {0, 2000, 3000, 1200}, "第一行\r\n第二行");
        AddOption(NAMED(Option1), {0, 1600, 1500, 300}, "One", [this] { ++optionClicks; });
        OnSoundEnd(OwnerTag::Text, [this] {
            ++soundsEnded;
            ++everySoundEnded;
        });
        Provide(rt.UpdateTaskList, [this] { ++taskListUpdates; });
    }
    std::array<Label*, 4> Label2{};
    TextBox* Text1 = nullptr;
    TextArea* Text2 = nullptr;
    OptionButton* Option1 = nullptr;
    int soundsEnded = 0;
    static inline int everySoundEnded = 0; // outlives the forms
    int taskListUpdates = 0;
    int optionClicks = 0;
};

TEST(FormKit, ControlsOfAnArrayAreNamedByTheirIndex) {
    test::TestEnv env;
    Kit* kit = env.rt->forms.Load<Kit>();
    for (int i = 1; i <= 3; ++i) {
        EXPECT_EQ(kit->findChild<Label*>(QStringLiteral("Label2_%1").arg(i)), kit->Label2[i]);
        EXPECT_EQ(kit->Label2[i]->Caption(), QString::number(i));
    }
    EXPECT_EQ(TwipsOf(kit->Label2[2]), QRect(0, 600, 1000, 300));
    kit->Option1->click();
    EXPECT_EQ(kit->optionClicks, 1);
}

TEST(FormKit, TheSoundEndAndTheHooksLastAsLongAsTheForm) {
    test::TestEnv env;
    env.WriteFile("Lessons\\Sound\\Lesson_1\\1.wav", test::ToneWav(440, 200));
    const QString sound = env.Path("Lessons/Sound/Lesson_1/1.wav");
    Kit* kit = env.rt->forms.Load<Kit>();

    PlayWave(*env.rt, sound, OwnerTag::Text);
    env.clock.RunUntilIdle();
    EXPECT_EQ(kit->soundsEnded, 1);
    env.rt->UpdateTaskList(); // the hook the form filled
    EXPECT_EQ(kit->taskListUpdates, 1);

    ASSERT_TRUE(env.rt->forms.Unload(kit));
    EXPECT_FALSE(env.rt->UpdateTaskList) << "the hook goes with the form";
    const int before = Kit::everySoundEnded;
    PlayWave(*env.rt, sound, OwnerTag::Text);
    env.clock.RunUntilIdle();
    EXPECT_EQ(Kit::everySoundEnded, before) << "the end of the sound reaches nobody";

    // A form destroyed without an unload (the end of the program) leaves no hook behind either.
    env.rt->forms.Load<Kit>();
    ASSERT_TRUE(env.rt->UpdateTaskList);
    env.rt->forms.DestroyAll();
    EXPECT_FALSE(env.rt->UpdateTaskList);
}

// The mouse going down and coming up on a box, as the learner selects two characters with it.
void DragOver(SelectableText& box, QWidget* target, QPointF from, QPointF to) {
    QMouseEvent down(QEvent::MouseButtonPress, from, target->mapToGlobal(from), Qt::LeftButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &down);
    box.Select(1, 2);
    QMouseEvent up(QEvent::MouseButtonRelease, to, target->mapToGlobal(to), Qt::LeftButton,
                   Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(target, &up);
}

TEST(FormKit, EveryTextBoxMakesTheLookUpOnASelection) {
    test::TestEnv env;
    Kit* kit = env.rt->forms.Load<Kit>();
    kit->Show();
    std::vector<QString> calls;
    env.rt->SelectionStarts = [&](SelectableText& box) {
        calls.push_back("down " + box.Widget()->objectName());
    };
    env.rt->SelectionMade = [&](SelectableText& box, int x, int y) {
        calls.push_back(QStringLiteral("up %1 %2,%3 %4")
                            .arg(box.Widget()->objectName())
                            .arg(x)
                            .arg(y)
                            .arg(box.SelText()));
    };
    DragOver(*kit->Text1, kit->Text1, {4, 6}, {10, 6});
    DragOver(*kit->Text2, kit->Text2->viewport(), {4, 6}, {10, 6});
    EXPECT_EQ(calls, (std::vector<QString>{"down Text1", "up Text1 150,90 好吗", "down Text2",
                                           "up Text2 150,90 一行"}))
        << "twips inside the box, and the selection, on one line and on many";
}

TEST(FormKit, SelectionsCountCharactersWithOneForALineBreak) {
    test::TestEnv env;
    Kit* kit = env.rt->forms.Load<Kit>();
    EXPECT_EQ(kit->Text2->Text(), "第一行\n第二行");
    kit->Text2->Select(4, 3);
    EXPECT_EQ(kit->Text2->SelText(), "第二行");
    kit->Text2->Select(5, 99);
    EXPECT_EQ(kit->Text2->SelLength(), 2) << "a selection stops at the end of the text";
    kit->Text2->SetSelStart(2);
    EXPECT_EQ(kit->Text2->SelStart(), 2);
    EXPECT_EQ(kit->Text2->SelLength(), 0) << "moving the start drops the selection";
    kit->Text1->Select(1, 1);
    EXPECT_EQ(kit->Text1->SelText(), "好");
    kit->Text1->SetSelStart(3);
    EXPECT_EQ(kit->Text1->SelStart(), 3);
    EXPECT_EQ(kit->Text1->SelLength(), 0);
}

} // namespace
} // namespace vt

#include "app_form_test.moc"
