// The position bar: how far it fills and where a press says it was.

#include "core/app_form.h"
#include "support/test_env.h"
#include "tasks/fen_pei_tiao.h"

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace vt {
namespace {

class BarForm final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "BarForm";
    explicit BarForm(Runtime& runtime) : AppForm(runtime, kName) {
        Move(0, 0, 6000, 1500);
        AddControl(NAMED(FenPeiTiao1), {0, 0, 3000, 300}); // 30 twips are a hundredth
    }
    FenPeiTiao* FenPeiTiao1 = nullptr;
};

struct Bar : ::testing::Test {
    test::TestEnv env;
    FenPeiTiao* bar = nullptr;
    void SetUp() override {
        auto* form = env.rt->forms.Load<BarForm>();
        form->Show();
        bar = form->FenPeiTiao1;
    }
    int set(float x) {
        bar->SetProgress(x);
        return bar->Filled();
    }
};

TEST_F(Bar, FillsInWholeTwipsAndIgnoresStepsUnderAHundredth) {
    EXPECT_EQ(bar->Filled(), FenPeiTiao::kMinimumWidth);
    EXPECT_EQ(HeightTwips(bar->Shape1), 300);

    float x = 1200.9f;
    bar->SetProgress(x);
    EXPECT_EQ(x, 1200.0f) << "rounded down for the caller too";
    EXPECT_EQ(bar->Filled(), 1200);
    EXPECT_EQ(WidthTwips(bar->Shape1), 1200);

    EXPECT_EQ(set(1230), 1200) << "a step of a hundredth is not shown";
    EXPECT_EQ(set(1170), 1200);
    EXPECT_EQ(set(1231), 1231);
    EXPECT_EQ(set(2987), 2987) << "up to the end less the minimum";
    EXPECT_EQ(set(2988), 3000) << "past that the bar is full";
    EXPECT_EQ(set(99999), 3000);
    EXPECT_EQ(set(0.5f), FenPeiTiao::kMinimumWidth) << "under a whole twip the bar is empty";
    set(2000);
    EXPECT_EQ(set(-5), FenPeiTiao::kMinimumWidth);
}

TEST_F(Bar, APressSaysWhereItWas) {
    QSignalSpy seek(bar, &FenPeiTiao::Seek);
    QTest::mouseClick(bar, Qt::LeftButton, {}, QPoint(100, 5));
    ASSERT_EQ(seek.count(), 1);
    EXPECT_EQ(seek.at(0).at(0).toFloat(), 1500.0f);
}

} // namespace
} // namespace vt

#include "fen_pei_tiao_test.moc"
