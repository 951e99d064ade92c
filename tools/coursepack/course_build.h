#pragma once
// Builds the whole data folder from checked course sources: script files, recordings, TV-play
// tracks with their line positions and pictures, number and verdict sounds, stroke traces and
// the vocabulary. Every run with the same sources and data packages writes the same bytes.

#include "course_sources.h"
#include "lexicon.h"

#include <QString>
#include <QStringList>
#include <set>

namespace vt {
class FileStore;
}

namespace vt::coursepack {

struct BuildOptions {
    QString outDir;
    QString npmDir;                 // where node_modules of the data packages lies; empty: none
    bool audio = true;              // recordings and tracks (needs espeak-ng)
    int workers = 2;                // espeak-ng processes at a time
    bool wholeSyllableTable = true; // every syllable of the table, not only those the course uses
};

struct BuildReport {
    int scriptFiles = 0;
    int recordings = 0;
    int tracks = 0;
    int pictures = 0;
    int strokeFiles = 0;
    int vocabularyEntries = 0;
    int lessonWords = 0;
    VocabularyFigures vocabulary; // how its glosses were cleaned
    QStringList warnings;
    QStringList errors; // "file:line: reason" or a plain reason; non-empty means the build failed
};

// The syllable recordings a course needs: every syllable and tone the table lists, and every
// syllable the course's Pinyin uses (a neutral syllable is played with its first tone).
// Each entry is the file name without extension: "zhong1".
std::set<QString> NeededSyllables(const Course& course,
                                  const std::vector<VocabularyEntry>& vocabulary,
                                  bool wholeTable = true);

// The 25 symbols of the number speech with the Pinyin each recording says.
const std::vector<std::pair<QString, QString>>& NumberSymbols();

bool BuildCourse(const Course& course, Lexicon& lexicon, const BuildOptions& options,
                 FileStore& files, BuildReport& report);

// Gives the lexicon the readings of every lesson's words, which win when a sentence is read.
void AddCourseReadings(Lexicon& lexicon, const Course& course);

// A sentence that gets a recording spoken from its characters.
struct SpokenText {
    QString chinese;
    SourcePlace place;
};

// Every such sentence in the order of the sources: the lines of the read texts, the dialogs'
// lines, the lines of the plays.
std::vector<SpokenText> SpokenTexts(const Course& course);

} // namespace vt::coursepack
