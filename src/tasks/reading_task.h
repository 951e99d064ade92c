#pragma once
// What the two forms that show a lesson's text for tasks 1 and 6 have in common: the read text
// (lessons 1 to 80) and the TV play (lessons 81 to 140). Reading aloud walks the text word by
// word, shows each word in the related-expressions panel and speaks it; leaving task 1 judges the
// translation, leaving an unfinished task 6 gives advice; finishing task 6 moves the study on;
// closing brings the lesson menu back.

#include "tasks/text_logic.h"

#include <cstdint>

namespace vt {

struct Runtime;
class Form;
class MMControl;
class SelectableText;
class TextArea;

// The system clipboard is emptied when the mouse goes down on text, before a new selection.
void ClearClipboardOnPress(TextArea* text);

// The word-by-word walk of reading aloud over a form's text. The form keeps the walk's places
// (they are its own state, 1-based): the walk reads and moves them.
class ReadingWalk {
public:
    ReadingWalk(Runtime& rt, int16_t& walkEnd, int16_t& walkPosition, int16_t& searchFrom)
        : rt_(rt), walkEnd_(walkEnd), walkPosition_(walkPosition), searchFrom_(searchFrom) {}

    // From the start of text, against the lesson's new words and the word table as they stand.
    void Start(SelectableText& text);
    // Marks, lists and speaks the next word. False, with nothing done, when the walk has passed
    // the end of the text.
    bool Next(SelectableText& text);

private:
    void showWord(SelectableText& text, const WalkWord& word);

    Runtime& rt_;
    int16_t& walkEnd_;
    int16_t& walkPosition_;
    int16_t& searchFrom_;
    WordWalk walk_;
};

// What tasks 1 and 6 ask of the learner.
QString TranslateTaskText();
QString ReadAloudTaskText();

// The advice on leaving an unfinished task 1 or 6. True when the learner chose to stay.
bool LeaveAdvice(Runtime& rt);

// The checks on leaving the text of task 1 or 6: false when the learner stays. In task 1 a
// passing translation moves the study on. blankTextLeavesFreely: a text of nothing but blanks is
// left without a word (the read text asks so; the play has no such test).
bool MayLeaveReading(Runtime& rt, const QString& lessonText, bool taskFinished,
                     bool blankTextLeavesFreely);

// The start of reading sentence by sentence: the related-expressions panel is emptied.
void ClearRelatedExpressions(Runtime& rt);

// The end of task 6: at the study position the study moves on and the learner is told; then the
// form closes.
void FinishReading(Runtime& rt, Form* form);

// The closing of a task 1 or 6 form: its panels go, OpenTask becomes 0, player (the form's, or
// the shared one) is closed, the dictionary hides and the lesson menu comes back.
void CloseReadingTask(Runtime& rt, MMControl* player);

} // namespace vt
