// The progress bar that is moved tens of thousands of times in one blocked tick, and pictures
// that are drawn only when they are needed.
#include "platform/controls.h"

#include <QElapsedTimer>
#include <QTest>
#include <gtest/gtest.h>

using namespace vt;

namespace {

// Runs the event loop for ms milliseconds of real time.
void runEvents(int ms) {
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < ms)
        QTest::qWait(5);
}

} // namespace

TEST(ProgressBar, KeepsEveryValueButReachesTheScreenOnlyWhenTheFillMoves) {
    ProgressBar bar;
    bar.resize(300, 20);
    bar.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&bar));
    const int before = bar.Paints();

    bar.SetMax(32000);
    for (int v = 1; v <= 32000; ++v) {
        bar.SetValue(v);
        ASSERT_EQ(bar.Value(), v);
    }
    EXPECT_EQ(bar.Max(), 32000);
    // At most one paint per pixel of the fill, and far fewer in a tight loop held to frames.
    EXPECT_LE(bar.Paints() - before, 300);

    // The last value reaches the screen once the event loop turns.
    runEvents(3 * ProgressBar::kFrameMs);
    EXPECT_EQ(bar.value(), 32000);
    EXPECT_EQ(bar.maximum(), 32000);
}

TEST(ProgressBar, ValuesStayInsideTheRangeAndANewMaximumHoldsThem) {
    ProgressBar bar;
    bar.SetMax(160);
    bar.SetValue(200);
    EXPECT_EQ(bar.Value(), 160);
    bar.SetValue(-3);
    EXPECT_EQ(bar.Value(), 0);
    bar.SetValue(150);
    bar.SetMax(140);
    EXPECT_EQ(bar.Value(), 140);
    EXPECT_EQ(bar.value(), 140) << "a new maximum is shown at once";
}

TEST(ImageBox, APictureIsDrawnOnlyWhenItIsFirstNeeded) {
    ImageBox box;
    box.resize(40, 30);
    int draws = 0;
    box.SetPictureSource([&draws](QSize size) {
        ++draws;
        QPixmap pm(size);
        pm.fill(Qt::red);
        return pm;
    });
    EXPECT_TRUE(box.PicturePending());
    EXPECT_EQ(draws, 0);

    box.resize(60, 50); // drawn at the size it has when it is needed
    EXPECT_EQ(box.Picture().size(), QSize(60, 50));
    box.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&box));
    box.repaint();
    EXPECT_EQ(draws, 1) << "drawn once";
    EXPECT_FALSE(box.PicturePending());

    // A picture set outright replaces one still waiting, which is then never drawn.
    box.SetPictureSource([&draws](QSize) {
        ++draws;
        return QPixmap();
    });
    box.SetPicture(QPixmap(5, 5));
    EXPECT_EQ(box.Picture().size(), QSize(5, 5));
    EXPECT_EQ(draws, 1);
}

TEST(ImageBox, ArtworkOfAHiddenControlIsNotDrawn) {
    QWidget form;
    auto* box = new ImageBox(&form);
    box->resize(80, 40);
    box->LoadPicture(QStringLiteral(":/step1.svg"));
    box->hide();
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    form.repaint();
    EXPECT_TRUE(box->PicturePending());
    EXPECT_FALSE(box->Picture().isNull()) << "the artwork is there when asked for";
    EXPECT_EQ(box->Picture().size(), QSize(80, 40));
}
