#pragma once
// The table of all Mandarin syllables the course knows, 400 rows in 22 groups, and the
// conversions that need it.
//
// A row reads "<before>|<rest><f1><f2><f3><f4>": "zh|ong1011" is the syllable "zhong" whose
// tone mark sits on the "o", existing in tones 1, 3 and 4. Letter "v" stands for the u with two
// dots. The groups are keyed by the syllable's first letter (no I, U or V) and keep the order
// of the Pinyin chart.
//
// The rows are fixed data, built into the program; nothing here reads a file.

#include <QString>
#include <array>
#include <vector>

namespace vt {

struct AppState;

// One row of the table, taken apart.
struct SyllableInfo {
    QString group;               // "A" .. "Z"
    QString before;              // what stands before the vowel that takes the mark; may be empty
    QString rest;                // that vowel and what follows it
    std::array<bool, 4> tones{}; // tones[k - 1]: the syllable exists in tone k
    QString plain() const { return before + rest; } // "zhong", "lve", "er"
};

// The groups in chart order: "A", "B", "C", "D", "E", "F", "G", "H", "J", ... "Z".
const std::vector<QString>& SyllableGroups();

// The rows of one group as they are written ("zh|ong1011"), in order; empty for an unknown group
// (the comparison is exact: "a" is no group).
const std::vector<QString>& SyllableGroupRows(const QString& group);

// All 400 rows parsed, group by group, in table order.
const std::vector<SyllableInfo>& AllSyllables();

// The row of a syllable written without tone, in lower case with "v" for the u with two dots:
// "zhong", "lv", "lve", "er". Null when the table has no such syllable.
const SyllableInfo* FindSyllable(const QString& plain);

// Whether the table lists the syllable in this tone. Tone 0 (neutral) is true for every known
// syllable; an unknown syllable or a tone outside 0..4 is false. The flags follow common usage
// and are not complete, so a caller treats false as a warning rather than a hard error.
bool SyllableHasTone(const QString& plain, int tone);

// Numeric-tone Pinyin as a teacher types it ("zhong1 guo2", "Nv3", "lve4", "nü3", "lu:4",
// "ma0") to the dotted form stored in the word files ("zh.ong1 gu.o2"): the dot goes where the
// table's "|" stands, syllables are lower-cased and joined by one blank.
// A digit ends a syllable, so "zhong1guo2" works too; blanks and apostrophes separate.
// "ü" and "u:" are read as "v"; tone 5 is read as neutral and written 0.
// On an unknown syllable, a syllable without its digit, a digit above 5, any other character
// or an empty text the result is empty and *error (when given) says why in plain words.
QString NumericToDotted(const QString& numeric, QString* error = nullptr);

} // namespace vt
