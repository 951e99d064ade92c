#include "core/script_file.h"

#include "core/substitution_tables.h"
#include "support/test_env.h"

#include <gtest/gtest.h>

#include <QDir>
#include <deque>

using namespace vt;

namespace {

struct Rec {
    int16_t flag, partA, partB;
};

QByteArray bytesOf(std::initializer_list<Rec> recs) {
    std::vector<int16_t> v;
    for (const Rec& r : recs)
        v.insert(v.end(), {r.flag, r.partA, r.partB});
    return PackInt16LE(v);
}

// Plain records of the code units of text, each split unevenly so that the sum, not one part,
// has to be taken.
QByteArray plain(const QString& text) {
    std::vector<int16_t> v;
    for (const QChar c : text) {
        const auto code = static_cast<int16_t>(c.unicode());
        const int16_t a = code >= 0 ? static_cast<int16_t>(code - 3000) : int16_t{3000};
        v.insert(v.end(), {int16_t{7}, a, static_cast<int16_t>(code - a)});
    }
    return PackInt16LE(v);
}

QStringList linesOf(const ScriptText& t) {
    QStringList out;
    for (const QString& l : t.lines)
        out << l;
    return out;
}

QStringList scriptLines(const Runtime& rt) {
    QStringList out;
    for (int i = 1; i <= rt.app.ScriptLineCount; ++i)
        out << rt.app.ScriptLines[i];
    return out;
}

// Answers Rnd from a list of fractions and counts the Randomize calls.
class ScriptedRandom final : public Random {
public:
    explicit ScriptedRandom(std::initializer_list<double> r) : fractions(r) {}
    void Randomize() override { ++randomizes; }
    double Rnd() override {
        const double r = fractions.empty() ? 0.0 : fractions.front();
        if (!fractions.empty()) fractions.pop_front();
        return r;
    }
    std::deque<double> fractions;
    int randomizes = 0;
};

QString blanks(int n) {
    return QString(n, u' ');
}

} // namespace

TEST(ScriptDecode, LinesFollowTheLineFeedRules) {
    struct Row {
        const char* name;
        QByteArray bytes;
        int16_t stopLine;
        QStringList lines;
    } rows[] = {
        {"no line feed gives one line", plain("ab"), 0, {"ab"}},
        {"one closing line feed adds no line", plain("ab\n"), 0, {"ab"}},
        {"two closing line feeds end in an empty line", plain("ab\n\n"), 0, {"ab", ""}},
        {"empty lines count", plain("\n\na\n"), 0, {"", "", "a"}},
        {"a single line feed is one empty line", plain("\n"), 0, {""}},
        {"carriage returns are dropped", plain("a\r\nb\rc\r\n"), 0, {"a", "bc"}},
        {"blanks and tabs stay", plain(" a\t \n"), 0, {" a\t "}},
        {"stop line ends at once", plain("1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n"), 3, {"1", "2", "3"}},
        {"stop line past the end keeps the last line", plain("1\n2"), 3, {"1", "2"}},
        {"stop line on the closing line", plain("a\nb"), 2, {"a", "b"}},
        {"negative stop line reads all", plain("a\nb\nc"), -4, {"a", "b", "c"}},
        {"a negative code is a unit from 0x8000 up",
         bytesOf({{0, -10000, -10000}}),
         0,
         {QString(QChar(0xB1E0))}},
        {"the sum may reach both ends of the range",
         bytesOf({{0, 32767, 0}, {0, -16384, -16384}}),
         0,
         {QString(QChar(0x7FFF)) + QChar(0x8000)}},
        {"Chinese text",
         plain(QStringLiteral("你好，世界\n中文")),
         0,
         {QStringLiteral("你好，世界"), QStringLiteral("中文")}},
    };
    for (const Row& r : rows) {
        SeededRandom random;
        const ScriptText t = DecodeScript(r.bytes, QStringLiteral("RT"), r.stopLine, random);
        EXPECT_FALSE(t.corrupted) << r.name;
        EXPECT_EQ(linesOf(t), r.lines) << r.name;
    }
}

TEST(ScriptDecode, ShortFilesAndTails) {
    struct Row {
        const char* name;
        QByteArray bytes;
        QStringList lines;
    } rows[] = {
        {"empty file", QByteArray(), {}},
        {"five bytes", plain("a").left(5), {}},
        {"eleven bytes hold one record", plain("ab").left(11), {"a"}},
        {"a tail after whole records is ignored",
         plain("ab\n") + QByteArray("\x01\x02\x03", 3),
         {"ab"}},
        {"an overflowing tail is no record",
         plain("x") + bytesOf({{0, 30000, 30000}}).left(5),
         {"x"}},
    };
    for (const Row& r : rows) {
        SeededRandom random;
        const ScriptText t = DecodeScript(r.bytes, QStringLiteral("RW"), 0, random);
        EXPECT_FALSE(t.corrupted) << r.name;
        EXPECT_EQ(linesOf(t), r.lines) << r.name;
    }
}

TEST(ScriptDecode, ZeroCodesGiveAFreshRunOfBlanksEach) {
    // Int(Rnd * 100) blanks: 0.0 gives none, 0.999 gives 99, 0.505 gives 50.
    ScriptedRandom random{0.505, 0.0, 0.999};
    const QByteArray bytes = plain("a") + bytesOf({{0, 0, 0}}) + plain("b") +
                             bytesOf({{0, 5, -5}, {0, -1, 1}}) + plain("c");
    const ScriptText t = DecodeScript(bytes, QStringLiteral("SP"), 0, random);
    EXPECT_EQ(linesOf(t), QStringList{"a" + blanks(50) + "b" + blanks(99) + "c"});
    EXPECT_EQ(random.randomizes, 3);

    // Blanks alone make a line, and a line of zero blanks is still a line before a line feed.
    ScriptedRandom r2{0.07, 0.0};
    const ScriptText t2 =
        DecodeScript(bytesOf({{0, 0, 0}}) + plain("\n") + bytesOf({{0, 0, 0}}) + plain("\n"),
                     QStringLiteral("SP"), 0, r2);
    EXPECT_EQ(linesOf(t2), (QStringList{blanks(7), ""}));
}

TEST(ScriptDecode, AnOverflowingSumCorruptsTheWholeFile) {
    struct Row {
        const char* name;
        QByteArray bytes;
        int16_t stopLine;
        qsizetype badRecord;
    } rows[] = {
        {"above the range", bytesOf({{0, 16384, 16384}}), 0, 1},
        {"below the range", bytesOf({{0, -16384, -16385}}), 0, 1},
        {"in an enciphered record", plain("ab") + bytesOf({{-1, -32768, -1}}), 0, 3},
        {"after the stop line", plain("a\nb\n") + bytesOf({{0, 32767, 1}}), 1, 5},
        {"after a zero code", bytesOf({{0, 0, 0}, {0, 20000, 20000}}), 0, 2},
    };
    for (const Row& r : rows) {
        ScriptedRandom random{0.5};
        const ScriptText t = DecodeScript(r.bytes, QStringLiteral("VO"), r.stopLine, random);
        EXPECT_TRUE(t.corrupted) << r.name;
        EXPECT_EQ(t.badRecord, r.badRecord) << r.name;
        EXPECT_TRUE(t.lines.Empty()) << r.name;
        EXPECT_EQ(random.randomizes, 0) << r.name << ": nothing is decoded before the check";
    }
}

TEST(ScriptDecode, UnknownFamilyRepeatsThePrecedingCode) {
    ScriptedRandom random{0.03};
    // First record enciphered: no code before it, so 0 and blanks. Then each enciphered record
    // takes the last code again, a line feed included.
    const QByteArray bytes = bytesOf({{-1, 1, 2}}) + plain("a") +
                             bytesOf({{-5, 100, 100}, {-32768, 9, 9}}) + plain("b\n") +
                             bytesOf({{-2, 0, 0}}) + plain("c");
    const ScriptText t = DecodeScript(bytes, QStringLiteral("XX"), 0, random);
    EXPECT_EQ(linesOf(t), (QStringList{blanks(3) + "aaab", "", "c"}));
}

TEST(ScriptDecode, KeyMissingFromTheTableGivesBlanks) {
    // The key that codes 0 is the one key the table leaves out.
    const int16_t missing = *TableForFamily(QStringLiteral("RT"))->Encode(0);
    ScriptedRandom random{0.12};
    const QByteArray bytes = plain("x") + bytesOf({{-1, missing, 0}}) + plain("y");
    EXPECT_EQ(linesOf(DecodeScript(bytes, QStringLiteral("RT"), 0, random)),
              QStringList{"x" + blanks(12) + "y"});
}

TEST(ScriptRoundTrip, EveryFamilyReadsBackWhatWasWritten) {
    const QStringList lines = {
        QStringLiteral("第一课"),
        QStringLiteral("Nǐ hǎo! 你好！"),
        QString(),
        QStringLiteral("  padded  "),
        QStringLiteral("𠀀 beyond the basic plane, ü and ——"),
        QString(), // a last empty line survives
    };
    for (const char* family : {"RT", "RW", "RQ", "SP", "VO", "XX"}) {
        const QString f = QString::fromLatin1(family);
        const QByteArray bytes = EncodeScriptLines(lines, f, 42);
        EXPECT_EQ(bytes.size(), 6 * (lines.join(u'\n').size() + 1)) << family;
        SeededRandom random;
        EXPECT_EQ(linesOf(DecodeScript(bytes, f, 0, random)), lines) << family;
    }
}

TEST(ScriptRoundTrip, EveryCodeUnitAndKeySurvivesTheSplit) {
    // All code units the reader keeps, in one line: every key of each table is split into two
    // parts and must never overflow.
    QString all;
    for (int u = 1; u < 65536; ++u)
        if (u != 10 && u != 13) all += QChar(static_cast<char16_t>(u));
    for (const char* family : {"RT", "RW", "SP", "VO"}) {
        const QString f = QString::fromLatin1(family);
        for (quint64 seed : {1ULL, 99ULL}) {
            SeededRandom random;
            const ScriptText t = DecodeScript(EncodeScriptLines({all}, f, seed), f, 0, random);
            ASSERT_FALSE(t.corrupted) << family;
            ASSERT_EQ(t.lines.Count(), 1) << family;
            EXPECT_TRUE(t.lines[1] == all) << family << " seed " << seed;
        }
    }
}

TEST(ScriptRoundTrip, RecordsAreEncipheredOnlyWhenAsked) {
    const QStringList lines = {QStringLiteral("你们好"), QStringLiteral("abc")};
    const QByteArray secret = EncodeScriptLines(lines, QStringLiteral("RW"), 7);
    const QByteArray open = EncodeScriptLines(lines, QStringLiteral("RW"), 7, false);
    EXPECT_EQ(secret, EncodeScriptLines(lines, QStringLiteral("RW"), 7)) << "same seed, same bytes";
    for (int r = 0; r + 6 <= secret.size(); r += 6) {
        EXPECT_LT(ReadInt16LE(secret, r), 0) << "record " << r / 6 + 1;
        EXPECT_GE(ReadInt16LE(open, r), 0) << "record " << r / 6 + 1;
    }
    // A plain file reads the same whatever the family.
    for (const char* family : {"RT", "VO", "ZZ"}) {
        SeededRandom random;
        EXPECT_EQ(linesOf(DecodeScript(open, QString::fromLatin1(family), 0, random)), lines);
    }
}

TEST(ReadScriptFile, FillsTheScriptLines) {
    test::TestEnv env;
    Runtime& rt = *env.rt;
    const QStringList lines = {QStringLiteral("第三课"), QString(), QStringLiteral("end")};
    ASSERT_TRUE(WriteScriptFile(env.files, env.Path("Lessons\\Script\\Lesson_3\\lifr.zvk"), lines,
                                QStringLiteral("RT"), 5));
    ReadScriptFile(rt, env.Path("Lessons\\Script\\Lesson_3\\lifr.zvk"), QStringLiteral("RT"), 0);
    EXPECT_EQ(rt.app.ScriptLineCount, 3);
    EXPECT_EQ(rt.app.ScriptLines.Count(), 3);
    EXPECT_EQ(scriptLines(rt), lines);
    EXPECT_EQ(env.boxes.Count(), 0);

    // Shorter than one record: empty, without a word, and the last lines are gone.
    env.WriteFile("Lessons\\Title.zvk", QByteArray(5, 'x'));
    ReadScriptFile(rt, env.Path("Lessons\\Title.zvk"), QStringLiteral("RT"), 0);
    EXPECT_EQ(rt.app.ScriptLineCount, 0);
    EXPECT_TRUE(rt.app.ScriptLines.Empty());
    EXPECT_EQ(env.boxes.Count(), 0);
}

TEST(ReadScriptFile, UnreadableOrCorruptedFilesWarnAndLeaveNoLines) {
    struct Row {
        const char* name;
        const char* file;
    } rows[] = {
        {"missing file", "Vocabulary\\ci9.zvk"},
        {"a folder at the path", "Spoken\\Script.zvk"},
        {"overflowing sum", "Lessons\\Title.zvk"},
    };
    test::TestEnv env;
    Runtime& rt = *env.rt;
    QDir(env.dir.path()).mkpath(QStringLiteral("Spoken/Script.zvk"));
    env.WriteFile("Lessons\\Title.zvk", plain("ok\n") + bytesOf({{0, 20000, 20000}}));
    env.WriteFile("good.zvk", plain("a\nb\n"));
    for (const Row& r : rows) {
        ReadScriptFile(rt, env.Path("good.zvk"), QStringLiteral("SP"), 0);
        ASSERT_EQ(rt.app.ScriptLineCount, 2);
        env.boxes.Clear();

        const QString path = env.Path(QString::fromLatin1(r.file));
        ReadScriptFile(rt, path, QStringLiteral("SP"), 0);
        EXPECT_EQ(rt.app.ScriptLineCount, 0) << r.name;
        EXPECT_TRUE(rt.app.ScriptLines.Empty()) << r.name;
        ASSERT_EQ(env.boxes.Count(), 1) << r.name;
        EXPECT_EQ(env.boxes.Last().text, "The file " + path + " is corrupted!") << r.name;
        EXPECT_EQ(env.boxes.Last().title, QStringLiteral("Warning")) << r.name;
        EXPECT_EQ(env.boxes.Last().flags, int{Mb::Exclamation}) << r.name;
    }
}

// A reader of many files decodes into one buffer again and again: whatever came before, each
// file reads exactly as it does alone.
TEST(ScriptBuffer, OneBufferReadsEveryFileAsItReadsAlone) {
    const QByteArray files[] = {
        plain(QStringLiteral("第一行\n second \n\nlast")),
        plain("x") + bytesOf({{0, 0, 0}}) + plain("y\n") + bytesOf({{0, 0, 0}, {0, 0, 0}}),
        plain("short"),
        plain("gone\n") + bytesOf({{0, 0, 0}, {0, 32767, 1}}), // corrupted: nothing drawn
        plain("\n\n"),
        QByteArray(),
    };
    ScriptBuffer buffer;
    for (int round = 0; round < 2; ++round) {
        for (const QByteArray& bytes : files) {
            ScriptedRandom alone{0.99, 0.5, 0.3};
            ScriptedRandom shared{0.99, 0.5, 0.3};
            const ScriptText expected = DecodeScript(bytes, QStringLiteral("RT"), 0, alone);
            DecodeScriptInto(bytes, TableForFamily(QStringLiteral("RT")), 0, shared, buffer);
            QStringList got;
            for (int i = 1; i <= buffer.LineCount(); ++i)
                got << buffer.Line(i).toString();
            EXPECT_EQ(got, linesOf(expected));
            EXPECT_EQ(buffer.corrupted, expected.corrupted);
            EXPECT_EQ(shared.randomizes, alone.randomizes);
        }
    }
}

// Lines cut from the decoded text share its memory; each must still read as a string of its own:
// trimmed or padded as asked, terminated, untouched by what is decoded or changed after it.
TEST(ScriptBuffer, CutLinesAreStringsOfTheirOwn) {
    struct Row {
        const char* line;
        const char* trimmed;
        const char* padded;
    } rows[] = {
        {"  book  ", "book", " book "},
        {"book", "book", " book "},
        {"", "", "  "},
        {"   ", "", "  "},
        {" a b", "a b", " a b "},
    };
    QString text;
    for (const Row& r : rows)
        text += QString::fromLatin1(r.line) + u'\n';
    text += QStringLiteral("last"); // no line feed at the end
    SeededRandom random(1);
    QStringList trimmed, padded, asTheyStand;
    {
        // Every line is cut once in each of three buffers; the buffers go before the strings.
        ScriptBuffer a, b, c;
        for (ScriptBuffer* buffer : {&a, &b, &c})
            DecodeScriptInto(plain(text), nullptr, 0, random, *buffer);
        ASSERT_EQ(a.LineCount(), int(std::size(rows)) + 1);
        for (int i = 1; i <= a.LineCount(); ++i) {
            trimmed << a.TrimmedLine(i);
            padded << b.PaddedLine(i);
            asTheyStand << c.LineText(i);
        }
        // Decoding again into a buffer that strings were cut from leaves those strings alone.
        DecodeScriptInto(plain(QStringLiteral("xxxxxxxxxxxxxxxxxxxxxxxxxxxxxx")), nullptr, 0,
                         random, a);
    }
    for (size_t i = 0; i < std::size(rows); ++i) {
        SCOPED_TRACE(rows[i].line);
        EXPECT_EQ(trimmed[qsizetype(i)], QLatin1String(rows[i].trimmed));
        EXPECT_EQ(padded[qsizetype(i)], QLatin1String(rows[i].padded));
        EXPECT_EQ(asTheyStand[qsizetype(i)], QLatin1String(rows[i].line));
        EXPECT_EQ(padded[qsizetype(i)].utf16()[padded[qsizetype(i)].size()], 0);
    }
    EXPECT_EQ(padded.last(), " last ");
    EXPECT_EQ(trimmed.last().utf16()[4], 0);

    // A change to one string is its own; the last string that holds the text changes in place.
    QString first = trimmed[0];
    first += QStringLiteral("case");
    EXPECT_EQ(trimmed[0], "book");
    EXPECT_EQ(first, "bookcase");
    QString alone = asTheyStand[1];
    trimmed.clear();
    padded.clear();
    asTheyStand.clear();
    alone.append(QStringLiteral(" and shelf"));
    EXPECT_EQ(alone, "book and shelf");
}

// The decoded text makes room for itself: a file of nothing but line feeds, or of runs of up to
// 99 blanks, needs far more units than it has records.
TEST(ScriptBuffer, RoomGrowsForLineEndsAndBlankRuns) {
    SeededRandom random(1);
    ScriptBuffer buffer;
    DecodeScriptInto(plain(QString(500, u'\n')), nullptr, 0, random, buffer);
    ASSERT_EQ(buffer.LineCount(), 500);
    EXPECT_EQ(buffer.PaddedLine(500), "  ");

    ScriptedRandom nearlyAll{0.999, 0.999, 0.999};
    DecodeScriptInto(plain("a") + bytesOf({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}}) + plain("z\nq"),
                     nullptr, 0, nearlyAll, buffer);
    ASSERT_EQ(buffer.LineCount(), 2);
    EXPECT_EQ(buffer.LineText(1), u'a' + QString(297, u' ') + u'z');
    EXPECT_EQ(buffer.PaddedLine(2), " q ");
}

TEST(ReadScriptInto, TellsAMissingFileFromAnUnreadableOne) {
    test::TestEnv env;
    Runtime& rt = *env.rt;
    const SubstitutionTable* table = TableForFamily(QStringLiteral("RW"));
    QDir(env.dir.path()).mkpath(QStringLiteral("Lessons/Script/Lesson_2/icwp.zvk"));
    env.WriteFile("Lessons\\Script\\Lesson_1\\icwp.zvk", EncodeScriptLines({"a", "b"}, "RW", 3));
    env.WriteFile("Lessons\\Script\\Lesson_3\\ICWP.ZVK", bytesOf({{0, 30000, 30000}}));
    ScriptBuffer buffer;

    EXPECT_EQ(ReadScriptInto(rt, env.Path("Lessons\\Script\\Lesson_1\\icwp.zvk"), table, 0, buffer),
              ScriptRead::Read);
    EXPECT_EQ(buffer.LineCount(), 2);
    EXPECT_EQ(buffer.Line(2), u"b");
    // A folder where the file should be is no file, as is a missing one: nothing is said.
    EXPECT_EQ(ReadScriptInto(rt, env.Path("Lessons\\Script\\Lesson_2\\icwp.zvk"), table, 0, buffer),
              ScriptRead::Missing);
    EXPECT_EQ(ReadScriptInto(rt, env.Path("Lessons\\Script\\Lesson_9\\icwp.zvk"), table, 0, buffer),
              ScriptRead::Missing);
    EXPECT_EQ(buffer.LineCount(), 0);
    EXPECT_EQ(env.boxes.Count(), 0);
    EXPECT_EQ(ReadScriptInto(rt, env.Path("Lessons\\Script\\Lesson_3\\icwp.zvk"), table, 0, buffer),
              ScriptRead::Unreadable);
    EXPECT_EQ(buffer.LineCount(), 0);
    EXPECT_EQ(env.boxes.Count(), 1);
}
