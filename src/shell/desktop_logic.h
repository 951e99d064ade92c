#pragma once
// The desktop's arithmetic without widgets: where the tone marker starts and how it moves, the
// two clocks' texts, and the geometry of each screen mode.

#include <QDateTime>
#include <QRect>
#include <QString>
#include <QTimeZone>
#include <cstdint>

namespace vt {

struct MarkerSteps {
    int16_t x = 0;    // horizontal step per tick
    int16_t y = 0;    // vertical step per tick
    int16_t deep = 0; // twice y, for the third tone
};

// The marker crosses a form of width w in 500 ms, one tick every intervalMs.
MarkerSteps ComputeMarkerSteps(int w, int h, int intervalMs);

// Where the marker starts for a tone digit: left is always minus the marker's width.
struct MarkerStart {
    int left = 0;
    int top = 0;
    QString caption; // the tone's name for Label4
};
MarkerStart ToneCurveStart(const QString& tone, int formHeight, int label4Height, int markerWidth,
                           int markerHeight);

// One tick of the marker along the curve of the tone key; returns the new top.
int MarkerNextTop(const QString& toneKey, int left, int top, const MarkerSteps& steps,
                  int formWidth, int markerWidth);

// The local offset from UTC in minutes, and the name of the zone in force at that moment.
struct LocalZone {
    int offsetMinutes = 0;
    QString name;
};
LocalZone GetLocalTZ(const QTimeZone& zone, const QDateTime& at);

// The two clock captions for a moment of local time.
struct ClockTexts {
    QString local;    // Label6
    QString beijing;  // Label5
    int localDay = 0; // 1 Sunday .. 7 Saturday
    int beijingDay = 0;
};
ClockTexts ComputeClocks(const QDateTime& localNow, int beijingOffsetMinutes);

// "hh:mm AM/PM" of a time of day.
QString TwelveHourText(int hour, int minute);

// The desktop's place for a screen mode; nullopt-like: visible false for mode 2 (hidden).
struct ScreenModeGeometry {
    bool visible = true;
    QRect rect; // twips; unchanged size for a hidden desktop
};
ScreenModeGeometry ScreenModeFor(int mode, int screenWidth, int screenHeight, QRect current);

} // namespace vt
