#pragma once
// Task 7, the last of a lesson: the lesson's questions one after the other, each with up to four
// options that carry tick boxes A to D. A question counts as right only when exactly its right
// boxes are ticked; one right question in a round finishes the lesson, and a round with none
// starts over at question 1. The first question is up as soon as the form is.

#include "core/app_form.h"
#include "tasks/question_logic.h"

#include <array>

namespace vt {

class Question final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "Question";
    explicit Question(Runtime& rt);

    void Form_Load() override;
    void Form_Unload(bool& cancel) override;
    void Form_KeyDown(int& keyCode, int shift) override;

    TextArea* Text1 = nullptr;                    // the question
    std::array<TextBox*, kOptionBoxes> Text2{};   // the options
    std::array<CheckBox*, kOptionBoxes> Check2{}; // their boxes, "A" to "D"
    CommandButton* Command2 = nullptr;            // "OK", then "Next"
    CommandButton* Command1 = nullptr;            // Close
    Label* Label1 = nullptr;                      // "Question " and the number
    std::array<Label*, 3> Label3{};               // right count, wrong count, verdict
    std::array<Label*, 2> Label2{};               // "Correct", "Wrong"
    Label* Label4 = nullptr;                      // what the task is
    Label* Label5 = nullptr;                      // the mark to reach
    Label* Label6 = nullptr;                      // "Options"
    Timer* Timer1 = nullptr;                      // the delay before a missing file's warning

    // The state of a round, open to tests.
    Array1<QuestionEntry> Questions;
    int16_t QuestionCount = 0;
    int16_t CurrentQuestion = 0;
    int16_t RightCount = 0;
    int16_t WrongCount = 0;
    bool NoFinishWarning = false;

private:
    void showQuestion();
    void Check2_Click(int index);
    void Command2_Click();
    void judge();
    void endOfQuestions();
    void Timer1_Tick();
};

} // namespace vt
