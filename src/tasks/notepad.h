#pragma once
// The translation notes beside the read-text task: what the learner writes is kept in one file
// per lesson. The notes are saved five minutes after the first change (later changes do not put
// the save off) and when the form unloads. A save that fails says so in a box and keeps the text
// on screen; it is tried again five minutes later, and on leaving the learner may keep the window
// open to copy the text elsewhere.

#include "core/app_form.h"

namespace vt {

class Notepad final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "Notepad";
    // Minutes between the first change and the save.
    static constexpr int kSaveMinutes = 5;
    explicit Notepad(Runtime& rt);

    void Form_Load() override;
    void Form_Unload(bool& cancel) override;

    // Saves the notes if they changed since the last save; false when that save failed.
    bool Save();
    // The file of the open lesson's notes.
    QString NotesPath() const;

    TextArea* Text1 = nullptr;
    Timer* Timer1 = nullptr;

    bool NoteDirty = false;
    int16_t SaveTicks = 0;

private:
    void Text1_Change();
    void Timer1_Tick();
    void startSaveCount();
};

} // namespace vt
