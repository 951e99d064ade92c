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
