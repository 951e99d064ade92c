#pragma once
// Task 5 of a lesson: a sentence of the lesson sounds and three versions of it stand as A, B and
// C, two of them with two characters swapped; the learner picks the one heard. Every line of four
// or more Chinese characters is asked in order, and the task is passed at a rate of 80 %.
// A read text plays each line's own recording; a TV play plays each line's stretch of the
// lesson's track, as its control file (yeap.zvk) places it.
//
// The form keeps a player of its own, so the verdict sounds on the shared player never cut the
// sentence off the bar's count.

#include "core/app_form.h"
#include "tasks/find_sentence_logic.h"

#include <array>
#include <vector>

namespace vt {

class FenPeiTiao;
class MMControl;

class FindSentence final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "FindSentence";
    explicit FindSentence(Runtime& rt);

    void Form_Load() override;
    void Form_Unload(bool& cancel) override;
    void Form_KeyDown(int& keyCode, int shift) override;

    std::array<TextBox*, 3> Text1{};          // the versions A, B, C
    std::array<CommandButton*, 3> Command2{}; // "A", "B", "C"
    CommandButton* Command1 = nullptr;        // Close
    CommandButton* Command3 = nullptr;        // Playback
    CommandButton* Command4 = nullptr;        // Next
    CommandButton* Command5 = nullptr;        // Start
    Label* Label1 = nullptr;                  // the sentence number
    Label* Label2 = nullptr;                  // the verdict
    Label* Label4 = nullptr;                  // the correctness rate
    Label* Label3 = nullptr;                  // what the task asks
    Label* Label5 = nullptr;                  // the mark to reach
    Label* Label6 = nullptr;                  // "No."
    Label* Label7 = nullptr;                  // "Correctness Rate"
    Label* Label8 = nullptr;                  // "%"
    FenPeiTiao* FenPeiTiao1 = nullptr;
    Timer* Timer1 = nullptr;
    MMControl* MMControl1 = nullptr;

    // The state of a run, open to tests.
    std::vector<LinePosition> Positions; // a TV play's lines, index CurrentLine - 1
    int64_t TrackLength = 0;
    int16_t RightOption = 0;
    int16_t RightCount = 0;
    int16_t WrongCount = 0;
    int16_t CurrentLine = 0;
    int16_t SentenceNumber = 0;
    bool NoFinishWarning = false;

private:
    bool playLesson() const;
    void Command5_Click();
    void Command2_Click(int index);
    void Command4_Click();
    void Command3_Click();
    bool openTrack();
    void nextSentence();
    void playLine();
    void endOfText();
    void stopBar();
    void setAnswerButtons(bool on);
    void Timer1_Tick();
    void MMControl1_Done(int notifyCode);

    std::array<QString, 3> shown_; // the versions as placed, before any marking
};

} // namespace vt
