#include "platform/screen.h"

#include <QGuiApplication>
#include <QScreen>

namespace vt {

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
