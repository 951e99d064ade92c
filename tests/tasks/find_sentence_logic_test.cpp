// The rules of the sound-to-sentence task: the swaps, the placing of the right version, the
// marking of a swap, the rate, and the positions of a play's lines.

#include "core/sentence_swap.h"
#include "platform/random.h"
#include "tasks/find_sentence_logic.h"

#include <QSet>
#include <deque>
#include <gtest/gtest.h>

namespace vt {
namespace {

// A generator that gives the fractions it was handed, in order.
class ScriptedRandom final : public Random {
public:
    explicit ScriptedRandom(std::deque<double> values) : values_(std::move(values)) {}
    void Randomize() override {}
    double Rnd() override {
        const double v = values_.front();
        values_.pop_front();
        return v;
    }

private:
    std::deque<double> values_;
};

// The places where two texts of one length differ.
std::vector<int> differences(const QString& a, const QString& b) {
    std::vector<int> at;
    for (int k = 0; k < a.size(); ++k)
        if (a[k] != b[k]) at.push_back(k);
    return at;
}

TEST(SentenceSwap, SwapsTwoDifferentCharactersAndNeverAMarkOrADigit) {
    // Repeated characters, digits, blanks and marks around few swappable characters.
    const QString line = QStringLiteral("他他说：“3号。”好 吗？");
    SeededRandom random(7);
    QSet<QString> seen;
    for (int n = 0; n < 300; ++n) {
        const QString swapped = SwapTwoCharacters(line, random);
        ASSERT_EQ(swapped.size(), line.size());
        const std::vector<int> at = differences(line, swapped);
        ASSERT_EQ(at.size(), 2u) << swapped.toStdString();
        EXPECT_EQ(swapped[at[0]], line[at[1]]);
        EXPECT_EQ(swapped[at[1]], line[at[0]]);
        for (int k : at)
            EXPECT_FALSE(SwapPassesOver(line[k])) << "picked " << QString(line[k]).toStdString();
        seen.insert(swapped);
    }
    // Six characters may be picked (他 他 说 号 好 吗): 15 pairs, less the two 他.
    EXPECT_EQ(seen.size(), 14);
}

TEST(SentenceSwap, FourDifferentCharactersGiveSwappedVersionsAndALineWithoutASwapComesBack) {
    SeededRandom random(3);
    const QString four = QStringLiteral("我们好吗");
    EXPECT_TRUE(LineIsAsked(four));
    // Six swaps to draw from: the two wrong versions of a sentence are at times the same.
    int same = 0;
    for (int n = 0; n < 60; ++n) {
        const QString a = SwapTwoCharacters(four, random);
        const QString b = SwapTwoCharacters(four, random);
        EXPECT_NE(a, four);
        same += a == b;
    }
    EXPECT_GT(same, 0);

    EXPECT_FALSE(LineIsAsked(QStringLiteral(" 你好吗。 ")));
    EXPECT_TRUE(LineIsAsked(QStringLiteral(" 好好好好。")));
    // All alike but for marks and digits: no legal swap, and no endless draw either.
    for (const QString& line : {QStringLiteral("好好好好。"), QStringLiteral("好，好1好2好！")}) {
        EXPECT_FALSE(LineCanBeSwapped(line));
        EXPECT_EQ(SwapTwoCharacters(line, random), line);
    }
    EXPECT_TRUE(LineCanBeSwapped(QStringLiteral("好好好好吗")));
}

TEST(SentenceSwap, PlacingFollowsTheDrawsAndKeepsTheOtherVersionsInOrder) {
    struct Case {
        double first, second;
        std::array<const char*, 3> shown;
        int right;
    };
    // Version 0 is the line "L"; the draws take 0..2, then 0..1 of what is left.
    const Case cases[] = {
        {0.0, 0.0, {"L", "1", "2"}, 0}, {0.0, 0.9, {"L", "2", "1"}, 0},
        {0.5, 0.0, {"1", "L", "2"}, 1}, {0.5, 0.9, {"1", "2", "L"}, 2},
        {0.9, 0.0, {"2", "L", "1"}, 1}, {0.9, 0.9, {"2", "1", "L"}, 2},
    };
    for (const Case& c : cases) {
        ScriptedRandom random({c.first, c.second});
        const PlacedVersions p = PlaceVersions("L", "1", "2", random);
        EXPECT_EQ(p.rightOption, c.right) << c.first << " " << c.second;
        for (size_t i = 0; i < 3; ++i)
            EXPECT_EQ(p.text[i], QString::fromUtf8(c.shown[i])) << c.first << " " << c.second;
    }
}

TEST(SentenceSwap, AWrongVersionShowsItsSwapInBrackets) {
    EXPECT_EQ(MarkSwap(QStringLiteral("好们我吗。"), QStringLiteral("我们好吗。")),
              QStringLiteral("【好】们【我】吗。"));
    EXPECT_EQ(MarkSwap(QStringLiteral("我们好吗"), QStringLiteral("我们好吗")),
              QStringLiteral("我们好吗"));
}

TEST(SentenceSwap, TheRateRoundsToWholePercentsWithHalvesToEven) {
    EXPECT_EQ(CorrectnessRate(0, 0), 0);
    EXPECT_EQ(CorrectnessRate(4, 1), 80);
    EXPECT_EQ(CorrectnessRate(2, 1), 67);
    EXPECT_EQ(CorrectnessRate(1, 7), 12); // 12.5
    EXPECT_EQ(CorrectnessRate(3, 5), 38); // 37.5
    EXPECT_EQ(CorrectnessRate(0, 3), 0);
}

TEST(LinePositionsFile, CountsRecordsAgainstLinesAndChecksEachAgainstTheTrack) {
    std::vector<LinePosition> seven;
    for (int32_t r = 0; r < 7; ++r)
        seven.push_back({r * 1000, r * 1000 + 900});

    EXPECT_EQ(ReadLinePositions(PackLinePositions(seven), 8, 10000).fault,
              PositionsFault::CountMismatch);
    EXPECT_EQ(ReadLinePositions({}, 8, 10000).fault, PositionsFault::Empty);
    EXPECT_EQ(ReadLinePositions(QByteArray(7, '\1'), 8, 10000).fault, PositionsFault::Empty)
        << "less than a record is no record";
    EXPECT_EQ(ReadLinePositions({}, 0, 10000).fault, PositionsFault::None);

    // Bytes past the last whole record are left out.
    const LinePositions good = ReadLinePositions(PackLinePositions(seven) + "abc", 7, 6900);
    EXPECT_EQ(good.fault, PositionsFault::None);
    ASSERT_EQ(good.positions.size(), 7u);
    EXPECT_EQ(good.positions[6], (LinePosition{6000, 6900})) << "an end on the track's end is fine";

    for (const LinePosition& bad :
         {LinePosition{-1, 500}, {500, 500}, {600, 500}, {6000, 6901}, {0, INT32_MIN}}) {
        auto rows = seven;
        rows[3] = bad;
        const LinePositions read = ReadLinePositions(PackLinePositions(rows), 7, 6900);
        EXPECT_EQ(read.fault, PositionsFault::BadRecord) << bad.From << " " << bad.To;
        EXPECT_TRUE(read.positions.empty());
    }

    EXPECT_EQ(PositionsFaultMessage(PositionsFault::CountMismatch),
              "Error: File yeap.zvk doesn't match file voep.zvk!");
    EXPECT_EQ(PositionsFaultMessage(PositionsFault::Empty), "File yeap.zvk is empty!");
    EXPECT_EQ(PositionsFaultMessage(PositionsFault::BadRecord),
              "Error: There is an error in control file!");
}

} // namespace
} // namespace vt
