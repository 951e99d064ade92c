// The searches behind the related-expressions list, on a small dictionary of our own.

#include "search/related_words.h"

#include <gtest/gtest.h>

namespace vt {
namespace {

struct Word {
    const char* chinese;
    const char* meaning;
    const char* pinyin;
};

void addWord(AppState& app, const Word& w) {
    // Meanings are stored with a blank at each end, as the knowledge base keeps them.
    app.WordTable.Append(
        WordRow{QString::fromUtf8(w.chinese), u' ' + QString::fromUtf8(w.meaning) + u' '});
    app.WordPinyin.Append(QString::fromUtf8(w.pinyin));
    app.WordOrigin.Append(WordSource{1, int16_t(app.WordTable.Count())});
    app.WordCount = app.WordCountCopy = app.LessonWordCount = int16_t(app.WordTable.Count());
}

AppState dictionary(std::initializer_list<Word> words) {
    AppState app;
    for (const Word& w : words)
        addWord(app, w);
    return app;
}

QStringList chinese(const std::vector<RelatedRow>& rows) {
    QStringList out;
    for (const RelatedRow& r : rows)
        out << r.Chinese;
    return out;
}

const AppState kSmall = dictionary({
    {"好", "good", "h.ao3"},
    {"好", "to like", "h.ao4"},
    {"你好", "hello", "n.i3 h.ao3"},
    {"好人", "good person", "h.ao3 r.en2"},
    {"人", "person", "r.en2"},
    {"中国", "China", "zh.ong1 g.uo2"},
    {"美国", "USA", "m.ei3 g.uo2"},
    {"中文", "Chinese", "zh.ong1 w.en2"},
    {"男人", "man", "n.an2 r.en2"},
});

TEST(RelatedByCharacter, EachPairOfLengthsHasItsOwnRule) {
    struct Case {
        const char* name;
        const char* text;
        const char* meaning;
        QStringList expected;
    } cases[] = {
        // One against one: the same character with another meaning; itself is left out.
        // One against longer: every longer word that holds it.
        {"one character", "好", "good", {"好", "你好", "好人"}},
        // Longer against one: every character the text holds, whatever its meaning.
        // Longer against longer: the same last character and another meaning.
        {"a word", "好人", "good person", {"好", "好", "人", "男人"}},
        // 中文 holds 中 but ends otherwise: only the ending counts between longer words.
        {"ending", "中国", "China", {"美国"}},
        {"nothing", "书", "book", {}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(chinese(RelatedByCharacter(kSmall, QString::fromUtf8(c.text),
                                             QString::fromUtf8(c.meaning))),
                  c.expected)
            << c.name;
}

TEST(RelatedByCharacter, StopsAtTwentyInTableOrderWithTheRowAsTheListShowsIt) {
    AppState app;
    for (int i = 0; i < 30; ++i)
        addWord(app, {"好", "other", "h.ao3"});
    app.WordTable[5].Chinese = QStringLiteral("好好");
    const std::vector<RelatedRow> rows = RelatedByCharacter(app, QStringLiteral("好"), "good");
    ASSERT_EQ(rows.size(), 20u);
    EXPECT_EQ(rows[4].Chinese, "好好");
    EXPECT_EQ(rows[0].Pinyin, "hǎo");
    EXPECT_EQ(rows[19].Origin.Number, 20);

    // Words the dictionary took from elsewhere carry no reading.
    app.WordCountCopy = 2;
    EXPECT_EQ(RelatedByCharacter(app, QStringLiteral("好"), "good")[2].Pinyin1, "");
}

TEST(WordsHolding, HoldsTheTextAndStopsAtTen) {
    EXPECT_EQ(chinese(WordsHolding(kSmall, QStringLiteral("国"))), QStringList({"中国", "美国"}));
    AppState app;
    for (int i = 0; i < 15; ++i)
        addWord(app, {"学生", "student", "x.ue2 sh.eng1"});
    EXPECT_EQ(WordsHolding(app, QStringLiteral("学")).size(), 10u);
}

TEST(EntryWithRelated, TheCallersEntryComesFirstThenTenOthersOfTheSameTable) {
    AppState app = kSmall;
    app.OpenLesson = 7;
    const std::vector<std::pair<const char*, const char*>> lesson = {
        {"学生", "student"},
        {"学", "to study"},
        {"学习", "to learn"},
        {"走 (学)", "to walk"},
        {"大学 (university)", "university"}};
    for (const auto& [c, m] : lesson)
        app.LessonWords.Append(LessonWord{QString::fromUtf8(c), m, QStringLiteral("x.ue2")});
    app.LessonWordRows = int16_t(app.LessonWords.Count());

    // The row itself is not listed twice; a note in parentheses does not count as the word.
    std::vector<RelatedRow> rows = EntryWithRelated(app, "学", {}, 2, true, true);
    EXPECT_EQ(chinese(rows), QStringList({"学", "学生", "学习", "大学 (university)"}));
    EXPECT_EQ(rows[0].English, "to study");
    EXPECT_EQ(rows[0].Origin.Kind, 1);
    EXPECT_EQ(rows[0].Origin.Number, 7);

    // Without the related words only the entry; a reading handed over replaces its own.
    rows = EntryWithRelated(app, "学", QStringLiteral("x.ue2 sh.eng5"), 1, true, false);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].Pinyin1, "x.ue2 sh.eng5");

    // From the dictionary: only its lesson words are searched.
    app.LessonWordCount = 6;
    EXPECT_EQ(chinese(EntryWithRelated(app, "国", {}, 6, false, true)), QStringList({"中国"}));

    for (int i = 0; i < 15; ++i)
        app.LessonWords.Append(LessonWord{QStringLiteral("学校"), "school", "x.ue2 x.iao4"});
    app.LessonWordRows = int16_t(app.LessonWords.Count());
    EXPECT_EQ(EntryWithRelated(app, "学", {}, 2, true, true).size(), 11u);
}

} // namespace
} // namespace vt
