#include "tasks/question.h"

#include "core/data_paths.h"
#include "core/runtime.h"
#include "core/script_file.h"
#include "core/speech.h"
#include "shell/form_stacks.h"
#include "shell/study.h"

#include <QFont>

namespace vt {

namespace {
const QString kWarning = QStringLiteral("Warning");
const QString kAdvice = QStringLiteral("Advice");
const QString kOk = QStringLiteral("OK");
const QString kNext = QStringLiteral("Next");

QString QuestionCaption(int number) {
    return QStringLiteral("Question %1").arg(number);
}

// The question and its options stand in a larger type, for the characters.
void Enlarge(QWidget* box) {
    QFont font = box->font();
    font.setPointSize(14);
    box->setFont(font);
}
} // namespace

Question::Question(Runtime& runtime) : AppForm(runtime, kName) {
    SetCaption(QStringLiteral("Questions"));
    Move(0, 0, 9600, 6000);
    KeyPreview = true;

    AddLabel(NAMED(Label4), {240, 120, 9120, 480},
             "There are a few simple questions here. When you finish the task, you will finish "
             "the study of this lesson.")
        ->setWordWrap(true);
    AddLabel(NAMED(Label5), {240, 660, 9120, 300},
             "To complete this task, you have to correctly answer at least one question.")
        ->SetForeColor(0x0000C0);

    AddLabel(NAMED(Label1), {240, 1080, 3000, 300}, "Question 1")->SetFontBold(true);
    AddTextArea(NAMED(Text1), {240, 1380, 9120, 780})->setReadOnly(true);
    Enlarge(Text1);

    AddLabel(NAMED(Label6), {240, 2280, 3000, 300}, "Options")->SetFontBold(true);
    static const char* const letters[] = {"A", "B", "C", "D"};
    for (int i = 0; i < kOptionBoxes; ++i) {
        const int top = 2580 + i * 540;
        AddCheckBox(NAMED(Check2, i), {240, top, 720, 450}, letters[i],
                    [this, i] { Check2_Click(i); });
        AddTextBox(NAMED(Text2, i), {1020, top, 8340, 450})->setReadOnly(true);
        Enlarge(Text2[static_cast<size_t>(i)]);
    }

    const int row = 4860;
    AddLabel(NAMED(Label2, 0), {240, row, 900, 300}, "Correct");
    AddLabel(NAMED(Label3, 0), {1140, row, 600, 300}, "0");
    AddLabel(NAMED(Label2, 1), {1860, row, 900, 300}, "Wrong");
    AddLabel(NAMED(Label3, 1), {2760, row, 600, 300}, "0");
    AddLabel(NAMED(Label3, 2), {3480, row - 60, 2700, 420})->SetFontSize(14);
    Label3[2]->SetForeColor(0x0000C0);
    AddButton(NAMED(Command2), {6300, row - 90, 1440, 450}, kOk, [this] {
        Command2_Click();
    })->setEnabled(false);
    AddButton(NAMED(Command1), {7920, row - 90, 1440, 450}, "Close",
              [this] { rt.forms.Unload(this); });
    AddTimer(NAMED(Timer1), 1000, [this] { Timer1_Tick(); });
}

void Question::Form_Load() {
    AppState& app = rt.app;
    NoFinishWarning = !AtStudyPosition(app);
    const QString path = LessonQuestionsFile(app.AppPath, app.OpenLesson);
    if (!rt.files.Exists(path)) {
        // The form stands inert; its warning follows a second after it appears.
        for (CheckBox* box : Check2)
            box->setEnabled(false);
        Command2->setEnabled(false);
        Timer1->SetEnabled(true);
        return;
    }
    ReadScriptFile(rt, path, QStringLiteral("RQ"), 0);
    QuestionFile file = ReadQuestions(app.ScriptLines);
    for (int16_t q : file.TooFewAnswers)
        rt.MsgBox(TooFewAnswersMessage(q), Mb::Exclamation, kWarning);
    Questions = std::move(file.Questions);
    QuestionCount = static_cast<int16_t>(Questions.Count());
    CurrentQuestion = 1;
    showQuestion();
    app.DictionaryFeedsTask = true;
}

void Question::showQuestion() {
    Label3[2]->SetCaption(QString());
    const bool asked = CurrentQuestion >= 1 && CurrentQuestion <= QuestionCount;
    static const QuestionEntry kNone;
    const QuestionEntry& q = asked ? Questions[CurrentQuestion] : kNone;
    Text1->SetText(q.Texts.value(0));
    for (int i = 0; i < kOptionBoxes; ++i) {
        CheckBox* box = Check2[static_cast<size_t>(i)];
        box->setEnabled(true);
        box->setChecked(false);
        const bool shown = i < q.AnswerCount;
        Text2[static_cast<size_t>(i)]->SetText(shown ? q.Texts.value(i + 1) : QString());
        box->setVisible(shown);
        // An unused option's empty field goes with its box, so no blank line waits for an answer.
        Text2[static_cast<size_t>(i)]->setVisible(shown);
    }
}

void Question::Check2_Click(int index) {
    const CheckBox* box = Check2[static_cast<size_t>(index)];
    // Unticking leaves the button on: an answer with no box ticked is judged like any other.
    if (box->isEnabled() && box->isChecked()) Command2->setEnabled(true);
}

void Question::Command2_Click() {
    if (!Command2->isEnabled()) return;
    if (Command2->Caption() == kNext) {
        Command2->setEnabled(false);
        ++CurrentQuestion;
        Command2->SetCaption(kOk);
        Label1->SetCaption(QuestionCaption(CurrentQuestion));
        showQuestion();
        return;
    }
    judge();
}

void Question::judge() {
    for (CheckBox* box : Check2)
        box->setEnabled(false);
    std::array<bool, kOptionBoxes> ticked{};
    for (int i = 0; i < kOptionBoxes; ++i)
        ticked[static_cast<size_t>(i)] = Check2[static_cast<size_t>(i)]->isChecked();
    const bool asked = CurrentQuestion >= 1 && CurrentQuestion <= QuestionCount;
    if (asked && AnswerIsRight(Questions[CurrentQuestion], ticked)) {
        Label3[2]->SetCaption(QStringLiteral("Right  正确"));
        PlayWave(rt, VerdictSoundFile(rt.app.AppPath, Verdict::Right), OwnerTag::None);
        ++RightCount;
        Label3[0]->SetCaption(QString::number(RightCount));
    } else {
        Label3[2]->SetCaption(QStringLiteral("Wrong  不对"));
        PlayWave(rt, VerdictSoundFile(rt.app.AppPath, Verdict::Wrong), OwnerTag::None);
        ++WrongCount;
        Label3[1]->SetCaption(QString::number(WrongCount));
    }
    if (CurrentQuestion < QuestionCount) {
        Command2->SetCaption(kNext);
        return;
    }
    Command2->setEnabled(false);
    endOfQuestions();
}

void Question::endOfQuestions() {
    if (!AtStudyPosition(rt.app)) return;
    if (RightCount < 1) {
        rt.MsgBox(QStringLiteral("You haven't correctly answer all the questions. Do task 7 again, "
                                 "please"),
                  Mb::OKOnly | Mb::Information, kAdvice);
        // A new round; the question's number above stays until the next "Next".
        CurrentQuestion = 1;
        RightCount = 0;
        WrongCount = 0;
        Label3[0]->SetCaption(QStringLiteral("0"));
        Label3[1]->SetCaption(QStringLiteral("0"));
        showQuestion();
        Command2->setEnabled(true);
        return;
    }
    const int lesson = rt.app.OpenLesson;
    AdvanceStudy(rt);
    NoFinishWarning = true;
    if (rt.MsgBox(LessonFinishedMessage(lesson), Mb::OKCancel | Mb::Information, kAdvice) == Mb::OK)
        rt.forms.Unload(this);
}

void Question::Timer1_Tick() {
    Timer1->SetEnabled(false); // a delay stops itself first
    rt.MsgBox(QStringLiteral("Fail to find question file."), Mb::Exclamation, kWarning);
}

void Question::Form_KeyDown(int& keyCode, int) {
    if (keyCode == 27) {
        keyCode = 0;
        rt.forms.Unload(this);
    }
}

void Question::Form_Unload(bool& cancel) {
    if (!NoFinishWarning &&
        rt.MsgBox(QStringLiteral("You haven't finished task 7 yet. Let's finish task 7 now, "
                                 "otherwise you are unable to do the next lesson."),
                  Mb::OKCancel | Mb::Information, kAdvice) == Mb::OK) {
        cancel = true;
        return;
    }
    Timer1->SetEnabled(false);
    if (Form* dictionary = rt.forms.Find(QString::fromLatin1(kDictionary))) dictionary->Hide();
    rt.app.OpenTask = 0;
    rt.app.DictionaryFeedsTask = false;
    if (rt.sound && rt.sound->MMControl1) rt.sound->MMControl1->SetCommand(QStringLiteral("Close"));
    ShowMenuAgain(rt);
    FocusStudyTask(rt);
}

} // namespace vt
