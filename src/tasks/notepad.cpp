#include "tasks/notepad.h"

#include "core/data_paths.h"
#include "core/runtime.h"
#include "tasks/notes_file.h"

namespace vt {

Notepad::Notepad(Runtime& runtime) : AppForm(runtime, kName) {
    SetCaption(QStringLiteral("Translation"));
    Move(0, 0, 9600, 1800);
    AddTextArea(NAMED(Text1), {60, 60, ScaleWidth() - 120, ScaleHeight() - 120}, {},
                [this] { Text1_Change(); });
    AddTimer(NAMED(Timer1), 60000, [this] { Timer1_Tick(); });
}

QString Notepad::NotesPath() const {
    return TranslationNotesFile(rt.app.AppPath, rt.app.OpenLesson);
}

void Notepad::Form_Load() {
    if (const std::optional<QString> notes = ReadNotes(rt.files, NotesPath())) {
        Text1->SetText(*notes);
        // Setting the text counted as a change: the notes as read need no save.
        NoteDirty = false;
        Timer1->SetEnabled(false);
    }
}

void Notepad::Text1_Change() {
    if (NoteDirty) return;
    NoteDirty = true;
    startSaveCount();
}

void Notepad::startSaveCount() {
    SaveTicks = 0;
    Timer1->SetEnabled(true);
}

void Notepad::Timer1_Tick() {
    if (++SaveTicks < kSaveMinutes) return;
    SaveTicks = 0;
    Timer1->SetEnabled(false);
    if (!Save()) startSaveCount(); // tried again later; the box has told the learner
}

bool Notepad::Save() {
    if (!NoteDirty) return true;
    if (!WriteNotes(rt.files, NotesPath(), Text1->Text())) {
        rt.MsgBox(QStringLiteral("Your notes could not be saved to %1. They are still here; the "
                                 "disk may be full or the folder write-protected.")
                      .arg(NotesPath()),
                  Mb::Exclamation, QStringLiteral("Warning"));
        return false;
    }
    NoteDirty = false;
    return true;
}

void Notepad::Form_Unload(bool& cancel) {
    Timer1->SetEnabled(false);
    SaveTicks = 0;
    if (Save()) return;
    // The learner decides: keep the window to copy the notes, or let them go.
    if (rt.MsgBox(QStringLiteral("Keep the notes window open, so that you can copy your notes "
                                 "somewhere else?"),
                  Mb::YesNo | Mb::Question, QStringLiteral("Warning")) == Mb::Yes) {
        cancel = true;
        startSaveCount();
    }
}

} // namespace vt
