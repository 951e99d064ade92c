#pragma once
// Screen metrics in twips (1440 per inch, 15 per logical pixel at 96 dpi). Qt's high-DPI
// scaling turns logical pixels into device pixels; this is the one place twips meet pixels.

#include "platform/helpers.h"
#include <QRect>
#include <QWidget>

namespace vt {

constexpr int kTwipsPerPixel = 15;

inline int TwipsToPx(int twips) {
    return static_cast<int>(RoundHalfEven(static_cast<double>(twips) / kTwipsPerPixel));
}
inline int PxToTwips(int px) {
    return px * kTwipsPerPixel;
}
inline QRect TwipsToPx(int left, int top, int width, int height) {
    return QRect(TwipsToPx(left), TwipsToPx(top), TwipsToPx(width), TwipsToPx(height));
}
// Places a control at a position and size given in twips, relative to its parent. The twips are
// kept with the control, so that reading them back gives what was set and not a value rounded
// through pixels.
void PlaceTwips(QWidget* w, int left, int top, int width, int height);
// The control's place in twips: as last set, while its pixels still agree; else from the pixels.
QRect TwipsOf(const QWidget* w);

class ScreenInfo {
public:
    virtual ~ScreenInfo() = default;
    // The whole screen, in twips.
    virtual int Width() const = 0;
    virtual int Height() const = 0;
    // The part of the screen left free by the task bar and panels, in twips.
    virtual QRect Available() const = 0;
    int TwipsPerPixelX() const { return kTwipsPerPixel; }
    int TwipsPerPixelY() const { return kTwipsPerPixel; }
};

class QtScreenInfo final : public ScreenInfo {
public:
    int Width() const override;
    int Height() const override;
    QRect Available() const override;
};

// A screen of a fixed size, for tests: 1024 x 768 pixels unless told otherwise.
class FixedScreenInfo final : public ScreenInfo {
public:
    explicit FixedScreenInfo(int widthPx = 1024, int heightPx = 768, int taskbarPx = 40)
        : w_(widthPx), h_(heightPx), bar_(taskbarPx) {}
    int Width() const override { return PxToTwips(w_); }
    int Height() const override { return PxToTwips(h_); }
    QRect Available() const override { return {0, 0, PxToTwips(w_), PxToTwips(h_ - bar_)}; }

private:
    int w_, h_, bar_;
};

} // namespace vt
