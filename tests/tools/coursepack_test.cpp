// The course compiler on small sources written here: what it builds reads back through the
// program's own readers as the sources said, and every fault in the sources is named with its
// file and line.

#include "audio.h"
#include "course_build.h"
#include "course_sources.h"
#include "lexicon.h"
#include "script_output.h"
#include "strokes.h"

#include "core/knowledge_base.h"
#include "core/pinyin.h"
#include "core/script_file.h"
#include "core/stroke_offsets.h"
#include "support/test_env.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>

namespace vt::coursepack {
namespace {

// A course folder on disk, written file by file by a test.
struct SourceFolder {
    QTemporaryDir root;
    QString Dir() const { return root.path() + QStringLiteral("/course"); }
    void Write(const QString& relative, const QString& text) const {
        const QString path = Dir() + u'/' + relative;
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(text.toUtf8());
    }
    void WriteTitles(int count = kLessonCount) const {
        QString t = QStringLiteral("# titles\n");
        for (int i = 1; i <= count; ++i)
            t += QStringLiteral("Lesson title %1\n").arg(i);
        Write(QStringLiteral("titles.txt"), t);
    }
};

// The small course most tests start from: one read text, one TV play, dialogs and sentences.
void WriteSmallCourse(const SourceFolder& src) {
    src.WriteTitles();
    src.Write(QStringLiteral("lessons/001/words.txt"),
              QStringLiteral("ni3 hao3 | 你好 | hello; how do you do\n"
                             "# a comment\n"
                             "jian4 mian4 | 见.面 | to meet (in person)\n"
                             "nv3 er2 | 女儿 | daughter\n"));
    src.Write(QStringLiteral("lessons/001/text.txt"),
              QStringLiteral("你好\n  李明：你好！\n\n王老师：女儿见面了。\n"));
    src.Write(
        QStringLiteral("lessons/001/questions.txt"),
        QStringLiteral("谁是老师？\n#王老师\n李明\n\nWhich are greetings?\n#你好\n#您好\n再见\n"));
    src.Write(QStringLiteral("lessons/081/play.txt"),
              QStringLiteral(
                  "title: 第一次见面\nvoices: 安娜=female1\n安娜: 你好！\n王丽：你好，请坐。\n"));
    src.Write(QStringLiteral("lessons/081/words.txt"),
              QStringLiteral("qing3 zuo4 | 请坐 | please sit down\nqing3 | 请 | please\n"));
    src.Write(QStringLiteral("spoken/dialogs.txt"),
              QStringLiteral("你好吗？ = How are you today, my friend?\n很好。 = Very "
                             "well.\n还可以。 = Not bad.\n"));
    src.Write(QStringLiteral("spoken/category_01.txt"),
              QStringLiteral("ni3 hao3 | 你好！ | Hello!\nni3 xi3 huan5 ... ma0 | 你喜欢……吗？ | "
                             "Do you like ...? <<<\n"));
    src.Write(QStringLiteral("spoken/sentences_1.txt"),
              QStringLiteral("xie4 xie0 | 谢谢。 | Thank you.\n"));
}

Course ReadOk(const SourceFolder& src) {
    Course course;
    std::vector<SourceError> errors;
    EXPECT_TRUE(ReadCourse(src.Dir(), course, errors))
        << (errors.empty() ? "" : errors[0].Text().toStdString());
    return course;
}

QStringList ScriptLinesOf(test::TestEnv& env, const QString& relative, const char* family) {
    const Array1<QString> lines =
        ReadScriptLines(*env.rt, env.rt->app.AppPath + relative, QLatin1String(family));
    return QStringList(lines.begin(), lines.end());
}

// Builds the small course into the test's data folder, with or without its recordings.
void BuildSmallCourse(test::TestEnv& env, bool audio) {
    SourceFolder src;
    WriteSmallCourse(src);
    const Course course = ReadOk(src);
    Lexicon lexicon;
    lexicon.LoadFromTexts(
        QStringLiteral("請坐 请坐 [qing3 zuo4] /please sit down/\n"
                       "老師 老师 [lao3 shi1] /teacher/CL:個|个[ge4],位[wei4]/\n"
                       "學生 学生 [xue2 sheng5] /student/schoolchild/\n"
                       "很 很 [hen3] /very/\n還可以 还可以 [hai2 ke3 yi3] /not bad/\n"
                       "王 王 [Wang2] /surname Wang/\n王 王 [wang2] /king/\n"),
        QStringLiteral("    [\"老师\", \"你好\"],\n    [\"学生\"],\n"),
        QStringLiteral("王\t5\t5\n很\t4\t4\n"));
    BuildOptions options;
    options.outDir = env.dir.path();
    options.audio = audio;
    options.wholeSyllableTable = false;
    BuildReport report;
    ASSERT_TRUE(BuildCourse(course, lexicon, options, env.files, report))
        << report.errors.join(u'\n').toStdString();
}

TEST(CoursepackBuild, ScriptFilesReadBackThroughTheProgramsReaders) {
    test::TestEnv env;
    ASSERT_NO_FATAL_FAILURE(BuildSmallCourse(env, false));

    // Titles, lesson words, vocabulary and sentences as the knowledge base loads them.
    LoadProgress progress;
    LoadTitles(*env.rt, progress);
    LoadWordsAndSentences(*env.rt, progress);
    BuildCharTable(*env.rt, progress);
    const AppState& app = env.rt->app;
    EXPECT_EQ(app.TitleList[1], QStringLiteral("Lesson title 1"));
    EXPECT_EQ(app.TitleList[140], QStringLiteral("Lesson title 140"));
    ASSERT_EQ(app.LessonWordCount, 5);
    EXPECT_EQ(app.WordPinyin[2], QStringLiteral("ji.an4 mi.an4"));
    EXPECT_EQ(app.WordTable[2].Chinese, QStringLiteral("见.面"));
    EXPECT_EQ(app.WordTable[2].Meaning, QStringLiteral(" to meet (in person) "));
    EXPECT_EQ(app.WordPinyin[3], QStringLiteral("n.v3 .er2"));
    EXPECT_EQ(app.WordTable[4].Chinese, QStringLiteral("请坐"));
    // The vocabulary: HSK words first, the lesson's own words left out, names after common words.
    ASSERT_EQ(app.WordCount, 9);
    EXPECT_EQ(app.WordTable[6].Chinese, QStringLiteral("老师"));
    EXPECT_EQ(app.WordTable[6].Meaning, QStringLiteral(" teacher; measure words: 个, 位 "));
    EXPECT_EQ(app.WordPinyin[7], QStringLiteral("xu.e2 sh.eng0"));
    EXPECT_EQ(app.WordTable[8].Meaning, QStringLiteral(" king "));
    EXPECT_EQ(app.WordTable[9].Chinese, QStringLiteral("很"));
    // Every word pairs with its characters, so every character is in the table.
    EXPECT_EQ(app.CharCount, 14);
    // Read text: the title line, then each non-empty line with its paragraph blanks; the play's
    // spoken lines after its two header lines, speaker and full-width colon in front.
    ASSERT_EQ(app.SentenceCount, 5);
    EXPECT_EQ(app.SentenceTable[1], QStringLiteral("你好"));
    EXPECT_EQ(app.SentenceTable[2], QStringLiteral("李明：你好！"));
    EXPECT_EQ(app.SentenceTable[5], QStringLiteral("王丽：你好，请坐。"));
    const QStringList lifr =
        ScriptLinesOf(env, QStringLiteral("Lessons/Script/Lesson_1/lifr.zvk"), "RT");
    EXPECT_EQ(lifr, (QStringList{"Lesson 1", "你好", "  李明：你好！", "王老师：女儿见面了。"}));
    const QStringList play =
        ScriptLinesOf(env, QStringLiteral("Lessons/Script/Lesson_81/lifr.zvk"), "RT");
    EXPECT_EQ(play, (QStringList{"Lesson 81", "第一次见面", "安娜：你好！", "王丽：你好，请坐。"}));

    EXPECT_EQ(ScriptLinesOf(env, QStringLiteral("Lessons/Script/Lesson_1/ogae.zvk"), "RQ"),
              (QStringList{"1", "谁是老师？", "#王老师", "李明", "2", "Which are greetings?",
                           "#你好", "#您好", "再见"}));
    EXPECT_EQ(ScriptLinesOf(env, QStringLiteral("Spoken/Script.zvk"), "SP"),
              (QStringList{"1", "你好吗？ = How are you today, my friend?", "很好。 = Very well.",
                           "还可以。 = Not bad."}));
    EXPECT_EQ(ScriptLinesOf(env, QStringLiteral("Spoken/Script_1.zvk"), "SP"),
              (QStringList{"n.i3 h.ao3", "你好！", "Hello!", "n.i3 x.i3 hu.an0 ... m.a0",
                           "你喜欢……吗？", "Do you like ...? <<<"}));
    EXPECT_EQ(ScriptLinesOf(env, QStringLiteral("Spoken/Script1.zvk"), "SP"),
              (QStringList{"xi.e4 xi.e0", "谢谢。", "Thank you."}));
    EXPECT_EQ(env.boxes.Count(), 0);

    // The files hold keys, not plain records: every record is marked enciphered.
    const QByteArray words = env.Read(QStringLiteral("Lessons/Script/Lesson_1/icwp.zvk"));
    ASSERT_GT(words.size(), 60);
    for (int r = 0; r + 6 <= words.size(); r += 6)
        ASSERT_LT(ReadInt16LE(words, r), 0) << "record " << r / 6 + 1;
}

TEST(CoursepackBuild, RecordingsAndTracksReadBackThroughTheProgramsDecoder) {
    if (!SpeechAvailable()) GTEST_SKIP() << "espeak-ng is not installed: no recordings can be made";
    test::TestEnv env;
    ASSERT_NO_FATAL_FAILURE(BuildSmallCourse(env, true));

    // Recordings: one per sentence of the text, per dialog sentence, the farewell, every
    // syllable used (a neutral one as its first tone), the number symbols and the verdicts.
    for (const char* f :
         {"Lessons/Sound/Lesson_1/1.wav", "Lessons/Sound/Lesson_1/3.wav", "Spoken/Sound/haytm.wav",
          "Spoken/Sound/vw.wav", "Spoken/Sound/b.wav", "Phonetic Symbols/X/xie1.wav",
          "Phonetic Symbols/N/nv3.wav", "Phonetic Symbols/E/er2.wav", "Numbers/p.wav",
          "Numbers/l.wav", "Sound/carryon.WAV"}) {
        const auto bytes = env.files.ReadAll(env.dir.path() + u'/' + QLatin1String(f));
        ASSERT_TRUE(bytes) << f;
        EXPECT_GT(DecodeWav(*bytes).samples.size(), 1000u) << f;
    }
    EXPECT_FALSE(
        env.files.Exists(env.dir.path() + QStringLiteral("/Lessons/Sound/Lesson_1/4.wav")));

    // The play: one line position per spoken line, in order, inside the track as it decodes.
    const auto yeap =
        env.files.ReadAll(env.dir.path() + QStringLiteral("/Lessons/Script/Lesson_81/yeap.zvk"));
    const auto mp3 = env.files.ReadAll(env.dir.path() + QStringLiteral("/Lessons/Sound/81.mp3"));
    ASSERT_TRUE(yeap && mp3);
    ASSERT_EQ(yeap->size(), 16);
    const int length = DecodeSoundFile(*mp3).Milliseconds();
    int previousTo = 0;
    for (int r = 0; r < 2; ++r) {
        const int32_t from = qFromLittleEndian<int32_t>(yeap->constData() + r * 8);
        const int32_t to = qFromLittleEndian<int32_t>(yeap->constData() + r * 8 + 4);
        EXPECT_LE(previousTo, from);
        EXPECT_LT(from, to);
        EXPECT_LE(to, length);
        previousTo = to;
    }
    EXPECT_TRUE(
        env.files.Exists(env.dir.path() + QStringLiteral("/Lessons/Picture/Lesson_81/4.jpg")));
    EXPECT_FALSE(
        env.files.Exists(env.dir.path() + QStringLiteral("/Lessons/Picture/Lesson_81/5.jpg")));
}

TEST(CoursepackBuild, SameSourcesGiveTheSameBytes) {
    SourceFolder src;
    WriteSmallCourse(src);
    const Course course = ReadOk(src);
    auto build = [&](const QString& out) {
        Lexicon lexicon;
        BuildOptions options;
        options.outDir = out;
        options.audio = false;
        FileStore files;
        BuildReport report;
        EXPECT_TRUE(BuildCourse(course, lexicon, options, files, report));
        std::map<QString, QByteArray> all;
        QDirIterator it(out, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString p = it.next();
            QFile f(p);
            f.open(QIODevice::ReadOnly);
            all[QDir(out).relativeFilePath(p)] = f.readAll();
        }
        return all;
    };
    QTemporaryDir a, b;
    const auto first = build(a.path());
    EXPECT_GT(first.size(), 10u);
    EXPECT_EQ(first, build(b.path()));
}

// The dotted form the files store, from Pinyin as a teacher types it.
TEST(CoursepackPinyin, AwkwardSyllablesTakeTheDotBeforeTheMarkedVowel) {
    const struct {
        const char* name;
        const char* numeric;
        const char* dotted;
    } rows[] = {
        {"u with two dots and e", "lve4", "lv.e4"},
        {"typed umlaut", "lüe4", "lv.e4"},
        {"er alone", "er2", ".er2"},
        {"neutral tone as 0", "ma0", "m.a0"},
        {"neutral tone as 5", "ma5", "m.a0"},
        {"iu marks the u", "liu2", "li.u2"},
        {"ui marks the i", "gui4", "gu.i4"},
        {"two syllables", "zhong1 guo2", "zh.ong1 gu.o2"},
        {"pattern with a gap", "ni3 xi3 huan5 ... ma0", "n.i3 x.i3 hu.an0 ... m.a0"},
        {"pattern with a Chinese ellipsis", "ni3 ……", "n.i3 ……"},
    };
    for (const auto& r : rows) {
        QString error;
        EXPECT_EQ(RowToDotted(QString::fromUtf8(r.numeric), &error), QString::fromUtf8(r.dotted))
            << r.name << " " << error.toStdString();
    }
    QString error;
    EXPECT_TRUE(RowToDotted(QStringLiteral("zhei4"), &error).isEmpty());
    EXPECT_FALSE(error.isEmpty());
}

TEST(CoursepackSources, SentenceSoundNamesFollowTheEnglishWords) {
    EXPECT_EQ(SentenceSoundName(QStringLiteral("How are you today, my friend?")),
              QStringLiteral("haytm.wav"));
    EXPECT_EQ(SentenceSoundName(QStringLiteral("Yes. . . I see!")), QStringLiteral("yis.wav"));
    EXPECT_EQ(SentenceSoundName(QStringLiteral("Bye")), QStringLiteral("b.wav"));
}

// The first fault names the place it begins with and says what it should.
void ExpectFirstFault(const std::vector<SourceError>& errors, const char* where, const char* says,
                      const char* name) {
    ASSERT_FALSE(errors.empty()) << name;
    const QString message = errors.front().Text();
    EXPECT_TRUE(message.startsWith(QString::fromUtf8(where)))
        << name << ": " << message.toStdString();
    EXPECT_TRUE(message.contains(QString::fromUtf8(says))) << name << ": " << message.toStdString();
}

// Each fault of the sources stops the build with the file, the line and a plain reason.
TEST(CoursepackSources, EachFaultIsNamedWithItsFileAndLine) {
    const struct {
        const char* name;
        const char* file;
        const char* text;
        const char* where;
        const char* says;
    } rows[] = {
        {"unknown syllable", "lessons/002/words.txt", "ni3 | 你 | you\nzhei4 | 这 | this\n",
         "course/lessons/002/words.txt:2:", "zhei4"},
        {"word that does not pair", "lessons/002/words.txt", "yi1 hui4 | 一会儿 | a moment\n",
         "course/lessons/002/words.txt:1:", "left out of the character table"},
        {"too many meanings", "lessons/002/words.txt", "hao3 | 好 | a; b; c; d; e; f; g; h\n",
         "course/lessons/002/words.txt:1:", "seven"},
        {"question without a right option", "lessons/002/questions.txt",
         "谁？\n#他\n他们\n\n什么？\n这\n那\n",
         "course/lessons/002/questions.txt:5:", "no right option"},
        {"five options", "lessons/002/questions.txt", "谁？\n#a\nb\nc\nd\ne\n",
         "course/lessons/002/questions.txt:6:", "four"},
        {"play line without words", "lessons/082/play.txt", "title: 见面\n安娜: 你好\n王丽: ！\n",
         "course/lessons/082/play.txt:3:", "no timing"},
        {"play without title", "lessons/082/play.txt", "安娜: 你好\n",
         "course/lessons/082/play.txt:1:", "title:"},
        {"unknown voice", "lessons/082/play.txt", "title: 见面\nvoices: 安娜=robot\n安娜: 你好\n",
         "course/lessons/082/play.txt:2:", "male1"},
        {"play in a read-text lesson", "lessons/010/play.txt", "title: x\n",
         "course/lessons/010/play.txt:", "81 to 140"},
        {"lesson number out of range", "lessons/141/words.txt", "ni3 | 你 | you\n",
         "course/lessons/141:", "out of range"},
        {"dialog with one reply", "spoken/dialogs.txt", "你好 = Hello there\n好 = Fine\n",
         "course/spoken/dialogs.txt:1:", "two to five"},
        {"farewell name taken", "spoken/dialogs.txt", "你好 = Hi\n再见 = Bye\n好 = OK\n",
         "course/spoken/dialogs.txt:2:", "b.wav"},
        {"two sentences, one name", "spoken/dialogs.txt",
         "你好 = Good morning\n早 = Go mad\n好 = Fine\n", "course/spoken/dialogs.txt:2:", "gm.wav"},
        {"sentence that does not pair", "spoken/category_03.txt", "ni3 | 你好！ | Hello!\n",
         "course/spoken/category_03.txt:1:", "syllables"},
        {"category out of range", "spoken/category_21.txt", "ni3 | 你 | you\n",
         "course/spoken/category_21.txt:", "category_20"},
        {"sentence files with a gap", "spoken/sentences_2.txt", "ni3 | 你 | you\n",
         "course/spoken/sentences_2.txt:", "sentences_1.txt"},
    };
    for (const auto& r : rows) {
        SourceFolder src;
        src.WriteTitles();
        src.Write(QString::fromUtf8(r.file), QString::fromUtf8(r.text));
        Course course;
        std::vector<SourceError> errors;
        EXPECT_FALSE(ReadCourse(src.Dir(), course, errors)) << r.name;
        ExpectFirstFault(errors, r.where, r.says, r.name);
    }
}

// A lesson must give every task what its random draws look for, or the task would draw for
// ever: two words to take wrong meanings from, at most seven meanings to place, words the text
// shows, lines whose characters can be swapped, and a text in which every blank can be placed.
TEST(CoursepackSources, LessonsGiveTheTasksWhatTheyDraw) {
    const QString latin20 = QStringLiteral("ABCDEFGHIJKLMNOPQRST");
    const struct {
        const char* name;
        QString words, text, play;
        const char* where; // empty: the lesson is fine
        const char* says;
    } rows[] = {
        {"a separable word apart in the text", "jian4 mian4 | 见.面 | to meet\nni3 | 你 | you\n",
         "你好\n我们见了面。\n", "", "", ""},
        {"word missing from the text", "ni3 hao3 | 你好 | hello\nzai4 jian4 | 再见 | goodbye\n",
         "你好\n", "", "course/lessons/002/words.txt:2:", "\"再见\" does not occur"},
        {"a single word", "ni3 hao3 | 你好 | hello\n", "你好\n", "",
         "course/lessons/002/words.txt:1:", "at least two"},
        {"eight meanings without blanks", "ni3 | 你 | a;b;c;d;e;f;g;h\nhao3 | 好 | good\n",
         "你好\n", "", "course/lessons/002/words.txt:1:", "8 meanings"},
        {"a line of one character four times", "ni3 | 你 | you\nha1 | 哈 | ha\n",
         "你好\n  哈哈，哈哈！\n", "", "course/lessons/002/text.txt:2:", "swap"},
        {"a play line of one character is saved by its speaker", "ni3 | 你 | you\nha1 | 哈 | ha\n",
         "", "title: 你好\n王明: 哈哈哈哈！\n李华: 你好\n", "", ""},
        {"a title too wide to centre", "ni3 | 你 | you\nhao3 | 好 | good\n",
         "你好你好你好你好你好你好你好你好你好你好你好你好你好你好你好\n", "",
         "course/lessons/002/text.txt:1:", "28 places"},
        // The title "你好" is centred by 52 blanks; after "我" blank filling may cut next 2 to
        // 21 places on, so 19 letters leave it a Chinese character to land on and 20 do not.
        {"19 letters after two characters", "ni3 | 你 | you\nhao3 | 好 | good\n",
         "你好\n我们" + latin20.left(19) + "他们好。\n", "", "", ""},
        {"20 letters after two characters", "ni3 | 你 | you\nhao3 | 好 | good\n",
         "你好\n我们" + latin20 + "他们好。\n", "",
         "course/lessons/002/text.txt:2:", "20 characters"},
        {"19 letters at the very end", "ni3 | 你 | you\nhao3 | 好 | good\n",
         "你好\n我们" + latin20.left(19) + "\n", "", "", ""},
        {"20 letters at the very end", "ni3 | 你 | you\nhao3 | 好 | good\n",
         "你好\n我们" + latin20 + "\n", "", "course/lessons/002/text.txt:2:", "20 characters"},
        // A new paragraph adds a line break (two characters) and its two blanks.
        {"16 letters and a new paragraph", "ni3 | 你 | you\nhao3 | 好 | good\n",
         "你好\n我们" + latin20.left(16) + "\n  他们好。\n", "",
         "course/lessons/002/text.txt:2:", "20 characters"},
        {"16 letters and a line that runs on", "ni3 | 你 | you\nhao3 | 好 | good\n",
         "你好\n我们" + latin20.left(16) + "\n他们好。\n", "", "", ""},
        // Each line of a play stands on a line of its own, after its speaker.
        {"a play breaks every line", "ni3 | 你 | you\nhao3 | 好 | good\n", "",
         "title: 你好\n王明: 你好" + latin20.left(18) + "\n李华: 你好\n",
         "course/lessons/082/play.txt:2:", "20 characters"},
    };
    for (const auto& r : rows) {
        SourceFolder src;
        src.WriteTitles();
        const QString folder =
            r.play.isEmpty() ? QStringLiteral("lessons/002/") : QStringLiteral("lessons/082/");
        src.Write(folder + QStringLiteral("words.txt"), r.words);
        if (!r.text.isEmpty()) src.Write(folder + QStringLiteral("text.txt"), r.text);
        if (!r.play.isEmpty()) src.Write(folder + QStringLiteral("play.txt"), r.play);
        Course course;
        std::vector<SourceError> errors;
        const bool ok = ReadCourse(src.Dir(), course, errors);
        if (*r.where == 0) {
            EXPECT_TRUE(ok) << r.name << ": " << errors.front().Text().toStdString();
            continue;
        }
        EXPECT_EQ(errors.size(), 1u) << r.name;
        ExpectFirstFault(errors, r.where, r.says, r.name);
    }
}

TEST(CoursepackSources, ALessonWithFewNewCharactersIsWarnedAbout) {
    SourceFolder src;
    src.WriteTitles();
    src.Write(QStringLiteral("lessons/001/words.txt"),
              QStringLiteral("ni3 hao3 | 你好 | hello\nwo3 men0 | 我们 | we\n"));
    src.Write(QStringLiteral("lessons/001/text.txt"), QStringLiteral("你好\n我们好。\n"));
    // Lesson 2 holds only two characters lesson 1 did not: a warning, not a fault.
    src.Write(QStringLiteral("lessons/002/words.txt"),
              QStringLiteral("ni3 men0 | 你们 | you\nta1 men0 | 他们 | they\nhao3 | 好 | good\n"
                             "ta1 | 她 | she\n"));
    src.Write(QStringLiteral("lessons/002/text.txt"), QStringLiteral("你们好\n她和他们好。\n"));
    const Course course = ReadOk(src);
    QStringList about;
    for (const QString& w : course.warnings)
        if (w.contains(QStringLiteral("new character"))) about << w;
    ASSERT_EQ(about.size(), 1) << about.join(u'\n').toStdString();
    EXPECT_TRUE(about[0].startsWith(QStringLiteral("course/lessons/002/words.txt: ")));
    EXPECT_TRUE(about[0].contains(QStringLiteral("only 2 new")));
}

TEST(CoursepackSources, CourseWideLimitsAreChecked) {
    // More rows than the sentence finder's table holds, over four files; eight dialogs.
    QString rows, dialogs;
    for (int i = 0; i < 10000; ++i)
        rows += QStringLiteral("ni3 | 你 | you\n");
    for (int i = 0; i < 8; ++i)
        dialogs += QStringLiteral("好%1 = Ask %1\n好 = Yes %1\n不 = No %1\n\n").arg(i);
    const struct {
        int titles;
        QStringList files;
        QString text;
        const char* says;
    } cases[] = {
        {139, {}, {}, "139 titles"},
        {kLessonCount,
         {"spoken/sentences_1.txt", "spoken/sentences_2.txt", "spoken/sentences_3.txt",
          "spoken/sentences_4.txt"},
         rows,
         "32,767"},
        {kLessonCount, {"spoken/dialogs.txt"}, dialogs, "eight dialogs"},
    };
    for (const auto& c : cases) {
        SourceFolder src;
        src.WriteTitles(c.titles);
        for (const QString& file : c.files)
            src.Write(file, c.text);
        Course course;
        std::vector<SourceError> errors;
        ReadCourse(src.Dir(), course, errors);
        ASSERT_EQ(errors.size(), 1u) << c.says;
        EXPECT_TRUE(errors[0].Text().contains(QString::fromUtf8(c.says)))
            << errors[0].Text().toStdString();
    }
}

TEST(CoursepackPlay, SpeakersWithoutAVoiceTakeTheFreeOnesInOrder) {
    SourceFolder src;
    src.WriteTitles();
    src.Write(
        QStringLiteral("lessons/090/play.txt"),
        QStringLiteral(
            "title: 在饭馆\npictures: 6\nvoices: 王明=male1\n李华：你好\n王明: 你好\n小红: 好\n"));
    src.Write(QStringLiteral("lessons/090/words.txt"),
              QStringLiteral("ni3 | 你 | you\nhao3 | 好 | good\n"));
    const Course course = ReadOk(src);
    const Lesson& l = course.lessons[89];
    ASSERT_EQ(l.playLines.size(), 3u);
    EXPECT_EQ(l.playLines[0].voice, QStringLiteral("male2"));
    EXPECT_EQ(l.playLines[1].voice, QStringLiteral("male1"));
    EXPECT_EQ(l.playLines[2].voice, QStringLiteral("female1"));
    EXPECT_EQ(l.pictureCount, 6);
    EXPECT_EQ(l.playLines[0].Shown(), QStringLiteral("李华：你好"));
}

TEST(CoursepackStrokes, TracesKeepEveryStrokeInsideTheDrawingArea) {
    const QByteArray json =
        R"({"strokes":["M 0 0","M 1 1"],"medians":[[[100,800],[900,800]],[[500,900],[500,-124],[100,-50]]]})";
    int strokes = 0;
    const auto trace = TraceFromJson(json, &strokes);
    EXPECT_EQ(strokes, 2);
    const auto back = DecodeStrokeRecords(EncodeStrokeRecords(trace));
    ASSERT_EQ(back.size(), trace.size());
    EXPECT_EQ(CountStrokes(back), 2);
    EXPECT_TRUE(back.back().IsSeparator());
    for (size_t i = 0; i < back.size(); ++i) {
        EXPECT_EQ(back[i].x, trace[i].x);
        EXPECT_EQ(back[i].y, trace[i].y);
        if (back[i].IsSeparator()) continue;
        EXPECT_GT(back[i].x, 0);
        EXPECT_LE(back[i].x, kStrokeAreaTwips);
        EXPECT_GE(back[i].y, 0);
        EXPECT_LE(back[i].y, kStrokeAreaTwips);
        // Points close enough to draw a line with: no gap wider than the step.
        if (i > 0 && !back[i - 1].IsSeparator()) {
            EXPECT_LE(std::hypot(back[i].x - back[i - 1].x, back[i].y - back[i - 1].y),
                      kStrokeStep + 1.5)
                << i;
        }
    }
    // The stored bytes are scrambled: no stored X equals its true value.
    const QByteArray bytes = EncodeStrokeRecords(trace);
    int plain = 0;
    for (size_t i = 0; i < trace.size(); ++i) {
        float stored;
        std::memcpy(&stored, bytes.constData() + i * kStrokeRecordSize, 4);
        if (stored == trace[i].x) ++plain;
    }
    EXPECT_EQ(plain, 0);
}

TEST(CoursepackAudio, TrimmedAndEvenedRecordingsMatchInLoudness) {
    auto tone = [](float amplitude, int leadMs, int toneMs) {
        Pcm p;
        AppendSilence(p, leadMs);
        for (int i = 0; i < kSampleRate * toneMs / 1000; ++i)
            p.samples.push_back(amplitude * static_cast<float>(std::sin(i * 0.05)));
        AppendSilence(p, 300);
        return p;
    };
    Pcm quiet = tone(0.05f, 400, 200), loud = tone(0.8f, 10, 200);
    for (Pcm* p : {&quiet, &loud}) {
        TrimSilence(*p);
        EvenLoudness(*p);
        // 200 ms of sound and a few milliseconds of margin, nothing of the silences.
        EXPECT_NEAR(p->Milliseconds(), 216, 4);
    }
    auto rms = [](const Pcm& p) {
        double s = 0;
        for (float v : p.samples)
            s += v * v;
        return std::sqrt(s / static_cast<double>(p.samples.size()));
    };
    EXPECT_NEAR(rms(quiet), rms(loud), 0.01);
    const Pcm back = DecodeWav(EncodeWav(loud));
    ASSERT_EQ(back.samples.size(), loud.samples.size());
    EXPECT_NEAR(back.samples[100], loud.samples[100], 1.0 / 16000);
}

TEST(CoursepackAudio, ABatchOfItemsIsCutIntoTheSameRecordingsAsSingleRuns) {
    if (!SpeechAvailable()) GTEST_SKIP() << "espeak-ng is not installed";
    const QStringList items{"ma1", "zhong1", "bai3 fen1 zhi1", "shi2"};
    QString error;
    const std::vector<Pcm> batch = SpeakPinyinBatch(items, TeacherVoice(), &error);
    ASSERT_EQ(batch.size(), items.size()) << error.toStdString();
    for (int i = 0; i < items.size(); ++i) {
        const Pcm single = SpeakPinyin(items[i], TeacherVoice(), &error);
        EXPECT_NEAR(batch[static_cast<size_t>(i)].Milliseconds(), single.Milliseconds(), 40)
            << items[i].toStdString();
    }
}

TEST(CoursepackLexicon, DictionaryReadingsBecomeTheCoursesForm) {
    const struct {
        const char* name;
        const char* cedict;
        const char* numeric;
    } rows[] = {
        {"capital of a name", "Zhong1 guo2", "zhong1 guo2"},
        {"u with two dots", "lu:4 se4", "lv4 se4"},
        {"neutral tone 5", "xie4 xie5", "xie4 xie0"},
        {"erhua is no syllable of its own", "yi1 dian3 r5", "yi1 dian3 r0"},
        {"letters are not syllables", "A A zhi4", ""},
        {"punctuation is not a syllable", "yi1 , er4", ""},
    };
    for (const auto& r : rows)
        EXPECT_EQ(CedictToNumeric(QString::fromUtf8(r.cedict)), QString::fromUtf8(r.numeric))
            << r.name;

    EXPECT_EQ(CleanMeanings({"variant of 個|个[ge4]", "surname Li", "see 一下[yi1 xia4]", "plum",
                             "CL:棵[ke1]", "plum", "old variant of X"}),
              (QStringList{"plum", "measure word: 棵"}));
    QStringList many;
    for (int i = 0; i < 10; ++i)
        many << QStringLiteral("m%1").arg(i);
    EXPECT_EQ(CleanMeanings(many).size(), 7);
}

// The glosses of the generated vocabulary, from entries as the dictionary writes them: what
// lost its content goes, classifiers read as measure words, bare names are left out, vulgar
// meanings say so; the build counts each rule.
TEST(CoursepackLexicon, GlossesAreCleanedForALearner) {
    const struct {
        const char* name;
        const char* cedict;
        const char* gloss; // empty: left out
    } rows[] = {
        {"another reading", "誰 谁 [shei2] /who/also pr. [shui2]/", "who"},
        {"Taiwan reading", "期 期 [qi1] /a period of time/phase/stage/Taiwan pr. [qi2]/",
         "a period of time; phase; stage"},
        {"reading note in parentheses",
         "這 这 [zhe4] /this/these/(commonly pr. [zhei4] before a classifier, esp. in Beijing)/",
         "this; these"},
        {"romanised Taiwanese reading",
         "好康 好康 [hao3 kang1] /benefit/advantage (Taiwanese, POJ pr. [hó-khang])/",
         "benefit; advantage (Taiwanese)"},
        {"written as itself", "一准 一准 [yi1 zhun3] /certainly/also written 一準|一准[yi1 zhun3]/",
         "certainly"},
        {"written otherwise, and two classifiers",
         "詞典 词典 [ci2 dian3] /dictionary/also written 辭典|辞典[ci2 dian3]/CL:部[bu4],本[ben3]/",
         "dictionary; also written 辞典; measure words: 部, 本"},
        {"one classifier", "年 年 [nian2] /year/CL:個|个[ge4]/", "year; measure word: 个"},
        {"bare given name", "傑克 杰克 [Jie2 ke4] /Jack (name)/", ""},
        {"bare person name", "伊麗莎白 伊丽莎白 [Yi1 li4 sha1 bai2] /Elizabeth (person name)/", ""},
        {"a name and a country", "瑪麗 玛丽 [Ma3 li4] /Mary or Marie (name)/Mali/",
         "Mary or Marie (name); Mali"},
        {"marked vulgar", "肏 肏 [cao4] /to fuck (vulgar)/", "(vulgar) to fuck"},
        {"vulgar without the mark", "他媽的 他妈的 [ta1 ma1 de5] /(taboo curse) damn it!/fucking/",
         "(taboo curse) damn it!; (vulgar) fucking"},
        {"the word vulgar is no mark", "庸俗 庸俗 [yong1 su2] /vulgar/tacky/", "vulgar; tacky"},
    };
    QString cedict, ranked;
    for (const auto& r : rows) {
        cedict += QString::fromUtf8(r.cedict) + QStringLiteral("\r\n");
        ranked += QString::fromUtf8(r.cedict).section(u' ', 1, 1) + QStringLiteral("\t1\n");
    }
    Lexicon lexicon;
    lexicon.LoadFromTexts(cedict, QString(), ranked);
    VocabularyFigures figures;
    const auto vocabulary = BuildVocabulary(lexicon, Course{}, 100, &figures);
    for (const auto& r : rows) {
        const QString word = QString::fromUtf8(r.cedict).section(u' ', 1, 1);
        const auto it = std::find_if(vocabulary.begin(), vocabulary.end(),
                                     [&](const VocabularyEntry& e) { return e.chinese == word; });
        if (*r.gloss == 0) {
            EXPECT_EQ(it, vocabulary.end()) << r.name;
            continue;
        }
        ASSERT_NE(it, vocabulary.end()) << r.name;
        EXPECT_EQ(it->english, QString::fromUtf8(r.gloss)) << r.name;
    }
    EXPECT_EQ(figures.pronunciation, 4);
    EXPECT_EQ(figures.selfReference, 1);
    EXPECT_EQ(figures.classifier, 2);
    EXPECT_EQ(figures.vulgar, 2);
    EXPECT_EQ(figures.leftOutNames, 2);
    EXPECT_EQ(figures.leftOutEmpty, 0);
    // The readings of a left-out name still serve the speech.
    EXPECT_EQ(lexicon.Find(QStringLiteral("杰克"))->numeric, QStringLiteral("jie2 ke4"));
}

TEST(CoursepackLexicon, SentencesAreReadWordByWordWithPausesAtMarks) {
    Lexicon lexicon;
    lexicon.LoadFromTexts(
        QStringLiteral("中 中 [zhong1] /middle/\n中國 中国 [Zhong1 guo2] /China/\n"
                       "國 国 [guo2] /country/\n人 人 [ren2] /person/\n"
                       "了 了 [le5] /(particle)/\n"),
        QString(), QString());
    lexicon.AddCourseReading(QStringLiteral("中国人"), QStringLiteral("zhong1 guo2 ren2"));
    lexicon.AddCourseReading(QStringLiteral("好"), QStringLiteral("hao3"));
    int unknown = -1;
    // The course word wins as a whole; a neutral tone is written 5 for the voice; a stop makes a
    // pause; an unknown character is left out and counted.
    EXPECT_EQ(lexicon.ToSpokenPinyin(QStringLiteral("中国人好了。中国，龘人"), &unknown),
              QStringLiteral("zhong1 guo2 ren2 hao3 le5. zhong1 guo2, ren2"));
    EXPECT_EQ(unknown, 1);
}

TEST(CoursepackLexicon, ACharacterIsReadTheWayItIsMostOftenHeard) {
    Lexicon lexicon;
    lexicon.LoadFromTexts(
        QStringLiteral("行 行 [hang2] /row/line/firm/\n行 行 [xing2] /to walk/OK/\n"
                       "了 了 [le5] /(completed action)/\n了 了 [liao3] /to finish/to know/\n"
                       "都 都 [Du1] /surname Du/\n都 都 [dou1] /all/\n"),
        QString(), QString(),
        QStringLiteral("module.exports = {\n    \"了le\": \"30101\",\n    \"了liǎo\": \"654\",\n"
                       "    \"行xíng\": \"2943\",\n    \"行háng\": \"218\",\n};\n"));
    EXPECT_EQ(lexicon.Find(QStringLiteral("行"))->numeric, QStringLiteral("xing2"));
    EXPECT_EQ(lexicon.Find(QStringLiteral("了"))->numeric, QStringLiteral("le0"));
    // A name comes after a common word whatever its count.
    EXPECT_EQ(lexicon.Find(QStringLiteral("都"))->numeric, QStringLiteral("dou1"));
}

TEST(CoursepackLexicon, VocabularyFollowsTheRankAndLeavesOutWhatCannotBeTaught) {
    Lexicon lexicon;
    lexicon.LoadFromTexts(
        QStringLiteral("學生 学生 [xue2 sheng5] /student/\n"
                       "老師 老师 [lao3 shi1] /teacher/\n"
                       "一點兒 一点儿 [yi1 dian3 r5] /a little/\n"
                       "卡拉OK 卡拉OK [ka3 la1 O K] /karaoke/\n"
                       "個 个 [ge4] /variant of 箇|个[ge4]/\n"
                       "書 书 [shu1] /book/\n"
                       "天 天 [tian1] /day/\n"),
        QStringLiteral("    [\"老师\", \"一点儿\", \"卡拉OK\"],\n    [\"个\", \"学生\"],\n"),
        QStringLiteral("书\t9\t9\n老师\t8\t8\n天\t7\t7\n"));
    Course course;
    course.lessons.resize(1);
    course.lessons[0].words.push_back({"xue2 sheng0", "xu.e2 sh.eng0", "学生", "student", {}});
    const auto all = BuildVocabulary(lexicon, course, 100);
    QStringList words;
    for (const VocabularyEntry& e : all)
        words << e.chinese;
    // HSK order first, then subtitle frequency; lesson words, unpaired readings, Latin letters
    // and entries with nothing left to teach are left out.
    EXPECT_EQ(words, (QStringList{"老师", "书", "天"}));
    EXPECT_EQ(all[1].dotted, QStringLiteral("sh.u1"));
    EXPECT_EQ(BuildVocabulary(lexicon, course, 2).size(), 2u);

    // The vocabulary spreads over the twenty files, one triple of lines per entry.
    const auto entries = ScriptFiles(course, all);
    int vocabularyFiles = 0;
    for (const ScriptFileEntry& s : entries)
        if (s.family == QStringLiteral("VO")) {
            ++vocabularyFiles;
            EXPECT_EQ(s.lines.size() % 3, 0);
        }
    EXPECT_EQ(vocabularyFiles, 20);
}

TEST(CoursepackSyllables, EverySyllableInUseGetsTheRecordingTheProgramPlays) {
    Course course;
    course.lessons.resize(1);
    course.lessons[0].words.push_back({"", "m.a0 n.v3 .er2", "", "", {}});
    course.categories.resize(1);
    course.categories[0].push_back({"", "n.i3 ... m.a0", "", "", true, {}});
    const auto used = NeededSyllables(course, {{"zh.ong1", "中", "middle"}}, false);
    // A neutral syllable is played with its first tone.
    EXPECT_EQ(used, (std::set<QString>{"ma1", "nv3", "er2", "ni3", "zhong1"}));
    // The whole table adds every syllable in every tone it lists.
    const auto all = NeededSyllables(course, {});
    EXPECT_TRUE(all.count(QStringLiteral("za1")));
    EXPECT_FALSE(all.count(QStringLiteral("za4")));
    EXPECT_GT(all.size(), 1200u);
    EXPECT_EQ(NumberSymbols().size(), 25u);
}

TEST(CoursepackSources, QuestionsKeepTheirRightMarksAndSkipLeadingComments) {
    SourceFolder src;
    src.WriteTitles();
    src.Write(QStringLiteral("lessons/005/words.txt"),
              QStringLiteral("ni3 | 你 | you\nhao3 | 好 | good\n"));
    src.Write(
        QStringLiteral("lessons/005/questions.txt"),
        QStringLiteral(
            "# about the text\n谁来了？\n#  王明\n李华\n\n\n# next\nWhat is 你好?\n#hello\n"));
    const Course course = ReadOk(src);
    const auto& q = course.lessons[4].questions;
    ASSERT_EQ(q.size(), 2u);
    EXPECT_EQ(q[0].text, QStringLiteral("谁来了？"));
    EXPECT_EQ(q[0].options, (QStringList{"#王明", "李华"}));
    EXPECT_EQ(q[1].options, (QStringList{"#hello"}));
    EXPECT_EQ(q[1].place.line, 8);
}

} // namespace
} // namespace vt::coursepack
