#include "platform/helpers.h"

#include <gtest/gtest.h>

using namespace vt;

TEST(Helpers, TrimRemovesBlanksOnly) {
    EXPECT_EQ(Trim(QStringLiteral("  a b  ")), QStringLiteral("a b"));
    EXPECT_EQ(Trim(QStringLiteral("\ta\t")), QStringLiteral("\ta\t"));
    EXPECT_EQ(Trim(QStringLiteral("   ")), QString());
    EXPECT_EQ(LTrim(QStringLiteral("  x ")), QStringLiteral("x "));
    EXPECT_EQ(RTrim(QStringLiteral(" x  ")), QStringLiteral(" x"));
}

TEST(Helpers, ValReadsTheLeadingNumber) {
    struct Row {
        const char* text;
        double value;
    } rows[] = {{"12abc", 12}, {" -3.5x", -3.5}, {"abc", 0},     {"", 0},
                {".5", 0.5},   {"1e3", 1000},    {"7.", 7},      {"+4 5", 4},
                {"1e", 1},     {"-", 0},         {"  42  ", 42}, {"3,5", 3}};
    for (const auto& r : rows)
        EXPECT_DOUBLE_EQ(Val(QString::fromUtf8(r.text)), r.value) << r.text;
}

TEST(Helpers, IsNumericNeedsOneWholeNumber) {
    EXPECT_TRUE(IsNumeric(QStringLiteral("12")));
    EXPECT_TRUE(IsNumeric(QStringLiteral(" 3.5 ")));
    EXPECT_TRUE(IsNumeric(QStringLiteral("-7")));
    EXPECT_FALSE(IsNumeric(QStringLiteral("")));
    EXPECT_FALSE(IsNumeric(QStringLiteral("  ")));
    EXPECT_FALSE(IsNumeric(QStringLiteral("12a")));
    EXPECT_FALSE(IsNumeric(QStringLiteral("1 2")));
}
