#include "tasks/exercise3.h"

#include "core/knowledge_base.h"
#include "core/runtime.h"
#include "core/speech.h"
#include "platform/timers.h"
#include "shell/form_stacks.h"
#include "shell/study.h"
#include "tasks/blank_filling.h"
#include "tasks/result1.h"

#include <QEvent>
#include <QFrame>
#include <QSignalBlocker>

namespace vt {

namespace {

// The place of the first candidate, and the gap to the next one's left edge.
constexpr QRect kCandidateModel{120, 4020, 780, 780};
constexpr int kCandidateGap = 26;

// A candidate at rest and under the mouse, blue-green-red.
constexpr unsigned kCandidateFace = 0xFFFFFF;
constexpr unsigned kCandidateLit = 0x80FFFF; // light yellow

const QString kStart = QStringLiteral("Start");
const QString kDone = QStringLiteral("Done");

} // namespace

Exercise3::Exercise3(Runtime& runtime) : AppForm(runtime, kName) {
    Move(0, 0, 9720, 5280);
    KeyPreview = true;
    AddLabel(NAMED(Label2), {120, 60, 9480, 420},
             "Your task is to correctly fill in the blacks with the Chinese characters listed at "
             "the bottom of this window.");
    AddTextArea(NAMED(Text1), {120, 540, 6480, 3360})->SetLocked(true);

    AddLabel(NAMED(Label3), {6720, 540, 2880, 270}, "Please select a blank");
    AddLabel(NAMED(Label5), {6720, 810, 2880, 480}, "and then select a character to fill in it");
    AddComboBox(NAMED(Combo1), {6720, 1320, 2880, 330}, [this] { Combo1_Click(); });
    AddButton(NAMED(Command1), {6720, 1740, 1380, 360}, "<<", [this] { Command1_Click(); });
    AddButton(NAMED(Command3), {8220, 1740, 1380, 360}, ">>", [this] { Command3_Click(); });
    Command1->setToolTip(" Previous ");
    Command3->setToolTip(" Next ");
    AddLabel(NAMED(Label6), {6720, 2250, 2880, 270}, "Correctness Rate");
    AddLabel(NAMED(Label4), {6720, 2520, 1500, 480})->SetForeColor(0x0000FF);
    Label4->SetFontSize(18);
    Label4->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    AddLabel(NAMED(Label7), {8280, 2520, 600, 480}, "%");
    AddButton(NAMED(Command4), {6720, 3060, 2880, 390}, kStart, [this] { Command4_Click(); });
    AddButton(NAMED(Command2), {6720, 3510, 2880, 390}, "Close", [this] { Command2_Click(); });
    AddLabel(NAMED(Label8), {3480, 4200, 6120, 420},
             "To complete this task, your correctness rate must reach 80%");

    // Label1(0) only gives the candidates their place and size.
    AddLabel(NAMED(Label1, 0), kCandidateModel)->hide();
    Combo1->setEnabled(false);
    Command1->setEnabled(false);
    Command3->setEnabled(false);

    AddTimer(NAMED(Timer2), kSpeakDelayMs, [this] { Timer2_Tick(); });
}

void Exercise3::Form_Load() {
    AppState& app = rt.app;
    app.DictionaryFeedsTask = true;
    // The four candidates, each to the right of the one before.
    int left = kCandidateModel.x();
    for (int i = 1; i <= kCandidateCount; ++i) {
        Label* c =
            AddLabel(NAMED(Label1, i), kCandidateModel.translated(left - kCandidateModel.x(), 0));
        c->setAlignment(Qt::AlignCenter);
        c->setFrameShape(QFrame::Box);
        c->SetFontSize(24);
        c->SetBackColor(kCandidateFace);
        c->setMouseTracking(true);
        c->installEventFilter(this);
        c->show();
        left += kCandidateModel.width() + kCandidateGap;
    }
    NoFinishWarning = !AtStudyPosition(app);
}

bool Exercise3::eventFilter(QObject* watched, QEvent* event) {
    for (int i = 1; i <= kCandidateCount; ++i) {
        if (watched != Label1[static_cast<size_t>(i)]) continue;
        if (event->type() == QEvent::MouseButtonPress) {
            Label1_MouseDown(i);
            return true;
        }
        if (event->type() == QEvent::MouseMove) {
            Label1_MouseMove(i);
            return true; // the form's own mouse move would put the light out again
        }
        // Leaving straight onto another control never reaches the form's mouse move.
        if (event->type() == QEvent::Leave && i == HoverCandidate) putOutLight();
    }
    return AppForm::eventFilter(watched, event);
}

void Exercise3::Command4_Click() {
    if (Command4->Caption() == kStart)
        start();
    else
        done();
}

void Exercise3::start() {
    Command4->SetCaption(kDone);
    RightCount = WrongCount = EmptyCount = 0;
    rt.app.Blanks.Erase();
    Combo1->setEnabled(true);
    Command1->setEnabled(true);
    Command3->setEnabled(true);
    cutBlanks();
    Answered = false;
    Label4->SetCaption(QStringLiteral("0"));
    if (Result1* results = rt.forms.Get<Result1>()) results->ClearResults();
}

void Exercise3::cutBlanks() {
    AppState& app = rt.app;
    rt.random.Randomize();
    const BlankCut cut = CutLessonBlanks(app, rt.random);
    app.Blanks = cut.blanks;
    app.BlankCount = static_cast<int16_t>(cut.blanks.Count());
    blankPlaces_ = cut.shownPlaces;
    Text1->SetText(cut.Shown());
    {
        const QSignalBlocker quiet(Combo1);
        Combo1->clear();
        for (int n = 1; n <= app.BlankCount; ++n)
            Combo1->addItem(BlankItem(n, {}));
    }
    // No blank is shown yet, so that the first one gets its candidates.
    CurrentBlank = -1;
    if (app.BlankCount > 0) Combo1->SetListIndex(0);
    if (app.BlankCount <= kCandidateCount) {
        // Few blanks: the same characters stand for all of them; a candidate left over stays.
        const std::vector<QString> fixed = FixedCandidates(app.Blanks, rt.random);
        for (size_t i = 0; i < fixed.size(); ++i)
            offer(static_cast<int>(i) + 1, fixed[i]);
    }
}

void Exercise3::offer(int index, const QString& character) {
    Label1[static_cast<size_t>(index)]->SetCaption(character);
    CandidateRow[static_cast<size_t>(index)] = CharRowOf(rt.app, character);
}

void Exercise3::Combo1_Click() {
    const int index = Combo1->ListIndex();
    if (index < 0) return;
    const AppState& app = rt.app;
    if (app.BlankCount > kCandidateCount && index != CurrentBlank) {
        const auto offered = CandidatesFor(app.Blanks, index + 1, rt.random);
        for (int i = 1; i <= kCandidateCount; ++i)
            offer(i, offered[static_cast<size_t>(i - 1)]);
    }
    CurrentBlank = static_cast<int16_t>(index);
    SelectBlank(index + 1);
    Text1->setFocus(Qt::OtherFocusReason);
    Command1->setEnabled(index > 0);
    Command3->setEnabled(index < Combo1->count() - 1);
}

void Exercise3::SelectBlank(int n) {
    if (n < 1 || n > static_cast<int>(blankPlaces_.size())) return;
    // The two underscores follow "(n)".
    const int start = blankPlaces_[static_cast<size_t>(n - 1)] + 2 + QString::number(n).size();
    Text1->Select(start, 2);
}

void Exercise3::Command1_Click() {
    if (Combo1->ListIndex() > 0) Combo1->SetListIndex(Combo1->ListIndex() - 1);
}

void Exercise3::Command3_Click() {
    const int index = Combo1->ListIndex();
    if (index >= 0 && index < Combo1->count() - 1) Combo1->SetListIndex(index + 1);
}

void Exercise3::Label1_MouseDown(int index) {
    const QString character = Label1[static_cast<size_t>(index)]->Caption();
    if (character.isEmpty() || CurrentBlank < 0 || CurrentBlank >= Combo1->count()) return;
    Timer2->SetEnabled(false);
    const int filled = CurrentBlank;
    {
        const QSignalBlocker quiet(Combo1);
        Combo1->removeItem(filled);
        Combo1->insertItem(filled, BlankItem(filled + 1, character));
    }
    Combo1->SetListIndex(filled);
    rt.app.Blanks[filled + 1].Answer = character;
    Answered = true;
    // The next blank comes up by itself.
    if (filled + 1 < Combo1->count()) Combo1->SetListIndex(filled + 1);
}

void Exercise3::Label1_MouseMove(int index) {
    if (Label1[static_cast<size_t>(index)]->Caption().isEmpty() || index == HoverCandidate) return;
    Timer2->SetEnabled(false);
    closeSound();
    highlight(HoverCandidate, false);
    highlight(index, true);
    HoverCandidate = static_cast<int16_t>(index);
    Combo1_Click();
    Timer2->SetEnabled(true);
}

void Exercise3::Form_MouseMove(int, int, int, int) {
    putOutLight();
}

// Silences the candidate under the mouse and puts its light out.
void Exercise3::putOutLight() {
    if (HoverCandidate <= 0) return;
    Timer2->SetEnabled(false);
    closeSound();
    highlight(HoverCandidate, false);
    HoverCandidate = 0;
}

void Exercise3::highlight(int index, bool on) {
    if (index < 1 || index > kCandidateCount) return;
    Label1[static_cast<size_t>(index)]->SetBackColor(on ? kCandidateLit : kCandidateFace);
}

void Exercise3::closeSound() {
    if (rt.sound && rt.sound->MMControl1) rt.sound->MMControl1->SetCommand(QStringLiteral("Close"));
}

void Exercise3::Timer2_Tick() {
    Timer2->SetEnabled(false);
    if (HoverCandidate >= 1) SayCharacter(CandidateRow[static_cast<size_t>(HoverCandidate)]);
}

void Exercise3::SayCharacter(int row) {
    const AppState& app = rt.app;
    if (row < 1 || row > app.CharCount || row > app.CharTable.Count()) return;
    const CharEntry& entry = app.CharTable[row];
    if (entry.Readings.Empty()) return;
    const CharReading& reading = entry.Readings[1];
    rt.app.CurrentTone = reading.ToneKey; // the desktop shows the tone spoken
    PlayWave(rt, ReadingSoundFile(app.AppPath, reading), OwnerTag::None);
}

void Exercise3::done() {
    if (rt.MsgBox(QStringLiteral("Are you sure?"), Mb::YesNo | Mb::DefaultButton2 | Mb::Question,
                  QStringLiteral("Attention")) != Mb::Yes)
        return;
    AppState& app = rt.app;
    Command4->SetCaption(kStart);
    Combo1->setEnabled(false);
    Command1->setEnabled(false);
    Command3->setEnabled(false);

    const BlankScore score = ScoreBlanks(app.Blanks);
    RightCount = static_cast<int16_t>(score.right);
    WrongCount = static_cast<int16_t>(score.wrong);
    EmptyCount = static_cast<int16_t>(score.empty);
    const int rate = CorrectnessRate(score);
    Label4->SetCaption(QString::number(rate));

    Result1* results = rt.forms.Get<Result1>();
    if (!results) {
        // The learner closed the list: it comes back below the task.
        results = rt.forms.Load<Result1>();
        results->Move(Left(), Top() + Height() + rt.screen.TwipsPerPixelY());
        results->Show(rt.forms.Find(QStringLiteral("Background")));
    }
    results->FillResultList(app.Blanks);

    SetFocus();
    putOutLight();
    for (int i = 1; i <= kCandidateCount; ++i)
        Label1[static_cast<size_t>(i)]->SetCaption(QString());

    if (!AtStudyPosition(app)) return; // the rate stands in Label4, and that is all
    if (rate < kPassingRate) {
        rt.MsgBox(
            QStringLiteral("Your correctness rate hasn't reached 80%. Do task 5 again, please"),
            Mb::OKOnly | Mb::Information, QStringLiteral("Advice"));
        return;
    }
    AdvanceStudy(rt);
    const int answer =
        rt.MsgBox(QStringLiteral("You have finished task 4. Let's  go on to do task 5."),
                  Mb::OKCancel | Mb::Information, QStringLiteral("Advice"));
    NoFinishWarning = true;
    if (answer == Mb::OK) rt.forms.Unload(this);
}

void Exercise3::Command2_Click() {
    rt.forms.Unload(this);
}

void Exercise3::Form_KeyDown(int& keyCode, int) {
    if (keyCode == 27) Command2_Click();
}

void Exercise3::Form_Unload(bool& cancel) {
    if (!NoFinishWarning &&
        rt.MsgBox(QStringLiteral("You haven't finished task 4 yet. Let's finish task 4 now, "
                                 "otherwise you are unable to do the next task."),
                  Mb::OKCancel | Mb::Information, QStringLiteral("Advice")) == Mb::OK) {
        cancel = true;
        return;
    }
    Timer2->SetEnabled(false);
    rt.forms.Unload<Result1>();
    if (Form* dictionary = rt.forms.Find(QString::fromLatin1(kDictionary))) dictionary->Hide();
    Answered = false;
    HoverCandidate = 0;
    RightCount = WrongCount = EmptyCount = 0;
    AppState& app = rt.app;
    app.OpenTask = 0;
    app.DictionaryFeedsTask = false;
    ShowMenuAgain(rt);
    FocusStudyTask(rt);
}

} // namespace vt
