#pragma once
// The dictionary data the compiler takes from the npm package chinese-lexicon: CC-CEDICT
// entries (readings and meanings), the HSK word lists of levels 1 to 6 and the word frequencies
// of film subtitles (SUBTLEX-CH). From it come the twenty vocabulary files and the Pinyin of the
// sentences that get a recording.

#include "course_sources.h"
#include "script_output.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <vector>

namespace vt::coursepack {

// What cleaning did to the meanings of one dictionary entry.
struct GlossChanges {
    bool pronunciation = false; // a note on another reading dropped ("Taiwan pr. [jiao4]")
    bool selfReference = false; // "also written X" with X the word itself dropped
    bool classifier = false;    // "CL:個|个[ge4]" written "measure word: 个"
    bool vulgar = false;        // a vulgar meaning marked "(vulgar)" in front
    bool bareName = false;      // nothing but transliterated personal names: no meanings left
};

struct LexEntry {
    QString simplified;
    QString numeric; // lower case, "v" for the u with two dots, 0 for the neutral tone
    QStringList meanings;
    GlossChanges changes;
    bool name = false; // a proper name: the dictionary writes its reading with a capital
};

class Lexicon {
public:
    // Reads <npmDir>/node_modules/chinese-lexicon. False with error when it is not there.
    bool Load(const QString& npmDir, QString* error);
    // The same from the texts of the three files, for tests.
    // readingFrequency says how often a character is read which way; it picks the reading of a
    // character with several.
    void LoadFromTexts(const QString& cedict, const QString& hsk, const QString& subtitleFrequency,
                       const QString& readingFrequency = QString());

    // The best entry of a word: a common word before a name or a variant spelling, and of a
    // character the reading most often heard.
    const LexEntry* Find(const QString& simplified) const;
    // HSK levels 1 to 6 in order, then the other words by their frequency in film subtitles.
    const QStringList& RankedWords() const { return ranked_; }
    int EntryCount() const { return static_cast<int>(best_.size()); }

    // The course's own words win over the dictionary when a text is read aloud; their single
    // characters serve where the dictionary knows nothing.
    void AddCourseReading(const QString& chinese, const QString& numeric);

    // Numeric Pinyin of a Chinese text for the speech voice, pauses at punctuation (", " and
    // ". "), the neutral tone written 5. Characters with no reading are left out and counted in
    // *unknown.
    //
    // Each run of characters between marks is cut into the words that read it most likely as a
    // whole: a word is as likely as it is frequent in film subtitles, a course word at least as
    // a fairly common word, and every further word of a cut costs as much again as a word a
    // thousand times rarer, so that two frequent characters do not break up a known word. A
    // dictionary word that reads a character in a way rarely heard (到了 dào liǎo, 着花 zháo
    // huā) is made rarer by as much as that reading is rarer than the usual one; a proper name
    // counts twenty times rarer. A number is never cut inside; 了 and 着 after 不 are read liǎo
    // and zháo, and 着 ending a word is the particle zhe, never zhuó. 一 and 不 then take the
    // tones they are spoken with (yí gè, bú shì), as the lessons write them.
    QString ToSpokenPinyin(const QString& text, int* unknown = nullptr) const;

private:
    // One word of a cut sentence with its numeric reading; empty for a character nobody knows.
    struct Piece {
        QString text;
        QString reading;
    };
    // A piece of text read as one word: null numeric when it is no word.
    struct Reading {
        QString numeric;
        bool courseWord = false;
        bool name = false;
    };
    std::vector<Piece> segment(QStringView run) const;
    Reading wordReading(QStringView run, qsizetype at, qsizetype len) const;
    double wordCost(const QString& piece, const Reading& reading) const;

    QHash<QString, LexEntry> best_;
    QHash<QString, QString> course_;
    QHash<QChar, QString> courseChars_; // single characters of the course's words, a last resort
    QStringList ranked_;
    QHash<QString, double> wordCount_;    // words of the film subtitles and how often they occur
    double totalCount_ = 0;               // all words of the subtitles
    QHash<QString, int> readingCount_;    // "了le": how often a character is read which way
    QHash<QChar, int> usualReadingCount_; // the count of each character's most frequent reading
    int longest_ = 1;
};

// How the vocabulary's glosses were cleaned: entries changed by each rule, and ranked words
// left out because no meaning was left to teach.
struct VocabularyFigures {
    int pronunciation = 0, selfReference = 0, classifier = 0, vulgar = 0;
    int leftOutNames = 0; // nothing but transliterated personal names ("Jack (name)")
    int leftOutEmpty = 0; // nothing but variants, cross references or surnames
};

// The vocabulary files' entries: the ranked words that have a dictionary entry with a reading
// that pairs with their characters, leaving out the course's lesson words, at most maxEntries.
std::vector<VocabularyEntry> BuildVocabulary(const Lexicon& lexicon, const Course& course,
                                             int maxEntries, VocabularyFigures* figures = nullptr);

// A CC-CEDICT reading ("Zhong1 guo2", "lu:4", "ma5") in the course's numeric form ("zhong1
// guo2", "lv4", "ma0"); empty when it is not plain syllables.
QString CedictToNumeric(const QString& pinyin);

// Meanings as a learner reads them, at most seven: cross references reduced to the simplified
// word without its reading; variants, surname notes, notes on other readings ("Taiwan pr.") and
// "also written" the word itself left out; classifiers written "measure word: 个"; a vulgar
// meaning marked "(vulgar)" in front. An entry that holds nothing but transliterated personal
// names ("Jack (name)") keeps no meaning. The word's own spellings are needed to recognise it;
// changes, when given, tells which rules changed something.
QStringList CleanMeanings(const QStringList& definitions, const QString& traditional = QString(),
                          const QString& simplified = QString(), GlossChanges* changes = nullptr);

} // namespace vt::coursepack
