// The forms runtime itself, without the program: a form's load runs once, an unload can be
// cancelled, a form may give up in its own load, forms are found by name, and a form with key
// preview sees each key before the control with the focus.
#include "platform/form.h"
#include "platform/forms.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <gtest/gtest.h>

namespace vt {
namespace {

// A form that counts its events; what its handlers do is set by each test.
class Probe : public Form {
    Q_OBJECT
public:
    static constexpr const char* kName = "Probe";
    explicit Probe(Forms& forms) : Form(forms, QString::fromLatin1(kName)) {}
    void Form_Load() override {
        ++loads;
        if (onLoad) onLoad(*this);
    }
    void Form_Unload(bool& cancel) override {
        ++unloads;
        cancel = cancelUnload;
    }
    void Form_KeyDown(int& keyCode, int) override {
        seen.push_back("form down " + std::to_string(keyCode));
        if (keyCode == swallow) keyCode = 0;
    }
    void Form_KeyPress(int& keyAscii) override {
        seen.push_back("form press " + std::to_string(keyAscii));
    }
    void Form_Activate() override { seen.push_back(objectName().toStdString() + " active"); }
    void Form_Deactivate() override { seen.push_back(objectName().toStdString() + " inactive"); }

    int loads = 0;
    int unloads = 0;
    bool cancelUnload = false;
    int swallow = -1;
    std::function<void(Probe&)> onLoad;
    std::vector<std::string>& seen = log();
    static std::vector<std::string>& log() {
        static std::vector<std::string> entries;
        return entries;
    }
};

// A form whose load handler unloads it again, as the start form's does when it is cancelled.
class GivesUp : public Probe {
    Q_OBJECT
public:
    using Probe::Probe;
    void Form_Load() override {
        Probe::Form_Load();
        CloseBox();
    }
};

// A text box that notes the keys it is given.
class KeyBox : public QLineEdit {
public:
    using QLineEdit::QLineEdit;

protected:
    void keyPressEvent(QKeyEvent* e) override {
        Probe::log().push_back("control " + std::to_string(e->key()));
        QLineEdit::keyPressEvent(e);
    }
};

TEST(Forms, ACancelledUnloadKeepsTheFormAndItsState) {
    Forms forms;
    std::vector<QString> gone;
    forms.OnUnloaded = [&gone](const QString& name) { gone.push_back(name); };
    Probe* probe = forms.Load<Probe>(forms);
    probe->Move(300, 450);
    probe->cancelUnload = true;
    EXPECT_FALSE(forms.Unload(probe));
    EXPECT_EQ(forms.Get<Probe>(), probe);
    EXPECT_EQ(probe->Left(), 300);
    EXPECT_TRUE(gone.empty());

    probe->cancelUnload = false;
    EXPECT_TRUE(forms.Unload(probe));
    EXPECT_EQ(probe->unloads, 2);
    EXPECT_EQ(forms.Get<Probe>(), nullptr);
    EXPECT_EQ(gone, std::vector<QString>{"Probe"});
    EXPECT_TRUE(forms.Unload<Probe>()) << "a form that is not loaded is gone already";
}

TEST(Forms, AFormThatUnloadsItselfInItsLoadIsGone) {
    Forms forms;
    bool ended = false;
    forms.OnLastUnloaded = [&ended] { ended = true; };
    EXPECT_EQ(forms.Load<GivesUp>(forms), nullptr);
    EXPECT_EQ(forms.Get<Probe>(), nullptr);
    EXPECT_TRUE(forms.All().empty());
    EXPECT_TRUE(ended) << "the last form is gone";
}

TEST(Forms, LoadByNameFindsOrLoadsARegisteredForm) {
    Forms forms;
    int made = 0;
    forms.Register("Probe", [&forms, &made]() -> Form* {
        ++made;
        return forms.Load<Probe>(forms);
    });
    EXPECT_TRUE(forms.IsRegistered("Probe"));
    EXPECT_FALSE(forms.IsRegistered("probe")) << "names are exact";
    EXPECT_EQ(forms.LoadByName("Typing"), nullptr);
    Form* probe = forms.LoadByName("Probe");
    ASSERT_NE(probe, nullptr);
    EXPECT_EQ(forms.LoadByName("Probe"), probe);
    EXPECT_EQ(forms.Load<Probe>(forms), probe);
    EXPECT_EQ(made, 1) << "a loaded form is found, not loaded again";
    EXPECT_EQ(static_cast<Probe*>(probe)->loads, 1) << "its load handler ran once";
    EXPECT_EQ(forms.Find("Probe"), probe);
    EXPECT_EQ(forms.All().size(), 1u);
}

TEST(Forms, KeyPreviewSeesTheKeyBeforeTheControl) {
    Forms forms;
    Probe* probe = forms.Load<Probe>(forms);
    auto* box = new KeyBox(probe->Client());
    probe->Show();
    const auto press = [box](int key, const QString& text) {
        QKeyEvent e(QEvent::KeyPress, key, Qt::NoModifier, text);
        QApplication::sendEvent(box, &e);
    };

    Probe::log().clear();
    press(Qt::Key_A, "a");
    EXPECT_EQ(Probe::log(), std::vector<std::string>{"control 65"}) << "without key preview";

    probe->KeyPreview = true;
    Probe::log().clear();
    press(Qt::Key_A, "a");
    EXPECT_EQ(Probe::log(),
              (std::vector<std::string>{"form down 65", "form press 97", "control 65"}));

    probe->swallow = 13; // Enter stops at the form
    Probe::log().clear();
    press(Qt::Key_Return, "\r");
    EXPECT_EQ(Probe::log(), std::vector<std::string>{"form down 13"});
}

TEST(Forms, OnlyTheFocusMovingToAnotherFormDeactivatesOne) {
    Forms forms;
    Probe* probe = forms.Load<Probe>(forms);
    Form other(forms, QStringLiteral("Other"));
    QDialog box(&other); // the program's boxes stand on the desktop, which is a form too
    auto* field = new QLineEdit(&box);
    const auto focus = [](QWidget* from, QWidget* to) {
        Q_EMIT qApp->focusChanged(from, to); // as the application reports a move of the focus
    };

    Probe::log().clear();
    focus(nullptr, probe->Client());
    focus(probe->Client(), field); // a message box over the form
    focus(field, probe->Client());
    EXPECT_EQ(Probe::log(), std::vector<std::string>{"Probe active"});
    focus(probe->Client(), other.Client());
    EXPECT_EQ(Probe::log(), (std::vector<std::string>{"Probe active", "Probe inactive"}));
}

TEST(Forms, KeysHaveTheCodesOfTheKeyboardTheLearnerTypesOn) {
    struct Row {
        int key;
        Qt::KeyboardModifiers modifiers;
        int code;
    } rows[] = {
        {Qt::Key_Q, Qt::NoModifier, 81},         {Qt::Key_Q, Qt::ShiftModifier, 81},
        {Qt::Key_7, Qt::NoModifier, 55},         {Qt::Key_7, Qt::KeypadModifier, 103},
        {Qt::Key_Equal, Qt::NoModifier, 187},    {Qt::Key_Plus, Qt::ShiftModifier, 187},
        {Qt::Key_Minus, Qt::NoModifier, 189},    {Qt::Key_Underscore, Qt::ShiftModifier, 189},
        {Qt::Key_Plus, Qt::KeypadModifier, 107}, {Qt::Key_Minus, Qt::KeypadModifier, 109},
        {Qt::Key_Space, Qt::NoModifier, 32},     {Qt::Key_Backspace, Qt::NoModifier, 8},
        {Qt::Key_Escape, Qt::NoModifier, 27},    {Qt::Key_Exclam, Qt::ShiftModifier, 0},
    };
    for (const Row& r : rows) {
        const QKeyEvent e(QEvent::KeyPress, r.key, r.modifiers);
        EXPECT_EQ(Form::KeyCodeOf(&e), r.code) << "Qt key " << r.key;
    }
}

} // namespace
} // namespace vt

#include "forms_test.moc"
