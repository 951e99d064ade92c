#include "shell/form_stacks.h"

#include "core/runtime.h"
#include "shell/begin1.h"

namespace vt {

const std::array<TaskStackRow, kAdditionalPage + 1>& TaskStacks() {
    static const std::array<TaskStackRow, kAdditionalPage + 1> rows = {{
        {1, "Text", "ListeningTV", "Notepad", "WordsPanel", true},
        {2, "Typing", "Typing", nullptr, "Expressions_Related", true},
        {3, "Vocabulary", "Vocabulary", nullptr, nullptr, true},
        {4, "Exercise3", "Exercise3", nullptr, "Result1", false},
        {5, "FindSentence", "FindSentence", nullptr, nullptr, false},
        {6, "Text", "ListeningTV", nullptr, "Expressions_Related", true},
        {7, "Question", "Question", nullptr, nullptr, false},
        {8, "Newwords", "Newwords", nullptr, "Expressions_Related", true},
    }};
    return rows;
}

const TaskStackRow& TaskStackFor(int buttonIndex) {
    return TaskStacks()[static_cast<size_t>(std::clamp(buttonIndex, 0, kAdditionalPage))];
}

const std::array<AssistantRow, 7>& AssistantRows() {
    static const std::array<AssistantRow, 7> rows = {{
        {"Command7", "Chinese phonetic symbols", "Alphabet1", nullptr, 11},
        {"Command1", "Numbers", "Figure", nullptr, 12},
        {"Command2", "Spoken sentences and structures", "SentencesSingle", nullptr, 13},
        {"Command4", "Dialogs", "Spoken", nullptr, 14},
        {"Command3", "Chinese surnames", "Surname", nullptr, 15},
        {"Command5", "Intensive spoken training online", "Chat", nullptr, 16},
        {"Command6", "Writing Chinese characters", "WriteCharacter", "Samples", 17},
    }};
    return rows;
}

StackLayout ComputeStack(const StackHeights& h) {
    const int total = h.mainHeight + h.dictionaryHeight + h.notepadHeight + h.belowHeight;
    const int above = h.dictionaryHeight + h.notepadHeight;
    StackLayout s;
    s.left = static_cast<int>(RoundHalfEven((h.screenWidth - h.mainWidth) / 2.0));
    s.mainTop = static_cast<int>(RoundHalfEven((h.screenHeight - total) / 2.0)) + above - 260;
    s.dictionaryTop = s.mainTop - h.dictionaryHeight - h.pixel;
    s.notepadTop = s.dictionaryTop - h.notepadHeight - h.pixel;
    s.belowTop = s.mainTop + h.mainHeight + h.pixel;
    // On a low screen the raised stack would put the caption of its top form above the screen's
    // edge, out of reach; the stack then starts at the edge, and the foot of the lowest form is
    // what runs off.
    const int top = h.notepadHeight > 0      ? s.notepadTop
                    : h.dictionaryHeight > 0 ? s.dictionaryTop
                                             : s.mainTop;
    if (top < 0)
        for (int* t : {&s.mainTop, &s.dictionaryTop, &s.notepadTop, &s.belowTop})
            *t -= top;
    return s;
}

namespace {

// The form of that name, loaded when needed; null for no name, a form the program does not have,
// or one whose load handler gave up.
Form* loadByName(Runtime& rt, const char* name) {
    return name ? rt.forms.LoadByName(QString::fromLatin1(name)) : nullptr;
}

void place(Form* f, int left, int top, Form* owner) {
    if (!f) return;
    f->Move(left, top);
    f->Show(owner);
}

} // namespace

bool OpenTaskStack(Runtime& rt, int buttonIndex) {
    if (buttonIndex < 0 || buttonIndex > kAdditionalPage) return false;
    AppState& app = rt.app;
    const TaskStackRow& row = TaskStackFor(buttonIndex);
    const char* mainName = IsPlayLesson(app.OpenLesson) ? row.mainTv : row.main;
    const QString mainKey = QString::fromLatin1(mainName);
    if (!rt.forms.Find(mainKey) && !rt.forms.IsRegistered(mainKey)) return false;

    // The task forms read what is open while they load.
    app.OpenTask = static_cast<int16_t>(row.openTask);
    if (row.clearsDictionaryFeed) app.DictionaryFeedsTask = false;

    Form* mainForm = loadByName(rt, mainName);
    if (!mainForm) return false;
    Form* dictionary = loadByName(rt, kDictionary);
    Form* notepad = loadByName(rt, row.notepad);
    Form* below = loadByName(rt, row.below);
    // A load handler may have unloaded the main form's companions (or the main form) again.
    if (!rt.forms.Find(mainKey)) return false;

    mainForm->SetCaption(QStringLiteral("Lesson %1").arg(app.OpenLesson));

    StackHeights h;
    h.screenWidth = rt.screen.Width();
    h.screenHeight = rt.screen.Height();
    h.pixel = rt.screen.TwipsPerPixelY();
    h.mainWidth = mainForm->Width();
    h.mainHeight = mainForm->Height();
    h.dictionaryHeight = dictionary ? dictionary->Height() : 0;
    h.notepadHeight = notepad ? notepad->Height() : 0;
    h.belowHeight = below ? below->Height() : 0;
    const StackLayout s = ComputeStack(h);

    Form* desktop = rt.forms.Find(QStringLiteral("Background"));
    place(mainForm, s.left, s.mainTop, desktop);
    place(dictionary, s.left, s.dictionaryTop, desktop);
    if (notepad) {
        notepad->Move(s.left, s.notepadTop, mainForm->Width(), notepad->Height());
        notepad->Show(desktop);
    }
    place(below, s.left, s.belowTop, desktop);
    mainForm->SetFocus();

    if (Form* menu = rt.forms.Find(QStringLiteral("Begin1"))) menu->SetVisible(false);
    if (Form* begin = rt.forms.Find(QStringLiteral("Begin"))) begin->SetVisible(false);
    return true;
}

void ShowMenuAgain(Runtime& rt) {
    if (Form* begin = rt.forms.Find(QStringLiteral("Begin"))) begin->SetVisible(true);
    if (Form* menu = rt.forms.Find(QStringLiteral("Begin1"))) menu->SetVisible(true);
}

void FocusStudyTask(Runtime& rt) {
    const int task = rt.app.StudyTask;
    Begin1* menu = rt.forms.Get<Begin1>();
    if (!menu || task < 1 || task > kTaskCount) return;
    CommandButton* button = menu->Command1[static_cast<size_t>(task - 1)];
    if (button->isEnabled() && menu->isVisible()) button->setFocus(Qt::OtherFocusReason);
}

} // namespace vt
