#include "tasks/fen_pei_tiao.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace vt {

FenPeiTiao::FenPeiTiao(QWidget* parent) : QWidget(parent) {
    Shape1 = new Shape(this);
    Shape1->setObjectName(QStringLiteral("Shape1"));
    Shape1->Filled = true;
    Shape1->FillColor = 0xC08040; // a calm blue
    Shape1->BorderWidth = 0;
    fill(kMinimumWidth);
}

void FenPeiTiao::fill(int width) {
    PlaceTwips(Shape1, 0, 0, width, innerHeight());
    // Never less than one pixel, so the start of the bar can always be seen.
    if (Shape1->width() < 1) Shape1->resize(1, Shape1->height());
    present_ = width;
}

void FenPeiTiao::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    // The filled part takes the new height and keeps its width as far as the bar allows, so a
    // position set before the bar was first shown stands.
    fill(std::clamp(present_, kMinimumWidth, std::max(innerWidth(), kMinimumWidth)));
}

void FenPeiTiao::SetProgress(float& x) {
    x = std::floor(x);
    const int inner = innerWidth();
    if (x <= 0) {
        fill(kMinimumWidth);
    } else if (x <= float(inner - kMinimumWidth)) {
        const int wanted = int(x);
        if (std::abs(wanted - present_) > inner / 100) fill(wanted);
    } else {
        fill(inner);
    }
}

void FenPeiTiao::mousePressEvent(QMouseEvent* e) {
    Q_EMIT Seek(float(PxToTwips(1) * e->position().x()));
}

void FenPeiTiao::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), QColor(0xF4, 0xF4, 0xF4));
    p.setPen(QColor(0x80, 0x80, 0x80));
    p.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace vt
