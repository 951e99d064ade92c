#pragma once
// The additional page of a lesson: its new words one by one, each with its Pinyin in tone marks,
// its meaning and its sound, and the words related to it listed below. The face of the form is a
// pad for writing characters with the mouse: the left button draws, any other button wipes the
// pad, and a stroke runs on across the word's labels.

#include "core/app_form.h"

#include <QImage>
#include <array>

namespace vt {

// The ink on the face of a form: a surface behind the controls that keeps what was drawn on it.
// The mouse goes through it to the form.
class InkPad final : public QWidget {
    Q_OBJECT
public:
    explicit InkPad(QWidget* parent = nullptr);
    // A dot at x, y twips, joined to the one before while a stroke goes on.
    void DrawPoint(int x, int y, bool joinPrevious);
    void Wipe();
    // How many pixels hold ink.
    int InkedPixels() const;

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;

private:
    void fitInk();

    QImage ink_;
    QPoint last_;
};

class Newwords final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "Newwords";
    explicit Newwords(Runtime& rt);

    void Form_Load() override;
    void Form_Unload(bool& cancel) override;
    void Form_KeyDown(int& keyCode, int shift) override;
    void Form_MouseDown(int button, int shift, int x, int y) override;
    void Form_MouseMove(int button, int shift, int x, int y) override;
    void Form_MouseUp(int button, int shift, int x, int y) override;

    InkPad* Pad = nullptr;
    std::array<Label*, 3> Label1{}; // Chinese, Pinyin, English
    Label* Label3 = nullptr;        // "3 / 12"
    Label* Label4 = nullptr;
    ComboBox* Combo1 = nullptr;
    CommandButton* Command1 = nullptr; // Close
    CommandButton* Command2 = nullptr; // >>
    CommandButton* Command3 = nullptr; // Playback
    CommandButton* Command6 = nullptr; // <<
    Timer* Timer1 = nullptr;

    int16_t WordIndex = 1;
    bool PlaybackReady = false;
    bool Drawing = false;

private:
    void Combo1_Click();
    void Timer1_Tick();
    void sayWord();
};

} // namespace vt
