#pragma once
// Typing, task 2 of a lesson: the new characters of the lesson one after the other. The form
// shows a character and says its syllable; the learner types the Pinyin letters into the small
// box, picks the character from the list of those that fit with the space bar or a number key,
// and hears the reading picked. A pass over all the new characters must reach 80 % right, or a
// new pass begins where the drill stands. At the study position a good pass moves the position
// on to task 3.
//
// The related-expressions panel below the form lists the words that hold the character shown
// (and the character picked, when it was wrong). The rules live in tasks/typing_logic.h.

#include "core/app_form.h"
#include "tasks/typing_logic.h"

#include <memory>

namespace vt {

class Timer;

class Typing final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "Typing";

    explicit Typing(Runtime& rt);
    ~Typing() override;

    void Form_Load() override;
    void Form_Unload(bool& cancel) override;
    void Form_Activate() override;
    void Form_Deactivate() override;
    void Form_KeyDown(int& keyCode, int shift) override;
    void Form_MouseMove(int button, int shift, int x, int y) override;
    void Form_Click() override;

    Label* Label1 = nullptr;    // the character to type
    Label* Label2 = nullptr;    // the task
    Label* Label3 = nullptr;    // its Pinyin with tone marks
    Label* Label4 = nullptr;    // the character picked, "?" until then
    Label* Label5 = nullptr;    // the list of characters
    Label* Label6 = nullptr;    // prompt and verdict
    Label* Label7 = nullptr;    // "Phonetic symbol:"
    Label* Label8 = nullptr;    // the small input box
    Label* Label10 = nullptr;   // the score line
    Label* Label11 = nullptr;   // the Pinyin switch
    Label* Label16 = nullptr;   // the lesson heading
    Label* Label17 = nullptr;   // progress through the pass
    Label* Label18 = nullptr;   // "characters"
    Label* Label19 = nullptr;   // "ü = v"
    Label* Label20 = nullptr;   // the mark
    Shape* Shape1 = nullptr;    // the switch's square, filled while the Pinyin shows
    ImageBox* Image1 = nullptr; // the close picture at rest (kept out of sight)
    ImageBox* Image3 = nullptr; // the close image
    ImageBox* Image4 = nullptr; // the close picture under the pointer (kept out of sight)
    Timer* Timer1 = nullptr;    // blinks the verdict, then the next character
    Timer* Timer2 = nullptr;    // the form unloads a moment later
    Timer* Timer5 = nullptr;    // says the character a moment after it shows

    // The drill and where it stands, for the learner's screens and for tests.
    const Array1<TargetChar>& TargetChars() const { return targets_; }
    const DrillProgress& Progress() const { return drill_; }
    const InputMethod& Input() const { return *input_; }
    bool InputEnabled() const { return inputEnabled_; }
    bool LeaveFreely() const { return leaveFreely_; }

protected:
    void showEvent(QShowEvent* e) override;

private:
    void nextCharacter();
    void sayTarget();
    void typeLetter(QChar letter);
    void backspace();
    void showSearch();
    void changePage(bool forward);
    void pick(int k);
    void Timer1_Tick();
    void Timer2_Tick();
    void Timer5_Tick();
    void Label11_Click();
    void Image3_Click();
    void Image3_MouseMove();
    void setPinyinShown(bool shown);
    const TargetChar& target() const { return targets_[drill_.TargetIndex]; }
    bool hasTarget() const {
        return drill_.TargetIndex >= 1 && drill_.TargetIndex <= targets_.Count();
    }
    // An "Advice" box, after which the keys come here again.
    int advise(const QString& text, int flags);
    // The related-expressions panel lists the words that hold the character.
    void ListWordsHolding(const QString& character);

    Array1<TargetChar> targets_;
    DrillProgress drill_;
    std::unique_ptr<InputMethod> input_;
    int16_t blinkCount_ = 0;
    bool inputEnabled_ = false;
    bool focusLost_ = false;
    QString savedPrompt_;
    bool pinyinShown_ = true;
    bool nothingToDo_ = false;
    bool leaveFreely_ = false;
    bool closeHover_ = false;
};

} // namespace vt
