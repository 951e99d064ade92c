#pragma once
// A TV play (lessons 81 to 140), for tasks 1 and 6 of its lesson.
//
// The play is one sound track, the start and end of each of its lines in that track, and a
// series of still pictures that change at an even pace over the whole play. The learner hears
// the whole play with the spoken line marked as the sound passes it, the play line by line with
// each line twice, or one line alone.
// Task 1: the learner translates the play in the notepad above; leaving judges the translation.
// Task 6: the form walks the text word by word, speaking each word with a pause behind it, and
// then plays the play line by line, each line twice, for the learner to repeat aloud.

#include "core/app_form.h"
#include "tasks/listening_tv_logic.h"
#include "tasks/reading_task.h"

namespace vt {

class MMControl;

class ListeningTV final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "ListeningTV";
    explicit ListeningTV(Runtime& rt);

    void Form_Load() override;
    void Form_Unload(bool& cancel) override;

    // The end of a spoken word in task 6: the pause behind it starts.
    void SoundDone();

    TextArea* Text1 = nullptr;
    ImageBox* Image1 = nullptr;        // the picture of the play
    ComboBox* Combo2 = nullptr;        // the play list
    CommandButton* Command1 = nullptr; // Close
    CommandButton* Command2 = nullptr; // <<
    CommandButton* Command3 = nullptr; // >>
    CommandButton* Command5 = nullptr; // Playback / Play / Stop / Start: its caption is the state
    Label* Label1 = nullptr;           // the time, or the step of task 6
    Label* Label2 = nullptr;           // what the task asks
    Label* Label3 = nullptr;           // the lesson heading
    MMControl* MMControl1 = nullptr;   // the play's own player
    Timer* Timer1 = nullptr;           // the time shown while the sound plays (task 1)
    Timer* Timer2 = nullptr;           // the next picture
    Timer* Timer3 = nullptr;           // keeps the mark on the spoken line in the whole play
    Timer* Timer4 = nullptr;           // a missing file, told a moment after load
    Timer* Timer5 = nullptr;           // the pause behind a line
    Timer* Timer6 = nullptr;           // the pause behind a word in task 6

    // What is missing: none, a picture or the control file, the sound.
    enum : int16_t { NoneMissing = 0, PictureOrPositionsMissing = 1, SoundMissing = 2 };

    // The state of the form, open to tests. Lines and pictures count from 1.
    int16_t CurrentLine = 0;
    int16_t PictureCount = 0;
    int16_t PictureIndex = 0;
    int16_t MissingFile = NoneMissing;
    int32_t PlayLength = 0;
    bool SecondPlay = false;
    std::vector<LinePosition> LinePositions;
    int16_t WalkEnd = 0;
    int16_t WalkPosition = 0;
    int16_t SearchFrom = 0;
    int16_t ReadingStep = 0;
    bool TaskFinished = false;

private:
    bool translating() const;
    bool loadPositions();
    void countPictures();
    void showPicture(int index);
    void startPictures();
    void markLine(int line);
    bool setLineRange(int line);
    void playLine(int line);
    void nextLine();
    void setUpTask6();
    void Combo2_Click();
    void Command2_Click();
    void Command3_Click();
    void Command5_Click();
    void togglePlay();
    void Image1_Click();
    void MMControl1_Done(int code);
    void sentenceWalk();
    void beginLineStep();
    void speechEnded();
    void Timer1_Tick();
    void Timer2_Tick();
    void Timer3_Tick();
    void Timer4_Tick();
    void Timer5_Tick();
    void Timer6_Tick();

    ReadingWalk walk_{rt, WalkEnd, WalkPosition, SearchFrom};
};

} // namespace vt
