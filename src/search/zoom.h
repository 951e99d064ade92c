#pragma once
// The zoom window: a small floating window without a caption that shows a character large, and
// below it every reading the course gives it, in tone marks. Resting the mouse 400 ms on a
// reading, or clicking it, speaks it; a character with a single reading is spoken at once.
// It closes when it stops being the active form and on every mouse down in a text box.

#include "core/app_form.h"

#include <vector>

namespace vt {

class MMControl;

class Zoom final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "Zoom";
    explicit Zoom(Runtime& rt);

    void Form_Deactivate() override;
    void Form_Unload(bool& cancel) override;
    void Form_MouseMove(int button, int shift, int x, int y) override;

    // Shows character with its readings. result: 0 when it is not Chinese (the form is left as
    // it was), 1 when the character table has it, 2 when it does not (shown with no reading).
    void ChaZhao(QString& character, int16_t& result);
    // Shows a text with the one Pinyin given; a word is spoken.
    void ShowPinYin(QString& text, QString& pinyin);

    Label* Label1 = nullptr;
    // Label2(0) is the model of the reading lines; Label2(1..ReadingCount) the lines shown.
    std::vector<Label*> Label2;
    Shape* Shape1 = nullptr;
    Timer* Timer1 = nullptr;
    MMControl* MMControl1 = nullptr;

    int16_t ReadingCount = 0;
    int16_t HoverReading = 0;
    int16_t CharRow = 0;
    bool HasChar = false;

    // A click on reading line index (the rest timer calls it too).
    void Label2_Click(int index);
    // The mouse over reading line index.
    void Label2_MouseMove(int index);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void clearLines();
    void addLine(int index, const QString& caption);
    void sizeToLines();
    void leaveReadings();
};

} // namespace vt
