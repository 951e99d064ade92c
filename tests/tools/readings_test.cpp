// How the course compiler reads a sentence aloud: the words it cuts the characters into decide
// the reading of every character. Most cases run against the real dictionary and the real
// course's words, where the wrong readings were found; without the fetched dictionary
// (scripts/fetch_course_data.sh) they are skipped.

#include "course_build.h"
#include "course_sources.h"
#include "lexicon.h"

#include <gtest/gtest.h>
#include <memory>

namespace vt::coursepack {
namespace {

struct ReadingCase {
    const char* text;
    const char* pinyin;
};

template <size_t N> void ExpectReadings(const Lexicon& lexicon, const ReadingCase (&cases)[N]) {
    for (const ReadingCase& c : cases)
        EXPECT_EQ(lexicon.ToSpokenPinyin(QString::fromUtf8(c.text)).toStdString(), c.pinyin)
            << c.text;
}

class CourseReadings : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        auto lexicon = std::make_unique<Lexicon>();
        QString error;
        if (!lexicon->Load(QStringLiteral(VANTORIA_SOURCE_DIR "/build/npm"), &error)) return;
        Course course;
        std::vector<SourceError> errors;
        if (!ReadCourse(QStringLiteral(VANTORIA_SOURCE_DIR "/course"), course, errors)) return;
        AddCourseReadings(*lexicon, course);
        lexicon_ = std::move(lexicon);
    }
    static void TearDownTestSuite() { lexicon_.reset(); }
    void SetUp() override {
        if (!lexicon_)
            GTEST_SKIP() << "the dictionary is not fetched into build/npm or the course does not "
                            "read; run scripts/fetch_course_data.sh";
    }

    static inline std::unique_ptr<Lexicon> lexicon_;
};

// Texts where taking the longest dictionary word first read a piece across two words.
TEST_F(CourseReadings, APhraseIsReadByTheWordsItIsMadeOf) {
    const ReadingCase cases[] = {
        {"你会说中文吗", "ni3 hui4 shuo1 zhong1 wen2 ma5"}, // not 说中 shuō zhòng
        {"我常常一边做作业", "wo3 chang2 chang2 yi4 bian1 zuo4 zuo4 ye4"}, // not 做作 zuò zuo
        {"他们到了动物园", "ta1 men5 dao4 le5 dong4 wu4 yuan2"},           // not 到了 dào liǎo
        {"春节快到了", "chun1 jie2 kuai4 dao4 le5"},
        {"明信片上都贴了邮票", "ming2 xin4 pian4 shang4 dou1 tie1 le5 you2 piao4"}, // not 上都
        {"公园里的花都开了", "gong1 yuan2 li3 de5 hua1 dou1 kai1 le5"},             // not 花都
        {"书架上放着花", "shu1 jia4 shang4 fang4 zhe5 hua1"},                       // not 着花
        {"李明妈妈教安娜包饺子", "li3 ming2 ma1 ma5 jiao1 an1 na4 bao1 jiao3 zi5"}, // not 教安
        {"我穿着好看吗", "wo3 chuan1 zhe5 hao3 kan4 ma5"}, // not 穿着 chuān zhuó
        {"那是谁", "na4 shi4 shei2"},                      // not 那是 nà shi, "of course"
        {"十一点睡觉", "shi2 yi1 dian3 shui4 jiao4"},      // a number is not cut for 一点
        // The lessons' 清楚, 事情 and 知道 win over 听清, 什么事 and 不知道.
        {"我没听清楚", "wo3 mei2 ting1 qing1 chu5"},
        {"有什么事情吗", "you3 shen2 me5 shi4 qing5 ma5"},
        {"我也不知道", "wo3 ye3 bu4 zhi1 dao5"},
        // 了 and 着 after 不 are complements.
        {"我睡不着", "wo3 shui4 bu4 zhao2"},
        {"这件事我做不了", "zhe4 jian4 shi4 wo3 zuo4 bu4 liao3"},
    };
    ExpectReadings(*lexicon_, cases);
}

// Dictionary words that longest match read right and that two frequent characters, a course
// word or a number could tempt a cut to break up.
TEST_F(CourseReadings, WordsThatWereReadRightStayRight) {
    const ReadingCase cases[] = {
        {"把伞还给了马克", "ba3 san3 huan2 gei3 le5 ma3 ke4"},
        {"她长得很漂亮", "ta1 zhang3 de5 hen3 piao4 liang5"},
        {"你真了不起", "ni3 zhen1 liao3 bu5 qi3"},
        {"我们在银行旁边", "wo3 men5 zai4 yin2 hang2 pang2 bian1"},
        {"他睡着了", "ta1 shui4 zhao2 le5"},
        {"北京是中国的首都", "bei3 jing1 shi4 zhong1 guo2 de5 shou3 du1"},
        {"他的确很忙", "ta1 di2 que4 hen3 mang2"},
        {"我不了解他", "wo3 bu4 liao3 jie3 ta1"},
        {"我喜欢听音乐", "wo3 xi3 huan5 ting1 yin1 yue4"},
        {"孩子长大了", "hai2 zi5 zhang3 da4 le5"},
        {"请你重新写", "qing3 ni3 chong2 xin1 xie3"},
        {"万一下雨怎么办", "wan4 yi1 xia4 yu3 zen3 me5 ban4"},
        {"今天是十二月十一号", "jin1 tian1 shi4 shi2 er4 yue4 shi2 yi1 hao4"},
        {"你千万别去", "ni3 qian1 wan4 bie2 qu4"},
        {"安娜：说中文吧！我们都是来中国学中文的。",
         "an1 na4, shuo1 zhong1 wen2 ba5. wo3 men5 dou1 shi4 lai2 zhong1 guo2 xue2 zhong1 wen2 "
         "de5."},
    };
    ExpectReadings(*lexicon_, cases);
}

// The rules that do not come from the counts, on a dictionary written here.
TEST(SpokenReadings, NumbersParticlesAndCountsDecideTheCut) {
    Lexicon lexicon;
    lexicon.LoadFromTexts(QStringLiteral("到 到 [dao4] /to arrive/\n了 了 [le5] /(particle)/\n"
                                         "到了 到了 [dao4 liao3] /at last/\n"
                                         "十 十 [shi2] /ten/\n一 一 [yi1] /one/\n"
                                         "十一 十一 [shi2 yi1] /eleven/\n点 点 [dian3] /o'clock/\n"
                                         "穿 穿 [chuan1] /to wear/\n着 着 [zhe5] /(particle)/\n"
                                         "穿着 穿着 [chuan1 zhuo2] /attire/\n"
                                         "睡 睡 [shui4] /to sleep/\n不 不 [bu4] /not/\n"
                                         "九 九 [jiu3] /nine/\n八 八 [ba1] /eight/\n"),
                          QString(),
                          QStringLiteral("了\t50000\n到\t9000\n一点\t3000\n点\t2000\n十\t900\n"
                                         "穿着\t800\n穿\t700\n着\t5000\n十一\t10\n"));
    lexicon.AddCourseReading(QStringLiteral("一点"), QStringLiteral("yi4 dian3"));
    const ReadingCase cases[] = {
        {"到了", "dao4 le5"},              // two common words before one rare one
        {"十一点", "shi2 yi1 dian3"},      // no cut inside a number, however common 一点 is
        {"一九九八", "yi1 jiu3 jiu3 ba1"}, // a number the dictionary lacks, digit by digit
        {"有一点", "yi4 dian3"}, // 有 is unknown and left out; 一点 as the course has it
        {"穿着", "chuan1 zhe5"}, // a common word, but 着 is no zhuó after a verb
        {"睡不着，不了", "shui4 bu4 zhao2, bu4 liao3"},
    };
    ExpectReadings(lexicon, cases);
}

// 一 and 不 as spoken, the way the lessons write them, except where 一 counts or orders.
TEST(SpokenReadings, OneAndNotChangeTheirToneBeforeAnotherSyllable) {
    Lexicon lexicon;
    QString cedict;
    for (const char* entry :
         {"一 [yi1]", "不 [bu4]", "是 [shi4]", "要 [yao4]", "个 [ge4]", "斤 [jin1]", "第 [di4]",
          "次 [ci4]", "十 [shi2]", "月 [yue4]", "号 [hao4]", "大 [da4]", "百 [bai3]", "九 [jiu3]",
          "星期 [xing1 qi1]", "了 [le5]", "来 [lai2]", "年级 [nian2 ji2]", "年 [nian2]"}) {
        const QString e = QString::fromUtf8(entry);
        const QString word = e.section(u' ', 0, 0);
        cedict += word + u' ' + e + QStringLiteral(" /x/\n");
    }
    lexicon.LoadFromTexts(cedict, QString(), QString());
    const ReadingCase cases[] = {
        {"不是，不来", "bu2 shi4, bu4 lai2"},                 // bú only before a fourth tone
        {"要不要", "yao4 bu2 yao4"},                          // also between a doubled verb
        {"一个，一斤，一年", "yi2 ge4, yi4 jin1, yi4 nian2"}, // yí before the fourth, else yì
        {"一百", "yi4 bai3"}, // 百, 千 and 万 after it change it too
        {"第一次，十一，一九", "di4 yi1 ci4, shi2 yi1, yi1 jiu3"}, // ordinal and digits keep yī
        {"十月一号，星期一来", "shi2 yue4 yi1 hao4, xing1 qi1 yi1 lai2"},
        {"大一号，一年级", "da4 yi2 hao4, yi1 nian2 ji2"},
        {"一，不", "yi1, bu4"}, // nothing follows: nothing changes
        {"不了", "bu4 liao3"},  // liǎo is no fourth tone
    };
    ExpectReadings(lexicon, cases);
}

} // namespace
} // namespace vt::coursepack
