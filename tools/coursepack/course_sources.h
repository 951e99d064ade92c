#pragma once
// The course sources in memory, and the reader that builds them from the plain-text files of a
// course folder (titles.txt, lessons/NNN/..., spoken/...) with every check a teacher needs: a
// fault is reported as "file:line: reason" and the course is not built.
//
// Pinyin is kept in both forms: as written (numeric tones, for the speech) and dotted, as the
// data files store it.

#include "core/course_shape.h"

#include <QString>
#include <QStringList>
#include <map>
#include <vector>

namespace vt::coursepack {

// Where a piece of the sources stands, for messages.
struct SourcePlace {
    QString file; // as shown to the user, e.g. "course/lessons/003/words.txt"
    int line = 0; // 1-based; 0 for a whole file or folder
    QString Text() const;
};

struct SourceError {
    SourcePlace place;
    QString reason;
    QString Text() const { return place.Text() + QStringLiteral(": ") + reason; }
};

struct Word {
    QString numeric; // "jian4 mian4"
    QString dotted;  // "ji.an4 mi.an4"
    QString chinese; // "见.面"
    QString english; // "to meet; to see each other"
    SourcePlace place;
};

// A row of the sentence finder: categories and further sentences.
struct SentenceRow {
    QString numeric;
    QString dotted;
    QString chinese;
    QString english;
    bool structure = false; // "<<<" in the English: a pattern, not a sentence
    SourcePlace place;
};

struct PlayLine {
    QString speaker;
    QString text;  // what is said, without the speaker
    QString voice; // male1, male2, female1, female2, child1
    SourcePlace place;
    QString Shown() const { return speaker + QStringLiteral("：") + text; }
};

struct Question {
    QString text;
    QStringList options; // as stored: a right option keeps its leading "#"
    SourcePlace place;
};

struct Lesson {
    int number = 0;
    bool present = false;
    std::vector<Word> words;
    // Read texts: line 1 is the title line, each line one sentence (paragraph blanks kept).
    QStringList textLines;
    std::vector<SourcePlace> textPlaces;
    // TV plays.
    QString playTitle;
    std::vector<PlayLine> playLines;
    int pictureCount = 4;
    SourcePlace playPlace;
    std::vector<Question> questions;
    bool IsPlay() const { return IsPlayLesson(number); }
};

struct DialogLine {
    QString chinese;
    QString english;
    QString soundName; // "haytm.wav"
    SourcePlace place;
};

struct Dialog {
    DialogLine ask;
    std::vector<DialogLine> replies;
};

struct Course {
    QStringList titles;          // 140
    std::vector<Lesson> lessons; // index 0 is lesson 1
    std::vector<Dialog> dialogs;
    std::vector<std::vector<SentenceRow>> categories;    // 20, index 0 is category 1
    std::vector<std::vector<SentenceRow>> sentenceFiles; // index 0 is sentences_1.txt
    std::vector<QString> warnings;
    int LessonWordCount() const;
};

// The name of a sentence's recording, made from its English words: the first letter, then the
// letter after each blank unless that is ".", blank, ",", "?" or "!", five letters at most, in
// lower case, with ".wav".
QString SentenceSoundName(const QString& english);

// Reads and checks the course folder. On faults errors lists them all, in file order, and the
// course must not be built. File names in messages begin with the course folder's own name
// ("course/lessons/003/words.txt").
bool ReadCourse(const QString& courseDir, Course& course, std::vector<SourceError>& errors);

// Numeric Pinyin of a row, where a pattern may hold "..." or "……" between syllables: each run
// of syllables goes through the dotted conversion, the rest stays as written.
QString RowToDotted(const QString& numeric, QString* error);

// The number of syllables of a numeric or dotted Pinyin text: its tone digits.
int CountSyllables(const QString& pinyin);

} // namespace vt::coursepack
