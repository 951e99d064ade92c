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

Label* addLabel(Form* form, const QString& name, const QString& caption, int left, int top,
                int width, int height) {
    auto* l = Add<Label>(form, name, left, top, width, height);
    l->SetCaption(caption);
    return l;
}

Label* addHeading(Form* form, const QString& name, const QString& caption, int top) {
    Label* l = addLabel(form, name, caption, kMargin, top, kLabelWidth, 300);
    QFont f = l->font();
    f.setBold(true);
    l->setFont(f);
    return l;
}

} // namespace

Begin1::Begin1(Runtime& runtime) : AppForm(runtime, kName, Border::None) {
    Move(Left(), Top(), kWidth, kHeight);
    // The paper of the main screen's panel area, so the menu reads as part of it.
    QPalette pal = palette();
    pal.setColor(QPalette::Window, QColor(0xFC, 0xF9, 0xF1));
    setPalette(pal);
    rt.UpdateTaskList = [this] { UpdateTaskList(); };

    Label1 = addHeading(this, QStringLiteral("Label1"), QStringLiteral("Lesson"), 180);
    Label1->setFixedWidth(TwipsToPx(900));
    Combo1 = Add<ComboBox>(this, QStringLiteral("Combo1"), 1050, 120, kWidth - 1050 - kMargin, 360);
    Combo1->setMaxVisibleItems(20);
    Label3 =
        addLabel(this, QStringLiteral("Label3"), QStringLiteral("Lesson 81 to 140 are TV plays"),
                 1050, 540, kWidth - 1050 - kMargin, 300);
    Label3->SetForeColor(kTaskDone);
    Label4 = addHeading(this, QStringLiteral("Label4"), QStringLiteral("Your tasks:"), 960);
    Label5 = addHeading(this, QStringLiteral("Label5"), QStringLiteral("Additional"),
                        kAdditionalTop - 360);

    for (int i = 0; i < 8; ++i) {
        const int top = i < kTaskCount ? kFirstTaskTop + i * kRowHeight : kAdditionalTop;
        Label2[static_cast<size_t>(i)] =
            addLabel(this, Indexed(QStringLiteral("Label2"), i),
                     QString::fromLatin1(kTaskCaptions[i]), kMargin, top, kLabelWidth, 450);
        auto* b = Add<CommandButton>(this, Indexed(QStringLiteral("Command1"), i), kButtonLeft,
                                     top + 30, kButtonWidth, kButtonHeight);
        b->SetCaption(QStringLiteral("Open"));
        b->setAutoDefault(true); // Enter opens the task whose button has the focus
        connect(b, &QPushButton::clicked, this, [this, i] { Command1_Click(i); });
        Command1[static_cast<size_t>(i)] = b;
    }

    connect(Combo1, &ComboBox::Click, this, &Begin1::Combo1_Click);
    connect(Combo1, &QComboBox::activated, this, [this](int) { Combo1_Click(); });
}

Begin1::~Begin1() {
    rt.UpdateTaskList = nullptr;
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
    Form::showEvent(e);
    if (pendingFocus_ >= 0) focusButton(pendingFocus_);
}

void Begin1::Form_MouseMove(int button, int shift, int x, int y) {
    // The main screen puts out the light of a button when the mouse leaves it, also towards here.
    if (Form* begin = rt.forms.Find(QStringLiteral("Begin")))
        begin->Form_MouseMove(button, shift, x + Left() - begin->Left(), y + Top() - begin->Top());
}

} // namespace vt
