#pragma once
// The one program-wide record: plain data, no behaviour. Each group of fields is written by the
// routine named beside it and read by every form. Tables are 1-based; counts are 16-bit.

#include "platform/helpers.h"

#include <QString>
#include <cstdint>

namespace vt {

struct WordRow {
    QString Chinese;
    QString Meaning; // trimmed, then one blank added at each end, for whole-word search
};

struct WordSource {
    int16_t Kind = 0;   // 1: a lesson, 2: a vocabulary file
    int16_t Number = 0; // the lesson number, or n of ci<n>
};

struct CharReading {
    QString Initial;   // first letter of Plain
    QString Pinyin;    // syllable without its digit, dot in place ("zh.ong")
    QString Plain;     // the same without dots ("zhong")
    QString ToneKey;   // for marks and sorting: "0" for a neutral or missing tone
    QString ToneSound; // for the sound file: "1" for neutral, "" for missing
    QString Tone;      // the digit as it stood, "" for missing
};

struct CharEntry {
    QString Character;
    int16_t ReadingCount = 0;
    Array1<CharReading> Readings;
};

struct SpeechRow {
    QString Tone;  // the digit as given
    QString Sound; // file name without extension
};

struct LessonWord {
    QString Chinese;
    QString Meaning;
    QString Pinyin;
};

// One blank of the blank-filling task: the character cut out of the text, and the one the
// learner put in its place (empty while the blank is unfilled).
struct Blank {
    QString Character;
    QString Answer;
};

struct AppState {
    // Program folder with a trailing separator; the prefix of every data path.
    QString AppPath;
    bool ExitRequested = false;

    // The lines of the last script file read.
    Array1<QString> ScriptLines;
    int16_t ScriptLineCount = 0;

    // Syllable table and Pinyin split.
    QString SyllableGroup;
    Array1<QString> SyllableRows;
    int16_t SyllableRowCount = 0;
    Array1<QString> PinyinSyllables;

    // Sound and speech.
    int16_t SoundOwner = 0;
    QString CurrentTone;
    Array1<SpeechRow> SpeechQueue;
    int16_t SpeechSyllableCount = 0;
    int16_t SpeechPosition = 0;

    // Knowledge base, filled once at start and read-only afterwards.
    Array1<QString> TitleList;
    Array1<WordRow> WordTable;
    Array1<QString> WordPinyin;
    Array1<WordSource> WordOrigin;
    int16_t WordCount = 0;
    int16_t WordCountCopy = 0;
    int16_t LessonWordCount = 0;
    Array1<QString> SentenceTable;
    Array1<int16_t> SentenceLesson;
    int16_t SentenceCount = 0;
    int16_t SentenceCountCopy = 0;
    Array1<CharEntry> CharTable;
    int16_t CharCount = 0;

    // Study position as stored, and what is open now.
    int16_t StudyLesson = 0;
    int16_t StudyTask = 0;
    int16_t OpenLesson = 0;
    int16_t OpenTask = 0;
    Array1<LessonWord> LessonWords;
    int16_t LessonWordRows = 0;
    Array1<QString> TextLines;
    int16_t TextLineCount = 0;
    QString TextTitle;
    bool DictionaryFeedsTask = false;

    // Tasks and search.
    bool VocabularyTaskOpen = false;
    int16_t BlankCount = 0;
    Array1<Blank> Blanks;
    int16_t AssistantOpenFlag = 0;
};

} // namespace vt
