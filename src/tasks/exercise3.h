#pragma once
// Exercise3, task 4 of a lesson: filling in the blanks. "Start" cuts single Chinese characters
// out of the lesson's text into numbered blanks; the learner picks a blank in Combo1 (or with
// "<<" and ">>") and fills it with one of the four characters at the bottom, which says itself
// when the mouse rests on it. "Done" judges every blank, shows the correctness rate and lists the
// verdicts in Result1, the form below; 80 % passes the task.
//
// The rules (cutting, the characters offered, judging) live in tasks/blank_filling.h; this form
// only shows what they decide. The blanks themselves stand in AppState (Blanks, BlankCount), where
// Result1 reads them too.

#include "core/app_form.h"
#include "platform/controls.h"

#include <array>
#include <vector>

namespace vt {

class Exercise3 final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "Exercise3";
    // The hover that speaks a candidate waits this long.
    static constexpr int kSpeakDelayMs = 400;

    explicit Exercise3(Runtime& rt);

    void Form_Load() override;
    void Form_Unload(bool& cancel) override;
    void Form_KeyDown(int& keyCode, int shift) override;
    void Form_MouseMove(int button, int shift, int x, int y) override;

    // Marks the two underscores of blank number n (from 1) in Text1; nothing for a number that
    // is not a blank.
    void SelectBlank(int n);
    // Speaks the first reading of row `row` of the character table; nothing for a row that is
    // not there.
    void SayCharacter(int row);

    TextArea* Text1 = nullptr;
    ComboBox* Combo1 = nullptr;
    CommandButton* Command1 = nullptr; // "<<"
    CommandButton* Command3 = nullptr; // ">>"
    CommandButton* Command4 = nullptr; // "Start", then "Done"
    CommandButton* Command2 = nullptr; // "Close"
    // The four characters offered; Label1(0) only gives the first one its place.
    std::array<Label*, 5> Label1{};
    Label* Label4 = nullptr; // the correctness rate
    Label* Label2 = nullptr; // what the task asks
    Label* Label3 = nullptr;
    Label* Label5 = nullptr;
    Label* Label6 = nullptr;
    Label* Label7 = nullptr;
    Label* Label8 = nullptr;
    Timer* Timer2 = nullptr;

    // A character has been placed since Start.
    bool Answered = false;
    // The candidate under the mouse (1..4), 0 for none.
    int16_t HoverCandidate = 0;
    // The list index of the blank now shown; -1 before the first one.
    int16_t CurrentBlank = -1;
    int16_t RightCount = 0;
    int16_t WrongCount = 0;
    int16_t EmptyCount = 0;
    // False only while the task at the study position is open and not yet passed.
    bool NoFinishWarning = false;
    // The row of each candidate's character in the character table, 0 for none.
    std::array<int16_t, 5> CandidateRow{};

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Command4_Click();
    void Command1_Click();
    void Command3_Click();
    void Command2_Click();
    void Combo1_Click();
    void Label1_MouseDown(int index);
    void Label1_MouseMove(int index);
    void Timer2_Tick();

    void start();
    void done();
    void cutBlanks();
    void offer(int index, const QString& character);
    void highlight(int index, bool on);
    void putOutLight();
    void closeSound();

    // Where each blank's "(" stands in Text1, from 0.
    std::vector<int> blankPlaces_;
};

} // namespace vt
