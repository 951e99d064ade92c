#include "shell/begin.h"

#include "core/runtime.h"
#include "core/speech.h"
#include "shell/about.h"
#include "shell/background.h"
#include "shell/begin1.h"
#include "shell/load_data.h"
#include "shell/study_file.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace vt {

namespace {

constexpr int kWidth = 12600;
constexpr int kHeight = 8700;
constexpr int kButtonLeft = 360;
constexpr int kButtonTop = 2250;
constexpr int kButtonStep = 1200;
constexpr int kButtonWidth = 4800;
constexpr int kButtonHeight = 840;

struct ButtonText {
    const char* label;  // on the picture
    const char* spoken; // said after the panel shows
};
constexpr ButtonText kButtons[6] = {{"", ""},
                                    {"Lessons  课程", "ke4 cheng2"},
                                    {"Assistants  助手", "zhu4 shou3"},
                                    {"Setting  设置", "she4 zhi4"},
                                    {"About  关于", "guan1 yu2"},
                                    {"Exit  退出", ""}};

// Renders a button picture from its artwork, with the button's label written in.
QPixmap buttonPicture(const QString& resource, const QString& label) {
    QFile f(resource);
    QByteArray svg = f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    svg.replace("{LABEL}", label.toHtmlEscaped().toUtf8());
    QSvgRenderer renderer(svg);
    QPixmap pm(TwipsToPx(kButtonWidth), TwipsToPx(kButtonHeight));
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    renderer.render(&p);
    return pm;
}

} // namespace

Begin::Begin(Runtime& runtime) : AppForm(runtime, kName, Border::None) {
    SetCaption(QStringLiteral("Vantoria 2007"));
    Move(0, 0, kWidth, kHeight);
    setAutoFillBackground(false); // the artwork's rounded corners show the desktop
    AddControl(NAMED(Backdrop), {0, 0, kWidth, kHeight})->LoadPicture(":/begin.svg");
    Backdrop->setAttribute(Qt::WA_TransparentForMouseEvents);

    // The pictures a button takes on, kept out of sight: one is copied onto the button.
    const QRect away{0, 0, kButtonWidth, kButtonHeight};
    const auto picture = [](ImageBox* box, const char* artwork, const QString& label,
                            const char* name) {
        box->SetPictureSource(
            [artwork, label](QSize) { return buttonPicture(QString::fromLatin1(artwork), label); });
        box->PictureName = QString::fromLatin1(name);
        box->hide();
    };
    picture(AddControl(NAMED(Image4), away), ":/button_neutral.svg", QString(), "neutral");
    for (int i = 1; i <= 5; ++i) {
        const QString label = QString::fromUtf8(kButtons[i].label);
        picture(AddControl(NAMED(Image1, i), away), ":/button_hover.svg", label, "hover");
        picture(AddControl(NAMED(Image2, i), away), ":/button_selected.svg", label, "selected");
        AddControl(NAMED(Image3, i),
                   {kButtonLeft, kButtonTop + (i - 1) * kButtonStep, kButtonWidth, kButtonHeight});
        Image3[i]->setCursor(Qt::PointingHandCursor);
        Image3[i]->setToolTip(label);
        showPicture(i, Image4);
        connect(Image3[i], &ImageBox::Click, this, [this, i] { Image3_Click(i); });
        connect(Image3[i], &ImageBox::MouseMove, this, [this, i] { Image3_MouseMove(i); });
    }

    AddTimer(NAMED(Timer1), 200, [this] { timer1Tick(); });
    AddTimer(NAMED(Timer2), 200, [this] { timer2Tick(); });
}

void Begin::showPicture(int index, ImageBox* source) {
    Image3[index]->SetPicture(source->Picture());
    Image3[index]->PictureName = source->PictureName;
}

void Begin::Form_Load() {
    LoadStudyPosition(rt);
    Timer1->SetEnabled(true);
}

void Begin::Form_Unload(bool&) {
    if (auto* bg = rt.forms.Get<Background>()) bg->SetFocus();
}

void Begin::MoveToPanelArea(Form* panel) {
    panel->Move(Left() + PanelLeft, Top() + PanelTop);
}

void Begin::timer1Tick() {
    Timer1->SetEnabled(false);
    if (LoadData* loading = rt.forms.Load<LoadData>()) {
        MoveToPanelArea(loading);
        loading->Show(this);
    }
    // The dictionary is loaded hidden and lives for the whole run: it is there before the
    // first look-up, and it provides the look-up on a selection to every text box.
    rt.forms.LoadByName(QStringLiteral("Dictionary"));
}

void Begin::timer2Tick() {
    Timer2->SetEnabled(false);
    SelectedIndex = 1;
    showPicture(1, Image2[1]);
    if (Form* menu = PanelForm(1, true)) {
        MoveToPanelArea(menu);
        menu->Show(this);
    }
}

Form* Begin::PanelForm(int index, bool load) {
    switch (index) {
    case 1:
        return load ? rt.forms.Load<Begin1>() : rt.forms.Get<Begin1>();
    case 4:
        return load ? rt.forms.Load<About>() : rt.forms.Get<About>();
    default:
        return nullptr; // the assistants and settings plug in here
    }
}

void Begin::Image3_Click(int index) {
    if (index == SelectedIndex) return;
    if (SelectedIndex > 0) {
        showPicture(SelectedIndex, Image4);
        if (Form* old = PanelForm(SelectedIndex, false)) old->SetVisible(false);
    }
    SelectedIndex = static_cast<int16_t>(index);
    if (index < 5) showPicture(index, Image2[index]);

    if (index == 5) {
        rt.app.ExitRequested = true;
        for (const char* name : {"Zoom", "Dictionary", "Background", "Begin"})
            if (Form* f = rt.forms.Find(QString::fromLatin1(name))) rt.forms.Unload(f);
        return;
    }
    if (Form* panel = PanelForm(index, true)) {
        MoveToPanelArea(panel);
        panel->Show(this);
        // The label is spoken last, once its panel is on the screen.
        SpeakPinyin(rt, QString::fromUtf8(kButtons[index].spoken));
    }
}

void Begin::Image3_MouseMove(int index) {
    if (index == HoverIndex) return;
    HoverIndex = static_cast<int16_t>(index);
    for (int i = 1; i <= 5; ++i) {
        if (i == SelectedIndex) continue;
        showPicture(i, i == index ? Image1[i] : Image4);
    }
}

void Begin::Form_MouseMove(int, int, int, int) {
    if (HoverIndex >= 1 && HoverIndex != SelectedIndex) {
        showPicture(HoverIndex, Image4);
        HoverIndex = 0;
    }
}

void Begin::Form_KeyPress(int& keyAscii) {
    if (keyAscii == 27) Image3_Click(5);
}

} // namespace vt
