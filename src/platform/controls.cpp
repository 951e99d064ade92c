#include "platform/controls.h"

#include "platform/helpers.h"

#include <algorithm>

#include <QMouseEvent>
#include <QPainter>
#include <QSvgRenderer>
#include <QTextCursor>
#include <QTimer>

namespace vt {

Label::Label(QWidget* parent) : QLabel(parent) {
    setWordWrap(true);
}

void Label::SetForeColor(unsigned bgr) {
    foreBgr_ = bgr;
    QPalette p = palette();
    p.setColor(QPalette::WindowText, BgrColor(bgr));
    setPalette(p);
}

void Label::SetBackColor(unsigned bgr) {
    setAutoFillBackground(true);
    QPalette p = palette();
    p.setColor(QPalette::Window, BgrColor(bgr));
    setPalette(p);
}

void Label::SetFontSize(double points) {
    QFont f = font();
    f.setPointSizeF(points);
    setFont(f);
}

void Label::SetFontBold(bool bold) {
    QFont f = font();
    f.setBold(bold);
    setFont(f);
}

void ComboBox::SetListIndex(int i) {
    setCurrentIndex(i);
    Q_EMIT Click();
}

int TextBox::SelStart() const {
    return hasSelectedText() ? selectionStart() : cursorPosition();
}

void TextBox::SetSelStart(int start) {
    setCursorPosition(std::clamp(start, 0, int(text().size())));
}

void TextBox::SetSelLength(int length) {
    const int start = SelStart();
    setSelection(start, std::clamp(length, 0, int(text().size()) - start));
}

TextArea::TextArea(QWidget* parent) : QPlainTextEdit(parent) {
    setLineWrapMode(QPlainTextEdit::WidgetWidth);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QPalette p = palette();
    p.setColor(QPalette::Inactive, QPalette::Highlight,
               p.color(QPalette::Active, QPalette::Highlight));
    p.setColor(QPalette::Inactive, QPalette::HighlightedText,
               p.color(QPalette::Active, QPalette::HighlightedText));
    setPalette(p);
}

void TextArea::SetText(const QString& t) {
    QString text = t;
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(u'\r', u'\n');
    setPlainText(text);
}

int TextArea::SelStart() const {
    return textCursor().selectionStart();
}

int TextArea::SelLength() const {
    const QTextCursor c = textCursor();
    return c.selectionEnd() - c.selectionStart();
}

void TextArea::SetSelStart(int start) {
    QTextCursor c = textCursor();
    c.setPosition(std::clamp(start, 0, int(toPlainText().size())));
    setTextCursor(c);
}

void TextArea::SetSelLength(int length) {
    QTextCursor c = textCursor();
    const int start = c.selectionStart();
    const int end = std::clamp(start + length, start, int(toPlainText().size()));
    c.setPosition(start);
    c.setPosition(end, QTextCursor::KeepAnchor);
    setTextCursor(c);
    ensureCursorVisible();
}

ProgressBar::ProgressBar(QWidget* parent) : QProgressBar(parent) {
    setRange(0, max_);
    setValue(0);
    setTextVisible(false);
}

void ProgressBar::SetMax(int m) {
    max_ = std::max(m, 0);
    value_ = std::clamp(value_, 0, max_);
    refresh(true);
}

void ProgressBar::SetValue(int v) {
    const int value = std::clamp(v, 0, max_);
    if (value == value_) return;
    value_ = value;
    refresh(false);
}

int ProgressBar::fillOf(int value) const {
    if (max_ <= 0) return 0;
    return static_cast<int>(qint64(value) * contentsRect().width() / max_);
}

void ProgressBar::refresh(bool force) {
    if (!force && fillOf(value_) == shownFill_) return;
    // A new maximum is rare and is shown at once; values wait for the next frame.
    if (!force && sinceLastPaint_.isValid() && sinceLastPaint_.elapsed() < kFrameMs) {
        if (waiting_) return;
        waiting_ = true;
        QTimer::singleShot(kFrameMs, this, [this] {
            waiting_ = false;
            paintNow();
        });
        return;
    }
    paintNow();
}

void ProgressBar::paintNow() {
    if (maximum() != max_) setRange(0, max_);
    setValue(value_);
    shownFill_ = fillOf(value_);
    if (isVisible()) {
        repaint();
        ++paints_;
    }
    sinceLastPaint_.start();
}

ImageBox::ImageBox(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
}

const QPixmap& ImageBox::Picture() const {
    if (source_) {
        const auto draw = std::move(source_);
        source_ = nullptr;
        picture_ = draw(size());
    }
    return picture_;
}

void ImageBox::SetPicture(const QPixmap& p) {
    source_ = nullptr;
    picture_ = p;
    QWidget::update();
}

void ImageBox::SetPictureSource(std::function<QPixmap(QSize)> draw) {
    source_ = std::move(draw);
    picture_ = QPixmap();
    QWidget::update();
}

void ImageBox::LoadPicture(const QString& path) {
    if (!path.endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive)) {
        SetPictureSource([path](QSize) { return QPixmap(path); });
        return;
    }
    const qreal dpr = devicePixelRatioF();
    SetPictureSource([path, dpr](QSize size) {
        QSvgRenderer svg(path);
        if (size.isEmpty()) size = svg.defaultSize();
        QPixmap pm(size * dpr);
        pm.setDevicePixelRatio(dpr);
        pm.fill(Qt::transparent);
        QPainter p(&pm);
        svg.render(&p, QRectF(QPointF(0, 0), QSizeF(size)));
        return pm;
    });
}

void ImageBox::paintEvent(QPaintEvent*) {
    if (Picture().isNull()) return;
    QPainter p(this);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    if (Stretch)
        p.drawPixmap(rect(), picture_);
    else
        p.drawPixmap(0, 0, picture_);
}

void ImageBox::mousePressEvent(QMouseEvent* e) {
    const QPoint pt = e->position().toPoint();
    Q_EMIT MouseDown(Form::ButtonOf(e->button()), Form::ShiftOf(e->modifiers()), PxToTwips(pt.x()),
                     PxToTwips(pt.y()));
}

void ImageBox::mouseReleaseEvent(QMouseEvent* e) {
    if (e->button() == Qt::LeftButton && rect().contains(e->position().toPoint())) Q_EMIT Click();
}

void ImageBox::mouseMoveEvent(QMouseEvent* e) {
    const QPoint pt = e->position().toPoint();
    Q_EMIT MouseMove(Form::ButtonOf(e->buttons()), Form::ShiftOf(e->modifiers()), PxToTwips(pt.x()),
                     PxToTwips(pt.y()));
}

void Shape::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    QPen pen(BgrColor(BorderColor));
    pen.setWidth(BorderWidth);
    p.setPen(BorderWidth > 0 ? pen : QPen(Qt::NoPen));
    p.setBrush(Filled ? QBrush(BgrColor(FillColor)) : QBrush(Qt::NoBrush));
    const QRectF r = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    switch (kind) {
    case Kind::Circle:
        p.drawEllipse(r);
        break;
    case Kind::RoundedRectangle:
        p.drawRoundedRect(r, 6, 6);
        break;
    default:
        p.drawRect(r);
        break;
    }
}

} // namespace vt
