#pragma once
// The look-up on a selection, the same for every text box of every form: the mouse going down
// on a box closes the zoom window; the mouse coming up takes the box's selection, shows a single
// character large in the zoom window beside the mouse, and hands a Chinese selection to the
// dictionary when its "Automatically" box is ticked. The dictionary provides these two routines
// to the runtime's hooks while it is loaded, so no form does anything for them itself.

#include <QString>

namespace vt {

struct Runtime;
class SelectableText;

// What a selection asks for, decided without a widget.
struct SelectionPlan {
    QString text;                // the selection trimmed of blanks, cut to five characters
    bool showZoom = false;       // one character and no line break
    bool feedDictionary = false; // Chinese only, and the dictionary looks up automatically
    bool clearSelection = false; // it was longer than five characters
};
SelectionPlan PlanSelectionLookUp(const QString& selected, bool automatic);

// The mouse went down on a box: the zoom window goes.
void SelectionStarts(Runtime& rt);
// The mouse came up at x, y twips inside the box.
void SelectionMade(Runtime& rt, SelectableText& box, int x, int y);

} // namespace vt
