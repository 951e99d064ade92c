#pragma once
// The loading panel: three labelled bars in the main screen's panel area. It fills the knowledge
// base in one tick of its timer, greets the learner and unloads itself; its unload starts the
// main screen's last start stage.

#include "core/app_form.h"
#include "platform/controls.h"

namespace vt {

class Timer;

class LoadData final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "LoadData";
    explicit LoadData(Runtime& rt);

    void Form_Load() override;
    void Form_Unload(bool& cancel) override;

    Label* Label1 = nullptr;
    Label* Label2 = nullptr;
    Label* Label3 = nullptr;
    Label* Label4 = nullptr;
    ProgressBar* ProgressBar2 = nullptr;
    ProgressBar* ProgressBar3 = nullptr;
    ProgressBar* ProgressBar4 = nullptr;
    Timer* Timer1 = nullptr;

private:
    void timer1Tick();
};

} // namespace vt
