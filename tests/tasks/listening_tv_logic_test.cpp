// The TV play's rules: the pace of the pictures, the line the sound has reached, the text and the
// play list as shown, and the buttons beside the list.

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

TEST(ListeningTVLogic, TextListAndTimeAsShown) {
    Array1<QString> lines;
    lines.Append(QStringLiteral("你好！"));
    lines.Append(QStringLiteral("  我们去银行吧，好吗？"));
    EXPECT_EQ(BuildPlayText(QStringLiteral("第一课"), lines, 2),
              "第一课\r\n1) 你好！\r\n2)   我们去银行吧，好吗？");
    EXPECT_EQ(PlayListItems(lines, 2), QStringList({"- Select 请选择 -", " Step 1 ", " Step 2 ",
                                                    "1. 你好！", "2.   我们去银行吧......"}));
    // A line is marked as it stands, blanks and all, at its first place.
    const QString text = BuildPlayText({}, lines, 2);
    EXPECT_EQ(PlayLineMark(text, lines[2]), (TextMark{int(text.indexOf("2) ")) + 3, 12}));
    EXPECT_EQ(PlayLineMark(text, QStringLiteral("再见")), std::nullopt);
    EXPECT_EQ(PlayTimeText(12345, 59000), "12.3 / 59.0");
    EXPECT_EQ(PlayTimeText(0, 940), "0.0 / 0.9");
}

TEST(ListeningTVLogic, PreviousAndNextFollowThePlayList) {
    struct Case {
        int index;
        PlayListButtons buttons;
    };
    // Items 0 to 2 are the choices of the whole play; 3 to 7 are lines 1 to 5.
    for (const Case& c : std::initializer_list<Case>{{0, {false, false}},
                                                     {2, {false, false}},
                                                     {3, {false, true}},
                                                     {5, {true, true}},
                                                     {7, {true, false}}})
        EXPECT_EQ(PlayListButtonsAt(c.index, 7), c.buttons) << c.index;
    EXPECT_EQ(PlayListButtonsAt(3, 3), (PlayListButtons{false, false})) << "a play of one line";
}

} // namespace
} // namespace vt
