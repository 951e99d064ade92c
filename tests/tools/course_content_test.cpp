// Reads the compiled sample course back through the program's own readers and counts what each
// part of it holds. A course that compiles but is too thin to teach with, or that the program
// reads differently from what was written, fails here. The check needs the course built into the
// program's data folder; without it every test is skipped and says how to build it.

#include "core/pinyin.h"
#include "core/script_file.h"
#include "support/test_env.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <ostream>

namespace vt {
namespace {

class SampleCourse : public ::testing::Test {
protected:
    void SetUp() override {
        env.rt->app.AppPath = QStringLiteral(VANTORIA_APP_DIR "/");
        if (!env.rt->files.Exists(Data(QStringLiteral("Lessons\\Title.zvk"))))
            GTEST_SKIP()
                << "the sample course is not compiled into " VANTORIA_APP_DIR
                   " (Lessons\\Title.zvk is missing); build it with scripts/build_course.sh";
    }

    QString Data(const QString& relative) const { return env.rt->app.AppPath + relative; }
    bool Exists(const QString& relative) const { return env.rt->files.Exists(Data(relative)); }

    // The lines of one script file as the program reads them; any box shown while reading
    // (a corrupted or unreadable file) fails the test.
    QStringList Lines(const QString& relative, const char* family) {
        const int boxesBefore = env.boxes.Count();
        const Array1<QString> lines =
            ReadScriptLines(*env.rt, Data(relative), QLatin1String(family));
        EXPECT_EQ(env.boxes.Count(), boxesBefore)
            << relative.toStdString() << ": "
            << (env.boxes.Count() ? env.boxes.Last().text.toStdString() : std::string());
        return QStringList(lines.begin(), lines.end());
    }

    int SyllableCount(const QString& pinyin) {
        SplitPinyinSyllables(env.rt->app, pinyin);
        return env.rt->app.PinyinSyllables.Count();
    }

    // Rows of a three-line-a-row file (words, categorised sentences): pinyin, Chinese, English.
    struct Row {
        QString pinyin, chinese, english;
    };
    std::vector<Row> Rows(const QString& relative, const char* family) {
        const QStringList lines = Lines(relative, family);
        EXPECT_EQ(lines.size() % 3, 0) << relative.toStdString() << " loses its last lines";
        std::vector<Row> rows;
        for (qsizetype i = 0; i + 2 < lines.size(); i += 3)
            rows.push_back({lines[i].trimmed(), lines[i + 1].trimmed(), lines[i + 2].trimmed()});
        return rows;
    }

    test::TestEnv env;
};

QString LessonFile(int lesson, const char* name) {
    return QStringLiteral("Lessons\\Script\\Lesson_%1\\%2").arg(lesson).arg(QLatin1String(name));
}

TEST_F(SampleCourse, HasATitleForEveryLesson) {
    const QStringList titles = Lines(QStringLiteral("Lessons\\Title.zvk"), "RT");
    ASSERT_GE(titles.size(), 140);
    for (int n = 1; n <= 140; ++n)
        EXPECT_FALSE(titles[n - 1].trimmed().isEmpty()) << "lesson " << n << " has no title";
}

// What one written lesson must hold for all seven tasks to have material.
struct LessonShape {
    const char* name;
    int lesson;
    int minLines, maxLines; // sentences of the text, the title line not counted
};
void PrintTo(const LessonShape& shape, std::ostream* os) {
    *os << shape.name;
}

class WrittenLesson : public SampleCourse, public ::testing::WithParamInterface<LessonShape> {};

TEST_P(WrittenLesson, HasWordsTextAndQuestions) {
    const LessonShape& shape = GetParam();
    const int n = shape.lesson;
    SCOPED_TRACE(shape.name);

    // Words: 12 to 20, each one pairing its syllables with its characters, so that all of them
    // reach the character table that typing and blank filling draw from.
    const std::vector<Row> words = Rows(LessonFile(n, "icwp.zvk"), "RW");
    EXPECT_GE(words.size(), 12u);
    EXPECT_LE(words.size(), 20u);
    for (const Row& w : words) {
        EXPECT_EQ(SyllableCount(w.pinyin), StripPunctuation(w.chinese).size())
            << w.chinese.toStdString() << " / " << w.pinyin.toStdString();
        EXPECT_FALSE(HasNonChinese(StripPunctuation(w.chinese))) << w.chinese.toStdString();
        EXPECT_LE(w.english.count(u';'), 6) << w.chinese.toStdString() << ": over seven meanings";
    }

    // The text: line 1 is not read, line 2 is the title, then the sentences. The title must fit
    // the 28 places that blank filling centres it in.
    const QStringList text = Lines(LessonFile(n, "lifr.zvk"), "RT");
    ASSERT_GE(text.size(), 3);
    EXPECT_LE(text[1].trimmed().size(), 28) << "title line too long for blank filling";
    const int sentences = static_cast<int>(text.size()) - 2;
    EXPECT_GE(sentences, shape.minLines);
    EXPECT_LE(sentences, shape.maxLines);
    qsizetype chinese = 0;
    for (const QString& line : text.mid(1))
        chinese += ChineseOnly(line).size();
    EXPECT_GE(chinese, 60) << "too few characters to cut blanks from";

    // The questions, counted as the question task counts them: a numeric line opens a question,
    // the next line is its text, the others options, "#" marking a right one.
    const QStringList lines = Lines(LessonFile(n, "ogae.zvk"), "RQ");
    struct Question {
        int options = 0, right = 0;
        bool textSeen = false;
    };
    std::vector<Question> questions;
    for (const QString& line : lines) {
        if (line.isEmpty()) continue;
        if (IsNumeric(line)) {
            questions.emplace_back();
        } else if (questions.empty()) {
            ADD_FAILURE() << "text before the first question: " << line.toStdString();
        } else if (!questions.back().textSeen) {
            questions.back().textSeen = true;
        } else {
            ++questions.back().options;
            if (line.startsWith(u'#')) ++questions.back().right;
        }
    }
    EXPECT_GE(questions.size(), 5u);
    EXPECT_LE(questions.size(), 8u);
    for (size_t q = 0; q < questions.size(); ++q) {
        EXPECT_GE(questions[q].options, 2) << "question " << q + 1;
        EXPECT_LE(questions[q].options, 4) << "question " << q + 1;
        EXPECT_GE(questions[q].right, 1) << "question " << q + 1 << " has no right option";
    }
    std::printf("lesson %d: %zu words, %d sentences, %lld characters, %zu questions\n", n,
                words.size(), sentences, static_cast<long long>(chinese), questions.size());
}

INSTANTIATE_TEST_SUITE_P(
    Lessons, WrittenLesson,
    ::testing::Values(LessonShape{"Lesson1", 1, 7, 14}, LessonShape{"Lesson2", 2, 7, 14},
                      LessonShape{"Lesson3", 3, 7, 14}, LessonShape{"Play81", 81, 10, 16}),
    [](const ::testing::TestParamInfo<LessonShape>& row) { return std::string(row.param.name); });

TEST_F(SampleCourse, DialogsHaveAnAskAndTwoToFiveReplies) {
    const QStringList lines = Lines(QStringLiteral("Spoken\\Script.zvk"), "SP");
    std::vector<int> replies; // lines after the ask, per dialog
    bool askAwaited = false;
    for (const QString& line : lines) {
        if (line.trimmed().isEmpty()) continue;
        if (IsNumeric(line)) {
            replies.push_back(0);
            askAwaited = true;
            continue;
        }
        ASSERT_FALSE(replies.empty()) << "text before the first dialog";
        EXPECT_TRUE(line.contains(u'='))
            << "no \"=\" between Chinese and English: " << line.toStdString();
        if (askAwaited)
            askAwaited = false;
        else
            ++replies.back();
    }
    EXPECT_GE(replies.size(), 10u);
    EXPECT_NE(replies.size(), 8u) << "eight dialogs make the trainer say that none were found";
    for (size_t d = 0; d < replies.size(); ++d) {
        EXPECT_GE(replies[d], 2) << "dialog " << d + 1;
        EXPECT_LE(replies[d], 5) << "dialog " << d + 1;
    }
}

TEST_F(SampleCourse, EveryCategoryHasSentencesAndAStructure) {
    for (int k = 1; k <= 20; ++k) {
        const QString file = QStringLiteral("Spoken\\Script_%1.zvk").arg(k);
        ASSERT_TRUE(Exists(file)) << file.toStdString();
        int sentences = 0, structures = 0;
        for (const Row& r : Rows(file, "SP")) {
            if (r.english.contains(QStringLiteral("<<<"))) {
                ++structures;
                continue;
            }
            ++sentences;
            EXPECT_EQ(SyllableCount(r.pinyin), ChineseOnly(r.chinese).size())
                << r.chinese.toStdString() << " is spoken with the wrong syllables";
        }
        EXPECT_GE(sentences, 6) << "category " << k;
        EXPECT_GE(structures, 1) << "category " << k;
    }
}

TEST_F(SampleCourse, FurtherSentencesStartWithAFullFile) {
    const std::vector<Row> rows = Rows(QStringLiteral("Spoken\\Script1.zvk"), "SP");
    EXPECT_GE(rows.size(), 40u);
    for (const Row& r : rows)
        EXPECT_EQ(SyllableCount(r.pinyin), ChineseOnly(r.chinese).size())
            << r.chinese.toStdString();
}

} // namespace
} // namespace vt
