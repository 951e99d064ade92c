#pragma once
// The main screen: five image buttons (Lessons, Assistants, Setting, About, Exit) beside a panel
// area where the chosen menu opens. It reads the study position at load and carries the last
// stages of the start: the loading panel, then the lesson menu.

#include "core/app_form.h"
#include "platform/controls.h"

#include <array>

namespace vt {

class Timer;

class Begin final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "Begin";
    explicit Begin(Runtime& rt);

    // The panel area: every panel opens at Begin.Left + PanelLeft, Begin.Top + PanelTop.
    static constexpr int PanelLeft = 6472;
    static constexpr int PanelTop = 2220;

    void Form_Load() override;
    void Form_Unload(bool& cancel) override;
    void Form_KeyPress(int& keyAscii) override;
    // The mouse over the form itself; panels forward their own mouse moves here.
    void Form_MouseMove(int button, int shift, int x, int y) override;

    void Image3_Click(int index);
    void Image3_MouseMove(int index);

    // The form of button 1 to 4, loaded when asked to (nullptr while it does not exist yet).
    Form* PanelForm(int index, bool load);
    void MoveToPanelArea(Form* panel);

    int16_t HoverIndex = 0;
    int16_t SelectedIndex = 0;

    std::array<ImageBox*, 6> Image1{}; // hover pictures, 1..5
    std::array<ImageBox*, 6> Image2{}; // selected pictures, 1..5
    std::array<ImageBox*, 6> Image3{}; // the visible buttons, 1..5
    ImageBox* Image4 = nullptr;        // the neutral picture
    ImageBox* Backdrop = nullptr;
    Timer* Timer1 = nullptr;
    Timer* Timer2 = nullptr;

private:
    void timer1Tick();
    void timer2Tick();
    void showPicture(int index, ImageBox* source);
};

} // namespace vt
