#include "tasks/listening_tv.h"

#include "core/data_paths.h"
#include "core/runtime.h"
#include "core/speech.h"
#include "platform/media_control.h"
#include "platform/timers.h"
#include "shell/study.h"
#include "tasks/words_panel.h"

namespace vt {

namespace {

constexpr int16_t kReadingTask = 6;
constexpr int kLastTextLesson = 80;

const QString kStop = QStringLiteral("Stop");
const QString kPlay = QStringLiteral("Play");
const QString kWarning = QStringLiteral("Warning");

} // namespace

ListeningTV::ListeningTV(Runtime& runtime) : AppForm(runtime, kName) {
    SetCaption(QStringLiteral("TV play"));
    Move(0, 0, 9600, 4500);

    AddLabel(NAMED(Label3), {240, 60, 9000, 300})->SetFontSize(12);
    AddLabel(NAMED(Label2), {240, 360, 9120, 480}, TranslateTaskText())->setWordWrap(true);

    AddControl(NAMED(Image1), {240, 900, 3600, 2640});
    connect(Image1, &ImageBox::Click, this, [this] { Image1_Click(); });

    AddTextArea(NAMED(Text1), {3960, 900, 5400, 2640});
    Text1->setReadOnly(true);
    QFont font = Text1->font();
    font.setPointSize(13);
    Text1->setFont(font);
    ClearClipboardOnPress(Text1);

    const int row = 3660;
    AddLabel(NAMED(Label1), {240, row + 60, 1380, 300});
    AddComboBox(NAMED(Combo2), {1680, row, 2520, 420}, [this] { Combo2_Click(); });
    AddButton(NAMED(Command2), {4320, row, 600, 420}, "<<", [this] {
        Command2_Click();
    })->setToolTip(" Previous ");
    AddButton(NAMED(Command5), {5000, row, 1200, 420}, "Playback", [this] { Command5_Click(); });
    AddButton(NAMED(Command3), {6280, row, 600, 420}, ">>", [this] {
        Command3_Click();
    })->setToolTip(" Next ");
    AddButton(NAMED(Command1), {8160, row, 1200, 420}, "Close", [this] { rt.forms.Unload(this); });

    AddTimer(NAMED(Timer1), 49, [this] { Timer1_Tick(); });
    AddTimer(NAMED(Timer2), 0, [this] { Timer2_Tick(); });
    AddTimer(NAMED(Timer3), 100, [this] { Timer3_Tick(); });
    AddTimer(NAMED(Timer4), 800, [this] { Timer4_Tick(); });
    AddTimer(NAMED(Timer5), 500, [this] { Timer5_Tick(); });
    AddTimer(NAMED(Timer6), 3000, [this] { Timer6_Tick(); });
    OnSoundEnd(OwnerTag::ListeningTV, [this] { SoundDone(); });
}

bool ListeningTV::translating() const {
    return rt.app.OpenTask == 1;
}

void ListeningTV::Form_Load() {
    const AppState& app = rt.app;
    Label3->SetCaption(QStringLiteral("Lesson %1").arg(app.OpenLesson));
    if (rt.sound) {
        rt.sound->SetSpeechEndHandler(kReadingTask, [this] { speechEnded(); });
        MMControl1 = rt.sound->NewControl(this, QStringLiteral("MMControl1"));
        MMControl1->SetNotify(false);
        MMControl1->SetWait(false);
        MMControl1->SetShareable(false);
        MMControl1->SetDeviceType(QStringLiteral("MpegvIDEO"));
        MMControl1->SetTimeFormat(0);
        MMControl1->SetFileName(PlayTrackFile(app.AppPath, app.OpenLesson));
        connect(MMControl1, &MMControl::Done, this, [this](int code) { MMControl1_Done(code); });
    }

    MissingFile = NoneMissing;
    if (!rt.files.Exists(PlayPictureFile(app.AppPath, app.OpenLesson, 1)) ||
        !rt.files.Exists(PlayLinePositionsFile(app.AppPath, app.OpenLesson))) {
        MissingFile = PictureOrPositionsMissing;
        Timer4->SetEnabled(true);
        return;
    }
    if (!rt.files.Exists(PlayTrackFile(app.AppPath, app.OpenLesson))) {
        MissingFile = SoundMissing;
        Timer4->SetEnabled(true);
        Combo2->setEnabled(false);
        Command5->setEnabled(false);
    } else {
        if (MMControl1) {
            MMControl1->SetCommand(QStringLiteral("Open"));
            PlayLength = static_cast<int32_t>(MMControl1->Length());
        }
        Label1->SetCaption(QStringLiteral("0 / ") +
                           QString::number(static_cast<double>(PlayLength) / 1000.0, 'f', 1));
        if (!loadPositions()) return;
    }

    Text1->SetText(BuildPlayText(app.TextTitle, app.TextLines, app.TextLineCount));
    CurrentLine = 0;
    {
        const QSignalBlocker quiet(Combo2);
        Combo2->clear();
        Combo2->addItems(PlayListItems(app.TextLines, app.TextLineCount));
    }
    Combo2->SetListIndex(kPlayNothing);
    for (Timer* t : {Timer1, Timer2, Timer3, Timer5})
        t->SetEnabled(false);

    countPictures();
    showPicture(1);
    Text1->SetSelStart(1);
    if (MissingFile != SoundMissing) Combo2->setEnabled(true);
    Command5->setEnabled(false);
    if (!translating()) setUpTask6();
    TaskFinished = !AtStudyPosition(rt.app);
}

// Reads where each line lies in the track. False, after its message, when load stops here; a
// file without records is told and load goes on with no line to play.
bool ListeningTV::loadPositions() {
    const AppState& app = rt.app;
    const QByteArray bytes =
        rt.files.ReadAll(PlayLinePositionsFile(app.AppPath, app.OpenLesson)).value_or(QByteArray());
    auto read = ReadLinePositions(bytes, app.TextLineCount, PlayLength);
    LinePositions = std::move(read.positions);
    if (read.fault == PositionsFault::None) return true;
    rt.MsgBox(PositionsFaultMessage(read.fault), Mb::OKOnly | Mb::Exclamation, kWarning);
    return read.fault == PositionsFault::Empty;
}

void ListeningTV::countPictures() {
    const AppState& app = rt.app;
    PictureCount = 0;
    while (PictureCount < INT16_MAX &&
           rt.files.Exists(PlayPictureFile(app.AppPath, app.OpenLesson, PictureCount + 1)))
        ++PictureCount;
    Timer2->SetInterval(PictureInterval(PlayLength, PictureCount));
    if (PictureCount == 0)
        rt.MsgBox(QStringLiteral("No image is found!"), Mb::OKOnly | Mb::Exclamation, kWarning);
}

void ListeningTV::showPicture(int index) {
    PictureIndex = static_cast<int16_t>(index);
    const QString path = PlayPictureFile(rt.app.AppPath, rt.app.OpenLesson, index);
    Image1->PictureName = path;
    Image1->LoadPicture(path);
}

// The pictures change at their pace from now; a play without pictures has none to change.
void ListeningTV::startPictures() {
    Timer2->SetEnabled(Timer2->Interval() > 0);
}

void ListeningTV::setUpTask6() {
    ReadingStep = 1;
    Label2->SetCaption(ReadAloudTaskText());
    Command2->setEnabled(false);
    Command3->setEnabled(false);
    Command5->SetCaption(QStringLiteral("Start"));
    Command5->setEnabled(true);
    Combo2->setEnabled(false);
    Label1->SetCaption(QStringLiteral("Step 1 / 2"));
}

void ListeningTV::Timer4_Tick() {
    Timer4->SetEnabled(false);
    if (MissingFile == PictureOrPositionsMissing) {
        rt.MsgBox(QStringLiteral("Some file is missed!"), Mb::OKOnly | Mb::Exclamation, kWarning);
    } else if (MissingFile == SoundMissing) {
        Text1->setEnabled(false);
        if (translating())
            if (auto* panel = rt.forms.Get<WordsPanel>()) panel->ListView1->setEnabled(false);
        rt.MsgBox(QStringLiteral("Fsil to find the sound file for the text."),
                  Mb::OKOnly | Mb::Exclamation, kWarning);
    }
}

void ListeningTV::Timer1_Tick() {
    if (MMControl1) Label1->SetCaption(PlayTimeText(MMControl1->Position(), PlayLength));
}

void ListeningTV::Timer2_Tick() {
    showPicture(NextPicture(PictureIndex, PictureCount));
}

void ListeningTV::Image1_Click() {
    if (PictureCount <= 0) return;
    const int index = Combo2->ListIndex();
    if (index == kPlayNothing) {
        Timer2_Tick();
    } else if (index >= kPlayFirstLine) {
        Timer2_Tick();
        Timer2->SetEnabled(false);
        startPictures();
    }
}

// The mark follows the sound: it moves only when the sound has reached another line.
void ListeningTV::Timer3_Tick() {
    if (!MMControl1) return;
    const int line = LineAtPosition(LinePositions, MMControl1->Position());
    if (line == 0 || line > rt.app.TextLines.Count()) return;
    if (const auto mark = PlayLineMark(Text1->Text(), rt.app.TextLines[line]))
        if (mark->Start != Text1->SelStart()) Text1->Select(mark->Start, mark->Length);
}

void ListeningTV::markLine(int line) {
    if (line < 1 || line > rt.app.TextLines.Count()) return;
    if (const auto mark = PlayLineMark(Text1->Text(), rt.app.TextLines[line]))
        Text1->Select(mark->Start, mark->Length);
}

// Sets the player to the line's stretch of the track. False for a line without one.
bool ListeningTV::setLineRange(int line) {
    if (!MMControl1 || line < 1 || line > static_cast<int>(LinePositions.size())) return false;
    const LinePosition& p = LinePositions[static_cast<size_t>(line - 1)];
    MMControl1->SetFrom(p.From);
    MMControl1->SetTo(p.To);
    return true;
}

// Marks the line and plays its stretch, with the time shown in task 1.
void ListeningTV::playLine(int line) {
    markLine(line);
    if (!setLineRange(line)) return;
    if (translating()) Timer1->SetEnabled(true);
    MMControl1->SetNotify(true);
    MMControl1->SetCommand(kPlay);
}

void ListeningTV::nextLine() {
    if (CurrentLine >= static_cast<int>(LinePositions.size())) return;
    ++CurrentLine;
    playLine(CurrentLine);
}

void ListeningTV::Combo2_Click() {
    const int index = Combo2->ListIndex();
    const PlayListButtons buttons = PlayListButtonsAt(index, Combo2->count() - 1);
    Command2->setEnabled(buttons.previous);
    Command3->setEnabled(buttons.next);
    if (index <= kPlayNothing) {
        Command5->setEnabled(false);
        return;
    }
    Command5->SetCaption(kStop);
    Combo2->setEnabled(false);
    Timer2->SetEnabled(false);

    if (index == kPlayWhole) {
        CurrentLine = 0;
        if (MMControl1) {
            MMControl1->SetCommand(QStringLiteral("Stop"));
            MMControl1->SetFrom(0);
            MMControl1->SetTo(PlayLength);
        }
        if (translating()) Timer1->SetEnabled(true);
        startPictures();
        Timer3->SetEnabled(true);
        showPicture(1);
        if (MMControl1) {
            MMControl1->SetNotify(true);
            MMControl1->SetCommand(kPlay);
        }
        Text1->SetSelStart(1);
    } else if (index == kPlayLineByLine) {
        CurrentLine = 0;
        startPictures();
        SecondPlay = false;
        showPicture(1);
        nextLine();
    } else {
        CurrentLine = static_cast<int16_t>(index - 2);
        // The pictures go on when the line has ended.
        startPictures();
        playLine(CurrentLine);
    }
    if (translating()) Command5->setEnabled(true);
}

void ListeningTV::Command2_Click() {
    if (Combo2->ListIndex() >= 2) Combo2->SetListIndex(Combo2->ListIndex() - 1);
}

void ListeningTV::Command3_Click() {
    if (Combo2->ListIndex() < Combo2->count() - 1) Combo2->SetListIndex(Combo2->ListIndex() + 1);
}

void ListeningTV::Command5_Click() {
    if (translating()) {
        togglePlay();
        return;
    }
    // Task 6: the reading starts and can't be stopped but by leaving.
    Command5->setEnabled(false);
    Command5->SetCaption(kStop);
    walk_.Start(*Text1);
    sentenceWalk();
}

// Play and stop in task 1: a caption that begins with "S" says the sound plays.
void ListeningTV::togglePlay() {
    const int index = Combo2->ListIndex();
    const bool playing = Command5->Caption().startsWith(u'S');
    if (index == kPlayWhole || index == kPlayLineByLine) {
        if (playing) {
            if (MMControl1) MMControl1->SetCommand(QStringLiteral("Stop"));
            Timer1->SetEnabled(false);
            Timer2->SetEnabled(false);
            if (index == kPlayWhole) Timer3->SetEnabled(false);
            Timer4->SetEnabled(false);
            Timer5->SetEnabled(false);
            if (MMControl1) MMControl1->SetCommand(QStringLiteral("Prev"));
            Command5->SetCaption(kPlay);
            Combo2->setEnabled(true);
        } else {
            CurrentLine = 0;
            Timer1->SetEnabled(true);
            startPictures();
            SecondPlay = false;
            Text1->SetSelStart(1);
            Command5->SetCaption(kStop);
            Combo2->setEnabled(false);
            showPicture(1);
            if (index == kPlayWhole) {
                Timer3->SetEnabled(true);
                if (MMControl1) MMControl1->SetCommand(kPlay);
            } else {
                nextLine();
            }
        }
    } else if (index >= kPlayFirstLine) {
        if (playing) {
            if (MMControl1) MMControl1->SetCommand(QStringLiteral("Stop"));
            Timer1->SetEnabled(false);
            Command5->SetCaption(kPlay);
            Combo2->setEnabled(true);
        } else {
            Combo2->setEnabled(false);
            Command5->SetCaption(kStop);
            playLine(CurrentLine);
        }
    }
}

void ListeningTV::MMControl1_Done(int code) {
    if (code != MMControl::NotifySuccessful) return;
    if (!translating()) {
        Timer1->SetEnabled(false);
        Timer5->SetEnabled(true);
        return;
    }
    const int index = Combo2->ListIndex();
    if (index == kPlayWhole) {
        for (Timer* t : {Timer1, Timer2, Timer3})
            t->SetEnabled(false);
        Command5->SetCaption(kPlay);
        Combo2->setEnabled(true);
        if (MMControl1) {
            MMControl1->SetCommand(QStringLiteral("Stop"));
            MMControl1->SetCommand(QStringLiteral("Prev"));
        }
        Text1->SetSelStart(0);
    } else if (index == kPlayLineByLine) {
        Timer1->SetEnabled(false);
        Timer5->SetEnabled(true);
    } else {
        Timer1->SetEnabled(false);
        Combo2->setEnabled(true);
        Command5->SetCaption(kPlay);
    }
}

// Each line of the line-by-line play sounds twice, with a pause behind each hearing.
void ListeningTV::Timer5_Tick() {
    Timer5->SetEnabled(false);
    if (!SecondPlay) {
        playLine(CurrentLine);
        SecondPlay = true;
        return;
    }
    SecondPlay = false;
    if (CurrentLine < static_cast<int>(LinePositions.size())) {
        nextLine();
        return;
    }
    Text1->SetSelStart(0);
    if (translating()) {
        Timer2->SetEnabled(false);
        Combo2->setEnabled(true);
        Command5->SetCaption(kPlay);
        return;
    }
    Command5->setEnabled(false);
    TaskFinished = true;
    FinishReading(rt, this);
}

// One word of the first step of task 6, or the second step when the text is through.
void ListeningTV::sentenceWalk() {
    if (!walk_.Next(*Text1)) beginLineStep();
}

void ListeningTV::beginLineStep() {
    ReadingStep = 2;
    Label1->SetCaption(QStringLiteral("Step 2 / 2"));
    ClearRelatedExpressions(rt);
    Text1->SetSelStart(0);
    WalkPosition = 0;
    Combo2->SetListIndex(kPlayLineByLine);
}

void ListeningTV::SoundDone() {
    Timer6->SetEnabled(true);
}

void ListeningTV::speechEnded() {
    const AppState& app = rt.app;
    if (app.OpenTask == kReadingTask && app.OpenLesson > kLastTextLesson &&
        Command5->Caption() == kStop)
        Timer6->SetEnabled(true);
}

void ListeningTV::Timer6_Tick() {
    Timer6->SetEnabled(false);
    if (ReadingStep != 2) sentenceWalk();
}

void ListeningTV::Form_Unload(bool& cancel) {
    if (!MayLeaveReading(rt, Text1->Text(), TaskFinished, false)) {
        cancel = true;
        return;
    }
    // Nothing of the play runs on once the form goes.
    for (Timer* t : {Timer1, Timer2, Timer3, Timer4, Timer5, Timer6})
        t->SetEnabled(false);
    if (rt.sound) rt.sound->RemoveSpeechEndHandler(kReadingTask);
    CloseReadingTask(rt, MMControl1);
}

} // namespace vt
