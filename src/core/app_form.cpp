#include "core/app_form.h"

#include "core/runtime.h"
#include "core/speech.h"
#include "platform/screen.h"
#include "platform/timers.h"

#include <QMouseEvent>

namespace vt {

namespace {

// Hands a text box's mouse going down and coming up to the look-up on a selection.
class SelectionWatch final : public QObject {
public:
    // Watches the widget the mouse lands on: the box itself, or the viewport of a text area.
    SelectionWatch(Runtime& rt, SelectableText* box, QWidget* mouseTarget)
        : QObject(box->Widget()), rt_(rt), box_(box) {
        mouseTarget->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonPress) {
            if (rt_.SelectionStarts) rt_.SelectionStarts(*box_);
        } else if (event->type() == QEvent::MouseButtonRelease) {
            const QPoint p = static_cast<QMouseEvent*>(event)->position().toPoint();
            if (rt_.SelectionMade) rt_.SelectionMade(*box_, PxToTwips(p.x()), PxToTwips(p.y()));
        }
        return false;
    }

private:
    Runtime& rt_;
    SelectableText* box_;
};

} // namespace

AppForm::AppForm(Runtime& runtime, const char* name, Border border)
    : Form(runtime.forms, QString::fromLatin1(name), border), rt(runtime) {}

AppForm::~AppForm() {
    release();
}

void AppForm::formUnloaded() {
    release();
}

void AppForm::release() {
    // Taken out first: a release may lead back here.
    const std::vector<std::function<void()>> releases = std::move(releases_);
    releases_.clear();
    for (const auto& r : releases)
        r();
}

void AppForm::setUpButton(QAbstractButton* button, const QString& caption,
                          std::function<void()> onClick) {
    button->setText(caption);
    if (onClick)
        connect(button, &QAbstractButton::clicked, this, [f = std::move(onClick)] { f(); });
}

Label* AppForm::AddLabel(Label*& member, const QString& name, QRect twips, const QString& caption) {
    AddControl(member, name, twips)->SetCaption(caption);
    return member;
}

CommandButton* AppForm::AddButton(CommandButton*& member, const QString& name, QRect twips,
                                  const QString& caption, std::function<void()> onClick) {
    setUpButton(AddControl(member, name, twips), caption, std::move(onClick));
    return member;
}

OptionButton* AppForm::AddOption(OptionButton*& member, const QString& name, QRect twips,
                                 const QString& caption, std::function<void()> onClick) {
    setUpButton(AddControl(member, name, twips), caption, std::move(onClick));
    return member;
}

CheckBox* AppForm::AddCheckBox(CheckBox*& member, const QString& name, QRect twips,
                               const QString& caption, std::function<void()> onClick) {
    setUpButton(AddControl(member, name, twips), caption, std::move(onClick));
    return member;
}

TextBox* AppForm::AddTextBox(TextBox*& member, const QString& name, QRect twips,
                             const QString& text, std::function<void()> onChange) {
    AddControl(member, name, twips)->SetText(text);
    if (onChange)
        connect(member, &QLineEdit::textChanged, this, [f = std::move(onChange)] { f(); });
    new SelectionWatch(rt, member, member);
    return member;
}

TextArea* AppForm::AddTextArea(TextArea*& member, const QString& name, QRect twips,
                               const QString& text, std::function<void()> onChange) {
    AddControl(member, name, twips)->SetText(text);
    if (onChange)
        connect(member, &QPlainTextEdit::textChanged, this, [f = std::move(onChange)] { f(); });
    new SelectionWatch(rt, member, member->viewport());
    return member;
}

ComboBox* AppForm::AddComboBox(ComboBox*& member, const QString& name, QRect twips,
                               std::function<void()> onClick) {
    AddControl(member, name, twips);
    if (onClick) {
        connect(member, &ComboBox::Click, this, onClick);
        connect(member, &QComboBox::activated, this, [f = std::move(onClick)](int) { f(); });
    }
    return member;
}

ListView* AppForm::AddList(ListView*& member, const QString& name, QRect twips,
                           const std::vector<ListView::Column>& columns,
                           std::function<void(int row)> onItemClick) {
    AddControl(member, name, twips)->SetColumns(columns);
    if (onItemClick) connect(member, &ListView::ItemClick, this, std::move(onItemClick));
    return member;
}

Timer* AppForm::AddTimer(Timer*& member, const QString& name, int intervalMs,
                         std::function<void()> onTick) {
    member = rt.NewTimer(this, name, intervalMs, false);
    member->OnTick = std::move(onTick);
    return member;
}

void AppForm::OnSoundEnd(OwnerTag tag, std::function<void()> handler) {
    if (!rt.sound) return; // no sound system: no sound can end
    rt.sound->SetOwnerHandler(tag, std::move(handler));
    releases_.push_back([this, tag] {
        if (rt.sound) rt.sound->RemoveOwnerHandler(tag);
    });
}

} // namespace vt
