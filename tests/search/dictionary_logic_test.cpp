// The dictionary's rules without a widget: the kind of search a text asks for, the rows it hits,
// the example sentences and their limits, the entry's text in each task, and Locate's walk.
#include "search/dictionary_logic.h"
#include "support/small_course.h"

#include <gtest/gtest.h>

using namespace vt;

namespace {

struct Course {
    Course() { test::WriteSmallCourse(app); }
    std::vector<int> Find(const char* text, bool inLesson = false) {
        return index.Find(app, QString::fromUtf8(text), inLesson);
    }
    AppState app;
    WordSearchIndex index;
};

} // namespace

TEST(DictionaryLogic, TheLastAndFirstCharacterTellTheKindOfSearch) {
    const struct {
        const char* text;
        SearchKind kind;
    } cases[] = {
        {"wo3", SearchKind::Pinyin},      {"3", SearchKind::Pinyin},
        {"ni3 hao3", SearchKind::Pinyin}, {"ni3 hao", SearchKind::English},
        {"wo", SearchKind::English},      {"Teacher", SearchKind::English},
        {"你好", SearchKind::Chinese},    {"(hao)", SearchKind::Chinese},
    };
    for (const auto& c : cases)
        EXPECT_EQ(KindOfSearch(QString::fromUtf8(c.text)), c.kind) << c.text;
}

TEST(DictionaryLogic, EachKindOfSearchHitsItsRowsInTableOrder) {
    Course course;
    const struct {
        const char* text;
        bool inLesson;
        std::vector<int> rows;
    } cases[] = {
        {"你好", false, {1, 7}},
        {"好", false, {1, 4, 7, 9}}, // any word that holds it
        {"好", true, {4}},           // in a lesson: the word itself
        {"打电话", false, {6}},      // parentheses do not stand in the way
        {"teacher", false, {3}},
        {"TEACHER", false, {3}}, // without regard to case
        {"me", false, {2}},      // a whole word after ";" and a blank
        {"greet", false, {8}},   // right after ";"
        {"tea", false, {}},      // never part of a word
        {"wo3", false, {2, 5}},  // the syllable, not wo4
        {"WO3", false, {2, 5}},
        {"hao3", false, {1, 4, 7, 9}},
        {"ni3 hao3", false, {1, 7}}, // syllables next to each other, in order
        {"hao3 ni3", false, {}},
        {"wo", false, {}}, // English, and no meaning holds it
        {"3", false, {}},  // Pinyin: no syllable is a bare tone
        {"", false, {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(course.Find(c.text, c.inLesson), c.rows) << c.text << " " << c.inLesson;
}

TEST(DictionaryLogic, TheIndexFollowsANewWordTable) {
    Course course;
    EXPECT_EQ(course.Find("book").size(), 0u);
    test::AddWord(course.app, "书", "book", "sh.u1", 2, 2);
    EXPECT_EQ(course.Find("book"), std::vector<int>{10});
}

TEST(DictionaryLogic, PiecesAreCutAtDotsWithoutWhatStandsInParentheses) {
    EXPECT_EQ(WordPieces(QString::fromUtf8("把.给")), QStringList({"把", "给"}));
    EXPECT_EQ(WordPieces(QString::fromUtf8("打(电话)")), QStringList({"打"}));
    EXPECT_EQ(WordPieces(QString::fromUtf8("打（电话）了")), QStringList({"打了"}));
    EXPECT_TRUE(WordPieces(QStringLiteral("(.)")).isEmpty());
}

TEST(DictionaryLogic, SentencesComeFromTheOwnLessonFirstAndFromOthersUpToTwenty) {
    Course course;
    AppState& app = course.app;
    // 我: lesson 1 has one sentence, the other lessons two.
    EXPECT_EQ(ExampleSentences(app, QString::fromUtf8("我"), 1, false),
              QString::fromUtf8("\n1）我很好。 [Lesson  第 1 课]"
                                "\n2）我们是朋友。 [Lesson  第 2 课]"
                                "\n3）我打电话。 [Lesson  第 2 课]"));
    // Kept to the lesson, as the vocabulary task asks.
    EXPECT_EQ(ExampleSentences(app, QString::fromUtf8("我"), 1, true),
              QString::fromUtf8("\n1）我很好。 [Lesson  第 1 课]"));
    // A word with a parenthesis gets nothing from other lessons (他打球 stands in lesson 3).
    EXPECT_EQ(ExampleSentences(app, QString::fromUtf8("打(电话)"), 2, false),
              QString::fromUtf8("\n1）我打电话。 [Lesson  第 2 课]"));
    // Two pieces must stand in their order, and keep to the lesson.
    test::AddSentence(app, "老师你好。", 4);
    EXPECT_EQ(ExampleSentences(app, QString::fromUtf8("老师.好"), 1, false),
              QString::fromUtf8("\n1）老师好。 [Lesson  第 1 课]"));
    EXPECT_EQ(ExampleSentences(app, QString::fromUtf8("朋友"), 1, false).count(u'）'), 1);
    EXPECT_TRUE(ExampleSentences(app, QString::fromUtf8("猫"), 1, false).isEmpty());

    // Many sentences: the own lesson has no limit, the others stop at number 20.
    for (int i = 0; i < 30; ++i)
        test::AddSentence(app, "好极了。", 5);
    for (int i = 0; i < 25; ++i)
        test::AddSentence(app, "好的。", 6);
    const QString fromLessonFive = ExampleSentences(app, QString::fromUtf8("好"), 5, false);
    EXPECT_TRUE(fromLessonFive.contains(QString::fromUtf8("\n30）好极了。")));
    EXPECT_FALSE(fromLessonFive.contains(QString::fromUtf8("\n31）")));
    const QString fromLessonOne = ExampleSentences(app, QString::fromUtf8("好"), 1, false);
    EXPECT_TRUE(fromLessonOne.contains(QString::fromUtf8("\n20）")));
    EXPECT_FALSE(fromLessonOne.contains(QString::fromUtf8("\n21）")));
    EXPECT_TRUE(fromLessonOne.startsWith(QString::fromUtf8("\n1）你好，老师！ [Lesson  第 1 课]")));
}

TEST(DictionaryLogic, TheEntryHoldsBackWhatATaskAsks) {
    EntryParts row{QString::fromUtf8("你好"), QStringLiteral(" hello "),
                   QStringLiteral("n.i3 h.ao3"), 1, QStringLiteral("1")};
    const QString examples = QString::fromUtf8("\n1）你好，老师！ [Lesson  第 1 课]");
    const QString head = QString::fromUtf8("你好  ( nǐ hǎo )  \nhello\n[Lesson 第 1 课]");

    EXPECT_EQ(EntryText(row, false, 1, examples),
              head + QString::fromUtf8("\nExample Sentences  例句：") + examples);
    EXPECT_EQ(EntryText(row, false, 1, QStringLiteral("0")), head);
    for (int task : {4, 5, 7})
        EXPECT_EQ(EntryText(row, true, task, examples),
                  head + QString::fromUtf8("\nExample Sentences  例句：(being hid)"))
            << task;
    // The vocabulary task asks for the meaning: the word and its sentences only.
    EXPECT_EQ(EntryText(row, false, 3, examples),
              QString::fromUtf8("你好  ( nǐ hǎo )  ") + examples);
    EXPECT_TRUE(EntryText(row, false, 3, QStringLiteral("0")).isEmpty());

    EntryParts vocabulary{QString::fromUtf8("握手"), QStringLiteral(" to shake hands "), QString(),
                          2, QStringLiteral("1")};
    EXPECT_EQ(EntryText(vocabulary, false, 0, QStringLiteral("0")),
              QString::fromUtf8("握手\nto shake hands\n[Additional Vocabulary 附加词汇]"));
}

TEST(DictionaryLogic, ASingleCharacterIsSpokenFromItsSyllable) {
    EXPECT_EQ(SoundOfSingleCharacter(QStringLiteral("h.ao3")).syllable, "hao3");
    EXPECT_EQ(SoundOfSingleCharacter(QStringLiteral("h.ao3")).tone, "3");
    EXPECT_EQ(SoundOfSingleCharacter(QStringLiteral("ma")).syllable, "ma1");
    EXPECT_EQ(SoundOfSingleCharacter(QStringLiteral("ma")).tone, "0");
}

TEST(DictionaryLogic, LocateFindsTheNextPlaceAndStartsAgain) {
    const QString text = QStringLiteral("ab Ab aB");
    EXPECT_EQ(LocateNext(text, "ab", 1, 1), 1);
    EXPECT_EQ(LocateNext(text, "ab", 2, 1), 4);
    EXPECT_EQ(LocateNext(text, "ab", 5, 1), 7);
    EXPECT_EQ(LocateNext(text, "ab", 8, 2), 4); // wraps to the restart
    EXPECT_EQ(LocateNext(text, "xy", 1, 1), 0);
    EXPECT_EQ(LocateNext(text, "", 1, 1), 0);
}
