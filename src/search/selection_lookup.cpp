#include "search/selection_lookup.h"

#include "core/pinyin.h"
#include "core/runtime.h"
#include "platform/controls.h"
#include "search/dictionary.h"
#include "search/zoom.h"

namespace vt {

namespace {

constexpr int kLongestLookUp = 5; // characters of a selection that are looked up
constexpr int kZoomOffset = 130;  // the zoom window stands this far right and below the mouse

} // namespace

SelectionPlan PlanSelectionLookUp(const QString& selected, bool automatic) {
    SelectionPlan plan;
    const QString trimmed = Trim(selected);
    if (trimmed.isEmpty()) return plan;
    plan.text = trimmed.left(kLongestLookUp);
    plan.clearSelection = trimmed.size() > kLongestLookUp;
    const bool lineBreak = plan.text.contains(u'\n') || plan.text.contains(u'\r');
    plan.showZoom = !lineBreak && plan.text.size() == 1;
    plan.feedDictionary = automatic && !HasNonChinese(plan.text);
    return plan;
}

void SelectionStarts(Runtime& rt) {
    rt.forms.Unload<Zoom>();
}

void SelectionMade(Runtime& rt, SelectableText& box, int x, int y) {
    Dictionary* dictionary = rt.forms.Get<Dictionary>();
    const SelectionPlan plan =
        PlanSelectionLookUp(box.SelText(), dictionary && dictionary->AutomaticLookUp());
    if (plan.text.isEmpty()) return;

    if (plan.showZoom) {
        if (Zoom* zoom = rt.forms.Load<Zoom>()) {
            QString character = plan.text;
            int16_t result = 0;
            zoom->ChaZhao(character, result);
            if (result > 0) {
                // Beside the mouse, on the desktop the box's form stands on.
                QWidget* widget = box.Widget();
                Form* form = FormOf(widget);
                const QPoint at = form ? widget->mapTo(form, QPoint(0, 0)) : QPoint();
                const int left = (form ? form->Left() : 0) + PxToTwips(at.x()) + x + kZoomOffset;
                const int top = (form ? form->Top() : 0) + PxToTwips(at.y()) + y + kZoomOffset;
                // Kept on the screen, so that a selection near an edge still shows its readings.
                zoom->Move(std::clamp(left, 0, std::max(0, rt.screen.Width() - zoom->Width())),
                           std::clamp(top, 0, std::max(0, rt.screen.Height() - zoom->Height())));
                zoom->Show(rt.forms.Find(QStringLiteral("Background")));
                zoom->SetFocus();
            }
        }
    }
    if (plan.feedDictionary && dictionary) {
        QString text = plan.text;
        dictionary->Common01(text, false);
    }
    if (plan.clearSelection) box.SetSelStart(box.SelStart() + box.SelLength());
}

} // namespace vt
