#pragma once
// Where a word of the lesson's list stands in the lesson's text, without a widget. A word may
// occur more than once; the list follows the text's order, so the words of rows 1 to k are looked
// for one after the other, each from about where the one before was found, and the word of row k
// is marked where that walk brings it.

#include "core/app_state.h"

#include <optional>

namespace vt {

struct TextMark {
    int Start = 0; // from 0
    int Length = 0;
    bool operator==(const TextMark&) const = default;
};

// The text searched for the word of a row: a word with several readings or a note in parentheses
// by its first character only, any other word without its punctuation.
QString WordToMark(const QString& chinese);

// The mark of the word of row k of words in text, or nothing when it does not occur.
std::optional<TextMark> MarkLessonWord(const QString& text, const Array1<LessonWord>& words, int k);

} // namespace vt
