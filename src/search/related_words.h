#pragma once
// Which words of the knowledge base are related to the word being studied, without a widget: the
// rules behind the related-expressions list. Every search gives rows in table order, each as the
// list shows it.

#include "core/app_state.h"

#include <QString>
#include <vector>

namespace vt {

struct RelatedRow {
    QString Chinese;
    QString Pinyin;  // with tone marks, for the eye
    QString Pinyin1; // numeric, dotted as stored, for speech
    QString English; // trimmed
    WordSource Origin;
};

inline constexpr int kRelatedByCharacterLimit = 20;
inline constexpr int kRelatedLimit = 10;

// Words that share a character or an ending with text, leaving out the word itself (the same form
// with the same meaning). At most 20.
std::vector<RelatedRow> RelatedByCharacter(const AppState& app, const QString& text,
                                           const QString& meaning);

// Words that hold text (case-sensitive). At most 10.
std::vector<RelatedRow> WordsHolding(const AppState& app, const QString& text);

// The caller's own entry first (row of LessonWords when fromLesson, else of WordTable), then, with
// withRelated, up to 10 other entries of the same table whose word holds text. A non-empty
// pinyin replaces the numeric Pinyin of the first row: the reading of the word itself when it is
// part of a longer entry.
std::vector<RelatedRow> EntryWithRelated(const AppState& app, const QString& text,
                                         const QString& pinyin, int row, bool fromLesson,
                                         bool withRelated);

} // namespace vt
