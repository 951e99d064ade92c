#pragma once
// Vocabulary, task 3 of a lesson: the timed drill of the lesson's new words. Each word is shown
// and spoken once, in random order; eight numbered English lines stand below it and the learner
// clicks the one that means the word before the time bar runs out (twenty seconds). The right
// lines then turn red for two seconds per meaning, and the next word comes. A pass needs 80 %;
// at the study position a good pass moves the position on to task 4.
//
// The dictionary window above shows the word's entry of this lesson with its sentences and
// without its meaning. The rules live in tasks/vocabulary_logic.h.

#include "core/app_form.h"
#include "tasks/vocabulary_logic.h"

#include <array>

namespace vt {

class FenPeiTiao;

class Vocabulary final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "Vocabulary";
    explicit Vocabulary(Runtime& rt);

    void Form_Load() override;
    void Form_Unload(bool& cancel) override;
    void Form_KeyDown(int& keyCode, int shift) override;
    void Form_MouseMove(int button, int shift, int x, int y) override;

    std::array<Label*, kLastOption + 1> Label2{}; // the option lines
    std::array<Label*, kLastOption + 1> Label8{}; // their numbers
    std::array<Label*, 4> Label4{};               // correct, wrong, rate, number of the word
    std::array<Label*, 4> Label5{};               // the counters' captions
    Label* Label1 = nullptr;                      // the word
    Label* Label9 = nullptr;                      // the verdict, two lines
    Label* Label3 = nullptr;                      // what the task asks
    Label* Label6 = nullptr;                      // the mark to reach
    Label* Label7 = nullptr;                      // "Time progressbar:"
    FenPeiTiao* FenPeiTiao1 = nullptr;
    CommandButton* Command2 = nullptr; // Start
    CommandButton* Command5 = nullptr; // Close
    Timer* Timer1 = nullptr;           // the time bar
    Timer* Timer2 = nullptr;           // the next word, after the answer
    Timer* Timer3 = nullptr;           // the end of the pass, after the last answer
    Timer* Timer4 = nullptr;           // says the word again

    // The state of a pass, open to tests.
    Array1<LessonWord> Drill;
    QStringList Answers;          // the current word's meanings
    std::vector<int> AnswerLines; // the option line of each meaning
    int16_t DrillCount = 0;
    int16_t CorrectCount = 0;
    int16_t WrongCount = 0;
    int16_t MeaningCount = 0;
    float BarStep = 0;
    float BarValue = 0;
    int16_t LastOption = kLastOption;
    int16_t CurrentWord = 0;
    int16_t HoverOption = -1;
    bool Accepting = false;
    bool NoFinishWarning = false;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addOptionLine(int i, int top);
    void Command2_Click();
    void nextWord();
    void Label2_MouseDown(int index);
    void Label2_MouseMove(int index);
    void putOutLight();
    void showAnswer();
    void Timer1_Tick();
    void Timer2_Tick();
    void Timer3_Tick();
    void Timer4_Tick();
    void setCaptionCapped(int i, const QString& caption);
    const LessonWord& current() const { return Drill[CurrentWord]; }
};

} // namespace vt
