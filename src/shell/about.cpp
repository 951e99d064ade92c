#include "shell/about.h"

#include "core/runtime.h"
#include "shell/begin.h"

namespace vt {

About::About(Runtime& runtime) : AppForm(runtime, kName, Border::None) {
    Move(0, 0, 5800, 5600);
    Label2[0] = Add<Label>(this, Indexed(QStringLiteral("Label2"), 0), 300, 600, 5200, 600);
    Label2[0]->SetCaption(QStringLiteral("Vantoria 2007  万图日雅"));
    Label2[0]->SetFontSize(16);
    Label2[1] = Add<Label>(this, Indexed(QStringLiteral("Label2"), 1), 300, 1400, 5200, 400);
    Label2[1]->SetCaption(QStringLiteral("Version: ") + QStringLiteral(VANTORIA_VERSION));
    Label2[2] = Add<Label>(this, Indexed(QStringLiteral("Label2"), 2), 300, 2100, 5200, 2800);
    Label2[2]->SetCaption(QStringLiteral(
        "A course in standard Mandarin for English speakers: 140 lessons of seven tasks each, "
        "a dictionary that follows every task, and assistants for Pinyin, numbers, dialogs, "
        "surnames and writing.\n\nWord data from CC-CEDICT (CC BY-SA 4.0), stroke data from "
        "Make Me a Hanzi (Arphic Public License), word frequencies from SUBTLEX-CH."));
    Label2[2]->setAlignment(Qt::AlignTop | Qt::AlignLeft);
}

void About::Form_MouseMove(int button, int shift, int x, int y) {
    if (Begin* begin = rt.forms.Get<Begin>()) begin->Form_MouseMove(button, shift, x, y);
}

} // namespace vt
