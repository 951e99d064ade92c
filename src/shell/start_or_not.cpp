#include "shell/start_or_not.h"

#include "core/runtime.h"
#include "shell/background.h"

namespace vt {

namespace {
constexpr int kFullWidth = 9000;
constexpr int kFullHeight = 8400;
constexpr int kLabel4Top = 3000;
} // namespace

StartOrNot::StartOrNot(Runtime& runtime) : AppForm(runtime, kName, Border::None) {
    Move(0, 0, kFullWidth, kFullHeight);
    AddControl(NAMED(Shape1), {0, 0, kFullWidth, kFullHeight});
    Shape1->BorderColor = 0x8C4E1F;
    Shape1->BorderWidth = 2;

    AddLabel(NAMED(Label1), {300, 150, 8400, 450}, " Warning");
    Label1->SetForeColor(0x0000C0);
    Label1->SetFontSize(14);
    AddLabel(NAMED(Label2), {300, 700, 8400, 1200},
             "You must change the setting of Regional and Language Options before using this "
             "Chinese program; otherwise, your computer won't dispaly Chinese characters "
             "correctly.");

    AddButton(NAMED(Command1), {300, 2100, 2700, 450}, "No, I'll do that later",
              [this] { Command1_Click(); });
    AddButton(NAMED(Command2), {3150, 2100, 2700, 450}, "Cancel launching",
              [this] { Command2_Click(); });
    AddButton(NAMED(Command3), {6000, 2100, 2700, 450}, "How to change the setting?",
              [this] { Command3_Click(); });

    AddLabel(NAMED(Label4), {300, kLabel4Top, 8400, 450});
    AddOption(NAMED(Option1), {300, 3500, 1500, 350}, "Step 1", [this] { Option_Click(1); });
    AddOption(NAMED(Option2), {2000, 3500, 1500, 350}, "Step 2", [this] { Option_Click(2); });
    AddOption(NAMED(Option3), {3700, 3500, 1500, 350}, "Step 3", [this] { Option_Click(3); });
    AddControl(NAMED(Image1), {300, 4000, 8400, 4200})->LoadPicture(":/step1.svg");
    AddControl(NAMED(Image2), {300, 4000, 8400, 4200})->LoadPicture(":/step2.svg");
    AddControl(NAMED(Image3), {300, 4000, 8400, 4200})->LoadPicture(":/step3.svg");
    Image2->hide();
    Image3->hide();
}

QString StartOrNot::CheckText() const {
    return QStringLiteral("时");
}

bool StartOrNot::TextCheckPasses() const {
    const QString text = CheckText();
    return !text.isEmpty() && text.at(0).unicode() == 26102;
}

void StartOrNot::fitFrame() {
    PlaceTwips(Shape1, 0, 0, Width(), Height());
}

void StartOrNot::Form_Load() {
    SetVisible(false);
    // Short: only what stands above the step text is in sight.
    Move((rt.screen.Width() - Width()) / 2, (rt.screen.Height() - kLabel4Top) / 2, Width(),
         kLabel4Top);
    fitFrame();
    if (TextCheckPasses()) {
        rt.forms.Load<Background>();
    } else {
        SetVisible(true);
    }
}

void StartOrNot::Command1_Click() {
    rt.forms.Load<Background>();
}

void StartOrNot::Command2_Click() {
    rt.forms.Unload(this);
}

void StartOrNot::Command3_Click() {
    Option_Click(1);
    Option1->setChecked(true);
    Move((rt.screen.Width() - Width()) / 2, (rt.screen.Height() - kFullHeight) / 2, Width(),
         kFullHeight);
    fitFrame();
    Command3->hide();
    Option1->setFocus();
}

void StartOrNot::Option_Click(int step) {
    static const char* const texts[] = {
        "Step 1: Open Control Panel and then open Regional and Language Options",
        "Step 2: Open tab Language and install files for East Asian languages.",
        "Step 3: Open tab Advanced, select Chinese (PRC) and apply the setting."};
    Image1->setVisible(step == 1);
    Image2->setVisible(step == 2);
    Image3->setVisible(step == 3);
    Label4->SetCaption(QString::fromUtf8(texts[step - 1]));
}

} // namespace vt
