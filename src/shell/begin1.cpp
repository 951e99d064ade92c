#include "shell/begin1.h"

#include "core/lesson_content.h"
#include "core/runtime.h"
#include "shell/form_stacks.h"
#include "shell/study.h"

#include <QShowEvent>

namespace vt {

namespace {

const char* const kTaskCaptions[8] = {
    "Task 1 - Translating the text into English",
    "Task 2 - Typing the new Chinese words",
    "Task 3 - Memorizing the vocabulary",
    "Task 4 - Filling in the blanks",
    "Task 5 - Finding out the correct sentence",
    "Task 6 - Reading aloud the text",
    "Task 7 - Questions",
    "New words and phrases of the lesson",
};

// Layout in twips.
constexpr int kMargin = 150;
constexpr int kRowHeight = 510;
constexpr int kFirstTaskTop = 1320;
constexpr int kAdditionalTop = kFirstTaskTop + 7 * kRowHeight + 390;
constexpr int kButtonWidth = 960;
constexpr int kButtonHeight = 390;
constexpr int kButtonLeft = Begin1::kWidth - kMargin - kButtonWidth;
constexpr int kLabelWidth = kButtonLeft - 2 * kMargin;
constexpr int kComboLeft = 1050;
constexpr int kComboWidth = Begin1::kWidth - kComboLeft - kMargin;

} // namespace

Begin1::Begin1(Runtime& runtime) : AppForm(runtime, kName, Border::None) {
    Move(Left(), Top(), kWidth, kHeight);
    SetBackColor(0xF1F9FC); // the paper of the main screen's panel area

    AddLabel(NAMED(Label1), {kMargin, 180, 900, 300}, "Lesson")->SetFontBold(true);
    AddComboBox(NAMED(Combo1), {kComboLeft, 120, kComboWidth, 360}, [this] {
        Combo1_Click();
    })->setMaxVisibleItems(20);
    AddLabel(NAMED(Label3), {kComboLeft, 540, kComboWidth, 300}, "Lesson 81 to 140 are TV plays")
        ->SetForeColor(kTaskDone);
    AddLabel(NAMED(Label4), {kMargin, 960, kLabelWidth, 300}, "Your tasks:")->SetFontBold(true);
    AddLabel(NAMED(Label5), {kMargin, kAdditionalTop - 360, kLabelWidth, 300}, "Additional")
        ->SetFontBold(true);
    for (int i = 0; i < 8; ++i) {
        const int top = i < kTaskCount ? kFirstTaskTop + i * kRowHeight : kAdditionalTop;
        AddLabel(NAMED(Label2, i), {kMargin, top, kLabelWidth, 450}, kTaskCaptions[i]);
        AddButton(NAMED(Command1, i), {kButtonLeft, top + 30, kButtonWidth, kButtonHeight}, "Open",
                  [this, i] { Command1_Click(i); })
            ->setAutoDefault(true); // Enter opens the task whose button has the focus
    }

    Provide(rt.UpdateTaskList, [this] { UpdateTaskList(); });
}

void Begin1::Form_Load() {
    const AppState& app = rt.app;
    {
        const QSignalBlocker quiet(Combo1);
        Combo1->clear();
        for (int n = 1; n <= kLessonCount; ++n) {
            const QString title = n <= app.TitleList.Count() ? app.TitleList[n] : QString();
            Combo1->addItem(QStringLiteral(" %1 - %2").arg(n).arg(title));
        }
    }
    // Choosing the row of the study position runs the click, which does all the rest.
    Combo1->SetListIndex(MenuIndexForPosition(app.StudyLesson));
}

void Begin1::Combo1_Click() {
    const int index = Combo1->ListIndex();
    if (index < 0) return;
    AppState& app = rt.app;
    app.OpenLesson = static_cast<int16_t>(index + 1);
    LoadLessonScripts(rt);
    UpdateTaskList();
    focusButton(FocusTarget(app.OpenLesson, app.StudyLesson, app.StudyTask));
}

void Begin1::UpdateTaskList() {
    const AppState& app = rt.app;
    const auto rows = TaskListState(app.OpenLesson, app.StudyLesson, app.StudyTask);
    for (size_t i = 0; i < rows.size(); ++i) {
        Label2[i]->SetForeColor(rows[i].color);
        Command1[i]->setEnabled(rows[i].enabled);
    }
}

void Begin1::Command1_Click(int index) {
    // A task whose forms are not in the program leaves the menu as it is.
    OpenTaskStack(rt, index);
}

void Begin1::focusButton(int index) {
    pendingFocus_ = -1;
    if (index < 0 || index > kAdditionalPage) return;
    CommandButton* b = Command1[static_cast<size_t>(index)];
    if (!b->isEnabled()) return;
    if (isVisible())
        b->setFocus(Qt::OtherFocusReason);
    else
        pendingFocus_ = index;
}

void Begin1::showEvent(QShowEvent* e) {
    AppForm::showEvent(e);
    if (pendingFocus_ >= 0) focusButton(pendingFocus_);
}

void Begin1::Form_MouseMove(int button, int shift, int x, int y) {
    // The main screen puts out the light of a button when the mouse leaves it, also towards here.
    if (Form* begin = rt.forms.Find(QStringLiteral("Begin")))
        begin->Form_MouseMove(button, shift, x + Left() - begin->Left(), y + Top() - begin->Top());
}

} // namespace vt
