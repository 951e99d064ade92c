#include "platform/form.h"

#include "platform/forms.h"
#include "platform/screen.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>

namespace vt {

namespace {
constexpr int kCaptionPx = 22;
}

// Our own caption bar: the caption, a close box, and dragging moves the form.
class CaptionBar final : public QWidget {
public:
    explicit CaptionBar(Form* form) : QWidget(form), form_(form) {
        setObjectName(QStringLiteral("CaptionBar"));
        setAutoFillBackground(true);
        QPalette pal = palette();
        pal.setColor(QPalette::Window, QColor(0x1F, 0x4E, 0x8C));
        pal.setColor(QPalette::WindowText, Qt::white);
        setPalette(pal);
        auto* layout = new QHBoxLayout(this);
        layout->setContentsMargins(6, 0, 2, 0);
        label_ = new QLabel(this);
        label_->setObjectName(QStringLiteral("CaptionText"));
        QFont f = label_->font();
        f.setBold(true);
        label_->setFont(f);
        layout->addWidget(label_, 1);
        close_ = new QToolButton(this);
        close_->setObjectName(QStringLiteral("CloseBox"));
        close_->setText(QStringLiteral("\u00D7"));
        close_->setAutoRaise(true);
        close_->setFixedSize(kCaptionPx - 4, kCaptionPx - 4);
        close_->setFocusPolicy(Qt::NoFocus);
        layout->addWidget(close_);
        QObject::connect(close_, &QToolButton::clicked, form, [form] { form->CloseBox(); });
    }
    void setCaption(const QString& c) { label_->setText(c); }

protected:
    void mousePressEvent(QMouseEvent* e) override {
        if (e->button() == Qt::LeftButton) {
            dragging_ = true;
            grab_ = e->globalPosition().toPoint() - form_->pos();
            form_->raiseWithOwned();
        }
    }
    void mouseMoveEvent(QMouseEvent* e) override {
        if (dragging_) form_->QWidget::move(e->globalPosition().toPoint() - grab_);
    }
    void mouseReleaseEvent(QMouseEvent*) override { dragging_ = false; }

private:
    Form* form_;
    QLabel* label_;
    QToolButton* close_;
    bool dragging_ = false;
    QPoint grab_;
};

// The client area: controls stand on it, and its own mouse events are the form's.
class ClientArea final : public QWidget {
public:
    explicit ClientArea(Form* form) : QWidget(form), form_(form) {
        setObjectName(QStringLiteral("Client"));
        setMouseTracking(true);
        setFocusPolicy(Qt::ClickFocus);
    }

protected:
    void mousePressEvent(QMouseEvent* e) override {
        form_->raiseWithOwned();
        const QPoint p = e->position().toPoint();
        form_->Form_MouseDown(Form::ButtonOf(e->button()), Form::ShiftOf(e->modifiers()),
                              PxToTwips(p.x()), PxToTwips(p.y()));
    }
    void mouseMoveEvent(QMouseEvent* e) override {
        const QPoint p = e->position().toPoint();
        form_->Form_MouseMove(Form::ButtonOf(e->buttons()), Form::ShiftOf(e->modifiers()),
                              PxToTwips(p.x()), PxToTwips(p.y()));
    }
    void mouseReleaseEvent(QMouseEvent* e) override {
        const QPoint p = e->position().toPoint();
        form_->Form_MouseUp(Form::ButtonOf(e->button()), Form::ShiftOf(e->modifiers()),
                            PxToTwips(p.x()), PxToTwips(p.y()));
        if (rect().contains(p)) form_->Form_Click();
    }

private:
    Form* form_;
};

Form::Form(Forms& forms, const QString& name, Border border)
    : QWidget(forms.Desktop()), forms_(forms), border_(border) {
    setObjectName(name);
    setAttribute(Qt::WA_DeleteOnClose, false);
    if (!parentWidget()) setWindowFlag(Qt::Window, true);
    setAutoFillBackground(true);
    if (border_ == Border::Caption) bar_ = new CaptionBar(this);
    client_ = new ClientArea(this);
    hide();
    applyGeometry();
}

Form::~Form() = default;

QWidget* Form::Client() const {
    return client_;
}

int Form::ScaleWidth() const {
    return width_;
}
int Form::ScaleHeight() const {
    return height_ - (bar_ ? PxToTwips(kCaptionPx) : 0);
}

void Form::Move(int left, int top) {
    Move(left, top, width_, height_);
}

void Form::Move(int left, int top, int width, int height) {
    left_ = left;
    top_ = top;
    width_ = width < 0 ? 0 : width;
    height_ = height < 0 ? 0 : height;
    applyGeometry();
}

void Form::applyGeometry() {
    placing_ = true;
    setGeometry(TwipsToPx(left_, top_, width_, height_));
    const int w = TwipsToPx(width_), h = TwipsToPx(height_);
    int y = 0;
    if (bar_) {
        bar_->setGeometry(0, 0, w, kCaptionPx);
        y = kCaptionPx;
    }
    client_->setGeometry(0, y, w, std::max(0, h - y));
    placing_ = false;
}

void Form::moveEvent(QMoveEvent* e) {
    QWidget::moveEvent(e);
    if (placing_) return;
    // Moved by the user dragging the caption bar: keep the twips in step.
    if (TwipsToPx(left_) != x()) left_ = PxToTwips(x());
    if (TwipsToPx(top_) != y()) top_ = PxToTwips(y());
}

void Form::paintEvent(QPaintEvent* e) {
    QWidget::paintEvent(e);
    if (border_ == Border::Caption) {
        QPainter p(this);
        p.setPen(QColor(0x1F, 0x4E, 0x8C));
        p.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void Form::SetCaption(const QString& caption) {
    caption_ = caption;
    if (bar_) bar_->setCaption(caption);
    if (isWindow()) setWindowTitle(caption);
}

void Form::SetBackColor(unsigned bgr) {
    QPalette pal = palette();
    pal.setColor(QPalette::Window, BgrColor(bgr));
    setPalette(pal);
}

void Form::SetVisible(bool on) {
    if (on) {
        setVisible(true);
        raiseWithOwned();
    } else {
        setVisible(false);
    }
}

void Form::Show(Form* owner) {
    if (owner && owner != this) owner_ = owner;
    SetVisible(true);
}

void Form::SetFocus() {
    if (isWindow()) activateWindow();
    QWidget* target = client_->focusProxy() ? client_->focusProxy() : client_;
    // A form takes the focus on its first control that accepts it, as a window does.
    QWidget* first = client_->nextInFocusChain();
    while (first && first != client_ &&
           !(first->isEnabled() && first->focusPolicy() & Qt::TabFocus &&
             client_->isAncestorOf(first)))
        first = first->nextInFocusChain();
    if (first && first != client_ && client_->isAncestorOf(first)) target = first;
    target->setFocus(Qt::OtherFocusReason);
}

void Form::raiseWithOwned() {
    // A window of its own is raised by the window system; the offscreen test screen has none.
    if (!isWindow() || QGuiApplication::platformName() != u"offscreen") raise();
    // Forms shown with this one as owner stay above it.
    for (Form* f : forms_.All())
        if (f != this && f->owner_ == this && f->Visible()) f->raiseWithOwned();
}

void Form::CloseBox() {
    forms_.Unload(this);
}

bool Form::PreviewKey(QKeyEvent* event) {
    int code = KeyCodeOf(event);
    if (code != 0) {
        Form_KeyDown(code, ShiftOf(event->modifiers()));
        if (code == 0) return true;
    }
    int ascii = 0;
    const QString text = event->text();
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        ascii = 13;
    else if (event->key() == Qt::Key_Escape)
        ascii = 27;
    else if (event->key() == Qt::Key_Backspace)
        ascii = 8;
    else if (!text.isEmpty() && text[0].unicode() >= 32)
        ascii = text[0].unicode();
    if (ascii != 0) {
        Form_KeyPress(ascii);
        if (ascii == 0) return true;
    }
    return false;
}

int Form::KeyCodeOf(const QKeyEvent* e) {
    const int k = e->key();
    const bool keypad = e->modifiers() & Qt::KeypadModifier;
    if (k >= Qt::Key_A && k <= Qt::Key_Z) return 'A' + (k - Qt::Key_A);
    // The digits of the numeric keypad have codes of their own (96..105), apart from the row.
    if (k >= Qt::Key_0 && k <= Qt::Key_9) return (keypad ? 96 : '0') + (k - Qt::Key_0);
    if (keypad) {
        switch (k) {
        case Qt::Key_Asterisk:
            return 106;
        case Qt::Key_Plus:
            return 107;
        case Qt::Key_Minus:
            return 109;
        case Qt::Key_Period:
        case Qt::Key_Comma:
            return 110;
        case Qt::Key_Slash:
            return 111;
        default:
            break;
        }
    }
    if (k >= Qt::Key_F1 && k <= Qt::Key_F12) return 112 + (k - Qt::Key_F1);
    switch (k) {
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Tab:
        return 9;
    case Qt::Key_Space:
        return 32;
    case Qt::Key_Left:
        return 37;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Right:
        return 39;
    case Qt::Key_Down:
        return 40;
    case Qt::Key_Delete:
        return 46;
    case Qt::Key_Home:
        return 36;
    case Qt::Key_End:
        return 35;
    case Qt::Key_PageUp:
        return 33;
    case Qt::Key_PageDown:
        return 34;
    case Qt::Key_Shift:
        return 16;
    case Qt::Key_Control:
        return 17;
    case Qt::Key_Alt:
        return 18;
    // The key that carries "=" and "+" and the key that carries "-" and "_", whichever of the two
    // the layout and the Shift key give: on the usual layouts both stand on the main block.
    case Qt::Key_Equal:
    case Qt::Key_Plus:
        return 187;
    case Qt::Key_Minus:
    case Qt::Key_Underscore:
        return 189;
    default:
        return 0;
    }
}

int Form::ShiftOf(Qt::KeyboardModifiers m) {
    return ((m & Qt::ShiftModifier) ? 1 : 0) | ((m & Qt::ControlModifier) ? 2 : 0) |
           ((m & Qt::AltModifier) ? 4 : 0);
}

int Form::ButtonOf(Qt::MouseButtons b) {
    return ((b & Qt::LeftButton) ? 1 : 0) | ((b & Qt::RightButton) ? 2 : 0) |
           ((b & Qt::MiddleButton) ? 4 : 0);
}

Form* FormOf(QObject* object) {
    for (QObject* o = object; o; o = o->parent())
        if (auto* f = qobject_cast<Form*>(o)) return f;
    return nullptr;
}

} // namespace vt
