#include "tasks/newwords.h"

#include "core/pinyin.h"
#include "core/runtime.h"
#include "core/speech.h"
#include "core/word_sound.h"
#include "platform/timers.h"
#include "search/expressions_related.h"
#include "shell/form_stacks.h"

#include <QPainter>
#include <QResizeEvent>

namespace vt {

namespace {
constexpr int kLeftButton = 1;
constexpr int kPenPixels = 4;
const QColor kInk(0x20, 0x20, 0x60);
} // namespace

InkPad::InkPad(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void InkPad::resizeEvent(QResizeEvent*) {
    fitInk();
}

void InkPad::fitInk() {
    if (ink_.size() == size() || size().isEmpty()) return;
    // Ink outside a smaller pad is kept, for when it grows again.
    QImage bigger(size().expandedTo(ink_.size()), QImage::Format_ARGB32_Premultiplied);
    bigger.fill(Qt::transparent);
    if (!ink_.isNull()) QPainter(&bigger).drawImage(0, 0, ink_);
    ink_ = bigger;
}

void InkPad::DrawPoint(int x, int y, bool joinPrevious) {
    fitInk();
    if (ink_.isNull()) return;
    const QPoint at(TwipsToPx(x), TwipsToPx(y));
    QPainter p(&ink_);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(kInk, kPenPixels, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (joinPrevious)
        p.drawLine(last_, at);
    else
        p.drawPoint(at);
    last_ = at;
    update();
}

void InkPad::Wipe() {
    if (!ink_.isNull()) ink_.fill(Qt::transparent);
    update();
}

int InkPad::InkedPixels() const {
    int n = 0;
    for (int y = 0; y < ink_.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(ink_.constScanLine(y));
        for (int x = 0; x < ink_.width(); ++x)
            n += qAlpha(line[x]) != 0;
    }
    return n;
}

void InkPad::paintEvent(QPaintEvent*) {
    QPainter(this).drawImage(0, 0, ink_);
}

Newwords::Newwords(Runtime& runtime) : AppForm(runtime, kName) {
    SetCaption(QStringLiteral("New words"));
    Move(0, 0, 9600, 4500);
    KeyPreview = true;
    Pad = AddControl(NAMED(Pad), {0, 0, ScaleWidth(), ScaleHeight()});
    Pad->lower();

    AddLabel(NAMED(Label4), {240, 120, 9100, 480},
             "Your can view the new words and phrases of the lesson here. And you can write "
             "Chinese characters here, too.")
        ->setWordWrap(true);
    AddLabel(NAMED(Label1, 0), {240, 720, 9100, 1320})->SetFontSize(40);
    AddLabel(NAMED(Label1, 1), {240, 2100, 9100, 600})->SetFontSize(20);
    AddLabel(NAMED(Label1, 2), {240, 2760, 9100, 600})->SetFontSize(12);
    for (Label* l : Label1) {
        l->SetForeColor(0x800000); // dark blue
        // The mouse goes through to the pad, so a stroke runs on across the word.
        l->setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    Label1[0]->SetForeColor(0x000080);

    const int row = 3600;
    AddComboBox(NAMED(Combo1), {240, row, 2400, 360}, [this] { Combo1_Click(); });
    AddButton(NAMED(Command6), {2760, row, 900, 360}, "<<",
              [this] { Combo1->SetListIndex(Combo1->ListIndex() - 1); });
    AddButton(NAMED(Command2), {3720, row, 900, 360}, ">>",
              [this] { Combo1->SetListIndex(Combo1->ListIndex() + 1); });
    AddButton(NAMED(Command3), {4680, row, 1300, 360}, "Playback", [this] {
        if (PlaybackReady) sayWord();
    });
    AddLabel(NAMED(Label3), {6120, row + 45, 1500, 360});
    AddButton(NAMED(Command1), {8040, row, 1300, 360}, "Close", [this] { rt.forms.Unload(this); });
    AddTimer(NAMED(Timer1), 500, [this] { Timer1_Tick(); });
}

void Newwords::Form_Load() {
    const AppState& app = rt.app;
    WordIndex = 1;
    Label3->SetCaption(QStringLiteral("0 / %1 ").arg(app.LessonWordRows));
    const int rows = std::min<int>(app.LessonWordRows, app.LessonWords.Count());
    const QSignalBlocker quiet(Combo1);
    for (int i = 1; i <= rows; ++i)
        Combo1->addItem(QStringLiteral("%1. %2").arg(i).arg(app.LessonWords[i].Chinese));
    Combo1->setCurrentIndex(-1);
    PlaybackReady = true;
    Timer1->SetEnabled(true);
}

void Newwords::Timer1_Tick() {
    Timer1->SetEnabled(false);
    if (Combo1->count() > 0) {
        Combo1->SetListIndex(0);
        return;
    }
    Combo1->setEnabled(false);
    Command2->setEnabled(false);
    Command3->setEnabled(false);
    Command6->setEnabled(false);
}

void Newwords::Combo1_Click() {
    const int index = Combo1->ListIndex();
    if (index < 0 || index + 1 > rt.app.LessonWords.Count()) return;
    WordIndex = static_cast<int16_t>(index + 1);
    const int last = Combo1->count() - 1;
    Command6->setEnabled(index > 0);
    Command2->setEnabled(index < last);

    const LessonWord& w = rt.app.LessonWords[WordIndex];
    Label1[2]->SetCaption(w.Meaning);
    Label1[1]->SetCaption(PinyinToMarks(w.Pinyin));
    Label1[0]->SetCaption(w.Chinese);
    Label3->SetCaption(QStringLiteral("%1 / %2").arg(WordIndex).arg(rt.app.LessonWordRows));
    sayWord();
    if (auto* related = rt.forms.Get<ExpressionsRelated>())
        related->Common02(StripPunctuation(w.Chinese), Label1[2]->Caption());
}

void Newwords::sayWord() {
    if (WordIndex < 1 || WordIndex > rt.app.LessonWords.Count()) return;
    const LessonWord& w = rt.app.LessonWords[WordIndex];
    SayWord(rt, w.Chinese, w.Pinyin);
}

void Newwords::Form_KeyDown(int& keyCode, int) {
    if (keyCode == 27) {
        keyCode = 0;
        rt.forms.Unload(this);
    }
}

void Newwords::Form_MouseDown(int button, int, int x, int y) {
    if (button == kLeftButton) {
        Drawing = true;
        Pad->DrawPoint(x, y, false);
    } else {
        Drawing = false;
        Pad->Wipe();
    }
}

void Newwords::Form_MouseMove(int, int, int x, int y) {
    if (Drawing) Pad->DrawPoint(x, y, true);
}

void Newwords::Form_MouseUp(int, int, int, int) {
    Drawing = false;
}

void Newwords::Form_Unload(bool&) {
    rt.app.OpenTask = 0;
    if (Form* dictionary = rt.forms.Find(QString::fromLatin1(kDictionary))) dictionary->Hide();
    if (rt.sound) rt.sound->MMControl1->SetCommand(QStringLiteral("Close"));
    rt.forms.Unload<ExpressionsRelated>();
    ShowMenuAgain(rt);
}

} // namespace vt
