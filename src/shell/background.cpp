#include "shell/background.h"

#include "core/data_paths.h"
#include "core/pinyin.h"
#include "core/runtime.h"
#include "core/speech.h"
#include "core/substitution_tables.h"
#include "shell/begin.h"
#include "shell/start_or_not.h"

#include <QChildEvent>
#include <QRegion>

namespace vt {

namespace {
constexpr int kMarkerSize = 240;
QString settingPath(const Runtime& rt) {
    return SettingFile(rt.app.AppPath);
}
} // namespace

SettingRecord ReadSettingRecord(Runtime& rt) {
    const QByteArray b = rt.files.ReadRecord(settingPath(rt), 12);
    SettingRecord r;
    r.ScreenMode = ReadInt16LE(b, 0);
    r.IP1 = ReadInt16LE(b, 2);
    r.IP2 = ReadInt16LE(b, 4);
    r.IP3 = ReadInt16LE(b, 6);
    r.IP4 = ReadInt16LE(b, 8);
    r.Port = ReadInt16LE(b, 10);
    return r;
}

bool WriteSettingRecord(Runtime& rt, const SettingRecord& r) {
    return rt.files.WriteRecord(settingPath(rt), 12,
                                PackInt16LE({r.ScreenMode, r.IP1, r.IP2, r.IP3, r.IP4, r.Port}));
}

Background::Background(Runtime& runtime) : AppForm(runtime, kName, Border::None) {
    setWindowFlag(Qt::FramelessWindowHint, true);
    SetCaption(QStringLiteral("Vantoria 2007"));
    rt.forms.SetDesktop(this);
    Move(0, 0, rt.screen.Width(), rt.screen.Height());

    AddControl(NAMED(Image1), {0, 0, Width(), Height()});
    Image1->setAttribute(Qt::WA_TransparentForMouseEvents); // its picture comes with the mode

    AddLabel(NAMED(Label10), {130, 0, 7000, 420}, "VantoriaNet Classroom Online");
    Label10->SetForeColor(0xD8F6FF);
    Label10->SetFontSize(14);
    Label10->hide();

    // The clocks, placed by the screen mode.
    AddLabel(NAMED(Label6), {0, 0, 7200, 330});
    AddLabel(NAMED(Label5), {0, 0, 7200, 330});
    for (Label* l : {Label5, Label6}) {
        l->setWordWrap(false);
        l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        l->SetForeColor(0xFFFFFF);
        l->hide();
    }
    AddLabel(NAMED(Label4), {130, 0, 2400, 330}, "Tone");
    Label4->SetForeColor(0x6AD7FF);
    Label4->SetFontSize(11);
    Label4->hide();

    AddControl(NAMED(Shape3), {-kMarkerSize, 0, kMarkerSize, kMarkerSize});
    Shape3->kind = Shape::Kind::Circle;
    Shape3->Filled = true;
    Shape3->FillColor = 0x2A9DF4; // amber
    Shape3->BorderColor = 0xFFFFFF;
    Shape3->hide();

    AddTimer(NAMED(Timer1), 100, [this] { timer1Tick(); });
    AddTimer(NAMED(Timer4), 10, [this] { timer4Tick(); })->SetEnabled(true);
    AddTimer(NAMED(Timer5), 60000, [this] { UpdateClocks(); });
}

Background::~Background() {
    if (rt.forms.Desktop() == this) rt.forms.SetDesktop(nullptr);
}

void Background::Form_Load() {
    if (rt.sound) {
        SetUpWavePlayer(rt.sound->MMControl1, false);
        SetUpWavePlayer(rt.sound->MMControl2, true);
    }
    rt.app.AppPath = rt.ProgramFolder;
    // A save that was cut off (the program killed, the power gone) may have left its temporary
    // file beside the record; the record itself is whole, old or new.
    FileStore::RemoveLeftoverSaves(rt.app.AppPath);
    // A deployment may bring its own substitution tables beside the course.
    const QStringList problems =
        LoadSubstitutionTables(rt.files, SubstitutionTableFolder(rt.app.AppPath));
    if (!problems.isEmpty())
        rt.MsgBox(problems.join(u'\n'), Mb::Exclamation, QStringLiteral("Warning"));
    const LocalZone zone = GetLocalTZ(rt.time.Zone(), rt.time.Now());
    ZoneName = zone.name;
    BeijingOffset = static_cast<int16_t>(480 - zone.offsetMinutes);
    Provide(rt.ShowToneCurve, [this](const QString& tone) { ShowToneCurve(tone); });
    MoveTwips(Label10, 130, 0);
    Timer1->SetEnabled(true);
}

void Background::timer1Tick() {
    Timer1->SetEnabled(false);
    rt.forms.Unload<StartOrNot>();
    SetVisible(true);
    ApplyScreenMode(ReadSettingRecord(rt).ScreenMode, false);
    Begin* begin = rt.forms.Load<Begin>();
    if (begin) {
        begin->Move((rt.screen.Width() - begin->Width()) / 2,
                    (rt.screen.Height() - begin->Height()) / 2 - 260);
        begin->Show(this);
        begin->SetFocus();
    }
    // The zoom window stands ready before the first selection (it is registered by name).
    rt.forms.LoadByName(QStringLiteral("Zoom"));
    UpdateClocks();
    Timer5->SetEnabled(true);
    Label5->show();
    Label6->show();
    Label10->show();
}

void Background::ApplyScreenMode(int16_t mode, bool save) {
    screenMode_ = mode;
    const ScreenModeGeometry g = ScreenModeFor(mode, rt.screen.Width(), rt.screen.Height(),
                                               QRect(Left(), Top(), Width(), Height()));
    Move(g.rect.x(), g.rect.y(), g.rect.width(), g.rect.height());
    layoutForMode();
    updateMask();
    if (save) {
        SettingRecord rec = ReadSettingRecord(rt);
        rec.ScreenMode = mode;
        if (!WriteSettingRecord(rt, rec))
            rt.MsgBox(QStringLiteral("The setting could not be saved in the file Setting.zvk."),
                      Mb::Exclamation, QStringLiteral("Warning"));
    }
}

void Background::layoutForMode() {
    const int w = Width(), h = Height();
    if (TwipsOf(Image1) != QRect(0, 0, w, h) || Image1->Picture().isNull()) {
        PlaceTwips(Image1, 0, 0, w, h);
        Image1->LoadPicture(QStringLiteral(":/desktop.svg"));
    }
    const int l5w = WidthTwips(Label5), l5h = HeightTwips(Label5);
    MoveTwips(Label5, w - l5w - 130, h - l5h - 65);
    MoveTwips(Label6, w - WidthTwips(Label6) - 130, TopTwips(Label5) - HeightTwips(Label6) - 65);
    MoveTwips(Label4, 130, h - HeightTwips(Label4) - 65);
    Marker = ComputeMarkerSteps(w, h, Timer4->Interval());
}

void Background::ShowToneCurve(const QString& tone) {
    const MarkerStart s = ToneCurveStart(tone, Height(), HeightTwips(Label4), WidthTwips(Shape3),
                                         HeightTwips(Shape3));
    MoveTwips(Shape3, s.left, s.top);
    Label4->SetCaption(s.caption);
    Shape3->show();
    Shape3->raise();
    Label4->show();
    Timer4->SetEnabled(true);
}

void Background::timer4Tick() {
    const int left = LeftTwips(Shape3);
    const int top = MarkerNextTop(rt.app.CurrentTone, left, TopTwips(Shape3), Marker, Width(),
                                  WidthTwips(Shape3));
    MoveTwips(Shape3, left + Marker.x, top);
    if (left + Marker.x >= Width()) {
        Timer4->SetEnabled(false);
        Shape3->hide();
    }
}

void Background::UpdateClocks() {
    const ClockTexts c = ComputeClocks(rt.time.Now(), BeijingOffset);
    Label6->SetCaption(c.local);
    Label5->SetCaption(c.beijing);
    LocalDayEnglish = WeekdayText(0, c.localDay);
    LocalDayChinese = WeekdayText(-1, c.localDay);
    BeijingDayEnglish = WeekdayText(0, c.beijingDay);
    BeijingDayChinese = WeekdayText(-1, c.beijingDay);
}

void Background::resizeEvent(QResizeEvent* e) {
    AppForm::resizeEvent(e);
    updateMask();
}

// In the hidden mode the desktop stays a window, but only the forms standing on it take part of
// the screen: its mask is the union of the visible forms, so the learner's own desktop shows
// around them and takes the clicks there.
void Background::updateMask() {
    if (screenMode_ == 0 || screenMode_ == 1) {
        clearMask();
        return;
    }
    QRegion region;
    for (QObject* o : children()) {
        auto* f = qobject_cast<Form*>(o);
        if (f && f->Visible()) region += f->geometry();
    }
    if (region.isEmpty()) region = QRegion(0, 0, 1, 1);
    setMask(region);
}

void Background::childEvent(QChildEvent* e) {
    AppForm::childEvent(e);
    if (e->added() && e->child()->isWidgetType()) e->child()->installEventFilter(this);
}

bool Background::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::Move:
    case QEvent::Resize:
        if (screenMode_ != 0 && screenMode_ != 1 && qobject_cast<Form*>(watched)) updateMask();
        break;
    default:
        break;
    }
    return AppForm::eventFilter(watched, event);
}

} // namespace vt
