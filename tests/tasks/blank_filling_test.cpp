// The rules of the blank-filling task: how the text is laid out and cut, which characters a
// blank offers, and how the answers are judged. Random draws come from seeded generators.
#include "platform/random.h"
#include "tasks/blank_filling.h"

#include <gtest/gtest.h>
#include <set>

using namespace vt;

namespace {

Array1<Blank> blanksOf(const QString& characters) {
    Array1<Blank> blanks;
    for (QChar c : characters)
        blanks.Append(Blank{QString(c), QString()});
    return blanks;
}

// The text with every "(n)__" put back to its character: the laid-out text again.
QString uncut(const BlankCut& cut) {
    QString text = cut.text;
    for (int n = cut.blanks.Count(); n >= 1; --n)
        text.replace(QStringLiteral("(%1)__").arg(n), cut.blanks[n].Character);
    return text;
}

} // namespace

TEST(BlankLayout, ReadTextsRunOnWithinAParagraphAndPlaysBreakEveryLine) {
    const QStringList read = {"你好", "我们好。", "  他们好。", "再见。"};
    const BlankText r = LayOutBlankText(read, read[0], false);
    EXPECT_EQ(r.text, QString(52, u' ') + "你好我们好。\r\n  他们好。再见。");

    const BlankText p = LayOutBlankText({"王明：你好！", "李华：你好。"}, "在饭馆", true);
    EXPECT_EQ(p.text, QString(50, u' ') + "在饭馆\r\n王明：你好！\r\n李华：你好。");

    // A title of 28 characters is not centred at all; a wider one is not pushed left.
    const QString wide(28, u'好');
    EXPECT_EQ(BlankLead(wide), 0);
    EXPECT_TRUE(LayOutBlankText({wide}, wide, false).text.startsWith(u'好'));
    EXPECT_EQ(BlankLead(wide + u'好'), -2);
    EXPECT_EQ(LayOutBlankText({wide + u'好'}, wide + u'好', false).text.size(), 29);
}

// Whatever the draws, every cut takes one Chinese character 2 to 21 places after the one
// before, the cutting goes on until the end is within reach, and the text loses nothing else.
// The text box counts a line break as one character: each blank is found there all the same.
TEST(BlankCutting, CutsLieTwoToTwentyOnePlacesApartOnChineseCharactersOnly) {
    const QStringList lines = {"学中文",
                               "我叫Wang Ming，我是学生。",
                               "  我们都在北京大学学习中文。",
                               "老师说：“Hello! 你们好！”",
                               "  今天是2024年10月1日，星期二。",
                               "  我们都是北京大学的学生。",
                               "  我们都是北京大学的学生。"};
    const BlankText laid = LayOutBlankText(lines, lines[0], false);
    const int lead = BlankLead(lines[0]);
    SeededRandom random;
    for (uint64_t seed = 1; seed <= 300; ++seed) {
        random.Reseed(seed);
        const BlankCut cut = CutBlanks(laid.text, lead, random);
        ASSERT_GT(cut.blanks.Count(), 0) << seed;
        int last = lead;
        for (int n = 1; n <= cut.blanks.Count(); ++n) {
            const int at = cut.cutPlaces[static_cast<size_t>(n - 1)];
            EXPECT_GE(at - last, kNearestCut) << "seed " << seed << ", blank " << n;
            EXPECT_LE(at - last, kFarthestCut) << "seed " << seed << ", blank " << n;
            EXPECT_TRUE(IsCuttable(laid.text[at - 1])) << seed;
            EXPECT_EQ(cut.blanks[n].Character, QString(laid.text[at - 1]));
            last = at;
        }
        EXPECT_GT(last + kFarthestCut, laid.text.size()) << "stopped before the end, seed " << seed;
        EXPECT_EQ(uncut(cut), laid.text) << seed;
        const QString shown = cut.Shown();
        for (int n = 1; n <= cut.blanks.Count(); ++n) {
            const QString mark = QStringLiteral("(%1)__").arg(n);
            EXPECT_EQ(shown.mid(cut.shownPlaces[static_cast<size_t>(n - 1)], mark.size()), mark);
        }
    }
}

TEST(BlankCutting, TextsWithoutAPlaceToCutEndTheCuttingInsteadOfDrawingForEver) {
    SeededRandom random(3);
    // Nothing Chinese: no blank at all.
    EXPECT_EQ(
        CutBlanks(QString(52, u' ') + "Hello, how are you? I am fine.", 52, random).blanks.Count(),
        0);
    // More letters than a cut can jump before the first Chinese character.
    const QString stall = QString(21, u'x') + "你好你好";
    const BlankCut none = CutBlanks(stall, 0, random);
    EXPECT_EQ(none.blanks.Count(), 0);
    EXPECT_EQ(none.text, stall);
    // Cuts before a long run of letters, and the rest stands whole.
    const QString text = QStringLiteral("我们") + QString(30, u'a') + "他们好";
    for (uint64_t seed = 1; seed <= 50; ++seed) {
        random.Reseed(seed);
        const BlankCut cut = CutBlanks(text, 0, random);
        EXPECT_EQ(cut.blanks.Count(), 1); // 们, after which only letters are in reach
        EXPECT_TRUE(cut.text.endsWith(QString(30, u'a') + "他们好"));
    }
    // A title wider than the box is cut from its first place on.
    random.Reseed(1);
    const BlankCut wide = CutBlanks(QString(40, u'好'), -4, random);
    EXPECT_GT(wide.blanks.Count(), 0);
    EXPECT_GE(wide.cutPlaces.front(), kNearestCut);
}

// Four blanks or fewer offer their own characters in some order. With more, the four come from
// blanks 1 to 4 only, and the current blank's own character is always among them, taking one
// of their places when it is not.
TEST(BlankCandidates, FewBlanksOfferTheirOwnAndMoreOfferBlanksOneToFourAndTheRightOne) {
    SeededRandom random(11);
    for (const QString chars : {"我", "我你他我"}) {
        const auto offered = FixedCandidates(blanksOf(chars), random);
        std::multiset<QString> got(offered.begin(), offered.end()), want;
        for (QChar c : chars)
            want.insert(QString(c));
        EXPECT_EQ(got, want) << chars.toStdString();
    }
    const Array1<Blank> blanks = blanksOf("我你他她们好");
    const std::set<QString> firstFour = {"我", "你", "他", "她"};
    for (int round = 0; round < 50; ++round) {
        for (int current = 1; current <= blanks.Count(); ++current) {
            const auto offered = CandidatesFor(blanks, current, random);
            const QString own = blanks[current].Character;
            EXPECT_EQ(std::count(offered.begin(), offered.end(), own), 1);
            for (const QString& c : offered)
                EXPECT_TRUE(firstFour.count(c) || c == own) << c.toStdString();
            if (current <= 4) {
                EXPECT_EQ(std::set<QString>(offered.begin(), offered.end()), firstFour);
            }
        }
    }
    // A character two of the first four share is offered twice.
    const auto twice = CandidatesFor(blanksOf("我我你他好"), 1, random);
    EXPECT_EQ(std::count(twice.begin(), twice.end(), QStringLiteral("我")), 2);
}

TEST(BlankJudging, RatesRoundHalvesToEvenAndEmptyBlanksCountAgainst) {
    const struct {
        BlankScore score;
        int rate;
    } rows[] = {
        {{4, 1, 0}, 80}, {{4, 0, 1}, 80}, {{3, 1, 1}, 60},    {{0, 0, 7}, 0},
        {{1, 7, 0}, 12}, {{3, 5, 0}, 38}, {{5, 3, 0}, 62},    {{7, 1, 0}, 88},
        {{2, 1, 0}, 67}, {{0, 0, 0}, 0},  {{57, 143, 0}, 28}, {{47, 153, 0}, 24},
    };
    for (const auto& r : rows)
        EXPECT_EQ(CorrectnessRate(r.score), r.rate) << r.score.right << " of " << r.score.Total();

    Array1<Blank> blanks = blanksOf("我你他");
    blanks[1].Answer = "我";
    blanks[2].Answer = "他";
    const BlankScore s = ScoreBlanks(blanks);
    EXPECT_EQ(s.right, 1);
    EXPECT_EQ(s.wrong, 1);
    EXPECT_EQ(s.empty, 1);
    EXPECT_EQ(BlankVerdict(blanks[1]), "Right  正确");
    EXPECT_EQ(BlankVerdict(blanks[2]), "Your answer 他 is wrong");
    EXPECT_EQ(BlankVerdict(blanks[3]), "___(Blank)  未填");
    EXPECT_EQ(BlankItem(12, {}), "12");
    EXPECT_EQ(BlankItem(3, "你"), "3 - 你");
}
