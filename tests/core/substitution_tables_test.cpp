#include "core/data_paths.h"
#include "core/seeded_table.h"
#include "core/substitution_tables.h"

#include "core/script_file.h"
#include "support/test_env.h"

#include <gtest/gtest.h>

using namespace vt;

namespace {

const SubstitutionTable& table(const char* family) {
    return *TableForFamily(QString::fromLatin1(family));
}

// Every test leaves the built-in tables in place for the next one.
struct TablesTest : ::testing::Test {
    void TearDown() override { ResetSubstitutionTables(); }
};

} // namespace

TEST_F(TablesTest, FamiliesShareTablesAsNamed) {
    EXPECT_EQ(TableForFamily(QStringLiteral("RT")), TableForFamily(QStringLiteral("RQ")));
    for (const char* other : {"", "rt", "R", "RTX", "XX", " RT"})
        EXPECT_EQ(TableForFamily(QString::fromLatin1(other)), nullptr) << other;
}

// Pins the generated tables: course data enciphered today must read the same after any change to
// the generator, so a change here means every data folder has to be built again.
TEST_F(TablesTest, BuiltInTablesAreFixed) {
    struct Row {
        const char* family;
        int16_t key;
        int16_t code;
    } rows[] = {
        {"RT", 0, 694},    {"RT", 1, -10649}, {"RT", -32768, 13603}, {"RT", 23230, 0},
        {"RW", 0, -31704}, {"RW", 3492, 0},   {"SP", 0, -28803},     {"SP", -2750, 0},
        {"VO", 0, -5649},  {"VO", 13845, 0},
    };
    for (const Row& r : rows)
        EXPECT_EQ(table(r.family).Decode(r.key), r.code) << r.family << " key " << r.key;

    struct Enc {
        const char* family;
        char16_t unit;
        int16_t key;
    } encs[] = {
        {"RT", u'中', -20911}, {"RT", u'\n', -29284}, {"RW", u'A', 27531},
        {"SP", u'你', 5326},   {"VO", u'好', 12165},
    };
    for (const Enc& e : encs)
        EXPECT_EQ(table(e.family).Encode(static_cast<int16_t>(e.unit)), e.key)
            << e.family << " unit " << int{e.unit};

    // The tables the build wrote into the program are the ones their seeds make.
    const char* families[] = {"RT", "RW", "SP", "VO"};
    for (int t = 0; t < 4; ++t) {
        const std::vector<int16_t> codes = SeededTableCodes(kBuiltInTableSeeds[t].seed);
        for (int k = 0; k < SubstitutionTable::kKeyCount; ++k)
            ASSERT_EQ(table(families[t]).Decode(static_cast<int16_t>(k)), codes[size_t(k)])
                << families[t] << " key " << k;
    }
}

TEST_F(TablesTest, EachCodeHasOneKeyAndOneKeyIsLeftOut) {
    for (const char* family : {"RT", "RW", "SP", "VO"}) {
        const SubstitutionTable& t = table(family);
        std::vector<int> keysOfCode(65536, 0);
        int unused = 0;
        for (int k = -32768; k <= 32767; ++k) {
            const int16_t code = t.Decode(static_cast<int16_t>(k));
            if (code == 0)
                ++unused;
            else
                ++keysOfCode[static_cast<uint16_t>(code)];
            if (code != 0) {
                ASSERT_EQ(t.Encode(code), static_cast<int16_t>(k)) << family;
            }
        }
        EXPECT_EQ(unused, 1) << family;
        EXPECT_EQ(std::count(keysOfCode.begin() + 1, keysOfCode.end(), 1), 65535) << family;
        // Code 0 is written with the key left out, which decodes to it.
        ASSERT_TRUE(t.Encode(0).has_value()) << family;
        EXPECT_EQ(t.Decode(*t.Encode(0)), 0) << family;
    }
}

TEST_F(TablesTest, TableFilesRoundTripAndBadFilesAreRefused) {
    const SubstitutionTable& vo = table("VO");
    const QByteArray bytes = vo.ToBytes();
    ASSERT_EQ(bytes.size(), SubstitutionTable::kFileSize);
    const std::optional<SubstitutionTable> back = SubstitutionTable::FromBytes(bytes);
    ASSERT_TRUE(back.has_value());
    EXPECT_TRUE(*back == vo);

    // The first entry is key -32768; a file with one key only in it decodes the rest to 0.
    QByteArray one(SubstitutionTable::kFileSize, '\0');
    one[0] = 'A';
    one[SubstitutionTable::kFileSize - 2] = '\x34';
    one[SubstitutionTable::kFileSize - 1] = '\x92'; // key 32767 -> 0x9234
    const std::optional<SubstitutionTable> sparse = SubstitutionTable::FromBytes(one);
    ASSERT_TRUE(sparse.has_value());
    EXPECT_EQ(sparse->Decode(-32768), 'A');
    EXPECT_EQ(sparse->Decode(32767), static_cast<int16_t>(0x9234));
    EXPECT_EQ(sparse->Decode(0), 0);
    EXPECT_EQ(sparse->Encode('A'), int16_t{-32768});
    EXPECT_EQ(sparse->Encode('B'), std::nullopt);
    EXPECT_EQ(sparse->Encode(0), int16_t{-32767}) << "the lowest key of code 0";

    for (qsizetype size : {qsizetype{0}, SubstitutionTable::kFileSize + 1}) {
        QString why;
        EXPECT_FALSE(SubstitutionTable::FromBytes(QByteArray(size, '\x01'), &why)) << size;
        EXPECT_FALSE(why.isEmpty()) << size;
    }
}

TEST_F(TablesTest, ADeploymentSwapsTablesByFile) {
    test::TestEnv env;
    const QString folder = SubstitutionTableFolder(env.rt->app.AppPath);
    const SubstitutionTable builtInText = table("RT");

    // An identity table for the spoken family, a broken file for the text family.
    QByteArray identity(SubstitutionTable::kFileSize, '\0');
    for (int i = 0; i < 65536; ++i) {
        const auto code = static_cast<uint16_t>(i - 32768);
        identity[2 * i] = static_cast<char>(code & 0xFF);
        identity[2 * i + 1] = static_cast<char>(code >> 8);
    }
    env.WriteFile("Tables\\JIeMiSpoken.tbl", identity);
    env.WriteFile("Tables\\jiemitext.TBL", QByteArray(100, '\0'));

    const QStringList problems = LoadSubstitutionTables(env.files, folder);
    ASSERT_EQ(problems.size(), 1);
    EXPECT_TRUE(problems[0].contains(QStringLiteral("JIeMiText"))) << problems[0].toStdString();
    EXPECT_TRUE(problems[0].endsWith(QStringLiteral("a table has 100 bytes, not 131072")))
        << problems[0].toStdString();
    EXPECT_TRUE(table("RT") == builtInText) << "a bad file leaves the table as it was";
    EXPECT_EQ(table("SP").Decode(0x4E2D), 0x4E2D);

    // Script files of the family follow the loaded table, in the writer and in the reader.
    const QStringList lines = {QStringLiteral("对话"), QStringLiteral("Dialog")};
    const QByteArray bytes = EncodeScriptLines(lines, QStringLiteral("SP"), 11);
    SeededRandom random;
    QStringList got;
    for (const QString& l : DecodeScript(bytes, QStringLiteral("SP"), 0, random).lines)
        got << l;
    EXPECT_EQ(got, lines);
    EXPECT_EQ(ReadInt16LE(bytes, 2) + ReadInt16LE(bytes, 4), 0x5BF9) << "key of 对 is its code";

    ResetSubstitutionTables();
    EXPECT_NE(table("SP").Decode(0x4E2D), 0x4E2D);
}
