// The TV play's rules: the pace of the pictures, the line the sound has reached, the mark of a
// line, and the buttons beside the play list.

#include "tasks/listening_tv_logic.h"

#include <gtest/gtest.h>

namespace vt {
namespace {

TEST(ListeningTVLogic, PicturesSpreadOverThePlayAndOneSecondMore) {
    struct Case {
        int64_t length;
        int count;
        int interval;
    };
    for (const Case& c : std::initializer_list<Case>{
             {59000, 6, 10000}, // the pictures of a 59-second play change every 10 seconds
             {4000, 5, 1000},
             {1500, 4, 625},
             {500, 4, 375},   // 1500 / 4 = 375
             {1001, 2, 1000}, // 2001 / 2 = 1000.5: halves go to the even millisecond
             {1003, 2, 1002}, // 2003 / 2 = 1001.5
             {59000, 0, 0},
         })
        EXPECT_EQ(PictureInterval(c.length, c.count), c.interval) << c.length << " / " << c.count;
    EXPECT_EQ(NextPicture(1, 3), 2);
    EXPECT_EQ(NextPicture(3, 3), 1);
}

TEST(ListeningTVLogic, TheLineReachedIsTheLastWhoseStartLiesBelowThePosition) {
    const std::vector<LinePosition> lines = {{1000, 2000}, {2500, 3000}, {3000, 4000}};
    struct Case {
        int64_t position;
        int line;
    };
    for (const Case& c : std::initializer_list<Case>{
             {0, 0}, {1000, 0}, {1001, 1}, {2400, 1}, {2700, 2}, {3000, 2}, {3001, 3}, {9000, 3}})
        EXPECT_EQ(LineAtPosition(lines, c.position), c.line) << c.position;
    EXPECT_EQ(LineAtPosition({}, 5000), 0);
}

TEST(ListeningTVLogic, ALineIsMarkedAsItStandsAndTheButtonsFollowTheList) {
    Array1<QString> lines;
    lines.Append(QStringLiteral("你好！"));
    lines.Append(QStringLiteral("  你好！"));
    const QString text = BuildPlayText(QStringLiteral("第一课"), lines, 2);
    EXPECT_EQ(PlayLineMark(text, lines[2]), (TextMark{int(text.indexOf("2) ")) + 3, 5}));
    // Items 0 to 2 play the whole; 3 to 7 are lines 1 to 5.
    EXPECT_EQ(PlayListButtonsAt(2, 7), (PlayListButtons{false, false}));
    EXPECT_EQ(PlayListButtonsAt(3, 7), (PlayListButtons{false, true}));
    EXPECT_EQ(PlayListButtonsAt(5, 7), (PlayListButtons{true, true}));
    EXPECT_EQ(PlayListButtonsAt(7, 7), (PlayListButtons{true, false}));
    EXPECT_EQ(PlayListButtonsAt(3, 3), (PlayListButtons{false, false})) << "a play of one line";
}

} // namespace
} // namespace vt
