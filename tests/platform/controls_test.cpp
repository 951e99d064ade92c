// The progress bar that is moved tens of thousands of times in one blocked tick, and pictures
// that are drawn only when they are needed.
#include "platform/controls.h"

#include <gtest/gtest.h>

using namespace vt;

TEST(ProgressBar, KeepsEveryValueButReachesTheScreenOnlyWhenTheFillMoves) {
    ProgressBar bar;
    bar.resize(300, 20);
    bar.show();
    const int before = bar.Paints();

    bar.SetMax(32000);
    for (int v = 1; v <= 32000; ++v) {
        bar.SetValue(v);
        ASSERT_EQ(bar.Value(), v);
    }
    EXPECT_EQ(bar.Max(), 32000);
    // At most one paint per pixel of the fill, and far fewer in a tight loop held to frames.
    EXPECT_LE(bar.Paints() - before, 300);
    EXPECT_GE(bar.Paints() - before, 1);
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
    form.repaint();
    EXPECT_TRUE(box->PicturePending());
    EXPECT_FALSE(box->Picture().isNull()) << "the artwork is there when asked for";
    EXPECT_EQ(box->Picture().size(), QSize(80, 40));
}
