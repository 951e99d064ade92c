#pragma once
// A form of the program, and the kit every form is written with (docs/forms.md tells the whole
// way). An AppForm is a form of the runtime that is handed the Runtime (rt), through which it
// reaches the program-wide record, the other forms and every service.
//
// A control is a member whose name is its object name ("Command1"; "Command1_3" for
// Command1(3)), so that tests find it as the learner sees it. NAMED passes the member together
// with that name, written once:
//
//     AddButton(NAMED(Command1), {300, 2100, 2700, 450}, "Start", [this] { Command1_Click(); });
//     AddLabel(NAMED(Label2, i), {150, top, 4000, 450}, caption); // Label2(i)
//
// A place is a rectangle in twips on the form's client area: {left, top, width, height}.

#include "core/sound_owners.h"
#include "platform/controls.h"
#include "platform/form.h"
#include "platform/list_view.h"

#include <QRect>
#include <functional>
#include <type_traits>
#include <vector>

// The member and its object name: NAMED(Label1) or, for element i of an array, NAMED(Label2, i).
#define VT_NAMED_ONE(member) member, QStringLiteral(#member)
#define VT_NAMED_AT(member, index)                                                                 \
    member[static_cast<size_t>(index)], ::vt::Indexed(QStringLiteral(#member), index)
#define VT_NAMED_PICK(first, second, chosen, ...) chosen
#define NAMED(...) VT_NAMED_PICK(__VA_ARGS__, VT_NAMED_AT, VT_NAMED_ONE, )(__VA_ARGS__)

namespace vt {

class Timer;
struct Runtime;

class AppForm : public Form {
    Q_OBJECT
public:
    // name: the form's name, its kName.
    AppForm(Runtime& rt, const char* name, Border border = Border::Caption);
    ~AppForm() override;

    Runtime& rt;

protected:
    // Each helper makes a control on the client area at its place, sets the member to it and
    // returns it; a handler, when given, runs on the control's event.

    // Any control class: an ImageBox, a Shape, a CheckBox, a ProgressBar ...
    template <class W> W* AddControl(W*& member, const QString& name, QRect twips) {
        member = Add<W>(this, name, twips.x(), twips.y(), twips.width(), twips.height());
        return member;
    }
    Label* AddLabel(Label*& member, const QString& name, QRect twips, const QString& caption = {});
    // onClick runs on a click, on Space or Enter while the button has the focus.
    CommandButton* AddButton(CommandButton*& member, const QString& name, QRect twips,
                             const QString& caption, std::function<void()> onClick = {});
    // onClick runs when the learner clicks the box, after it changed.
    OptionButton* AddOption(OptionButton*& member, const QString& name, QRect twips,
                            const QString& caption, std::function<void()> onClick = {});
    CheckBox* AddCheckBox(CheckBox*& member, const QString& name, QRect twips,
                          const QString& caption, std::function<void()> onClick = {});
    // onChange runs whenever the text changes, typed or set. Every text box makes the look-up on
    // a selection (Runtime::SelectionStarts and SelectionMade).
    TextBox* AddTextBox(TextBox*& member, const QString& name, QRect twips,
                        const QString& text = {}, std::function<void()> onChange = {});
    // The same for a text of many lines (a lesson's text, notes, an entry of the dictionary).
    TextArea* AddTextArea(TextArea*& member, const QString& name, QRect twips,
                          const QString& text = {}, std::function<void()> onChange = {});
    // onClick runs when an item is chosen, by the learner or by SetListIndex.
    ComboBox* AddComboBox(ComboBox*& member, const QString& name, QRect twips,
                          std::function<void()> onClick = {});
    // A list with its columns; onItemClick is given the row clicked (from 1).
    ListView* AddList(ListView*& member, const QString& name, QRect twips,
                      const std::vector<ListView::Column>& columns,
                      std::function<void(int row)> onItemClick = {});

    // A timer of the form, off until it is enabled. A timer that stands for a delay disables
    // itself first thing in onTick.
    Timer* AddTimer(Timer*& member, const QString& name, int intervalMs,
                    std::function<void()> onTick);

    // What the end of a sound started with this owner tag runs (the form's SoundDone), from now
    // until the form unloads.
    void OnSoundEnd(OwnerTag tag, std::function<void()> handler);

    // Fills a hook of the runtime (Runtime::ShowToneCurve, UpdateTaskList, ...) from now until
    // the form unloads or goes.
    template <class Signature>
    void Provide(std::function<Signature>& hook,
                 std::type_identity_t<std::function<Signature>> handler) {
        hook = std::move(handler);
        releases_.push_back([&hook] { hook = nullptr; });
    }

    void formUnloaded() final;

private:
    void setUpButton(QAbstractButton* button, const QString& caption,
                     std::function<void()> onClick);
    void release();

    std::vector<std::function<void()>> releases_;
};

} // namespace vt
