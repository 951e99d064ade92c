#include "tasks/word_marking.h"

#include "core/pinyin.h"

namespace vt {

QString WordToMark(const QString& chinese) {
    const QString w = DotsToSpaces(chinese);
    if (w.contains(u' ') || w.contains(u'(') || w.contains(u')'))
        return StripPunctuation(w).left(1);
    return StripPunctuation(w);
}

std::optional<TextMark> MarkLessonWord(const QString& text, const Array1<LessonWord>& words,
                                       int k) {
    if (k < 1 || k > words.Count()) return std::nullopt;
    int from = 0; // where the next search starts, from 0
    qsizetype found = -1;
    QString w;
    for (int row = 1; row <= k; ++row) {
        w = WordToMark(words[row].Chinese);
        found = w.isEmpty() ? -1 : text.indexOf(w, from);
        // The next word is looked for from one place before this one, so that two words that
        // share a place (a word and its first character) are both found.
        if (found > 0) from = int(found) - 1;
    }
    if (w.isEmpty()) return std::nullopt;
    if (found < 0) found = text.indexOf(w);
    if (found < 0) return std::nullopt;
    return TextMark{int(found), int(w.size())};
}

} // namespace vt
