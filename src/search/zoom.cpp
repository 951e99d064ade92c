#include "search/zoom.h"

#include "core/data_paths.h"
#include "core/pinyin.h"
#include "core/runtime.h"
#include "core/speech.h"

#include <QEvent>
#include <QMouseEvent>

namespace vt {

namespace {

constexpr int kMargin = 90;  // around the character and the lines
constexpr int kRestMs = 400; // the mouse rests this long on a reading before it is spoken
constexpr unsigned kHighlightBack = 0xCCFFFF; // pale yellow
constexpr unsigned kHighlightFore = 0x0000C0; // dark red

// A label sized to its caption, in twips.
void fitLabel(Label* label) {
    const QSize s = label->sizeHint();
    PlaceTwips(label, LeftTwips(label), TopTwips(label), PxToTwips(s.width()),
               PxToTwips(s.height()));
}

} // namespace

Zoom::Zoom(Runtime& runtime) : AppForm(runtime, kName, Border::None) {
    Move(0, 0, 1200, 1400);
    SetBackColor(0xFFFFFF);
    AddControl(NAMED(Shape1), {0, 0, 1200, 1400});
    Shape1->BorderColor = 0x808080;
    AddLabel(NAMED(Label1), {kMargin, kMargin, 900, 900}, QStringLiteral("我"));
    Label1->SetFontSize(40);
    Label1->setAlignment(Qt::AlignCenter);
    fitLabel(Label1);
    Label2.resize(1);
    AddLabel(NAMED(Label2, 0), {kMargin, 1000, 900, 300});
    Label2[0]->SetFontSize(14);
    Label2[0]->hide();
    AddTimer(NAMED(Timer1), kRestMs, [this] {
        Timer1->SetEnabled(false);
        Label2_Click(HoverReading);
    });
    if (rt.sound) {
        MMControl1 = rt.sound->NewControl(this, QStringLiteral("MMControl1"));
        SetUpWavePlayer(MMControl1, false);
    }
    Label1->setMouseTracking(true);
    Label1->installEventFilter(this);
}

void Zoom::Form_Deactivate() {
    if (MMControl1) MMControl1->SetCommand(QStringLiteral("Close"));
    rt.forms.Unload(this);
}

void Zoom::Form_Unload(bool&) {
    Timer1->SetEnabled(false);
    if (MMControl1) MMControl1->SetCommand(QStringLiteral("Close"));
}

void Zoom::clearLines() {
    for (int i = 1; i <= ReadingCount && i < static_cast<int>(Label2.size()); ++i)
        delete Label2[size_t(i)];
    Label2.resize(1);
    ReadingCount = 0;
    HoverReading = 0;
    Timer1->SetEnabled(false);
}

void Zoom::addLine(int index, const QString& caption) {
    Label2.resize(size_t(index) + 1);
    const Label* model = Label2[0];
    const int top = TopTwips(Label1) + HeightTwips(Label1) + (index - 1) * HeightTwips(model);
    AddLabel(NAMED(Label2, index), {kMargin, top, WidthTwips(model), HeightTwips(model)}, caption);
    Label* line = Label2[size_t(index)];
    line->setFont(model->font());
    line->setMouseTracking(true);
    line->installEventFilter(this);
    line->setCursor(Qt::PointingHandCursor);
    fitLabel(line);
    line->show();
}

void Zoom::sizeToLines() {
    int width = WidthTwips(Label1);
    int bottom = TopTwips(Label1) + HeightTwips(Label1);
    for (int i = 1; i <= ReadingCount; ++i) {
        width = std::max(width, WidthTwips(Label2[size_t(i)]));
        bottom = TopTwips(Label2[size_t(i)]) + HeightTwips(Label2[size_t(i)]);
    }
    // The lines stand as wide as the widest, so that a highlight reads as one band.
    for (int i = 1; i <= ReadingCount; ++i) {
        Label* line = Label2[size_t(i)];
        PlaceTwips(line, LeftTwips(line), TopTwips(line), width, HeightTwips(line));
    }
    PlaceTwips(Label1, LeftTwips(Label1), TopTwips(Label1), width, HeightTwips(Label1));
    const int w = 2 * LeftTwips(Label1) + width;
    const int h = bottom + TopTwips(Label1);
    Move(Left(), Top(), w, h);
    PlaceTwips(Shape1, 0, 0, w, h);
}

void Zoom::ChaZhao(QString& character, int16_t& result) {
    if (HasNonChinese(character)) {
        result = 0;
        return;
    }
    clearLines();
    Label1->SetCaption(character);
    MoveTwips(Label1, kMargin, kMargin);
    fitLabel(Label1);

    const AppState& app = rt.app;
    const int count = std::min<int>(app.CharCount, app.CharTable.Count());
    int row = 0;
    for (int i = 1; i <= count && row == 0; ++i)
        if (app.CharTable[i].Character == character) row = i;

    if (row == 0) {
        HasChar = false;
        result = 2;
        sizeToLines();
        return;
    }
    const CharEntry& entry = app.CharTable[row];
    const int readings = std::min<int>(entry.ReadingCount, entry.Readings.Count());
    for (int i = 1; i <= readings; ++i) {
        const CharReading& r = entry.Readings[i];
        // A reading stored without a tone digit has no mark to take.
        addLine(i, r.Tone.isEmpty() ? VToUmlaut(r.Plain) : PinyinToMarks(r.Pinyin + r.Tone));
    }
    ReadingCount = static_cast<int16_t>(readings);
    CharRow = static_cast<int16_t>(row);
    sizeToLines();
    HasChar = true;
    result = 1;
    if (ReadingCount == 1) Label2_Click(1);
}

void Zoom::ShowPinYin(QString& text, QString& pinyin) {
    clearLines();
    HasChar = false;
    Label1->SetCaption(text);
    MoveTwips(Label1, kMargin, kMargin);
    fitLabel(Label1);
    addLine(1, PinyinToMarks(pinyin));
    ReadingCount = 1;
    sizeToLines();
    if (text.size() > 1) SpeakPinyin(rt, StripPunctuation(pinyin));
}

void Zoom::Label2_Click(int index) {
    if (SharedPlayerPlaying(rt)) return;
    Timer1->SetEnabled(false);
    if (MMControl1) MMControl1->SetCommand(QStringLiteral("Close"));
    const AppState& app = rt.app;
    if (!HasChar || CharRow < 1 || CharRow > app.CharTable.Count()) return;
    const CharEntry& entry = app.CharTable[CharRow];
    if (index < 1 || index > entry.Readings.Count()) return;
    const CharReading& r = entry.Readings[index];
    rt.app.CurrentTone = r.Tone == u"0" ? QStringLiteral("1") : r.Tone;
    if (MMControl1) {
        MMControl1->SetFileName(SyllableSoundFile(app.AppPath, r.Plain + r.ToneSound));
        MMControl1->SetCommand(QStringLiteral("Open"));
        MMControl1->SetCommand(QStringLiteral("Play"));
    }
    ShowToneCurve(rt, rt.app.CurrentTone);
}

void Zoom::Label2_MouseMove(int index) {
    if (index == HoverReading) return;
    Timer1->SetEnabled(false);
    if (HoverReading > 0 && HoverReading <= ReadingCount) {
        Label* old = Label2[size_t(HoverReading)];
        old->setAutoFillBackground(false);
        old->SetForeColor(0);
    }
    Label* line = Label2[size_t(index)];
    line->SetBackColor(kHighlightBack);
    line->SetForeColor(kHighlightFore);
    HoverReading = static_cast<int16_t>(index);
    Timer1->SetEnabled(true);
}

void Zoom::leaveReadings() {
    if (HoverReading <= 0) return;
    Timer1->SetEnabled(false);
    if (HoverReading <= ReadingCount) {
        Label* old = Label2[size_t(HoverReading)];
        old->setAutoFillBackground(false);
        old->SetForeColor(0);
    }
    HoverReading = 0;
}

void Zoom::Form_MouseMove(int, int, int, int) {
    leaveReadings();
}

bool Zoom::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::MouseMove && type != QEvent::MouseButtonRelease) return false;
    if (watched == Label1) {
        if (type == QEvent::MouseMove) leaveReadings();
        return false;
    }
    for (int i = 1; i <= ReadingCount; ++i) {
        if (watched != Label2[size_t(i)]) continue;
        if (type == QEvent::MouseMove)
            Label2_MouseMove(i);
        else if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
            Label2_Click(i);
        return true; // the line's own: the form under it must not take it as leaving the line
    }
    return false;
}

} // namespace vt
