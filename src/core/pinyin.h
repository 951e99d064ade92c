#pragma once
// The small string routines every form shares for Pinyin and Chinese text.
//
// Pinyin comes in three written forms: numeric-tone ("zhong1"), dotted numeric-tone as the word
// files store it ("zh.ong1 hu.a4": the "." stands before the vowel that takes the mark, a digit
// 0..4 ends each syllable, 0 is neutral) and tone-marked, which is what the learner sees.
// Letter "v" stands for the u with two dots in all stored forms.
//
// All routines compare characters exactly (case counts, no normalisation) and never report an
// error: input that does not fit passes through as described at each routine. Only
// SplitPinyinSyllables and LoadSyllableRows touch shared state, and only the fields they name.

#include "core/syllable_table.h"

#include <QString>
#include <cstdint>

namespace vt {

struct AppState;

// The vowel with its tone mark. For "a", "o", "e", "i", "u": tones 1..4 give the marked vowel,
// any other tone the plain letter. For "v": tones 1..4 give the marked u with two dots, any other
// tone an empty text (a neutral "v" vanishes; the plain "v" is never returned). Any other text,
// including upper case, gives an empty text.
QString ToneVowel(const QString& letter, int16_t tone);

// Each "v" replaced by "ü" (U+00FC). Upper-case "V" stays.
QString VToUmlaut(const QString& text);

// Dotted Pinyin to tone marks: "zh.ong1 hu.a4" gives "zhōng huà".
// A text without "." comes back unchanged, digits and all, so any text may pass through.
// Otherwise each digit ends a syllable (blanks around it dropped) and its tone goes onto the
// letter after the syllable's "."; a "v" before that letter turns into "ü", one after it stays.
// Syllables are joined by one blank; text after the last digit is dropped. A syllable without
// "." in a dotted text loses its digit and gets no mark.
QString PinyinToMarks(const QString& text);

// Each "." replaced by a blank, then blanks trimmed at both ends.
QString DotsToSpaces(const QString& text);

// Drops exactly \ / . ( ) ？ ！ ， （ ） 。 and nothing else: the ASCII comma stays.
QString StripPunctuation(const QString& text);
// Whether StripPunctuation drops c.
constexpr bool IsStrippedPunctuation(char16_t c) {
    switch (c) {
    case u'\\':
    case u'/':
    case u'.':
    case u'(':
    case u')':
    case u'\uFF1F': // ？
    case u'\uFF01': // ！
    case u'\uFF0C': // ，
    case u'\uFF08': // （
    case u'\uFF09': // ）
    case u'\u3002': // 。
        return true;
    default:
        return false;
    }
}

// Drops exactly ) ( ？ ！ ，
QString StripSentenceMarks(const QString& text);

// Drops whatever stands in ASCII parentheses, the parentheses themselves and every ";", then
// trims blanks at both ends. There is no nesting: the first ")" closes all.
// "to go (by car); ride" gives "to go  ride".
QString StripParenthesised(const QString& text);

// A character counts as Chinese when its UTF-16 code is above 255 and it is none of the twenty
// Chinese punctuation marks ， 。 ； ： “ ” ！ ？ 、 … （ ） ‘ ’ 【 】 《 》 — ·.
// True when any character does not count; false for an empty text.
bool HasNonChinese(const QString& text);

// Only the characters that count as Chinese, in order.
QString ChineseOnly(const QString& text);

// Fills app.PinyinSyllables with the syllables of a numeric-tone text: each digit ends one and
// stays on it, blanks around it are trimmed. "ni3 hao3 ma" gives "ni3", "hao3"; text after the
// last digit is dropped, and a text without a digit leaves the array empty.
void SplitPinyinSyllables(AppState& app, const QString& text);

// n as text right-aligned in three columns: "  7", " 42", "100". Negative numbers get two
// blanks ("  -5").
QString PadNumber(int16_t n);

// The weekday's name, day 1 being Sunday and 7 Saturday; empty outside 1..7. Chinese names
// ("星期日" ..) only when chinese is exactly -1, any other value gives the English ones
// ("Sunday" .. with "Wednsday" spelt so).
QString WeekdayText(int chinese, int day);

// Loads the rows of the group app.SyllableGroup ("A" .. "Z") into app.SyllableRows (1-based,
// rows as written: "zh|ong1011") and app.SyllableRowCount. Any other group value changes
// nothing.
void LoadSyllableRows(AppState& app);

} // namespace vt
