#include "shell/desktop_logic.h"

#include "core/pinyin.h"
#include "platform/helpers.h"

#include <QLocale>

namespace vt {

MarkerSteps ComputeMarkerSteps(int w, int h, int intervalMs) {
    MarkerSteps s;
    if (intervalMs <= 0) return s;
    const double ticks = 500.0 / intervalMs;
    s.x = static_cast<int16_t>(RoundHalfEven(w / ticks));
    s.y = static_cast<int16_t>(RoundHalfEven((h - 260) / ticks));
    s.deep = static_cast<int16_t>(s.y * 2);
    return s;
}

MarkerStart ToneCurveStart(const QString& tone, int formHeight, int label4Height, int markerWidth,
                           int markerHeight) {
    MarkerStart m;
    m.left = -markerWidth;
    if (tone == u"0") {
        m.top = formHeight - label4Height - 260;
        m.caption = QStringLiteral("Light tone");
    } else if (tone == u"1") {
        m.top = 390;
        m.caption = QStringLiteral("The 1st tone");
    } else if (tone == u"2") {
        m.top = formHeight;
        m.caption = QStringLiteral("The 2nd tone");
    } else if (tone == u"3") {
        m.top = -markerHeight;
        m.caption = QStringLiteral("The 3rd tone");
    } else {
        m.top = -markerHeight;
        m.caption = QStringLiteral("The 4th tone");
    }
    return m;
}

int MarkerNextTop(const QString& toneKey, int left, int top, const MarkerSteps& steps,
                  int formWidth, int markerWidth) {
    if (toneKey == u"0" || toneKey == u"1") return top;
    if (toneKey == u"2") return top - steps.y;
    if (toneKey == u"3")
        return left <= (formWidth - markerWidth) / 2 ? top + steps.deep : top - steps.deep;
    return top + steps.y;
}

LocalZone GetLocalTZ(const QTimeZone& zone, const QDateTime& at) {
    LocalZone z;
    if (!zone.isValid()) return z;
    z.offsetMinutes = zone.offsetFromUtc(at) / 60;
    const auto kind = zone.isDaylightTime(at) ? QTimeZone::DaylightTime : QTimeZone::StandardTime;
    z.name = zone.displayName(kind, QTimeZone::LongName).left(32);
    return z;
}

QString TwelveHourText(int hour, int minute) {
    return QLocale::c().toString(QTime(hour, minute), QStringLiteral("hh:mm AP"));
}

namespace {
QString clockLine(const QString& head, int day, int hour, int minute) {
    const QString s = TwelveHourText(hour, minute);
    const QString m =
        s.endsWith(QStringLiteral("AM")) ? QStringLiteral("上午") : QStringLiteral("下午");
    return head + WeekdayText(0, day) + QStringLiteral("  ") + WeekdayText(-1, day) +
           QStringLiteral("  ") + m + u' ' + s;
}
} // namespace

ClockTexts ComputeClocks(const QDateTime& localNow, int beijingOffsetMinutes) {
    ClockTexts c;
    const int d = localNow.date().dayOfWeek() % 7 + 1; // Qt: Monday 1 .. Sunday 7
    c.localDay = d;
    const QTime t = localNow.time();
    c.local = clockLine(QStringLiteral("Local Time  本地时间："), d, t.hour(), t.minute());

    int b = t.hour() * 60 + t.minute() + beijingOffsetMinutes;
    int bd = d;
    if (b < 0) {
        b += 1440;
        bd = d == 1 ? 7 : d - 1;
    } else if (b >= 1440) {
        b -= 1440;
        bd = d == 7 ? 1 : d + 1;
    }
    c.beijingDay = bd;
    c.beijing = clockLine(QStringLiteral("Beijing Time  北京时间："), bd, b / 60, b % 60);
    return c;
}

ScreenModeGeometry ScreenModeFor(int mode, int screenWidth, int screenHeight, QRect current) {
    ScreenModeGeometry g;
    switch (mode) {
    case 0:
        g.rect = QRect(0, 0, screenWidth, screenHeight);
        break;
    case 1:
        g.rect = QRect(0, 0, screenWidth, screenHeight - 494);
        break;
    default:
        g.visible = false;
        g.rect = current;
        break;
    }
    return g;
}

} // namespace vt
