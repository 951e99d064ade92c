#pragma once
// The position bar beside a sound or a search: a filled part from the left edge shows how far it
// has come, and a press anywhere on the bar tells where (Seek), so a form can jump there. All
// places are twips of the bar's own width.

#include "platform/controls.h"

namespace vt {

class FenPeiTiao : public QWidget {
    Q_OBJECT
public:
    // The filled part never gets narrower than this.
    static constexpr int kMinimumWidth = 13;

    explicit FenPeiTiao(QWidget* parent = nullptr);

    // Fills the bar to x twips. x is rounded down in place, for the caller too. Nothing or less
    // fills the minimum; past the end fills the whole bar. A step smaller than a hundredth of the
    // bar is not shown, so a sound's many small steps do not repaint it each time.
    void SetProgress(float& x);
    // The width of the filled part, in twips.
    int Filled() const { return present_; }

    Shape* Shape1 = nullptr;

Q_SIGNALS:
    // A press on the bar at x twips from its left edge.
    void Seek(float x);

protected:
    void resizeEvent(QResizeEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    void fill(int width);
    int innerWidth() const { return WidthTwips(this); }
    int innerHeight() const { return HeightTwips(this); }

    int present_ = kMinimumWidth;
};

} // namespace vt
