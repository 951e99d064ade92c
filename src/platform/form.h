#pragma once
// A form: a window of the program placed on the desktop in twips. Every form but the desktop
// itself is a child widget of the desktop, so positions hold on every window system; a form with
// a caption gets our own caption bar (caption, close box, drag to move).
//
// Lifecycle: Forms::Load creates the instance and runs Form_Load once; Show loads if needed and
// shows; Hide keeps the instance and its state; Forms::Unload runs Form_Unload, which may cancel,
// and then destroys the instance.

#include <QPointer>
#include <QWidget>

namespace vt {

class CaptionBar;
class ClientArea;

// Shift state of key and mouse events: 1 Shift, 2 Ctrl, 4 Alt.
// Mouse buttons: 1 left, 2 right, 4 middle.
class Forms;

class Form : public QWidget {
    Q_OBJECT
public:
    enum class Border { None, Caption };

    // A form named name, of the forms given, standing on their desktop.
    Form(Forms& forms, const QString& name, Border border = Border::Caption);
    ~Form() override;

    // Geometry in twips, relative to the desktop (or the screen for a form without one).
    int Left() const { return left_; }
    int Top() const { return top_; }
    int Width() const { return width_; }
    int Height() const { return height_; }
    // The client area below the caption bar, in twips.
    int ScaleWidth() const;
    int ScaleHeight() const;
    void Move(int left, int top);
    void Move(int left, int top, int width, int height);
    void SetLeft(int v) { Move(v, top_, width_, height_); }
    void SetTop(int v) { Move(left_, v, width_, height_); }
    void SetWidth(int v) { Move(left_, top_, v, height_); }
    void SetHeight(int v) { Move(left_, top_, width_, v); }

    QString Caption() const { return caption_; }
    void SetCaption(const QString& caption);
    // The colour of the form's face, in the course's blue-green-red order.
    void SetBackColor(unsigned bgr);

    // The form's own visibility, whether or not the desktop behind it can be seen.
    bool Visible() const { return !isHidden(); }
    void SetVisible(bool on);
    // Shows the form modeless; an owner keeps it above the owner.
    void Show(Form* owner = nullptr);
    void Hide() { SetVisible(false); }
    void SetFocus();
    Form* Owner() const { return owner_; }

    // Where controls go: the area below the caption bar.
    QWidget* Client() const;

    bool KeyPreview = false;

    // Event handlers, overridden by the forms that need them. Coordinates are in twips.
    virtual void Form_Load() {}
    virtual void Form_Unload(bool& cancel) {}
    virtual void Form_Activate() {}
    virtual void Form_Deactivate() {}
    virtual void Form_KeyDown(int& keyCode, int shift) {}
    virtual void Form_KeyPress(int& keyAscii) {}
    virtual void Form_MouseDown(int button, int shift, int x, int y) {}
    virtual void Form_MouseMove(int button, int shift, int x, int y) {}
    virtual void Form_MouseUp(int button, int shift, int x, int y) {}
    virtual void Form_Click() {}

    // Key preview, as the runtime calls it before the control with the focus sees the key.
    // True when the form swallowed the key.
    bool PreviewKey(QKeyEvent* event);

    // The runtime's close box: asks to unload the form.
    void CloseBox();

    // The code a key press has for the forms: letters 65..90 whatever the Shift key, the digits
    // of the main row 48..57, the keypad's digits 96..105 and its + and - 107 and 109, the "=+" key
    // 187 and the "-_" key 189, Escape 27, Enter 13, Backspace 8, Space 32; 0 for a key no form
    // takes.
    static int KeyCodeOf(const QKeyEvent* event);
    static int ShiftOf(Qt::KeyboardModifiers m);
    static int ButtonOf(Qt::MouseButtons b);

protected:
    // Called by Forms::Unload once the unload went through, before the form leaves the screen.
    friend class Forms;
    virtual void formUnloaded() {}

    void applyGeometry();
    void moveEvent(QMoveEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    friend class CaptionBar;
    friend class ClientArea;
    void raiseWithOwned();

    Forms& forms_;
    int left_ = 0, top_ = 0, width_ = 4800, height_ = 3600;
    QString caption_;
    Border border_;
    CaptionBar* bar_ = nullptr;
    ClientArea* client_ = nullptr;
    QPointer<Form> owner_;
    bool placing_ = false;
};

// Finds the form that a widget stands on, or nullptr.
Form* FormOf(QObject* object);

} // namespace vt
