#pragma once
// The forms of the program by name: Load creates a form once, Get finds a loaded one without
// loading it, Unload asks the form and then destroys it. Nothing loads by accident.
//
// A form that is opened by its name only (a menu names the forms of a task or an assistant) is
// registered with a loader; LoadByName then loads it like Load does.

#include "platform/form.h"

#include <QObject>
#include <QPointer>
#include <functional>
#include <map>
#include <vector>

namespace vt {

class Forms : public QObject {
    Q_OBJECT
public:
    Forms();
    ~Forms() override;

    // The desktop window that every later form stands on.
    QWidget* Desktop() const { return desktop_; }
    void SetDesktop(QWidget* desktop) { desktop_ = desktop; }

    // Loads F if it is not loaded yet, built from args and running its Form_Load once, and
    // returns it; null when its Form_Load unloaded it again.
    template <class F, class... Args> F* Load(Args&&... args) {
        if (F* f = Get<F>()) return f;
        auto* f = new F(std::forward<Args>(args)...);
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

    // Forms opened by name: a loader loads the form (or finds it loaded) and returns it, or null
    // when its load handler gave up. Registering a name again replaces its loader.
    using Loader = std::function<Form*()>;
    void Register(const QString& name, Loader loader);
    bool IsRegistered(const QString& name) const { return loaders_.count(name) > 0; }
    QStringList Registered() const;
    // The loaded form of that name, else the form loaded through its loader; null when the name
    // is not registered or the form's load handler gave up.
    Form* LoadByName(const QString& name);

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

    QPointer<QWidget> desktop_;
    std::map<QString, Loader> loaders_;
    std::vector<QPointer<Form>> forms_;
    std::vector<QPointer<Form>> dying_; // unloaded, waiting for the event loop to delete them
    QPointer<Form> active_;
};

} // namespace vt
