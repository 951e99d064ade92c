#pragma once
// The controls that forms are built from, with the properties the forms use. Each control's
// objectName is its name on the form ("Command1_3" for Command1(3)), so tests find controls as
// the learner sees them. Add places a control in twips on a form's client area; the forms of the
// program use the kit of AppForm (core/app_form.h), which does that and more in one line.

#include "platform/form.h"
#include "platform/screen.h"

#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <functional>

namespace vt {

// The name of element i of a control array: "Command1_3".
inline QString Indexed(const QString& name, int index) {
    return name + u'_' + QString::number(index);
}

// Creates a control on the form's client area at a place given in twips.
template <class W>
W* Add(Form* form, const QString& name, int left, int top, int width, int height) {
    auto* w = new W(form->Client());
    w->setObjectName(name);
    PlaceTwips(w, left, top, width, height);
    return w;
}

// Moves a control, in twips.
inline void MoveTwips(QWidget* w, int left, int top) {
    const QRect t = TwipsOf(w);
    PlaceTwips(w, left, top, t.width(), t.height());
}
inline int LeftTwips(const QWidget* w) {
    return TwipsOf(w).x();
}
inline int TopTwips(const QWidget* w) {
    return TwipsOf(w).y();
}
inline int WidthTwips(const QWidget* w) {
    return TwipsOf(w).width();
}
inline int HeightTwips(const QWidget* w) {
    return TwipsOf(w).height();
}

class Label : public QLabel {
    Q_OBJECT
public:
    explicit Label(QWidget* parent = nullptr);
    QString Caption() const { return text(); }
    void SetCaption(const QString& c) { setText(c); }
    // Colour in the course's blue-green-red order.
    void SetForeColor(unsigned bgr);
    unsigned ForeColor() const { return foreBgr_; }
    void SetBackColor(unsigned bgr);
    void SetFontSize(double points);
    void SetFontBold(bool bold);

private:
    unsigned foreBgr_ = 0;
};

class CommandButton : public QPushButton {
    Q_OBJECT
public:
    explicit CommandButton(QWidget* parent = nullptr) : QPushButton(parent) {}
    QString Caption() const { return text(); }
    void SetCaption(const QString& c) { setText(c); }
};

// A text the learner can select in, one line or many: what the look-up on a selection and the
// tasks that mark words need of it. Places count characters (UTF-16 code units) from 0; a line
// break is one character ("\n").
class SelectableText {
public:
    virtual ~SelectableText() = default;
    virtual QString Text() const = 0;
    virtual void SetText(const QString& t) = 0;
    virtual int SelStart() const = 0;
    virtual int SelLength() const = 0;
    QString SelText() const { return Text().mid(SelStart(), SelLength()); }
    // Moves the caret there and drops the selection.
    virtual void SetSelStart(int start) = 0;
    // Selects that many characters from the selection's start.
    virtual void SetSelLength(int length) = 0;
    // Selects length characters from start, and shows them.
    void Select(int start, int length) {
        SetSelStart(start);
        SetSelLength(length);
    }
    virtual QWidget* Widget() = 0;
};

// A text box of one line.
class TextBox : public QLineEdit, public SelectableText {
    Q_OBJECT
public:
    explicit TextBox(QWidget* parent = nullptr) : QLineEdit(parent) {}
    QString Text() const override { return text(); }
    void SetText(const QString& t) override { setText(t); }
    int SelStart() const override;
    int SelLength() const override { return int(selectedText().size()); }
    void SetSelStart(int start) override;
    void SetSelLength(int length) override;
    QWidget* Widget() override { return this; }
};

// A text box of many lines, wrapped at words, with a scroll bar when the text is longer than the
// box. Line breaks of either kind ("\r\n" or "\n") are kept as "\n". The selection stays visible
// when the box loses the focus, so a task can mark a word while the learner looks elsewhere.
class TextArea : public QPlainTextEdit, public SelectableText {
    Q_OBJECT
public:
    explicit TextArea(QWidget* parent = nullptr);
    QString Text() const override { return toPlainText(); }
    void SetText(const QString& t) override;
    int SelStart() const override;
    int SelLength() const override;
    void SetSelStart(int start) override;
    void SetSelLength(int length) override;
    QWidget* Widget() override { return this; }
    // The learner can select but not change the text.
    void SetLocked(bool locked) { setReadOnly(locked); }
};

class ComboBox : public QComboBox {
    Q_OBJECT
public:
    explicit ComboBox(QWidget* parent = nullptr) : QComboBox(parent) {}
    // Setting the index runs the click handler, as a selection by the learner does.
    int ListIndex() const { return currentIndex(); }
    void SetListIndex(int i);
Q_SIGNALS:
    void Click();
};

class CheckBox : public QCheckBox {
    Q_OBJECT
public:
    explicit CheckBox(QWidget* parent = nullptr) : QCheckBox(parent) {}
};

class OptionButton : public QRadioButton {
    Q_OBJECT
public:
    explicit OptionButton(QWidget* parent = nullptr) : QRadioButton(parent) {}
};

// A bar that may be moved tens of thousands of times while the event loop is blocked. Max and
// Value are what was set, at once; the bar reaches the screen, painted at once since it is the
// only sign of life then, when its fill moves by a pixel and at most once per frame. A value held
// back by the frame is painted on the next turn of the event loop.
class ProgressBar : public QProgressBar {
    Q_OBJECT
public:
    explicit ProgressBar(QWidget* parent = nullptr);
    int Max() const { return max_; }
    void SetMax(int m);
    int Value() const { return value_; }
    void SetValue(int v);

    // How often the bar has been put on the screen; for tests and the start-up benchmark.
    int Paints() const { return paints_; }
    static constexpr int kFrameMs = 16;

private:
    int fillOf(int value) const;
    void refresh(bool force);
    void paintNow();

    int max_ = 100;
    int value_ = 0;
    int shownFill_ = -1; // the fill in pixels last put on the screen, -1 for none
    int paints_ = 0;
    bool waiting_ = false; // a paint held back by the frame is queued
    QElapsedTimer sinceLastPaint_;
};

// A picture that can be clicked and that reports the mouse over it in twips.
class ImageBox : public QWidget {
    Q_OBJECT
public:
    explicit ImageBox(QWidget* parent = nullptr);
    // The picture, drawn now if it was still waiting to be drawn.
    const QPixmap& Picture() const;
    void SetPicture(const QPixmap& p);
    // A picture that is drawn by draw only when it is first needed: when the control is first
    // painted or its Picture is asked for. Drawing artwork costs time at start; many pictures are
    // never shown at all.
    void SetPictureSource(std::function<QPixmap(QSize size)> draw);
    // An SVG or other image file (or a ":/" resource) scaled to the control's size, as a
    // picture source: drawn at the size the control has when it is first needed.
    void LoadPicture(const QString& path);
    // Whether a picture is waiting to be drawn; for tests.
    bool PicturePending() const { return bool(source_); }
    bool Stretch = true;
    // A tag for tests and diagnostics: which picture is shown ("neutral", "hover", ...).
    QString PictureName;

Q_SIGNALS:
    void Click();
    void MouseMove(int button, int shift, int x, int y);
    void MouseDown(int button, int shift, int x, int y);

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseReleaseEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;

private:
    mutable QPixmap picture_;
    mutable std::function<QPixmap(QSize)> source_;
};

// A filled shape: rectangle or circle.
class Shape : public QWidget {
    Q_OBJECT
public:
    enum class Kind { Rectangle, Circle, RoundedRectangle };
    explicit Shape(QWidget* parent = nullptr) : QWidget(parent) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    Kind kind = Kind::Rectangle;
    unsigned FillColor = 0xFFFFFF; // blue-green-red
    unsigned BorderColor = 0;
    bool Filled = false;
    int BorderWidth = 1;

protected:
    void paintEvent(QPaintEvent*) override;
};

} // namespace vt
