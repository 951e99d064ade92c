// The example of docs/forms.md, kept word for word here so that it always builds and its test
// always runs: a small form written with the kit, its widget-free logic, and its test.
#include "core/app_form.h"
#include "core/pinyin.h"
#include "core/runtime.h"
#include "core/speech.h"
#include "support/test_env.h"

#include <QTest>
#include <gtest/gtest.h>

namespace vt {

// --- drill_logic.h / .cpp: the rules of the form, without a widget ------------------------------

// The tone of a typed syllable ("ni3" gives "3"), or nothing when it does not end in a tone.
QString DrillTone(const QString& syllable) {
    if (syllable.size() < 2 || syllable.back() < u'0' || syllable.back() > u'4') return {};
    return syllable.right(1);
}

// --- drill.h ------------------------------------------------------------------------------------

// A drill of single syllables: the learner types one, hears it and sees it listed.
class Drill final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "Drill";
    explicit Drill(Runtime& rt);

    void Form_Unload(bool& cancel) override;

    Label* Label1 = nullptr;
    TextBox* Text1 = nullptr;
    CommandButton* Command1 = nullptr;
    ListView* ListView1 = nullptr;
    Timer* Timer1 = nullptr;

private:
    void Command1_Click();
    void Timer1_Tick();
};

// --- drill.cpp ----------------------------------------------------------------------------------

Drill::Drill(Runtime& runtime) : AppForm(runtime, kName) {
    SetCaption("Drill");
    Move(0, 0, 4800, 3600);
    AddLabel(NAMED(Label1), {120, 120, 4400, 300}, "Type a syllable, such as ni3:");
    AddTextBox(NAMED(Text1), {120, 480, 3000, 360});
    AddButton(NAMED(Command1), {3240, 480, 1200, 360}, "Say it", [this] { Command1_Click(); });
    AddList(NAMED(ListView1), {120, 960, 4320, 1800},
            {{"Index", 600}, {"Syllable", 1800}, {"Tone", 900}});
    AddTimer(NAMED(Timer1), 1000, [this] { Timer1_Tick(); });
}

void Drill::Command1_Click() {
    const QString syllable = Trim(Text1->Text());
    const QString tone = DrillTone(syllable);
    if (tone.isEmpty()) {
        rt.MsgBox("Type a syllable with its tone, such as ni3.", Mb::Exclamation, "Advice");
        return;
    }
    SpeakPinyin(rt, syllable);
    ListView1->AddRow({PadNumber(static_cast<int16_t>(ListView1->Count() + 1)), syllable, tone});
    Label1->SetCaption("Listen...");
    Timer1->SetEnabled(true);
}

void Drill::Timer1_Tick() {
    Timer1->SetEnabled(false); // a delay stops itself first
    Label1->SetCaption("Again?");
}

void Drill::Form_Unload(bool& cancel) {
    // Leaving before any practice asks; OK stays.
    if (ListView1->Count() == 0 && rt.MsgBox("Leave without a single syllable?",
                                             Mb::OKCancel | Mb::Question, "Advice") == Mb::OK)
        cancel = true;
}

// --- drill_test.cpp -----------------------------------------------------------------------------

TEST(DrillExample, ASyllableIsSpokenListedAndAskedForAgain) {
    test::TestEnv env;
    Drill* drill = env.rt->forms.Load<Drill>();
    drill->Show();
    // Controls are found by their names, as the learner sees them.
    auto* text = drill->findChild<TextBox*>("Text1");
    QTest::keyClicks(text, "ni3");
    drill->findChild<CommandButton*>("Command1")->click();

    ASSERT_EQ(env.rt->app.SpeechSyllableCount, 1);
    EXPECT_EQ(env.rt->app.SpeechQueue[1].Sound, "ni3");
    EXPECT_EQ(drill->ListView1->Text(1, 1), "ni3");
    EXPECT_EQ(drill->ListView1->Text(1, 2), "3");
    env.clock.Advance(999);
    EXPECT_EQ(drill->Label1->Caption(), "Listen...");
    env.clock.Advance(1);
    EXPECT_EQ(drill->Label1->Caption(), "Again?");
    EXPECT_EQ(env.boxes.Count(), 0);
}

TEST(DrillExample, LeavingBeforeAnyPracticeAsksAndOkStays) {
    test::TestEnv env;
    Drill* drill = env.rt->forms.Load<Drill>();
    env.boxes.Answer(Mb::OK);
    EXPECT_FALSE(env.rt->forms.Unload(drill));
    EXPECT_EQ(env.rt->forms.Get<Drill>(), drill);
    env.boxes.Answer(Mb::Cancel);
    EXPECT_TRUE(env.rt->forms.Unload(drill));
    EXPECT_EQ(env.rt->forms.Get<Drill>(), nullptr);
}

} // namespace vt

#include "drill_example_test.moc"
