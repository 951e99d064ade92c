#pragma once
// The text of a read lesson (lessons 1 to 80), for two of its tasks.
//
// Task 1: the learner picks sentences and hears them, looks words up by selecting them, and
// writes a translation in the notepad above; leaving judges the translation against the English
// of the lesson's new words.
// Task 6: after Start the form walks the text by itself, word by word and then sentence by
// sentence, with a pause of three seconds behind each in which the learner repeats aloud. A word's
// pause starts when its speech ends, a sentence's when its recording ends.

#include "core/app_form.h"
#include "tasks/reading_task.h"

namespace vt {

class FenPeiTiao;

class Text final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "Text";
    explicit Text(Runtime& rt);

    void Form_Load() override;
    void Form_Unload(bool& cancel) override;
    void Form_KeyDown(int& keyCode, int shift) override;

    // The end of a sentence's recording.
    void SoundDone();

    TextArea* Text1 = nullptr;
    ComboBox* Combo1 = nullptr;
    CommandButton* Command1 = nullptr; // Close
    CommandButton* Command2 = nullptr; // Playback
    CommandButton* Command3 = nullptr; // <<
    CommandButton* Command4 = nullptr; // >>
    CommandButton* Command5 = nullptr; // Start, "Stop" while a reading runs
    Label* Label1 = nullptr;           // the sentence or step counter
    Label* Label2 = nullptr;           // the lesson heading
    Label* Label3 = nullptr;           // what the task asks
    Label* Label4 = nullptr;           // "Step"
    FenPeiTiao* FenPeiTiao1 = nullptr;
    Timer* Timer1 = nullptr; // a wrong number of recordings, told once
    Timer* Timer2 = nullptr; // moves the bar while a sentence plays
    Timer* Timer4 = nullptr; // one character on in the walk (nothing starts it)
    Timer* Timer5 = nullptr; // the pause behind a word or a sentence

    // The state of the form, open to tests. Walk places count from 1.
    int16_t CurrentSentence = 0;
    int16_t WalkEnd = 0;
    int16_t WalkPosition = 0;
    int16_t SearchFrom = 0;
    int16_t ReadingStep = 0;
    bool TaskFinished = false;
    int16_t SoundFileCount = 0;

private:
    void setUpTask1();
    void setUpTask6();
    void countSoundFiles();
    void markSentence(int sentence);
    void playSentence(int sentence);
    void Combo1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void Command5_Click();
    void sentenceWalk();
    void beginSentenceStep();
    void playNextSentence();
    void speechEnded();
    void Timer1_Tick();
    void Timer2_Tick();
    void Timer4_Tick();
    void Timer5_Tick();
    void FenPeiTiao1_Seek(float x);

    ReadingWalk walk_{rt, WalkEnd, WalkPosition, SearchFrom};
};

} // namespace vt
