// The walk that finds a listed word in the lesson's text.

#include "tasks/word_marking.h"

#include <gtest/gtest.h>

namespace vt {
namespace {

Array1<LessonWord> words(std::initializer_list<const char*> chinese) {
    Array1<LessonWord> out;
    for (const char* c : chinese)
        out.Append(LessonWord{QString::fromUtf8(c), {}, {}});
    return out;
}

std::optional<TextMark> mark(const char* text, const Array1<LessonWord>& list, int k) {
    return MarkLessonWord(QString::fromUtf8(text), list, k);
}

TEST(WordMarking, AWordThatOccursTwiceIsMarkedWhereItsRowBelongs) {
    //                       0 1 2 3 4 5 6 7 8 9
    const char* text = "我是老师。他是学生。";
    const Array1<LessonWord> list = words({"是", "老师", "他", "是", "学生"});
    EXPECT_EQ(mark(text, list, 1), (TextMark{1, 1}));
    EXPECT_EQ(mark(text, list, 2), (TextMark{2, 2}));
    // Row 4 is the second 是: the walk has passed the first one by then.
    EXPECT_EQ(mark(text, list, 4), (TextMark{6, 1}));
    EXPECT_EQ(mark(text, list, 5), (TextMark{7, 2}));
}

TEST(WordMarking, AWordAndItsFirstCharacterAtOnePlaceAreBothFound) {
    // The walk goes on from one place before the word found last.
    const Array1<LessonWord> list = words({"老师", "老", "师"});
    EXPECT_EQ(mark("我的老师", list, 2), (TextMark{2, 1}));
    EXPECT_EQ(mark("我的老师", list, 3), (TextMark{3, 1}));
}

TEST(WordMarking, NotesReadingsAndPunctuationAreLeftOut) {
    EXPECT_EQ(WordToMark(QStringLiteral("行 (xing2)")), "行");
    EXPECT_EQ(WordToMark(QStringLiteral("了(le)")), "了");
    EXPECT_EQ(WordToMark(QStringLiteral("对.不起")), "对");
    EXPECT_EQ(WordToMark(QStringLiteral("谢谢！")), "谢谢");
    EXPECT_EQ(mark("他走了。", words({"了 (le)"}), 1), (TextMark{2, 1}));
}

TEST(WordMarking, AWordBehindTheWalkIsFoundFromTheStartAndAMissingOneNowhere) {
    // Rows out of the text's order: 我 stands before the place the walk reached.
    EXPECT_EQ(mark("我是学生", words({"学生", "我"}), 2), (TextMark{0, 1}));
    EXPECT_EQ(mark("我是学生", words({"老师"}), 1), std::nullopt);
    EXPECT_EQ(mark("我是学生", words({"是"}), 2), std::nullopt);
    EXPECT_EQ(mark("我是学生", words({"（）"}), 1), std::nullopt);
}

} // namespace
} // namespace vt
