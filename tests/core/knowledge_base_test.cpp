#include "core/knowledge_base.h"

#include "../../bench/course_generator.h"
#include "core/script_file.h"
#include "support/knowledge_base_reference.h"
#include "support/test_env.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>

namespace vt {
namespace {

using test::TestEnv;

struct Word {
    QString pinyin, chinese, meaning;
};

QStringList wordLines(const std::vector<Word>& words) {
    QStringList lines;
    for (const Word& w : words)
        lines << w.pinyin << w.chinese << w.meaning;
    return lines;
}

void writeScript(TestEnv& env, const QString& rel, const QStringList& lines, const char* family) {
    env.WriteFile(rel, EncodeScriptLines(lines, QLatin1String(family), 7));
}

QString icwp(int n) {
    return QStringLiteral("Lessons\\Script\\Lesson_%1\\icwp.zvk").arg(n);
}
QString lifr(int n) {
    return QStringLiteral("Lessons\\Script\\Lesson_%1\\lifr.zvk").arg(n);
}
QString ci(int n) {
    return QStringLiteral("Vocabulary\\ci%1.zvk").arg(n);
}

const QStringList kOneWord = wordLines({{"h.ao3", "好", "good"}});

// The character table as one line per character: 中 zh.ong/zhong/z 1/1/1 | ...
QStringList dumpCharTable(const AppState& app) {
    QStringList out;
    for (int i = 1; i <= app.CharCount; ++i) {
        const CharEntry& e = app.CharTable[i];
        QStringList readings;
        for (int k = 1; k <= e.ReadingCount; ++k) {
            const CharReading& r = e.Readings[k];
            readings << r.Pinyin + u'/' + r.Plain + u'/' + r.Initial + u' ' + r.ToneKey + u'/' +
                            r.ToneSound + u'/' + r.Tone;
        }
        out << e.Character + u' ' + readings.join(QStringLiteral(" | "));
    }
    return out;
}

TEST(KnowledgeBase, WordFilesBecomeRowsInLessonThenVocabularyOrder) {
    TestEnv env;
    // Seven lines: two whole triples, the seventh line is lost.
    writeScript(env, icwp(2),
                {"  zh.ong1 g.uo2 ", " 中国", "China  ", "n.i3", "你", "you", "x.ie4"}, "RW");
    writeScript(env, icwp(1), kOneWord, "RW");
    writeScript(env, ci(3), wordLines({{"sh.u1", "书", "book"}}), "VO");
    LoadProgress progress;
    LoadWordsAndSentences(*env.rt, progress);
    const AppState& app = env.rt->app;

    ASSERT_EQ(app.WordCount, 4);
    EXPECT_EQ(app.WordCountCopy, 4);
    EXPECT_EQ(app.LessonWordCount, 3);
    EXPECT_EQ(app.WordPinyin[2], "zh.ong1 g.uo2");
    EXPECT_EQ(app.WordTable[2].Chinese, "中国");
    EXPECT_EQ(app.WordTable[2].Meaning, " China ");
    const std::vector<std::pair<int, int>> origins = {{1, 1}, {1, 2}, {1, 2}, {2, 3}};
    for (int w = 1; w <= 4; ++w) {
        EXPECT_EQ(app.WordOrigin[w].Kind, origins[size_t(w - 1)].first) << "row " << w;
        EXPECT_EQ(app.WordOrigin[w].Number, origins[size_t(w - 1)].second) << "row " << w;
    }
    // Three files found; the character bar counts the words.
    EXPECT_EQ(progress.Value[VocabularyBar], 3);
    EXPECT_EQ(progress.Max[CharacterBar], 4);
}

TEST(KnowledgeBase, VocabularyBarJumpsOnlyFrom144) {
    struct Row {
        const char* name;
        int lessons, vocabularyFiles, expected;
    };
    const Row rows[] = {
        {"all lessons, no vocabulary, one lesson short", 139, 4, 143},
        {"144 files jump to the end", 140, 4, 160},
        {"one file more does not jump", 140, 5, 145},
        {"every file", 140, 20, 160},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TestEnv env;
        const QByteArray bytes = EncodeScriptLines(kOneWord, QStringLiteral("RW"), 1);
        const QByteArray vocabulary = EncodeScriptLines(kOneWord, QStringLiteral("VO"), 1);
        for (int n = 1; n <= row.lessons; ++n)
            env.WriteFile(icwp(n), bytes);
        for (int n = 1; n <= row.vocabularyFiles; ++n)
            env.WriteFile(ci(n), vocabulary);
        LoadProgress progress;
        LoadTitles(*env.rt, progress);
        LoadWordsAndSentences(*env.rt, progress);
        EXPECT_EQ(progress.Max[VocabularyBar], 160);
        EXPECT_EQ(progress.Value[VocabularyBar], row.expected);
        EXPECT_EQ(env.rt->app.WordCount, row.lessons + row.vocabularyFiles);
    }
}

TEST(KnowledgeBase, WordTableStopsAtTheLargestCount) {
    TestEnv env;
    // A file holds at most 32767 lines, so it takes several files to pass the limit.
    QStringList lines;
    for (int i = 0; i < 9000; ++i)
        lines << "m.a3"
              << "马"
              << "horse";
    for (int n = 1; n <= 4; ++n)
        writeScript(env, ci(n), lines, "VO");
    writeScript(env, ci(5), kOneWord, "VO");
    LoadProgress progress;
    LoadWordsAndSentences(*env.rt, progress);
    BuildCharTable(*env.rt, progress);
    const AppState& app = env.rt->app;
    EXPECT_EQ(app.WordCount, 32767);
    EXPECT_EQ(app.WordTable.Count(), 32767);
    EXPECT_EQ(progress.Value[VocabularyBar], 5);
    EXPECT_EQ(progress.Max[CharacterBar], 32767);
    EXPECT_EQ(dumpCharTable(app), QStringList{"马 m.a/ma/m 3/3/3"});
}

TEST(KnowledgeBase, MissingLessonLeavesNoRowsWithItsNumber) {
    TestEnv env;
    for (int n : {1, 2, 4})
        writeScript(env, icwp(n), kOneWord, "RW");
    LoadProgress progress;
    LoadWordsAndSentences(*env.rt, progress);
    const AppState& app = env.rt->app;
    ASSERT_EQ(app.WordCount, 3);
    for (const WordSource& origin : app.WordOrigin)
        EXPECT_NE(origin.Number, 3);
    EXPECT_EQ(progress.Value[VocabularyBar], 3);
    EXPECT_TRUE((env.boxes.Count() == 0));
}

TEST(KnowledgeBase, HeaderLinesOfTextsNeverBecomeSentences) {
    TestEnv env;
    writeScript(env, lifr(1), {"Title line", " 你好。 ", "", "再见。"}, "RT");
    writeScript(env, lifr(2), {"Only a title"}, "RT");
    writeScript(env, lifr(80), {"Title", "最后的课文。"}, "RT");
    writeScript(env, lifr(81), {"Title", "81.mp3", "第一句。"}, "RT");
    writeScript(env, lifr(82), {"Title", "82.mp3"}, "RT");
    LoadProgress progress;
    LoadWordsAndSentences(*env.rt, progress);
    const AppState& app = env.rt->app;

    const QStringList expected = {"你好。", "", "再见。", "最后的课文。", "第一句。"};
    const std::vector<int16_t> lessons = {1, 1, 1, 80, 81};
    ASSERT_EQ(app.SentenceCount, expected.size());
    EXPECT_EQ(app.SentenceCountCopy, app.SentenceCount);
    for (int i = 1; i <= app.SentenceCount; ++i) {
        EXPECT_EQ(app.SentenceTable[i], expected[i - 1]) << "row " << i;
        EXPECT_EQ(app.SentenceLesson[i], lessons[size_t(i - 1)]) << "row " << i;
    }
    EXPECT_EQ(progress.Value[SentenceBar], 5);
}

TEST(KnowledgeBase, TitlesAreReadOrReportedOnce) {
    {
        TestEnv env;
        LoadProgress progress;
        LoadTitles(*env.rt, progress);
        EXPECT_EQ(env.rt->app.TitleList.Count(), 140);
        ASSERT_EQ(env.boxes.Count(), 1);
        EXPECT_EQ(env.boxes.Boxes()[0].text,
                  "Error: Fail to find file Title.zvk in folder Lessons!");
        EXPECT_EQ(env.boxes.Boxes()[0].title, "Warning");
        EXPECT_EQ(progress.Max[SentenceBar], 140);
    }
    {
        TestEnv env;
        QStringList titles;
        for (int n = 1; n <= 150; ++n)
            titles << QStringLiteral("Title %1").arg(n);
        writeScript(env, QStringLiteral("Lessons\\Title.zvk"), titles, "RT");
        LoadProgress progress;
        LoadTitles(*env.rt, progress);
        const AppState& app = env.rt->app;
        ASSERT_EQ(app.TitleList.Count(), 140);
        EXPECT_EQ(app.TitleList[1], "Title 1");
        EXPECT_EQ(app.TitleList[140], "Title 140");
        EXPECT_EQ(app.ScriptLineCount, 0);
        EXPECT_TRUE((env.boxes.Count() == 0));
    }
}

TEST(KnowledgeBase, CharTableKeepsFirstAppearanceOfCharactersAndReadings) {
    TestEnv env;
    writeScript(env, icwp(1),
                wordLines({
                    {"zh.ong1 g.uo2", "中国", "China"},
                    {"zh.ong4", "中", "to hit"},           // second reading of a known character
                    {"zh.ong1 w.en2", "中文", "Chinese"},  // known reading: nothing new
                    {"y.i2 h.uir3", "一会儿", "a moment"}, // three characters, two syllables
                    {"l.e0", "了", "(particle)"},          // neutral tone
                    {"m.a", "吗", "(question)"},           // no tone digit
                    {"n.i3 h.ao3", "你好！", "hello"},     // the mark is not a character
                    {"h.ao3 ma", "好吗", "all right?"},    // text after the last digit is lost
                }),
                "RW");
    LoadProgress progress;
    LoadWordsAndSentences(*env.rt, progress);
    BuildCharTable(*env.rt, progress);
    const AppState& app = env.rt->app;

    const QStringList expected = {
        "中 zh.ong/zhong/z 1/1/1 | zh.ong/zhong/z 4/4/4",
        "国 g.uo/guo/g 2/2/2",
        "文 w.en/wen/w 2/2/2",
        "了 l.e/le/l 0/1/0",
        "吗 m.a/ma/m 0//",
        "你 n.i/ni/n 3/3/3",
        "好 h.ao/hao/h 3/3/3",
    };
    EXPECT_EQ(dumpCharTable(app), expected);
    // Words that did not pair stay in the word table.
    EXPECT_EQ(app.WordCount, 8);
    EXPECT_EQ(app.WordTable[4].Chinese, "一会儿");
    EXPECT_EQ(progress.Value[CharacterBar], 8);
    EXPECT_EQ(progress.Max[CharacterBar], 8);
}

// Every table of the load, one line per row, and the bars.
QStringList dumpTables(const AppState& app, const LoadProgress& progress) {
    QStringList out;
    for (int w = 1; w <= app.WordTable.Count(); ++w)
        out << QStringLiteral("word %1 [%2] [%3] [%4] %5/%6")
                   .arg(w)
                   .arg(app.WordPinyin[w], app.WordTable[w].Chinese, app.WordTable[w].Meaning)
                   .arg(app.WordOrigin[w].Kind)
                   .arg(app.WordOrigin[w].Number);
    for (int i = 1; i <= app.SentenceTable.Count(); ++i)
        out << QStringLiteral("sentence %1 [%2] %3")
                   .arg(i)
                   .arg(app.SentenceTable[i])
                   .arg(app.SentenceLesson[i]);
    out << QStringLiteral("counts %1 %2 %3 %4 %5 %6")
               .arg(app.WordCount)
               .arg(app.WordCountCopy)
               .arg(app.LessonWordCount)
               .arg(app.SentenceCount)
               .arg(app.SentenceCountCopy)
               .arg(app.WordPinyin.Count());
    for (int bar : {VocabularyBar, SentenceBar, CharacterBar})
        out << QStringLiteral("bar %1 %2/%3")
                   .arg(bar)
                   .arg(progress.Value[bar])
                   .arg(progress.Max[bar]);
    return out + dumpCharTable(app);
}

// The program's load against the plain one on a generated course with a skewed character
// draw, a lesson without files, a corrupted vocabulary file and padded lines: every row of every
// table, the bars and the messages must be the same.
TEST(KnowledgeBase, LoadGivesExactlyThePlainResult) {
    coursegen::CourseShape shape;
    shape.lessons = 90; // lessons 81 and up are plays with two heading lines
    shape.vocabularyFiles = 3;
    shape.wordsPerVocabularyFile = 400;
    shape.characterPool = 900;
    const auto load = [&](bool plain) {
        TestEnv env;
        coursegen::GenerateCourse(env.files, env.rt->app.AppPath, shape);
        QFile::remove(FileStore::Resolve(env.Path(icwp(7))));
        QFile::remove(FileStore::Resolve(env.Path(lifr(8))));
        env.WriteFile(ci(2), PackInt16LE({0, 1, 2, 0, 30000, 30000}));
        LoadProgress progress;
        LoadTitles(*env.rt, progress);
        if (plain) {
            test::LoadWordsAndSentencesPlainly(*env.rt, progress);
            test::BuildCharTableByScanning(*env.rt, progress);
        } else {
            LoadWordsAndSentences(*env.rt, progress);
            BuildCharTable(*env.rt, progress);
        }
        QStringList out = dumpTables(env.rt->app, progress);
        for (const auto& box : env.boxes.Boxes())
            out << QStringLiteral("message ") + box.text.mid(box.text.lastIndexOf(u'/'));
        return out;
    };
    const QStringList plain = load(true);
    const QStringList program = load(false);

    EXPECT_GT(plain.filter(QRegularExpression(QStringLiteral("^\\S \\S"))).size(), 500)
        << "characters in the table";
    EXPECT_EQ(plain.filter(QStringLiteral("message ")).size(), 1);
    EXPECT_TRUE(
        std::any_of(plain.begin(), plain.end(), [](const QString& s) { return s.contains(u'|'); }));
    ASSERT_EQ(program.size(), plain.size());
    for (qsizetype i = 0; i < plain.size(); ++i)
        ASSERT_EQ(program[i], plain[i]) << "row " << i;
}

TEST(KnowledgeBase, CorruptFileInTheMiddleIsReportedOnceAndTheLoadGoesOn) {
    TestEnv env;
    for (int n = 1; n <= 5; ++n)
        writeScript(env, icwp(n), kOneWord, "RW");
    // Lesson 3's word file holds a record whose sum leaves the 16-bit range.
    env.WriteFile(icwp(3), PackInt16LE({0, 30000, 30000}));
    writeScript(env, QStringLiteral("Lessons\\Title.zvk"), {"One"}, "RT");
    LoadProgress progress;
    LoadKnowledgeBase(*env.rt, progress);
    const AppState& app = env.rt->app;

    ASSERT_EQ(env.boxes.Count(), 1);
    // The path reads the way the file system writes it.
    EXPECT_EQ(env.boxes.Boxes()[0].text,
              "The file " + app.AppPath + "Lessons/Script/Lesson_3/icwp.zvk is corrupted!");
    EXPECT_EQ(app.WordCount, 4);
    EXPECT_EQ(progress.Value[VocabularyBar], 5); // counted as found
    EXPECT_EQ(app.CharCount, 1);
}

} // namespace
} // namespace vt
