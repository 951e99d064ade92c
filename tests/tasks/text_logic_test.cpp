// The read-text rules without a form: the text as shown, the judgement of a translation, and the
// walk's choice of the word at a place.

#include "tasks/text_logic.h"

#include <gtest/gtest.h>

namespace vt {
namespace {

Array1<QString> linesOf(const QStringList& lines) {
    Array1<QString> a;
    for (const QString& l : lines)
        a.Append(l);
    return a;
}

Array1<LessonWord> wordsOf(const std::vector<LessonWord>& rows) {
    Array1<LessonWord> a;
    for (const LessonWord& w : rows)
        a.Append(w);
    return a;
}

Array1<WordRow> tableOf(const QStringList& words) {
    Array1<WordRow> a;
    for (const QString& w : words)
        a.Append(WordRow{w, QStringLiteral(" x ")});
    return a;
}

TEST(LessonText, TitleIsCentredAndOnlyIndentedLinesCloseAParagraph) {
    const auto lines = linesOf({"第一课", "  你好。", "我是学生。", "  他也是。"});
    EXPECT_EQ(BuildLessonText("第一课", lines, 4),
              QString(50, u' ') + "第一课" + "  你好。\n" + "我是学生。" + "  他也是。\n");
    // A title longer than the line counts as full: no blanks at all.
    const QString longTitle(30, u'课');
    EXPECT_EQ(BuildLessonText(longTitle, linesOf({longTitle}), 1), longTitle);
    // Without a title line 1 is left out.
    EXPECT_EQ(BuildLessonText({}, lines, 2), "  你好。\n");

    const QStringList items = SentenceListItems(lines, 4);
    ASSERT_EQ(items.size(), 5);
    EXPECT_EQ(items[0], "- Select 请选择 -");
    EXPECT_EQ(items[2], "2. 你好。...");
    EXPECT_EQ(items[3], "3. 我是学生。...");
}

TEST(Translation, TheRatioIsRoundedHalfToEvenBeforeItIsCompared) {
    const QString lessonText(20, u'字');
    const QString longEnough(10, u'x');
    // Two rows; the notes in parentheses never count.
    const auto words = wordsOf({{"你", "you (singular)", "ni3"}, {"好", "good; fine", "hao3"}});
    EXPECT_EQ(EnglishTokensFound(words, 2, "SINGULAR"), 0);
    // One token of two rows: 0.5 rounds to 0 and fails.
    EXPECT_EQ(JudgeTranslation(lessonText, longEnough + " You", words, 2),
              TranslationVerdict::Fails);
    // Three tokens of two rows: 1.5 rounds to 2 and passes; case does not matter.
    EXPECT_EQ(JudgeTranslation(lessonText, longEnough + " you are GOOD and Fine", words, 2),
              TranslationVerdict::Passes);
    // A token that stands twice in the list counts twice.
    const auto twice = wordsOf({{"一", "one", "yi1"}, {"二", "one more", "er4"}, {"三", "x", ""}});
    EXPECT_EQ(EnglishTokensFound(twice, 3, "one"), 2);
}

TEST(Translation, BlankTextsAndWordlessLessons) {
    EXPECT_EQ(JudgeTranslation("   ", "", {}, 0), TranslationVerdict::NothingToJudge);
    // No word rows: nothing to count against, so a long enough translation passes.
    EXPECT_EQ(JudgeTranslation(QString(4, u'字'), "anything", {}, 0), TranslationVerdict::Passes);
}

struct WalkTest : ::testing::Test {
    WordWalk walk;
    void lesson(const std::vector<LessonWord>& rows) {
        const auto a = wordsOf(rows);
        walk.SetLesson(a, static_cast<int>(rows.size()));
    }
    void table(const QStringList& words) {
        const auto a = tableOf(words);
        walk.SetWordTable(a, static_cast<int>(words.size()));
    }
    // The word, its row and where it comes from.
    QString at(const QString& text, int pos) {
        const auto w = walk.WordAt(text, pos);
        if (!w) return QStringLiteral("-");
        return QStringLiteral("%1@%2%3%4")
            .arg(w->word)
            .arg(w->row)
            .arg(w->fromLesson ? "L" : "T")
            .arg(w->withRelated ? "+" : "");
    }
};

TEST_F(WalkTest, TheLessonsLongestWordWinsAndEqualLengthsKeepTheFirst) {
    lesson({{"中", "", ""},
            {"中国.人", "", ""}, // dots cut a cell into pieces: "中国", "人"
            {"中文(书面)", "", ""},
            {"中国", "", ""}});
    table({"中国人"});
    EXPECT_EQ(at("中国人好", 0), "中国@2L+") << "the lesson comes first, however long the table's";
    EXPECT_EQ(at("中文", 0), "中文@3L+") << "the note in parentheses is dropped";
    EXPECT_EQ(at("中", 0), "中@1L+") << "a longer word that runs past the end does not count";
    EXPECT_EQ(at("人", 0), "人@2L+");
}

TEST_F(WalkTest, TheTableTakesTheLongestAndFallsBackToOneCharacter) {
    table({"学", "学生", "学生会", "生学", "大学"});
    EXPECT_EQ(at("学生们", 0), "学生@2T+");
    EXPECT_EQ(at("学生会", 0), "学生会@3T+");
    table({"学习", "学校"});
    EXPECT_EQ(at("学好", 0), "学@1T+") << "none stands here: the first candidate's character";
    table({"大学"});
    EXPECT_EQ(at("学", 0), "学@1T") << "no word begins with it: the first that holds it";
    EXPECT_EQ(at("飞", 0), "-");
}

TEST_F(WalkTest, WoKanBeforeAChineseCharacterIsReadAsWo) {
    table({"我看", "我"});
    EXPECT_EQ(at("我看书", 0), "我@2T+");
    EXPECT_EQ(at("我看", 0), "我@2T+") << "the end of the text counts as Chinese";
    EXPECT_EQ(at("我看。", 0), "我看@1T+") << "before punctuation it stands whole";
    EXPECT_EQ(at("我看a", 0), "我看@1T+");
    // The exception looks only at the character two places on, not at the text itself.
    EXPECT_EQ(at("我们好", 0), "我@2T+");
    // Without "我" in the list the candidate is passed over and the search goes on.
    table({"我看", "我们"});
    EXPECT_EQ(at("我看书", 0), "我@1T+");
    EXPECT_EQ(at("我们书", 0), "我们@2T+");
    // The order decides: a longer word met first is dropped by the forced choice.
    table({"我看见", "我看", "我"});
    EXPECT_EQ(at("我看见书", 0), "我@3T+");
}

TEST_F(WalkTest, XiaoShanBeforeYangIsReadAsXiao) {
    table({"小山", "小"});
    EXPECT_EQ(at("小山羊", 0), "小@2T+");
    EXPECT_EQ(at("小山上", 0), "小山@1T+");
    table({"小山", "小山羊", "小"});
    EXPECT_EQ(at("小山羊", 0), "小@3T+");
    table({"小山羊", "小山", "小"});
    EXPECT_EQ(at("小山羊", 0), "小@3T+") << "the longer match found first is dropped too";
}

TEST(KeptSyllables, AWordInsideALongerEntryKeepsItsOwnSyllables) {
    EXPECT_EQ(KeptSyllables("中国人", "zh.ong1 g.uo2 r.en2", "国人"), " guo2 ren2");
    EXPECT_EQ(KeptSyllables("中国人", "zh.ong1 g.uo2 r.en2", "中"), "zhong1");
    // Separators in the cell do not count as places.
    EXPECT_EQ(KeptSyllables("你.好(hello)", "n.i3 h.ao3", "好"), " hao3");
    // Pinyin without tone digits keeps nothing.
    EXPECT_EQ(KeptSyllables("好", "hao", "好"), "");
}

} // namespace
} // namespace vt
