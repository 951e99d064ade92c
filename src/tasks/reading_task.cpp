#include "tasks/reading_task.h"

#include "core/runtime.h"
#include "core/speech.h"
#include "platform/controls.h"
#include "platform/media_control.h"
#include "search/expressions_related.h"
#include "shell/form_stacks.h"
#include "shell/study.h"
#include "tasks/notepad.h"
#include "tasks/words_panel.h"

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <algorithm>

namespace vt {

namespace {

class ClipboardClearer final : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* e) override {
        if (e->type() == QEvent::MouseButtonPress)
            if (QClipboard* clipboard = QGuiApplication::clipboard()) clipboard->clear();
        return QObject::eventFilter(watched, e);
    }
};

} // namespace

void ClearClipboardOnPress(TextArea* text) {
    text->viewport()->installEventFilter(new ClipboardClearer(text));
}

void ReadingWalk::Start(SelectableText& text) {
    text.SetSelStart(0);
    searchFrom_ = 1;
    walkPosition_ = 1;
    walkEnd_ = static_cast<int16_t>(std::min<qsizetype>(text.Text().size(), INT16_MAX));
    walk_.SetLesson(rt_.app.LessonWords, rt_.app.LessonWordRows);
    walk_.SetWordTable(rt_.app.WordTable, rt_.app.WordCount);
}

bool ReadingWalk::Next(SelectableText& text) {
    const QString all = text.Text();
    while (walkPosition_ <= walkEnd_ && walkPosition_ <= all.size()) {
        const int pos = walkPosition_ - 1;
        if (IsChineseCharacter(all[pos])) {
            if (const auto word = walk_.WordAt(all, pos)) {
                showWord(text, *word);
                return true;
            }
        }
        ++walkPosition_;
    }
    return false;
}

void ReadingWalk::showWord(SelectableText& text, const WalkWord& word) {
    const AppState& app = rt_.app;
    const bool lessonRow = word.fromLesson && word.row >= 1 && word.row <= app.LessonWords.Count();
    const QString cell =
        lessonRow
            ? app.LessonWords[word.row].Chinese
            : (word.row <= app.WordTable.Count() ? app.WordTable[word.row].Chinese : QString());
    const QString pinyin =
        lessonRow ? app.LessonWords[word.row].Pinyin
                  : (word.row <= app.WordPinyin.Count() ? app.WordPinyin[word.row] : QString());
    const QString kept = KeptSyllables(cell, pinyin, word.word);
    const auto length = static_cast<int16_t>(word.word.size());

    walkPosition_ = static_cast<int16_t>(walkPosition_ + length);
    const qsizetype at = text.Text().indexOf(word.word, std::max(0, searchFrom_ - 1));
    if (at >= 0) {
        text.Select(static_cast<int>(at), length);
        searchFrom_ = static_cast<int16_t>(at + length + 1);
    }
    if (auto* related = rt_.forms.Get<ExpressionsRelated>())
        related->Common04(word.word, Trim(kept), word.row, word.fromLesson, word.withRelated);
    // The end of the speech starts the form's pause; a word with nothing to say stays.
    SpeakPinyin(rt_, kept);
}

QString TranslateTaskText() {
    return QStringLiteral("You task is to translate the text of the lesson into English. Write "
                          "your translation on the Translation panel above and email it to your "
                          "teacher.");
}

QString ReadAloudTaskText() {
    return QStringLiteral("Your task is to read aloud the text after the computer teacher. Don't "
                          "load on the job. It is important.");
}

bool LeaveAdvice(Runtime& rt) {
    const QString text =
        rt.app.OpenTask == 1
            ? QStringLiteral("You haven't finished translating the text into Chinese yet. Let's "
                             "finish task 1 now, otherwise you are unable to do the next task.")
            : QStringLiteral("You haven't finished task 6 yet. Let's finish task 6 now, "
                             "otherwise you are unable to do the next lesson.");
    return rt.MsgBox(text, Mb::OKCancel | Mb::Information, QStringLiteral("Advice")) == Mb::OK;
}

bool MayLeaveReading(Runtime& rt, const QString& lessonText, bool taskFinished,
                     bool blankTextLeavesFreely) {
    if (!AtStudyPosition(rt.app)) return true;
    if (rt.app.OpenTask != 1) return taskFinished || !LeaveAdvice(rt);

    const Notepad* notepad = rt.forms.Get<Notepad>();
    const QString translation = notepad ? notepad->Text1->Text() : QString();
    switch (JudgeTranslation(lessonText, translation, rt.app.LessonWords, rt.app.LessonWordRows,
                             blankTextLeavesFreely)) {
    case TranslationVerdict::NothingToJudge:
        return true;
    case TranslationVerdict::TooShort:
    case TranslationVerdict::Fails:
        return !LeaveAdvice(rt);
    case TranslationVerdict::Passes:
        AdvanceStudy(rt);
        return true;
    }
    return true;
}

void ClearRelatedExpressions(Runtime& rt) {
    if (auto* related = rt.forms.Get<ExpressionsRelated>()) related->Clear();
}

void FinishReading(Runtime& rt, Form* form) {
    if (AtStudyPosition(rt.app)) {
        AdvanceStudy(rt);
        rt.MsgBox(QStringLiteral("You have finished task 6. Let's go on to do task 7."),
                  Mb::OKOnly | Mb::Information, QStringLiteral("Advice"));
    }
    rt.forms.Unload(form);
}

void CloseReadingTask(Runtime& rt, MMControl* player) {
    AppState& app = rt.app;
    if (app.OpenTask == 1) {
        rt.forms.Unload<WordsPanel>();
        rt.forms.Unload<Notepad>();
    } else if (Form* related = rt.forms.Find(QString::fromLatin1(ExpressionsRelated::kName))) {
        rt.forms.Unload(related);
    }
    app.OpenTask = 0;
    if (player) player->SetCommand(QStringLiteral("Close"));
    if (Form* dictionary = rt.forms.Find(QString::fromLatin1(kDictionary))) dictionary->Hide();
    ShowMenuAgain(rt);
    FocusStudyTask(rt);
}

} // namespace vt
