#include "tasks/find_sentence.h"

#include "core/course_shape.h"
#include "core/data_paths.h"
#include "core/pinyin.h"
#include "core/runtime.h"
#include "core/sentence_swap.h"
#include "core/speech.h"
#include "shell/form_stacks.h"
#include "shell/study.h"
#include "tasks/fen_pei_tiao.h"

namespace vt {

namespace {
const QString kNoSound = QStringLiteral("There is no sound file for this sentence.");
constexpr int kBoxWarning = Mb::Exclamation;
} // namespace

FindSentence::FindSentence(Runtime& runtime) : AppForm(runtime, kName) {
    SetCaption(QStringLiteral("Finding out the correct sentence"));
    Move(0, 0, 9600, 5400);
    KeyPreview = true;

    AddLabel(NAMED(Label3), {240, 120, 9000, 300},
             "Your task is to find out the correct sentence that match the sound you hear.");
    AddLabel(NAMED(Label5), {240, 420, 9000, 300},
             "To complete this task, your correctness rate must reach 80%");

    AddLabel(NAMED(Label6), {240, 840, 600, 300}, "No.");
    AddLabel(NAMED(Label1), {840, 840, 900, 300});
    AddLabel(NAMED(Label7), {5400, 840, 1800, 300}, "Correctness Rate");
    AddLabel(NAMED(Label4), {7200, 840, 700, 300});
    AddLabel(NAMED(Label8), {7900, 840, 300, 300}, "%");

    static const char* const letters[] = {"A", "B", "C"};
    for (int i = 0; i < 3; ++i) {
        const int top = 1320 + i * 600;
        AddButton(NAMED(Command2, i), {240, top, 600, 450}, letters[i], [this, i] {
            Command2_Click(i);
        })->setEnabled(false);
        TextBox* box = AddTextBox(NAMED(Text1, i), {960, top, 8400, 450});
        box->setReadOnly(true);
        QFont font = box->font();
        font.setPointSize(14);
        box->setFont(font);
    }

    AddLabel(NAMED(Label2), {960, 3180, 5000, 360})->SetFontSize(14);
    Label2->SetForeColor(0x0000C0);

    AddControl(NAMED(FenPeiTiao1), {240, 3720, 9120, 240});

    const int row = 4260;
    AddButton(NAMED(Command5), {240, row, 1500, 450}, "Start", [this] { Command5_Click(); });
    AddButton(NAMED(Command4), {1920, row, 1500, 450}, "Next", [this] {
        Command4_Click();
    })->setEnabled(false);
    AddButton(NAMED(Command3), {3600, row, 1500, 450}, "Playback", [this] {
        Command3_Click();
    })->setEnabled(false);
    AddButton(NAMED(Command1), {7860, row, 1500, 450}, "Close", [this] { rt.forms.Unload(this); });
    AddTimer(NAMED(Timer1), 40, [this] { Timer1_Tick(); });
}

bool FindSentence::playLesson() const {
    return IsPlayLesson(rt.app.OpenLesson);
}

void FindSentence::Form_Load() {
    const AppState& app = rt.app;
    rt.app.DictionaryFeedsTask = true;
    if (rt.sound) {
        MMControl1 = rt.sound->NewControl(this, QStringLiteral("MMControl1"));
        MMControl1->SetNotify(false);
        MMControl1->SetWait(false);
        MMControl1->SetShareable(false);
        MMControl1->SetDeviceType(playLesson() ? QStringLiteral("MpegvIDEO")
                                               : QStringLiteral("WaveAudio"));
        MMControl1->SetTimeFormat(0);
        connect(MMControl1, &MMControl::Done, this, [this](int code) { MMControl1_Done(code); });
    }
    NoFinishWarning = !(app.OpenLesson == app.StudyLesson && app.OpenTask == app.StudyTask);
}

void FindSentence::setAnswerButtons(bool on) {
    for (CommandButton* b : Command2)
        b->setEnabled(on);
    Command3->setEnabled(on);
}

void FindSentence::stopBar() {
    float zero = 0;
    FenPeiTiao1->SetProgress(zero);
    Timer1->SetEnabled(false);
}

void FindSentence::Command5_Click() {
    Command5->setEnabled(false);
    float zero = 0;
    FenPeiTiao1->SetProgress(zero);
    if (MMControl1) MMControl1->SetCommand(QStringLiteral("Close"));
    CurrentLine = 0;
    SentenceNumber = 0;
    if (playLesson() && !openTrack()) return; // Start stays disabled

    RightCount = 0;
    WrongCount = 0;
    Command4->SetCaption(QStringLiteral("Next"));
    Command3->setEnabled(true);
    Label4->SetCaption(QString());
    for (CommandButton* b : Command2)
        b->setEnabled(true);
    nextSentence();
}

// Opens the lesson's track once and reads where each line lies in it. False, after its message,
// when the run cannot go on.
bool FindSentence::openTrack() {
    const AppState& app = rt.app;
    Positions.clear();
    const QString track = PlayTrackFile(app.AppPath, app.OpenLesson);
    if (!rt.files.Exists(track)) {
        rt.MsgBox(kNoSound, kBoxWarning, QStringLiteral("Warning"));
        return false;
    }
    TrackLength = 0;
    if (MMControl1) {
        MMControl1->SetFileName(track);
        MMControl1->SetCommand(QStringLiteral("Open"));
        TrackLength = MMControl1->Length();
    }
    const QByteArray bytes =
        rt.files.ReadAll(PlayLinePositionsFile(app.AppPath, app.OpenLesson)).value_or(QByteArray());
    LinePositions read = ReadLinePositions(bytes, app.TextLineCount, TrackLength);
    if (read.fault != PositionsFault::None) {
        // With no record at all nothing could be played either: the run stops there too.
        rt.MsgBox(PositionsFaultMessage(read.fault), kBoxWarning, QStringLiteral("Warning"));
        return false;
    }
    Positions = std::move(read.positions);
    return true;
}

void FindSentence::nextSentence() {
    const AppState& app = rt.app;
    stopBar();
    if (!playLesson() && MMControl1) MMControl1->SetCommand(QStringLiteral("Close"));

    // The next line of four or more Chinese characters that can be altered; a line whose
    // characters are all alike has no swap and is passed over like a short one.
    QString line;
    for (;;) {
        ++CurrentLine;
        if (CurrentLine > app.TextLineCount || CurrentLine > app.TextLines.Count()) {
            endOfText();
            return;
        }
        line = Trim(app.TextLines[CurrentLine]);
        if (LineIsAsked(line) && LineCanBeSwapped(line)) break;
    }
    ++SentenceNumber;

    const QString altered1 = SwapTwoCharacters(line, rt.random);
    const QString altered2 = SwapTwoCharacters(line, rt.random);
    SwapTwoCharacters(line, rt.random); // a third is drawn and never shown
    const PlacedVersions placed = PlaceVersions(line, altered1, altered2, rt.random);
    RightOption = placed.rightOption;
    shown_ = placed.text;
    for (size_t i = 0; i < 3; ++i)
        Text1[i]->SetText(shown_[i]);

    if (playLesson()) {
        playLine();
    } else {
        const QString path = SentenceSoundFile(app.AppPath, app.OpenLesson, CurrentLine);
        if (rt.files.Exists(path)) {
            if (MMControl1) {
                MMControl1->SetCommand(QStringLiteral("Close"));
                MMControl1->SetFileName(path);
                MMControl1->SetCommand(QStringLiteral("Open"));
                MMControl1->SetNotify(true);
                MMControl1->SetCommand(QStringLiteral("Play"));
            }
        } else {
            // The sentence can still be answered without its sound.
            setAnswerButtons(false);
            rt.MsgBox(kNoSound, kBoxWarning, QStringLiteral("Warning"));
        }
    }
    Timer1->SetEnabled(true);
    setAnswerButtons(true);
    Label1->SetCaption(QString::number(SentenceNumber));
    Label2->SetCaption(QString());
}

// Plays the current line's stretch of the track.
void FindSentence::playLine() {
    if (!MMControl1 || CurrentLine < 1 || CurrentLine > static_cast<int>(Positions.size())) return;
    const LinePosition& p = Positions[static_cast<size_t>(CurrentLine - 1)];
    MMControl1->SetFrom(p.From);
    MMControl1->SetTo(p.To);
    MMControl1->SetNotify(true);
    MMControl1->SetCommand(QStringLiteral("Play"));
}

void FindSentence::Command2_Click(int index) {
    if (!Command2[0]->isEnabled()) return;
    setAnswerButtons(false);
    stopBar();
    if (index == RightOption) {
        Label2->SetCaption(QStringLiteral("Right  正确!"));
        PlayWave(rt, VerdictSoundFile(rt.app.AppPath, Verdict::Right), OwnerTag::None);
        ++RightCount;
    } else {
        Label2->SetCaption(QStringLiteral("Wrong  不对!"));
        PlayWave(rt, VerdictSoundFile(rt.app.AppPath, Verdict::Wrong), OwnerTag::None);
        ++WrongCount;
    }
    Label4->SetCaption(QString::number(CorrectnessRate(RightCount, WrongCount)));
    const QString& right = shown_[static_cast<size_t>(RightOption)];
    for (size_t i = 0; i < 3; ++i)
        if (static_cast<int>(i) != RightOption) Text1[i]->SetText(MarkSwap(shown_[i], right));
    Command4->setEnabled(true);
    // The focus leaves the answered buttons for Next, not for a version box it would select.
    Command4->setFocus();
}

void FindSentence::Command4_Click() {
    if (!Command4->isEnabled()) return;
    Command4->setEnabled(false);
    nextSentence();
}

void FindSentence::Command3_Click() {
    if (!Command3->isEnabled()) return;
    if (playLesson()) {
        playLine();
    } else if (MMControl1) {
        MMControl1->SetCommand(QStringLiteral("Prev"));
        MMControl1->SetNotify(true);
        MMControl1->SetCommand(QStringLiteral("Play"));
    }
    Timer1->SetEnabled(true);
}

void FindSentence::endOfText() {
    Command4->setEnabled(false);
    setAnswerButtons(false);
    for (TextBox* t : Text1)
        t->SetText(QString());
    const AppState& app = rt.app;
    if (app.OpenLesson == app.StudyLesson && app.OpenTask == app.StudyTask) {
        // A text that had nothing to ask cannot be failed.
        const bool passed =
            SentenceNumber == 0 || CorrectnessRate(RightCount, WrongCount) >= kFindSentencePass;
        if (passed) {
            AdvanceStudy(rt);
            NoFinishWarning = true;
            const int answer =
                rt.MsgBox(QStringLiteral("You have finished task 5. Let's go on to do task 6."),
                          Mb::OKCancel | Mb::Information, QStringLiteral("Advice"));
            if (answer == Mb::OK) {
                rt.forms.Unload(this);
                return;
            }
        } else {
            rt.MsgBox(
                QStringLiteral("Your correctness rate hasn't reached 80%. Do task 5 again, please"),
                Mb::OKOnly | Mb::Information, QStringLiteral("Advice"));
        }
    }
    Command5->setEnabled(true);
    Label2->SetCaption(QString());
}

void FindSentence::Timer1_Tick() {
    if (!MMControl1) return;
    const int width = WidthTwips(FenPeiTiao1);
    float x = 0;
    if (playLesson()) {
        if (CurrentLine < 1 || CurrentLine > static_cast<int>(Positions.size())) return;
        const LinePosition& p = Positions[static_cast<size_t>(CurrentLine - 1)];
        x = BarProgress(width, MMControl1->Position(), p.From, p.To);
    } else {
        x = BarProgress(width, MMControl1->Position(), 0, MMControl1->Length());
    }
    FenPeiTiao1->SetProgress(x);
}

void FindSentence::MMControl1_Done(int notifyCode) {
    if (notifyCode == MMControl::NotifySuccessful) stopBar();
}

void FindSentence::Form_KeyDown(int& keyCode, int) {
    if (keyCode == 27) {
        keyCode = 0;
        rt.forms.Unload(this);
    }
}

void FindSentence::Form_Unload(bool& cancel) {
    if (!NoFinishWarning &&
        rt.MsgBox(QStringLiteral("You haven't finished task 5 yet. Let's finish task 5 now, "
                                 "otherwise you are unable to do the next task."),
                  Mb::OKCancel | Mb::Information, QStringLiteral("Advice")) == Mb::OK) {
        cancel = true;
        return;
    }
    if (Form* dictionary = rt.forms.Find(QString::fromLatin1(kDictionary))) dictionary->Hide();
    rt.app.OpenTask = 0;
    if (MMControl1) MMControl1->SetCommand(QStringLiteral("Close"));
    rt.app.DictionaryFeedsTask = false;
    ShowMenuAgain(rt);
    FocusStudyTask(rt);
}

} // namespace vt
