#pragma once
// How a word of a list is said: a word of one character from the recording of its syllable, with
// its tone shown; any other word syllable by syllable. The lists of new words and of related
// expressions all say a word this way.

#include <QString>

namespace vt {

struct Runtime;

struct WordSound {
    bool BySyllables = false;
    QString Pinyin; // what SpeakPinyin says, when BySyllables
    QString File;   // the syllable's recording, otherwise
    QString Tone;   // the tone it shows: "0" to "4"
};

// chinese: the word as listed; pinyin: its numeric Pinyin as stored ("h.ao3"). A syllable without
// a tone digit, or with the neutral "0", is said with its first-tone recording.
WordSound PlanWordSound(const QString& root, const QString& chinese, const QString& pinyin);

// Says the word on the desktop's shared player (nobody waits for its end).
void SayWord(Runtime& rt, const QString& chinese, const QString& pinyin);

} // namespace vt
