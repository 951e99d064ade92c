#include "shell/about.h"

#include "core/runtime.h"
#include "shell/begin.h"

namespace vt {

About::About(Runtime& runtime) : AppForm(runtime, kName, Border::None) {
    Move(0, 0, 5800, 5600);
    AddLabel(NAMED(Label2, 0), {300, 600, 5200, 600}, "Vantoria 2007  万图日雅")->SetFontSize(16);
    AddLabel(NAMED(Label2, 1), {300, 1400, 5200, 400}, "Version: " VANTORIA_VERSION);
    AddLabel(NAMED(Label2, 2), {300, 2100, 5200, 2800},
             "A course in standard Mandarin for English speakers: 140 lessons of seven tasks "
             "each, a dictionary that follows every task, and assistants for Pinyin, numbers, "
             "dialogs, surnames and writing.\n\nWord data from CC-CEDICT (CC BY-SA 4.0), stroke "
             "data from Make Me a Hanzi (Arphic Public License), word frequencies from "
             "SUBTLEX-CH.")
        ->setAlignment(Qt::AlignTop | Qt::AlignLeft);
}

void About::Form_MouseMove(int button, int shift, int x, int y) {
    if (Begin* begin = rt.forms.Get<Begin>()) begin->Form_MouseMove(button, shift, x, y);
}

} // namespace vt
