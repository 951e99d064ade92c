#pragma once
// The desktop of the course: the one window of the program, behind every other form. It owns the
// shared sound players, shows the local and the Beijing clock, draws the tone of each syllable
// spoken with a moving marker, and carries the screen mode (full screen, room for the task bar,
// or hidden so that only the forms on it can be seen).

#include "core/app_form.h"
#include "platform/controls.h"
#include "shell/desktop_logic.h"

namespace vt {

class Timer;

class Background final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "Background";
    explicit Background(Runtime& rt);
    ~Background() override;

    void Form_Load() override;

    // Applies a screen mode (0 full screen, 1 task bar free, anything else hidden) and lays out
    // the clocks and the marker's steps; with save the mode is stored in Setting.zvk.
    void ApplyScreenMode(int16_t mode, bool save);
    int16_t ScreenMode() const { return screenMode_; }
    // Shows the tone of the syllable just started and sets the marker off along its curve.
    void ShowToneCurve(const QString& tone);
    // Updates both clocks now, as Timer5 does once a minute.
    void UpdateClocks();

    ImageBox* Image1 = nullptr;
    Label* Label4 = nullptr;
    Label* Label5 = nullptr;
    Label* Label6 = nullptr;
    Label* Label10 = nullptr;
    Shape* Shape3 = nullptr;
    Timer* Timer1 = nullptr;
    Timer* Timer4 = nullptr;
    Timer* Timer5 = nullptr;

    int16_t BeijingOffset = 0;
    MarkerSteps Marker;
    QString LocalDayChinese, LocalDayEnglish, BeijingDayChinese, BeijingDayEnglish;
    QString ZoneName;

protected:
    void resizeEvent(QResizeEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void childEvent(QChildEvent* e) override;

private:
    void timer1Tick();
    void timer4Tick();
    void layoutForMode();
    void updateMask();

    int16_t screenMode_ = 0;
    bool maskPending_ = false;
};

// The record of Setting.zvk: twelve bytes, six signed 16-bit fields.
struct SettingRecord {
    int16_t ScreenMode = 0;
    int16_t IP1 = 0, IP2 = 0, IP3 = 0, IP4 = 0;
    int16_t Port = 0;
};
SettingRecord ReadSettingRecord(Runtime& rt);
bool WriteSettingRecord(Runtime& rt, const SettingRecord& rec);

} // namespace vt
