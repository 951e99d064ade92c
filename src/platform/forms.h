#pragma once
// The forms of the program by name: Load creates a form once, Get finds a loaded one without
// loading it, Unload asks the form and then destroys it. Nothing loads by accident.

#include "platform/form.h"

#include <QObject>
#include <QPointer>
#include <functional>
#include <map>
#include <vector>

namespace vt {

struct Runtime;

class Forms : public QObject {
    Q_OBJECT
public:
    explicit Forms(Runtime& rt);
    ~Forms() override;

    // The desktop window that every later form stands on.
    QWidget* Desktop() const { return desktop_; }
    void SetDesktop(QWidget* desktop) { desktop_ = desktop; }

    // Loads F if it is not loaded yet (running its Form_Load once) and returns it.
    template <class F> F* Load() {
        if (F* f = Get<F>()) return f;
        auto* f = new F(rt_);
        registerForm(f);
        f->Form_Load();
        return Get<F>(); // Form_Load may have unloaded it again
    }
    // The loaded instance of F, or nullptr.
    template <class F> F* Get() const {
        return qobject_cast<F*>(Find(QString::fromLatin1(F::kName)));
    }

    Form* Find(const QString& name) const;
    bool IsLoaded(const QString& name) const { return Find(name) != nullptr; }
    std::vector<Form*> All() const;

    // Runs the form's unload handler; unless it cancels, hides and destroys the form.
    // True when the form is gone.
    bool Unload(Form* form);
    template <class F> bool Unload() {
        F* f = Get<F>();
        return f ? Unload(f) : true;
    }

    // Destroys every form at once, loaded or waiting to be deleted, without unload handlers:
    // the end of the program, before the services the forms use are gone.
    void DestroyAll();

    // Called when the last form has been unloaded: the program ends.
    std::function<void()> OnLastUnloaded;
    // Called with the name of each form whose unload went through, in order.
    std::function<void(const QString&)> OnUnloaded;

private:
    void registerForm(Form* form);
    void focusChanged(QWidget* old, QWidget* now);

    Runtime& rt_;
    QPointer<QWidget> desktop_;
    std::vector<QPointer<Form>> forms_;
    std::vector<QPointer<Form>> dying_; // unloaded, waiting for the event loop to delete them
    QPointer<Form> active_;
};

} // namespace vt
