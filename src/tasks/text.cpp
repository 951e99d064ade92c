#include "tasks/text.h"

#include "core/course_shape.h"
#include "core/data_paths.h"
#include "core/runtime.h"
#include "core/speech.h"
#include "platform/timers.h"
#include "shell/study.h"
#include "tasks/fen_pei_tiao.h"
#include "tasks/words_panel.h"

namespace vt {

namespace {

constexpr int16_t kReadingTask = 6;
constexpr int kLastTextLesson = 80;

const QString kStop = QStringLiteral("Stop");

} // namespace

Text::Text(Runtime& runtime) : AppForm(runtime, kName) {
    SetCaption(QStringLiteral("Text"));
    Move(0, 0, 9600, 4500);
    KeyPreview = true;

    AddLabel(NAMED(Label2), {240, 60, 9000, 300})->SetFontSize(12);
    AddLabel(NAMED(Label3), {240, 360, 9120, 500}, TranslateTaskText())->setWordWrap(true);

    AddTextArea(NAMED(Text1), {240, 900, 9120, 2160});
    Text1->setReadOnly(true);
    QFont font = Text1->font();
    font.setPointSize(14);
    Text1->setFont(font);
    ClearClipboardOnPress(Text1);

    AddControl(NAMED(FenPeiTiao1), {240, 3120, 9120, 240})->setToolTip(" Clck here, please. ");
    connect(FenPeiTiao1, &FenPeiTiao::Seek, this, [this](float x) { FenPeiTiao1_Seek(x); });

    const int row = 3500;
    AddLabel(NAMED(Label4), {240, row + 60, 540, 300}, "Step");
    AddLabel(NAMED(Label1), {780, row + 60, 900, 300})->setToolTip(" Sentence Index ");
    AddComboBox(NAMED(Combo1), {1680, row, 2520, 420}, [this] { Combo1_Click(); });
    AddButton(NAMED(Command3), {4320, row, 600, 420}, "<<", [this] {
        Command3_Click();
    })->setToolTip(" Previous ");
    AddButton(NAMED(Command2), {5000, row, 1200, 420}, "Playback", [this] { Command2_Click(); });
    AddButton(NAMED(Command4), {6280, row, 600, 420}, ">>", [this] {
        Command4_Click();
    })->setToolTip(" Next ");
    AddButton(NAMED(Command5), {7000, row, 1000, 420}, "Start", [this] { Command5_Click(); });
    AddButton(NAMED(Command1), {8160, row, 1200, 420}, "Close", [this] { rt.forms.Unload(this); });

    AddTimer(NAMED(Timer1), 1000, [this] { Timer1_Tick(); });
    AddTimer(NAMED(Timer2), 40, [this] { Timer2_Tick(); });
    AddTimer(NAMED(Timer4), 300, [this] { Timer4_Tick(); });
    AddTimer(NAMED(Timer5), 3000, [this] { Timer5_Tick(); });
    OnSoundEnd(OwnerTag::Text, [this] { SoundDone(); });
}

void Text::Form_Load() {
    const AppState& app = rt.app;
    Text1->SetText(BuildLessonText(app.TextTitle, app.TextLines, app.TextLineCount));
    Text1->setFocus(Qt::OtherFocusReason);

    if (Trim(Text1->Text()).isEmpty()) {
        for (QWidget* w :
             std::initializer_list<QWidget*>{Command2, Command3, Command4, Command5, Combo1})
            w->setEnabled(false);
    } else if (app.OpenTask == 1) {
        setUpTask1();
    } else {
        setUpTask6();
    }
    TaskFinished = !AtStudyPosition(rt.app);
    if (rt.sound) rt.sound->SetSpeechEndHandler(kReadingTask, [this] { speechEnded(); });
    countSoundFiles();
}

void Text::setUpTask1() {
    const AppState& app = rt.app;
    CurrentSentence = 0;
    float zero = 0;
    FenPeiTiao1->SetProgress(zero);
    Label1->SetCaption(QStringLiteral("0 / %1").arg(app.TextLineCount));
    // The list is filled quietly: only a choice of the learner's plays a sentence.
    {
        const QSignalBlocker quiet(Combo1);
        Combo1->clear();
        Combo1->addItems(SentenceListItems(app.TextLines, app.TextLineCount));
    }
    Combo1->SetListIndex(0);
    Label4->setVisible(false);
    Command5->setEnabled(false);
}

void Text::setUpTask6() {
    ReadingStep = 1;
    Label3->SetCaption(ReadAloudTaskText());
    Label4->setVisible(true);
    for (QWidget* w : std::initializer_list<QWidget*>{Command2, Command3, Command4, Combo1})
        w->setEnabled(false);
    Label1->SetCaption(QStringLiteral("1 / 2"));
}

void Text::countSoundFiles() {
    const AppState& app = rt.app;
    SoundFileCount = 0;
    while (SoundFileCount < INT16_MAX &&
           rt.files.Exists(SentenceSoundFile(app.AppPath, app.OpenLesson, SoundFileCount + 1)))
        ++SoundFileCount;
    if (SoundFileCount == app.TextLineCount) return;
    Timer1->SetEnabled(true);
    for (QWidget* w :
         std::initializer_list<QWidget*>{Combo1, Command3, Command4, Command2, Command5, Text1})
        w->setEnabled(false);
    if (app.OpenTask == 1)
        if (auto* panel = rt.forms.Get<WordsPanel>()) panel->ListView1->setEnabled(false);
}

void Text::Timer1_Tick() {
    Timer1->SetEnabled(false);
    // The word list below loads after this form: it is held back here as well.
    if (rt.app.OpenTask == 1)
        if (auto* panel = rt.forms.Get<WordsPanel>()) panel->ListView1->setEnabled(false);
    rt.MsgBox(QStringLiteral("Error: The number of sound files ≠ the number of lines in the "
                             "script. Check the files, please."),
              Mb::OKOnly | Mb::Exclamation, QStringLiteral("Warning"));
}

void Text::markSentence(int sentence) {
    const AppState& app = rt.app;
    if (sentence < 1 || sentence > app.TextLines.Count()) return;
    if (const auto mark = SentenceMark(Text1->Text(), app.TextLines[sentence]))
        Text1->Select(mark->Start, mark->Length);
}

void Text::playSentence(int sentence) {
    Timer2->SetEnabled(true);
    PlayWave(rt, SentenceSoundFile(rt.app.AppPath, rt.app.OpenLesson, sentence), OwnerTag::Text);
}

void Text::Combo1_Click() {
    const int k = Combo1->ListIndex();
    if (k <= 0) {
        Text1->SetSelStart(1);
        Command3->setEnabled(false);
        Command4->setEnabled(true);
        return;
    }
    CurrentSentence = static_cast<int16_t>(k);
    Label1->SetCaption(QStringLiteral("%1 / %2").arg(k).arg(rt.app.TextLineCount));
    markSentence(k);
    playSentence(k);
    Command3->setEnabled(k != 1);
    Command4->setEnabled(k != Combo1->count() - 1);
}

void Text::Command2_Click() {
    if (Combo1->ListIndex() >= 1) {
        markSentence(CurrentSentence);
        playSentence(CurrentSentence);
    } else {
        Combo1->SetListIndex(1);
    }
}

void Text::Command3_Click() {
    if (Combo1->ListIndex() >= 2) Combo1->SetListIndex(Combo1->ListIndex() - 1);
}

void Text::Command4_Click() {
    if (Combo1->ListIndex() < Combo1->count() - 1) Combo1->SetListIndex(Combo1->ListIndex() + 1);
}

void Text::Timer2_Tick() {
    if (!rt.sound) return;
    const MMControl* player = rt.sound->MMControl1;
    const int64_t length = player->Length();
    float x = length > 0 ? static_cast<float>(WidthTwips(FenPeiTiao1)) *
                               static_cast<float>(player->Position()) / static_cast<float>(length)
                         : 0.0f;
    FenPeiTiao1->SetProgress(x);
}

void Text::FenPeiTiao1_Seek(float x) {
    if (!Timer2->Enabled() || !rt.sound) return;
    MMControl* player = rt.sound->MMControl1;
    const int width = WidthTwips(FenPeiTiao1);
    player->SetCommand(QStringLiteral("Stop"));
    if (width > 0)
        player->SetFrom(
            RoundHalfEven(static_cast<double>(x) / width * static_cast<double>(player->Length())));
    FenPeiTiao1->SetProgress(x);
    player->SetCommand(QStringLiteral("Play"));
}

void Text::SoundDone() {
    Timer2->SetEnabled(false);
    if (rt.app.OpenTask == 1) {
        float zero = 0;
        FenPeiTiao1->SetProgress(zero);
    } else {
        Timer5->SetEnabled(true);
    }
}

void Text::Command5_Click() {
    Command5->setEnabled(false);
    walk_.Start(*Text1);
    Command5->SetCaption(kStop);
    sentenceWalk();
}

// One word of the first step, or the start of the second when the text is through.
void Text::sentenceWalk() {
    if (!walk_.Next(*Text1)) beginSentenceStep();
}

void Text::speechEnded() {
    const AppState& app = rt.app;
    if (app.OpenTask == kReadingTask && app.OpenLesson <= kLastTextLesson &&
        Command5->Caption() == kStop)
        Timer5->SetEnabled(true);
}

void Text::Timer4_Tick() {
    ++SearchFrom;
    sentenceWalk();
}

void Text::Timer5_Tick() {
    Timer5->SetEnabled(false);
    if (ReadingStep != 2)
        sentenceWalk();
    else
        playNextSentence();
}

void Text::beginSentenceStep() {
    ReadingStep = 2;
    Label1->SetCaption(QStringLiteral("2 / 2"));
    ClearRelatedExpressions(rt);
    Text1->SetSelStart(0);
    WalkPosition = 0;
    playNextSentence();
}

void Text::playNextSentence() {
    AppState& app = rt.app;
    ++WalkPosition;
    if (WalkPosition <= app.TextLineCount) {
        markSentence(WalkPosition);
        playSentence(WalkPosition);
        return;
    }
    Text1->SetSelStart(0);
    TaskFinished = true;
    FinishReading(rt, this);
}

void Text::Form_KeyDown(int& keyCode, int) {
    if (keyCode == 27) {
        keyCode = 0;
        rt.forms.Unload(this);
    }
}

void Text::Form_Unload(bool& cancel) {
    if (!MayLeaveReading(rt, Text1->Text(), TaskFinished, true)) {
        cancel = true;
        return;
    }
    // Nothing of a reading runs on once the form goes.
    for (Timer* t : {Timer1, Timer2, Timer4, Timer5})
        t->SetEnabled(false);
    if (rt.sound) rt.sound->RemoveSpeechEndHandler(kReadingTask);

    CloseReadingTask(rt, rt.sound ? rt.sound->MMControl1 : nullptr);
}

} // namespace vt
