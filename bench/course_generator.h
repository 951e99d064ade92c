#pragma once
// Writes a made-up course of any size into a data folder: titles, every lesson's word and text
// files, and the vocabulary files, enciphered as the program reads them. The words are random
// but well formed: characters from a fixed pool, each with a reading of its own and now and then
// a second one, a few neutral tones, a few words without tone digits and a few whose syllables
// do not pair with their characters. Characters are drawn as in a real word list: a few very
// often, a long tail seldom (rank r is drawn in proportion to 1 / r^zipf; zipf 0 draws them
// evenly). Meanings have one to four glosses. Used by the loading benchmark (full size) and by
// tests (small). The same shape and seed always give the same files.

#include "core/script_file.h"
#include "platform/files.h"

#include <QStringList>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <random>

namespace vt::coursegen {

struct CourseShape {
    int lessons = 140;
    int wordsPerLesson = 30;
    int textLinesPerLesson = 12;
    int vocabularyFiles = 20;
    int wordsPerVocabularyFile = 1400;
    int characterPool = 7000; // distinct characters the words draw from
    double zipf = 0.9;        // how steeply frequency falls with rank; 0 for an even draw
    uint32_t seed = 2007;
};

struct CourseFiles {
    QStringList paths; // every file written, full paths
    int words = 0;
};

namespace detail {

inline const std::array<const char*, 48> kSyllables = {
    "zh.ong", "g.uo", "h.ao",  "m.a",    "sh.i", "y.i",   "b.u",   "n.i",   "w.o",   "t.a",
    "l.ai",   "q.u",  "x.ue",  "sh.eng", "ch.i", "f.an",  "d.a",   "x.iao", "p.eng", "y.ou",
    "sh.uo",  "k.an", "t.ing", "d.u",    "xi.e", "zh.ao", "ji.an", "m.ing", "t.ian", "r.en",
    "k.ou",   "h.e",  "j.ia",  "g.ong",  "z.uo", "sh.ui", "h.ua",  "d.ian", "n.v",   "l.v",
    "ch.ang", "j.in", "ch.u",  "f.ang",  "b.ei", "q.ing", "s.an",  "w.en"};

inline const std::array<const char*, 24> kMeaningWords = {
    "to go",  "book",   "friend",  "water",   "to eat",  "red",    "morning", "city",
    "to see", "family", "river",   "slow",    "teacher", "to buy", "street",  "tea",
    "letter", "cold",   "station", "to sing", "doctor",  "quiet",  "garden",  "to read"};

class Maker {
public:
    explicit Maker(const CourseShape& shape) : shape_(shape), rng_(shape.seed) {
        for (int i = 0; i < shape.characterPool; ++i) {
            // Spread over the common block so that the characters look like the real thing.
            pool_.push_back(QChar(static_cast<char16_t>(0x4E00 + (i * 3) % 0x51A0)));
            readings_.push_back(pick(static_cast<int>(kSyllables.size())));
            weight_ += shape.zipf > 0 ? std::pow(double(i + 1), -shape.zipf) : 1.0;
            cumulative_.push_back(weight_);
        }
    }

    // A character of the pool by its frequency.
    int character() {
        const double x = std::uniform_real_distribution<double>(0, weight_)(rng_);
        const auto at = std::upper_bound(cumulative_.begin(), cumulative_.end(), x);
        return std::min(int(at - cumulative_.begin()), shape_.characterPool - 1);
    }

    int pick(int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng_); }
    bool chance(int percent) { return pick(100) < percent; }

    // One word: Pinyin, Chinese, meaning.
    void word(QStringList& lines) {
        const int lengthRoll = pick(100);
        const int length = lengthRoll < 25 ? 1 : lengthRoll < 80 ? 2 : lengthRoll < 92 ? 3 : 4;
        QString chinese, pinyin;
        for (int i = 0; i < length; ++i) {
            const int c = character();
            chinese += pool_[static_cast<size_t>(c)];
            if (!pinyin.isEmpty()) pinyin += u' ';
            pinyin += QLatin1String(kSyllables[static_cast<size_t>(readings_[size_t(c)])]);
            // Mostly the character's own tone; now and then another one or the neutral tone.
            int tone = 1 + (c % 4);
            if (chance(6)) tone = 1 + (tone % 4);
            if (i == length - 1 && length > 1 && chance(3)) tone = 0;
            pinyin += QString::number(tone);
        }
        if (length == 1 && chance(1)) pinyin.chop(1); // no tone digit
        if (length > 1 && chance(1)) pinyin = pinyin.left(pinyin.lastIndexOf(u' ')); // no pair
        if (chance(2)) chinese += QStringLiteral("（") + pool_[0] + QStringLiteral("）");
        const int glossRoll = pick(100);
        const int glosses = glossRoll < 35 ? 1 : glossRoll < 70 ? 2 : glossRoll < 90 ? 3 : 4;
        QString meaning;
        for (int i = 0; i < glosses; ++i) {
            if (i > 0) meaning += QStringLiteral("; ");
            meaning += QLatin1String(kMeaningWords[size_t(pick(int(kMeaningWords.size())))]);
        }
        lines << u' ' + pinyin << chinese << meaning + u' ';
    }

    QString sentence() {
        QString s;
        const int length = 8 + pick(14);
        for (int i = 0; i < length; ++i)
            s += pool_[size_t(character())];
        return s + (chance(20) ? QStringLiteral("？") : QStringLiteral("。"));
    }

    uint32_t fileSeed() { return static_cast<uint32_t>(rng_()); }

private:
    const CourseShape& shape_;
    std::mt19937 rng_;
    std::vector<QChar> pool_;
    std::vector<int> readings_;
    std::vector<double> cumulative_; // running sum of the weights of ranks 1..i+1
    double weight_ = 0;
};

inline void put(FileStore& files, CourseFiles& out, const QString& appPath, const QString& rel,
                const QStringList& lines, const char* family, uint64_t seed) {
    const QString path = appPath + rel;
    WriteScriptFile(files, path, lines, QLatin1String(family), seed);
    out.paths << path;
}

} // namespace detail

// Writes the course below appPath (which ends with a separator).
inline CourseFiles GenerateCourse(FileStore& files, const QString& appPath,
                                  const CourseShape& shape = {}) {
    detail::Maker make(shape);
    CourseFiles out;
    QStringList titles;
    for (int n = 1; n <= 140; ++n)
        titles << QStringLiteral("Lesson %1").arg(n);
    detail::put(files, out, appPath, QStringLiteral("Lessons\\Title.zvk"), titles, "RT",
                make.fileSeed());

    for (int n = 1; n <= shape.lessons; ++n) {
        const QString folder = QStringLiteral("Lessons\\Script\\Lesson_%1\\").arg(n);
        QStringList words;
        for (int i = 0; i < shape.wordsPerLesson; ++i)
            make.word(words);
        out.words += shape.wordsPerLesson;
        detail::put(files, out, appPath, folder + QStringLiteral("icwp.zvk"), words, "RW",
                    make.fileSeed());

        QStringList text{QStringLiteral("Lesson %1").arg(n)};
        if (n >= 81) text << QStringLiteral("%1.mp3").arg(n);
        for (int i = 0; i < shape.textLinesPerLesson; ++i)
            text << make.sentence();
        detail::put(files, out, appPath, folder + QStringLiteral("lifr.zvk"), text, "RT",
                    make.fileSeed());
    }
    for (int n = 1; n <= shape.vocabularyFiles; ++n) {
        QStringList words;
        for (int i = 0; i < shape.wordsPerVocabularyFile; ++i)
            make.word(words);
        out.words += shape.wordsPerVocabularyFile;
        detail::put(files, out, appPath, QStringLiteral("Vocabulary\\ci%1.zvk").arg(n), words, "VO",
                    make.fileSeed());
    }
    return out;
}

} // namespace vt::coursegen
