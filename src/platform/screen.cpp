#include "platform/screen.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVariant>

namespace vt {

namespace {
constexpr const char* kTwipsProperty = "vtTwips";
}

void PlaceTwips(QWidget* w, int left, int top, int width, int height) {
    w->setProperty(kTwipsProperty, QRect(left, top, width, height));
    w->setGeometry(TwipsToPx(left, top, width, height));
}

QRect TwipsOf(const QWidget* w) {
    const QVariant v = w->property(kTwipsProperty);
    if (v.isValid()) {
        const QRect t = v.toRect();
        if (TwipsToPx(t.x(), t.y(), t.width(), t.height()) == w->geometry()) return t;
    }
    return {PxToTwips(w->x()), PxToTwips(w->y()), PxToTwips(w->width()), PxToTwips(w->height())};
}

namespace {
QRect primary(bool available) {
    QScreen* s = QGuiApplication::primaryScreen();
    if (!s) return {0, 0, 1024, 768};
    return available ? s->availableGeometry() : s->geometry();
}
} // namespace

int QtScreenInfo::Width() const {
    return PxToTwips(primary(false).width());
}
int QtScreenInfo::Height() const {
    return PxToTwips(primary(false).height());
}
QRect QtScreenInfo::Available() const {
    const QRect r = primary(true);
    return {PxToTwips(r.x()), PxToTwips(r.y()), PxToTwips(r.width()), PxToTwips(r.height())};
}

} // namespace vt
