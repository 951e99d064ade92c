#include "platform/controls.h"

#include "platform/helpers.h"

#include <QMouseEvent>
#include <QPainter>
#include <QSvgRenderer>

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

ProgressBar::ProgressBar(QWidget* parent) : QProgressBar(parent) {
    setRange(0, 100);
    setValue(0);
    setTextVisible(false);
}

void ProgressBar::SetValue(int v) {
    setValue(std::clamp(v, minimum(), maximum()));
    repaint();
}

ImageBox::ImageBox(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
}

void ImageBox::SetPicture(const QPixmap& p) {
    picture_ = p;
    update();
}

void ImageBox::LoadPicture(const QString& path) {
    if (path.endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive)) {
        QSvgRenderer svg(path);
        const qreal dpr = devicePixelRatioF();
        QSize size = this->size().isEmpty() ? svg.defaultSize() : this->size();
        QPixmap pm(size * dpr);
        pm.setDevicePixelRatio(dpr);
        pm.fill(Qt::transparent);
        QPainter p(&pm);
        svg.render(&p, QRectF(QPointF(0, 0), QSizeF(size)));
        SetPicture(pm);
    } else {
        SetPicture(QPixmap(path));
    }
}

void ImageBox::paintEvent(QPaintEvent*) {
    if (picture_.isNull()) return;
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
