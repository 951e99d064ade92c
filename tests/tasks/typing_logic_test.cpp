// The typing task's rules: the new characters of a lesson, the syllable each is said with, the
// score of a pass, and the input method's list, pages and prompts.
#include "tasks/typing_logic.h"

#include <gtest/gtest.h>
#include <random>

using namespace vt;

namespace {

CharEntry entry(const QString& character, const QStringList& plains) {
    CharEntry e;
    e.Character = character;
    for (const QString& plain : plains) {
        CharReading r;
        r.Plain = plain;
        r.Pinyin = plain;
        r.Initial = plain.left(1);
        r.Tone = r.ToneKey = r.ToneSound = QStringLiteral("1");
        e.Readings.Append(r);
    }
    e.ReadingCount = static_cast<int16_t>(e.Readings.Count());
    return e;
}

// The characters of the list, in order, with the reading each was found by: "中:zhong 钟:zhong".
QString listed(const InputMethod& im) {
    QStringList out;
    for (int i = 1; i <= im.CandidateCount(); ++i) {
        const Candidate& c = im.CandidateAt(i);
        out << im.EntryOf(c).Character + u':' + im.ReadingOf(c).Plain;
    }
    return out.join(u' ');
}

void type(InputMethod& im, const QString& letters) {
    for (QChar c : letters)
        im.TypeLetter(c);
    im.Search();
}

void addWord(AppState& app, const QString& chinese, int lesson) {
    app.WordTable.Append({chinese, {}});
    app.WordOrigin.Append({1, static_cast<int16_t>(lesson)});
    app.WordCount = static_cast<int16_t>(app.WordTable.Count());
}

void addLessonWord(AppState& app, const QString& chinese, const QString& pinyin) {
    app.LessonWords.Append({chinese, {}, pinyin});
    app.LessonWordRows = static_cast<int16_t>(app.LessonWords.Count());
}

} // namespace

TEST(TypingNewCharacters, EachOnceInOrderWithoutPunctuationOrWhatEarlierLessonsHold) {
    AppState app;
    addWord(app, QStringLiteral("你好"), 1);
    addWord(app, QStringLiteral("老师"), 1);
    addWord(app, QStringLiteral("我们"), 2);
    addWord(app, QStringLiteral("学生"), 3);
    addWord(app, QStringLiteral("我们上课"), 4);
    // The vocabulary comes after the lessons' words; its numbers are those of its files.
    app.WordTable.Append({QStringLiteral("们天"), {}});
    app.WordOrigin.Append({2, 1});
    app.WordCount = static_cast<int16_t>(app.WordTable.Count());

    addLessonWord(app, QStringLiteral("我们"), QStringLiteral("w.o3 m.en0"));
    addLessonWord(app, QStringLiteral("好（的）"), QStringLiteral("h.ao3 d.e0"));
    addLessonWord(app, QStringLiteral("上.课"), QStringLiteral("sh.ang4 k.e4"));
    addLessonWord(app, QStringLiteral("我，天学"), QStringLiteral("w.o3 t.ian1 x.ue2"));

    app.OpenLesson = 1; // nothing before it
    EXPECT_EQ(NewCharactersOfLesson(app), QStringLiteral("我们好的上课天学"));
    app.OpenLesson = 2; // lesson 1 held 好; the walk stops at lesson 2's first word
    EXPECT_EQ(NewCharactersOfLesson(app), QStringLiteral("我们的上课天学"));
    app.OpenLesson = 4; // lessons 1 to 3 held 好, 我, 们, 学; the vocabulary does not count
    EXPECT_EQ(NewCharactersOfLesson(app), QStringLiteral("的上课天"));
}

TEST(TypingDrill, EachCharacterTakesItsSyllableFromTheFirstWordHoldingIt) {
    AppState app;
    app.OpenLesson = 1;
    addLessonWord(app, QStringLiteral("上.课"), QStringLiteral("sh.ang4 k.e4"));
    addLessonWord(app, QStringLiteral("课本"), QStringLiteral("k.e4 b.en3"));
    addLessonWord(app, QStringLiteral("本"), QStringLiteral("b.en"));
    addLessonWord(app, QStringLiteral("好的"), QStringLiteral("h.ao3"));
    const Array1<TargetChar> drill = BuildDrill(app);
    QStringList got;
    for (const TargetChar& t : drill)
        got << t.Character + u'=' + t.Pinyin;
    EXPECT_EQ(got.join(u' '), QStringLiteral("上=sh.ang4 课=k.e4 本=b.en3 好=h.ao3 的="));

    EXPECT_EQ(TargetSoundSyllable(QStringLiteral("zh.ong1")), QStringLiteral("zhong1"));
    EXPECT_EQ(TargetSoundSyllable(QStringLiteral("m.a0")), QStringLiteral("ma1"));
    EXPECT_EQ(TargetSoundSyllable(QString()), QString());
}

TEST(TypingScore, TheRateIsRoundedToWholePercentHalvesToEven) {
    struct Row {
        int correct, wrong;
        int16_t rate;
    } rows[] = {
        {0, 0, 0},     {3, 1, 75},    {1, 7, 12},   {3, 5, 38}, {2, 1, 67},
        {157, 43, 78}, {159, 41, 80}, {79, 21, 79}, {4, 1, 80}, {0, 3, 0},
    };
    for (const Row& r : rows)
        EXPECT_EQ(RateOf(r.correct, r.wrong), r.rate)
            << r.correct << " right, " << r.wrong << " wrong";
}

TEST(TypingInputMethod, PagesOfNineNumberedFromOneWithPagingOnlyWhereThereIsAPage) {
    Array1<CharEntry> t;
    for (int i = 0; i < 14; ++i)
        t.Append(entry(QString(QChar(0x4E00 + i)), {QStringLiteral("ma")}));
    InputMethod im(t);
    type(im, QStringLiteral("ma"));
    EXPECT_EQ(im.CandidatePages(), 2);
    EXPECT_TRUE(im.PageLine().startsWith(QStringLiteral(" 1 一  2 丁  3 丂 ")));
    EXPECT_TRUE(im.PageLine().endsWith(QStringLiteral(" 9 丈  +/-")));
    EXPECT_EQ(im.Prompt(QStringLiteral("一")), kPressSpace);
    EXPECT_EQ(im.Prompt(QStringLiteral("丁")), kPressPageOrNumber);
    EXPECT_FALSE(im.PreviousPage());
    ASSERT_TRUE(im.NextPage());
    EXPECT_FALSE(im.NextPage());
    EXPECT_EQ(im.PageLine(), QStringLiteral(" 1 三  2 上  3 下  4 丌  5 不  +/-"));
    EXPECT_EQ(im.Prompt(QStringLiteral("三")), kPressSpace);
    EXPECT_EQ(im.Prompt(QStringLiteral("一")), kPressPageOrNumber);
    ASSERT_NE(im.PageItem(5), nullptr);
    EXPECT_EQ(im.EntryOf(*im.PageItem(5)).Character, QStringLiteral("不"));
}

TEST(TypingInputMethod, FindsWhatAWalkOverTheTableTextsFinds) {
    // A table of random spellings against the plain walk: exact first, then longer ones, each
    // entry by its first reading of the kind.
    const QStringList syllables = {"a",    "ai",    "an",     "ang",    "zh",  "zha",
                                   "zhan", "zhang", "zhuang", "shuang", "sh",  "s",
                                   "si",   "n v",   "Na",     "nv",     "nve", "chuang"};
    std::mt19937 rng(7);
    Array1<CharEntry> t;
    for (int i = 0; i < 400; ++i) {
        QStringList plains;
        const int n = 1 + int(rng() % 4);
        for (int k = 0; k < n; ++k)
            plains << syllables[int(rng() % syllables.size())];
        t.Append(entry(QString(QChar(0x4E00 + i)), plains));
    }
    InputMethod im(t);
    const QStringList typings = {"a", "an", "zh", "zhua", "s", "n", "nv", "shuan", "q"};
    for (const QString& typed : typings) {
        im.Clear();
        type(im, typed);
        QStringList exact, longer;
        for (const CharEntry& e : t) {
            for (const CharReading& r : e.Readings)
                if (r.Plain == typed) {
                    exact << e.Character + u':' + r.Plain;
                    break;
                }
            for (const CharReading& r : e.Readings)
                if (r.Plain != typed && (u' ' + r.Plain).contains(u' ' + typed)) {
                    longer << e.Character + u':' + r.Plain;
                    break;
                }
        }
        EXPECT_EQ(listed(im), (exact + longer).join(u' ')) << qPrintable(typed);
    }
}
