// The desktop: the tone marker's curves, the two clocks, the screen modes and Setting.zvk.

#include "core/runtime.h"
#include "shell/background.h"
#include "shell/desktop_logic.h"
#include "support/test_env.h"

#include <gtest/gtest.h>

using namespace vt;
using vt::test::TestEnv;

namespace {

// Walks the marker along a tone's curve until it leaves the form; returns the tops visited.
std::vector<int> walk(const QString& tone, int w, int h) {
    const MarkerSteps steps = ComputeMarkerSteps(w, h, 10);
    const int mw = 240, mh = 240, l4h = 330;
    MarkerStart s = ToneCurveStart(tone, h, l4h, mw, mh);
    int left = s.left, top = s.top;
    std::vector<int> tops{top};
    while (left < w) {
        top = MarkerNextTop(tone, left, top, steps, w, mw);
        left += steps.x;
        tops.push_back(top);
    }
    return tops;
}

TEST(ToneMarker, EachToneFollowsItsCurve) {
    const int w = 15360, h = 11520;
    const auto level1 = walk("1", w, h);
    EXPECT_EQ(level1.front(), 390);
    EXPECT_EQ(level1.back(), 390);
    const auto light = walk("0", w, h);
    EXPECT_EQ(light.front(), h - 330 - 260);
    EXPECT_EQ(light.back(), light.front());
    const auto rising = walk("2", w, h);
    EXPECT_EQ(rising.front(), h);
    EXPECT_LT(rising.back(), rising.front());
    EXPECT_TRUE(std::is_sorted(rising.rbegin(), rising.rend()));
    const auto falling = walk("4", w, h);
    EXPECT_EQ(falling.front(), -240);
    EXPECT_TRUE(std::is_sorted(falling.begin(), falling.end()));
    EXPECT_EQ(walk("7", w, h), falling) << "any other digit falls like the fourth";
}

TEST(ToneMarker, TheThirdToneTurnsAtTheMiddle) {
    const int w = 15360, h = 11520, mw = 240;
    const MarkerSteps steps = ComputeMarkerSteps(w, h, 10);
    const auto tops = walk("3", w, h);
    const auto lowest = std::max_element(tops.begin(), tops.end()) - tops.begin();
    // Tick k starts at left = -mw + (k-1) * x; the last downward tick starts at or before the
    // middle, the first upward one after it.
    const int leftAtTurn = -mw + static_cast<int>(lowest - 1) * steps.x;
    const int leftAfter = leftAtTurn + steps.x;
    EXPECT_LE(leftAtTurn, (w - mw) / 2);
    EXPECT_GT(leftAfter, (w - mw) / 2);
    EXPECT_EQ(tops.front(), -240);
    EXPECT_EQ(tops[1] - tops[0], steps.deep);
    EXPECT_EQ(tops.back() - tops[tops.size() - 2], -steps.deep);
}

QDateTime at(int y, int mo, int d, int h, int mi, int offsetHours) {
    return QDateTime(QDate(y, mo, d), QTime(h, mi), QTimeZone(offsetHours * 3600));
}

TEST(Clocks, BeijingAgainstLocalTime) {
    struct Row {
        const char* name;
        QDateTime local;
        int offsetHours;
        const char* localText;
        const char* beijingText;
    } rows[] = {
        {"UTC+8: both clocks agree", at(2026, 11, 23, 9, 5, 8), 8,
         "Local Time  本地时间：Monday  星期一  上午 09:05 AM",
         "Beijing Time  北京时间：Monday  星期一  上午 09:05 AM"},
        {"UTC-5 before 11:00 stays on the day", at(2026, 11, 23, 10, 59, -5), -5,
         "Local Time  本地时间：Monday  星期一  上午 10:59 AM",
         "Beijing Time  北京时间：Monday  星期一  下午 11:59 PM"},
        {"UTC-5 from 11:00 is the next day", at(2026, 11, 23, 11, 0, -5), -5,
         "Local Time  本地时间：Monday  星期一  上午 11:00 AM",
         "Beijing Time  北京时间：Tuesday  星期二  上午 12:00 AM"},
        {"Saturday moves on to Sunday", at(2026, 11, 28, 20, 30, -5), -5,
         "Local Time  本地时间：Saturday  星期六  下午 08:30 PM",
         "Beijing Time  北京时间：Sunday  星期日  上午 09:30 AM"},
        {"Sunday moves back to Saturday", at(2026, 11, 29, 2, 0, 14), 14,
         "Local Time  本地时间：Sunday  星期日  上午 02:00 AM",
         "Beijing Time  北京时间：Saturday  星期六  下午 08:00 PM"},
        {"Wednesday keeps its spelling", at(2026, 11, 25, 15, 0, 8), 8,
         "Local Time  本地时间：Wednsday  星期三  下午 03:00 PM",
         "Beijing Time  北京时间：Wednsday  星期三  下午 03:00 PM"},
    };
    for (const auto& r : rows) {
        const LocalZone z = GetLocalTZ(QTimeZone(r.offsetHours * 3600), r.local);
        EXPECT_EQ(z.offsetMinutes, r.offsetHours * 60) << r.name;
        const ClockTexts c = ComputeClocks(r.local, 480 - z.offsetMinutes);
        EXPECT_EQ(c.local, QString::fromUtf8(r.localText)) << r.name;
        EXPECT_EQ(c.beijing, QString::fromUtf8(r.beijingText)) << r.name;
    }
}

TEST(Clocks, DaylightSavingUsesTheZoneInForce) {
    const QTimeZone ny("America/New_York");
    if (!ny.isValid()) GTEST_SKIP() << "no time zone data on this machine";
    const LocalZone summer = GetLocalTZ(ny, QDateTime(QDate(2026, 7, 1), QTime(12, 0), ny));
    const LocalZone winter = GetLocalTZ(ny, QDateTime(QDate(2026, 1, 1), QTime(12, 0), ny));
    EXPECT_EQ(summer.offsetMinutes, -240);
    EXPECT_EQ(winter.offsetMinutes, -300);
    EXPECT_NE(summer.name, winter.name);
}

struct Desktop : ::testing::Test {
    TestEnv env;
    Runtime& rt = *env.rt;
    Background* bg = nullptr;
    void SetUp() override { bg = rt.forms.Load<Background>(); }
    QByteArray setting() { return env.Read("Setting.zvk"); }
};

TEST_F(Desktop, ScreenModesPlaceTheDesktopAndStoreTheMode) {
    env.WriteFile("Setting.zvk", PackInt16LE({1, 192, 168, 0, 7, 1980}));
    bg->ApplyScreenMode(0, true);
    EXPECT_EQ(QRect(bg->Left(), bg->Top(), bg->Width(), bg->Height()),
              QRect(0, 0, rt.screen.Width(), rt.screen.Height()));
    EXPECT_EQ(setting(), PackInt16LE({0, 192, 168, 0, 7, 1980})) << "the other fields stay";
    EXPECT_EQ(TopTwips(bg->Label5) + HeightTwips(bg->Label5) + 65, bg->Height());
    EXPECT_EQ(LeftTwips(bg->Label4), 130);

    bg->ApplyScreenMode(1, true);
    EXPECT_EQ(bg->Height(), rt.screen.Height() - 494);
    EXPECT_EQ(TopTwips(bg->Label5) + HeightTwips(bg->Label5) + 65, bg->Height());
    EXPECT_EQ(ReadInt16LE(setting(), 0), 1);

    bg->ApplyScreenMode(2, true);
    EXPECT_EQ(bg->Height(), rt.screen.Height() - 494) << "hidden keeps its size";
    EXPECT_FALSE(bg->mask().isEmpty()) << "only the forms on the desktop take the screen";
    EXPECT_EQ(ReadInt16LE(setting(), 0), 2);
    bg->ApplyScreenMode(0, false);
    EXPECT_TRUE(bg->mask().isEmpty());
    EXPECT_EQ(ReadInt16LE(setting(), 0), 2) << "without save nothing is written";
}

TEST_F(Desktop, MissingOrShortSettingFile) {
    EXPECT_EQ(ReadSettingRecord(rt).ScreenMode, 0);
    EXPECT_TRUE(env.files.Exists(env.Path("Setting.zvk"))) << "opening creates it";
    env.WriteFile("Setting.zvk", QByteArray("\1\0\xC0", 3));
    const SettingRecord r = ReadSettingRecord(rt);
    EXPECT_EQ(r.ScreenMode, 1);
    EXPECT_EQ(r.IP1, 0xC0);
    EXPECT_EQ(r.Port, 0);
    bg->ApplyScreenMode(0, true);
    EXPECT_EQ(setting().size(), 12);
}

TEST_F(Desktop, AFullDiskLosesNoSettingAndSaysSo) {
    env.WriteFile("Setting.zvk", PackInt16LE({1, 10, 0, 0, 1, 1980}));
    env.files.failWrites = true;
    bg->ApplyScreenMode(0, true);
    EXPECT_EQ(setting(), PackInt16LE({1, 10, 0, 0, 1, 1980}));
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().title, u"Warning");
}

TEST_F(Desktop, TheMarkerRunsOnItsTimerAndHidesAtTheEdge) {
    bg->Timer1->SetEnabled(false); // no start chain, whose greeting would set the marker off again
    bg->ApplyScreenMode(0, false);
    rt.app.CurrentTone = QStringLiteral("3");
    bg->ShowToneCurve(QStringLiteral("3"));
    EXPECT_EQ(bg->Label4->Caption(), u"The 3rd tone");
    EXPECT_TRUE(bg->Shape3->isVisibleTo(bg));
    EXPECT_TRUE(bg->Timer4->Enabled());
    env.clock.Advance(250);
    EXPECT_TRUE(bg->Shape3->isVisibleTo(bg));
    env.clock.Advance(300);
    EXPECT_FALSE(bg->Timer4->Enabled());
    EXPECT_FALSE(bg->Shape3->isVisibleTo(bg));
}

TEST_F(Desktop, ClocksTickOnceAMinuteAndTheOffsetIsFixedAtLoad) {
    env.clock.SetZone(QTimeZone(-5 * 3600));
    env.clock.SetNow(at(2026, 11, 23, 10, 59, -5));
    Background* other = rt.forms.Load<Background>();
    ASSERT_EQ(other, bg);
    // The desktop was loaded at UTC; a new one sees the zone.
    rt.forms.Unload(bg);
    VirtualClock::DeliverPosted();
    bg = rt.forms.Load<Background>();
    EXPECT_EQ(bg->BeijingOffset, 780);
    env.clock.Advance(100); // the start tick shows the clocks and starts their minute
    EXPECT_EQ(bg->BeijingDayEnglish, u"Monday");
    EXPECT_TRUE(bg->Timer5->Enabled());
    env.clock.Advance(59'999);
    EXPECT_EQ(bg->BeijingDayEnglish, u"Monday");
    env.clock.Advance(1);
    EXPECT_EQ(bg->BeijingDayEnglish, u"Tuesday");
    EXPECT_EQ(bg->BeijingDayChinese, u"星期二");
    EXPECT_EQ(bg->LocalDayEnglish, u"Monday");
}

} // namespace
