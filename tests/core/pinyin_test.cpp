#include "core/app_state.h"
#include "core/pinyin.h"
#include "core/syllable_table.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QSet>

// Readable failure output for texts.
void PrintTo(const QString& s, std::ostream* os) {
    *os << '"' << s.toStdString() << '"';
}

using namespace vt;

namespace {

QString u(const char* utf8) {
    return QString::fromUtf8(utf8);
}

// The marked vowels, written out independently of the program's table.
struct MarkRow {
    const char* letter;
    char16_t tones[4];
};
constexpr MarkRow kMarks[] = {
    {"a", {0x0101, 0x00E1, 0x01CE, 0x00E0}}, {"o", {0x014D, 0x00F3, 0x01D2, 0x00F2}},
    {"e", {0x0113, 0x00E9, 0x011B, 0x00E8}}, {"i", {0x012B, 0x00ED, 0x01D0, 0x00EC}},
    {"u", {0x016B, 0x00FA, 0x01D4, 0x00F9}}, {"v", {0x01D6, 0x01D8, 0x01DA, 0x01DC}},
};

bool isMarkedVowel(QChar c) {
    for (const MarkRow& r : kMarks)
        for (char16_t m : r.tones)
            if (c.unicode() == m) return true;
    return false;
}

} // namespace

TEST(ToneVowel, GivesTheMarkedVowelOrThePlainLetter) {
    for (const MarkRow& r : kMarks) {
        const QString letter = QString::fromLatin1(r.letter);
        for (int tone = 1; tone <= 4; ++tone)
            EXPECT_EQ(ToneVowel(letter, static_cast<int16_t>(tone)),
                      QString(QChar(r.tones[tone - 1])))
                << r.letter << tone;
        // Outside 1..4 the plain letter comes back, except for "v", which vanishes.
        const QString plain = letter == u"v" ? QString() : letter;
        for (int16_t tone : {0, 5, 9, -1})
            EXPECT_EQ(ToneVowel(letter, tone), plain) << r.letter << tone;
    }
    for (const char* other : {"b", "A", "V", "", "ai", "1", "ü"})
        EXPECT_EQ(ToneVowel(u(other), 3), QString()) << other;
}

TEST(PinyinToMarks, ConvertsDottedTextAndPassesOtherTextThrough) {
    struct Row {
        const char* name;
        const char* in;
        const char* out;
    } rows[] = {
        {"two syllables", "zh.ong1 hu.a4", "zhōng huà"},
        {"no dot passes unchanged", "ma1", "ma1"},
        {"v marked", "n.v3", "nǚ"},
        {"neutral v vanishes", "n.v0", "n"},
        {"neutral keeps the plain vowel", "l.e0", "le"},
        {"v before the mark becomes u umlaut", "lv.e4", "lüè"},
        {"v after the mark stays", "x.ev2", "xév"},
        {"empty head", ".er2", "ér"},
        {"digits without blanks", "n.i3h.ao3", "nǐ hǎo"},
        {"extra blanks vanish", "  n.i3    h.ao3  ", "nǐ hǎo"},
        {"text after the last digit dropped", "n.i3 h.ao", "nǐ"},
        {"syllable without dot loses its digit", "ni3 h.ao3", "ni hǎo"},
        {"v in an undotted syllable is converted", "lv3 h.ao3", "lü hǎo"},
        {"tone above four keeps the plain vowel", "m.a7", "ma"},
        {"upper-case vowel takes no mark", "M.A1", "M"},
        {"dot before the digit marks nothing", "ma.1", "ma"},
        {"lone digit leaves no blank in front", "1 m.a1", "mā"},
        {"only dots", ".", ""},
    };
    for (const Row& r : rows)
        EXPECT_EQ(PinyinToMarks(u(r.in)), u(r.out)) << r.name;
}

TEST(TextFilters, DropExactlyTheirCharacters) {
    struct Row {
        const char* name;
        QString (*fn)(const QString&);
        const char* in;
        const char* out;
    } rows[] = {
        {"punctuation: mixed", StripPunctuation, "你好，(ni)！", "你好ni"},
        {"punctuation: all eleven", StripPunctuation, "a\\/.()？！，（）。b", "ab"},
        {"punctuation: ascii comma and others stay", StripPunctuation, "a,b;c：d“e", "a,b;c：d“e"},
        {"sentence marks: five", StripSentenceMarks, "(你好)？！，", "你好"},
        {"sentence marks: full stop and wide parentheses stay", StripSentenceMarks, "好。（）.",
         "好。（）."},
        {"parenthesised: inner blanks kept", StripParenthesised, "to go (by car); ride",
         "to go  ride"},
        {"parenthesised: no nesting", StripParenthesised, "a (b (c) d) e", "a  d e"},
        {"parenthesised: unclosed drops the rest", StripParenthesised, "word (note", "word"},
        {"parenthesised: stray close", StripParenthesised, " x) y ", "x y"},
        {"parenthesised: wide parentheses stay", StripParenthesised, "（x）", "（x）"},
        {"dots to spaces, trimmed", DotsToSpaces, ".zh.ong1 g.uo2.", "zh ong1 g uo2"},
        {"v to umlaut, V stays", VToUmlaut, "lvVv", "lüVü"},
    };
    for (const Row& r : rows)
        EXPECT_EQ(r.fn(u(r.in)), u(r.out)) << r.name;
}

TEST(ChineseCharacters, TwentyMarksAndLowCodesDoNotCount) {
    const QString marks = u("，。；：“”！？、…（）‘’【】《》—·");
    ASSERT_EQ(marks.size(), 20);
    for (QChar c : marks) {
        EXPECT_TRUE(HasNonChinese(QString(c))) << int(c.unicode());
        EXPECT_EQ(ChineseOnly(QString(c)), QString()) << int(c.unicode());
    }
    for (char16_t code : {0x00, 0x41, 0x7F, 0xE9, 0xFF})
        EXPECT_TRUE(HasNonChinese(QString(QChar(code)))) << int(code);
    // Everything else above 255 counts, the upper half of the code range included.
    for (char16_t code : {0x100, 0x2015, 0x3000, 0x4E2D, 0x7FFF, 0x8000, 0x9FA5, 0xFF0E, 0xFFFF})
        EXPECT_FALSE(HasNonChinese(QString(QChar(code)))) << int(code);

    struct Row {
        const char* name;
        const char* in;
        bool hasNon;
        const char* only;
    } rows[] = {
        {"empty", "", false, ""},
        {"all Chinese", "你好", false, "你好"},
        {"ends in a full stop", "你好。", true, "你好"},
        {"latin letter", "a", true, ""},
        {"mixed", "我a们，好！", true, "我们好"},
    };
    for (const Row& r : rows) {
        EXPECT_EQ(HasNonChinese(u(r.in)), r.hasNon) << r.name;
        EXPECT_EQ(ChineseOnly(u(r.in)), u(r.only)) << r.name;
    }
}

TEST(SplitPinyinSyllables, EachDigitEndsOneSyllable) {
    struct Row {
        const char* name;
        const char* in;
        QStringList out;
    } rows[] = {
        {"trailing text dropped", "ni3 hao3 ma", {"ni3", "hao3"}},
        {"no blanks", "zhong1guo2", {"zhong1", "guo2"}},
        {"blanks trimmed", "  wo3   men0 ", {"wo3", "men0"}},
        {"no digit", "ma", {}},
        {"lone digit", "5", {"5"}},
    };
    AppState app;
    app.PinyinSyllables.Append(QStringLiteral("stale"));
    for (const Row& r : rows) {
        SplitPinyinSyllables(app, u(r.in));
        QStringList got;
        for (const QString& s : app.PinyinSyllables)
            got << s;
        EXPECT_EQ(got, r.out) << r.name;
    }
}

TEST(SmallTexts, PadNumberAndWeekdays) {
    for (const auto& [n, text] : {std::pair{7, "  7"},
                                  {0, "  0"},
                                  {42, " 42"},
                                  {100, "100"},
                                  {-5, "  -5"},
                                  {-120, "  -120"}})
        EXPECT_EQ(PadNumber(static_cast<int16_t>(n)), u(text)) << n;

    // Chinese only for exactly -1; days outside 1..7 have no name.
    EXPECT_EQ(WeekdayText(-1, 1), u("星期日"));
    EXPECT_EQ(WeekdayText(1, 1), WeekdayText(0, 1));
    EXPECT_EQ(WeekdayText(0, 4), u("Wednsday"));
    for (int day : {0, 8, -1})
        EXPECT_EQ(WeekdayText(-1, day), QString());
}

TEST(SyllableTable, HasFourHundredWellFormedRowsInTheirGroups) {
    // Rows per group in chart order.
    const std::pair<const char*, int> counts[] = {
        {"A", 5},  {"B", 16}, {"C", 34}, {"D", 22}, {"E", 3},  {"F", 9},  {"G", 19}, {"H", 19},
        {"J", 14}, {"K", 18}, {"L", 24}, {"M", 19}, {"N", 23}, {"O", 2},  {"P", 17}, {"Q", 14},
        {"R", 14}, {"S", 35}, {"T", 19}, {"W", 9},  {"X", 14}, {"Y", 15}, {"Z", 36}};
    QStringList groups;
    for (const QString& g : SyllableGroups())
        groups << g;
    QStringList expectedGroups;
    for (const auto& [g, n] : counts) {
        expectedGroups << QString::fromLatin1(g);
        EXPECT_EQ(SyllableGroupRows(QString::fromLatin1(g)).size(), static_cast<size_t>(n)) << g;
    }
    EXPECT_EQ(groups, expectedGroups);

    const QRegularExpression form(QStringLiteral("^[a-z]*\\|[a-z]+[01]{4}$"));
    QSet<QString> seen;
    size_t total = 0;
    for (const QString& g : SyllableGroups()) {
        for (const QString& row : SyllableGroupRows(g)) {
            ++total;
            EXPECT_TRUE(form.match(row).hasMatch()) << row.toStdString();
            const QString plain = row.left(row.size() - 4).remove(u'|');
            EXPECT_EQ(plain.left(1).toUpper(), g) << row.toStdString();
            EXPECT_FALSE(seen.contains(plain)) << "duplicate " << plain.toStdString();
            seen.insert(plain);
        }
    }
    EXPECT_EQ(total, 400u);
    EXPECT_EQ(AllSyllables().size(), 400u);
}

TEST(SyllableTable, LoadSyllableRowsFillsOnlyForAKnownGroup) {
    AppState app;
    app.SyllableGroup = QStringLiteral("Z");
    LoadSyllableRows(app);
    ASSERT_EQ(app.SyllableRowCount, 36);
    ASSERT_EQ(app.SyllableRows.Count(), 36);
    EXPECT_EQ(app.SyllableRows[1], u("z|a1110"));
    EXPECT_EQ(app.SyllableRows[36], u("zu|o1111"));

    for (const char* other : {"I", "U", "V", "z", "", "ZH"}) {
        app.SyllableGroup = u(other);
        LoadSyllableRows(app);
        EXPECT_EQ(app.SyllableRowCount, 36) << other;
        EXPECT_EQ(app.SyllableRows[1], u("z|a1110")) << other;
    }

    app.SyllableGroup = QStringLiteral("O");
    LoadSyllableRows(app);
    ASSERT_EQ(app.SyllableRowCount, 2);
    EXPECT_EQ(app.SyllableRows.Count(), 2);
    EXPECT_EQ(app.SyllableRows[2], u("|ou1011"));
}

// Every syllable in every tone the table allows, written in the dotted form, shows as one
// syllable with exactly one marked vowel, and the numeric form converts to that same dotted form.
TEST(SyllableTable, EverySyllableInEveryToneTakesExactlyOneMark) {
    int checked = 0;
    for (const SyllableInfo& s : AllSyllables()) {
        for (int tone = 1; tone <= 4; ++tone) {
            if (!s.tones[static_cast<size_t>(tone - 1)]) continue;
            const QString dotted = s.before + u'.' + s.rest + QString::number(tone);
            const QString marked = PinyinToMarks(dotted);
            int marks = 0;
            for (QChar c : marked)
                marks += isMarkedVowel(c) ? 1 : 0;
            EXPECT_EQ(marks, 1) << dotted.toStdString();
            EXPECT_EQ(marked.size(), s.plain().size()) << dotted.toStdString();
            EXPECT_FALSE(marked.contains(u' ') || marked.contains(u'v')) << dotted.toStdString();

            QString error;
            EXPECT_EQ(NumericToDotted(s.plain() + QString::number(tone), &error), dotted)
                << error.toStdString();
            EXPECT_TRUE(SyllableHasTone(s.plain(), tone));
            ++checked;
        }
        EXPECT_TRUE(SyllableHasTone(s.plain(), 0)) << s.plain().toStdString();
        EXPECT_EQ(FindSyllable(s.plain()), &s) << s.plain().toStdString();
    }
    // Only the plain lower-case syllable is found.
    for (const char* missing : {"lue", "nü", "Zhong", "zhong1", "", "i", "r"})
        EXPECT_EQ(FindSyllable(u(missing)), nullptr) << missing;
    EXPECT_GT(checked, 1000);
    EXPECT_FALSE(SyllableHasTone(u("zhong"), 2));
    EXPECT_FALSE(SyllableHasTone(u("ma"), 5));
    EXPECT_FALSE(SyllableHasTone(u("xx"), 0));
}

TEST(NumericToDotted, ConvertsWhatATeacherTypes) {
    struct Row {
        const char* name;
        const char* in;
        const char* out;
    } rows[] = {
        {"two syllables", "zhong1 guo2", "zh.ong1 gu.o2"},
        {"no blanks", "zhong1guo2", "zh.ong1 gu.o2"},
        {"many blanks and apostrophe", "  xi1'an1   ren2 ", "x.i1 .an1 r.en2"},
        {"v", "nv3", "n.v3"},
        {"u umlaut", "nü3 lüe4", "n.v3 lv.e4"},
        {"u colon", "lu:4 nu:e4", "l.v4 nv.e4"},
        {"er", "er2", ".er2"},
        {"neutral", "ma0", "m.a0"},
        {"five is neutral", "men5", "m.en0"},
        {"upper case", "Zhong1 GUO2", "zh.ong1 gu.o2"},
        {"iu and ui", "liu2 gui4", "li.u2 gu.i4"},
        {"tone missing from the table still converts", "de3", "d.e3"},
    };
    for (const Row& r : rows) {
        QString error;
        EXPECT_EQ(NumericToDotted(u(r.in), &error), u(r.out)) << r.name;
        EXPECT_TRUE(error.isEmpty()) << r.name << ": " << error.toStdString();
    }
}

TEST(NumericToDotted, RefusesWithAPlainReason) {
    struct Row {
        const char* name;
        const char* in;
        const char* reason; // a part of the message
    } rows[] = {
        {"unknown syllable", "zhong1 xx2", "no such syllable: xx"},
        {"u for v after l", "lue4", "no such syllable: lue"},
        {"missing digit at the end", "ni3 hao", "missing tone digit: hao"},
        {"missing digit before a blank", "ni hao3", "missing tone digit: ni"},
        {"tone too high", "ma6", "no such tone"},
        {"digit alone", "3", "tone digit without a syllable"},
        {"punctuation", "ni3, hao3", "unexpected character"},
        {"empty", "", "no Pinyin"},
        {"blank", "   ", "no Pinyin"},
    };
    for (const Row& r : rows) {
        QString error;
        EXPECT_EQ(NumericToDotted(u(r.in), &error), QString()) << r.name;
        EXPECT_TRUE(error.contains(u(r.reason))) << r.name << ": " << error.toStdString();
    }
    EXPECT_EQ(NumericToDotted(u("xx1")), QString()) << "no error pointer needed";
}
