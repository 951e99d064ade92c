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
        AddOption(NAMED(Option1), {0, 1600, 1500, 300}, "One", [this] { ++optionClicks; });
        OnSoundEnd(OwnerTag::Text, [this] {
            ++soundsEnded;
            ++everySoundEnded;
        });
        Provide(rt.UpdateTaskList, [this] { ++taskListUpdates; });
    }
    std::array<Label*, 4> Label2{};
    TextBox* Text1 = nullptr;
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

TEST(FormKit, EveryTextBoxMakesTheLookUpOnASelection) {
    test::TestEnv env;
    Kit* kit = env.rt->forms.Load<Kit>();
    kit->Show();
    std::vector<QString> calls;
    env.rt->SelectionStarts = [&](TextBox& box) { calls.push_back("down " + box.objectName()); };
    env.rt->SelectionMade = [&](TextBox& box, int x, int y) {
        calls.push_back(QStringLiteral("up %1 %2,%3 %4")
                            .arg(box.objectName())
                            .arg(x)
                            .arg(y)
                            .arg(box.selectedText()));
    };
    kit->Text1->setSelection(1, 2);
    QMouseEvent down(QEvent::MouseButtonPress, QPointF(4, 6),
                     kit->Text1->mapToGlobal(QPointF(4, 6)), Qt::LeftButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(kit->Text1, &down);
    EXPECT_EQ(calls, std::vector<QString>{"down Text1"});
    kit->Text1->setSelection(1, 2); // as the learner drags
    QMouseEvent up(QEvent::MouseButtonRelease, QPointF(10, 6),
                   kit->Text1->mapToGlobal(QPointF(10, 6)), Qt::LeftButton, Qt::NoButton,
                   Qt::NoModifier);
    QApplication::sendEvent(kit->Text1, &up);
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[1], "up Text1 150,90 好吗") << "twips inside the box, and the selection";
}

} // namespace
} // namespace vt

#include "app_form_test.moc"
