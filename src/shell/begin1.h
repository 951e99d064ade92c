#pragma once
// Begin1, the lesson menu: a borderless panel in the main screen's panel area. Combo1 lists the
// 140 lessons; below it stand the seven tasks of the chosen lesson and the additional page, each
// a label (Label2(i)) with an "Open" button (Command1(i)). Choosing a lesson loads its words and
// text and colours the tasks by the study position; a button opens its task's stack of forms and
// hides the main screen and the menu until the task closes.
//
// The menu is loaded once and then only hidden and shown again, so it keeps the lesson chosen.
// What the menu decides lives in shell/study.h; how a task is opened in shell/form_stacks.h.

#include "core/app_form.h"
#include "platform/controls.h"

#include <array>

namespace vt {

class Begin1 : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "Begin1";
    // The size of the panel, in twips: it fills the main screen's panel area.
    static constexpr int kWidth = 5760;
    static constexpr int kHeight = 6150;

    explicit Begin1(Runtime& rt);

    void Form_Load() override;
    void Form_MouseMove(int button, int shift, int x, int y) override;

    // Colours and enables the seven task rows for the lesson shown.
    void UpdateTaskList();

    Label* Label1 = nullptr; // "Lesson"
    ComboBox* Combo1 = nullptr;
    Label* Label3 = nullptr; // "Lesson 81 to 140 are TV plays"
    Label* Label4 = nullptr; // "Your tasks:"
    Label* Label5 = nullptr; // "Additional"
    std::array<Label*, 8> Label2{};
    std::array<CommandButton*, 8> Command1{};

protected:
    void showEvent(QShowEvent* e) override;

private:
    void Combo1_Click();
    void Command1_Click(int index);
    void focusButton(int index);

    // A button chosen for the focus while the menu was hidden: it gets the focus once shown.
    int pendingFocus_ = -1;
};

} // namespace vt
