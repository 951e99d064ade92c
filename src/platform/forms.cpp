#include "platform/forms.h"

#include <QApplication>

namespace vt {

Forms::Forms() {
    if (auto* app = qobject_cast<QApplication*>(QCoreApplication::instance()))
        connect(app, &QApplication::focusChanged, this, &Forms::focusChanged);
}

Forms::~Forms() {
    DestroyAll();
}

void Forms::DestroyAll() {
    // Forms still loaded, and unloaded ones the event loop has not deleted yet, go now, while
    // the runtime they refer to still stands. Unload handlers do not run.
    for (auto* list : {&dying_, &forms_})
        for (auto& f : *list)
            if (f && !f->parentWidget()) delete f.data();
    for (auto* list : {&dying_, &forms_})
        for (auto& f : *list)
            delete f.data();
    dying_.clear();
    forms_.clear();
}

void Forms::registerForm(Form* form) {
    forms_.emplace_back(form);
}

Form* Forms::Find(const QString& name) const {
    for (const auto& f : forms_)
        if (f && f->objectName() == name) return f.data();
    return nullptr;
}

void Forms::Register(const QString& name, Loader loader) {
    loaders_[name] = std::move(loader);
}

QStringList Forms::Registered() const {
    QStringList names;
    for (const auto& [name, loader] : loaders_)
        names << name;
    return names;
}

Form* Forms::LoadByName(const QString& name) {
    if (Form* f = Find(name)) return f;
    auto it = loaders_.find(name);
    if (it == loaders_.end() || !it->second) return nullptr;
    return it->second();
}

std::vector<Form*> Forms::All() const {
    std::vector<Form*> out;
    for (const auto& f : forms_)
        if (f) out.push_back(f.data());
    return out;
}

bool Forms::Unload(Form* form) {
    auto it = std::find(forms_.begin(), forms_.end(), form);
    if (!form || it == forms_.end()) return true;
    bool cancel = false;
    form->Form_Unload(cancel);
    if (cancel) return false;
    form->formUnloaded();
    if (OnUnloaded) OnUnloaded(form->objectName());
    // Forms shown with this one as owner go with it.
    for (Form* owned : All())
        if (owned != form && owned->Owner() == form) Unload(owned);
    it = std::find(forms_.begin(), forms_.end(), form); // the handler may have unloaded others
    if (it != forms_.end()) forms_.erase(it);
    if (desktop_ == form) desktop_ = nullptr;
    form->hide();
    // Forms standing on this one leave the screen with it but stay loaded until unloaded.
    for (auto& f : forms_)
        if (f && f->parentWidget() == form) {
            f->hide();
            f->setParent(nullptr);
        }
    form->deleteLater();
    std::erase_if(dying_, [](const QPointer<Form>& f) { return f.isNull(); });
    dying_.emplace_back(form);
    std::erase_if(forms_, [](const QPointer<Form>& f) { return f.isNull(); });
    if (forms_.empty() && OnLastUnloaded) OnLastUnloaded();
    return true;
}

void Forms::focusChanged(QWidget* old, QWidget* now) {
    // A message box, a list's drop-down or any other window that is no form leaves the form
    // under it active, and the focus coming back from it finds that form still active.
    if (now && !qobject_cast<Form*>(now->window())) return;
    Form* from = FormOf(old);
    Form* to = FormOf(now);
    if (!to || to == active_) return;
    if (from && from == active_)
        from->Form_Deactivate();
    else if (active_)
        active_->Form_Deactivate();
    active_ = to;
    to->Form_Activate();
}

} // namespace vt
