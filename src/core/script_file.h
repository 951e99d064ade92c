#pragma once
// Script files: all the text of the course (titles, word lists, lesson texts, questions,
// dialogs, vocabulary) in one enciphered record format.
//
// A script file has no header and no trailer: it is a run of 6-byte records, each three signed
// 16-bit little-endian fields Flag, PartA, PartB; a shorter tail is ignored. PartA + PartB is a
// character code when Flag >= 0, and a key for the family's substitution table when Flag < 0
// (see core/substitution_tables.h). Codes are UTF-16 code units seen as signed values. While
// reading, code 0 becomes a run of 0 to 99 blanks (one fresh random draw each time), code 10
// ends a line, code 13 is dropped, and every other code is one character. A file whose sum
// PartA + PartB leaves the signed 16-bit range anywhere is corrupted as a whole.
//
// ReadScriptLines hands the lines to its caller. ReadScriptFile puts them in ScriptLines and
// ScriptLineCount of AppState instead, for the forms whose behaviour depends on those; a second
// read there replaces the first one's lines. A reader of many files (the start-up load) decodes
// into a ScriptBuffer it keeps, and makes strings only of the lines it keeps.

#include "core/shared_text.h"
#include "platform/helpers.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <cstdint>
#include <vector>

namespace vt {

class FileStore;
class Random;
class SubstitutionTable;
struct Runtime;

// What a script file's bytes give: its lines, or that it is corrupted.
struct ScriptText {
    bool corrupted = false;
    qsizetype badRecord = 0; // the first record (from 1) whose sum overflows, when corrupted
    Array1<QString> lines;   // at most 32767, the most a line count can hold
};

// The text of one script file decoded in a single run of code units, with its lines as spans of
// it. Each line stands between two blanks that are not part of it, with one more unit free
// behind it, so that a line trimmed, padded with a blank on each side, or as it stands, can be
// cut from the text as a string of its own without a copy (see core/shared_text.h). Decoding
// again into the same buffer reuses its memory, unless strings were cut from it.
struct ScriptBuffer {
    bool corrupted = false;
    qsizetype badRecord = 0; // as in ScriptText
    SharedText text;
    std::vector<qsizetype> lineEnds; // end of line i (from 1) in text
    QByteArray bytes;                // the file as ReadScriptInto read it last

    int LineCount() const { return static_cast<int>(lineEnds.size()); }
    // Line i, from 1 to LineCount(): it starts three units after the end of line i - 1.
    QStringView Line(int i) const {
        const qsizetype begin = i > 1 ? lineEnds[size_t(i - 2)] + kLineGap : 1;
        return QStringView(text.Data() + begin, lineEnds[size_t(i - 1)] - begin);
    }
    // Line i as a string sharing the text: as it stands, trimmed of blanks, or trimmed with one
    // blank put in front and one behind. Each line is cut at most once.
    QString LineText(int i) { return cut(Line(i)); }
    QString TrimmedLine(int i) { return cut(TrimView(Line(i))); }
    QString PaddedLine(int i) {
        const QStringView core = TrimView(Line(i));
        // The units on both sides of a trimmed line are blanks: its own, or the ones around it.
        return cut(QStringView(core.utf16() - 1, core.size() + 2));
    }
    void Clear() {
        corrupted = false;
        badRecord = 0;
        lineEnds.clear();
    }

    // Units from the end of one line to the start of the next: a blank, a free unit, a blank.
    static constexpr qsizetype kLineGap = 3;

private:
    QString cut(QStringView v) { return text.Cut(v.utf16() - text.Data(), v.size()); }
};

// Decodes as DecodeScript does, into out (emptied first).
void DecodeScriptInto(QByteArrayView bytes, const SubstitutionTable* table, int16_t stopLine,
                      Random& random, ScriptBuffer& out);

// Decodes the bytes of a script file. stopLine of 1 or more ends the reading as soon as that
// many lines are stored; below 1 reads the whole file. Zero codes draw from random (Randomize,
// then one Rnd). With no table (a family other than the five), each enciphered record repeats
// the code of the record before it (0 before the first record).
ScriptText DecodeScript(QByteArrayView bytes, const SubstitutionTable* table, int16_t stopLine,
                        Random& random);
ScriptText DecodeScript(QByteArrayView bytes, const QString& family, int16_t stopLine,
                        Random& random);

// The lines of the script file at path (built from AppPath), read as DecodeScript tells. A file
// that cannot be opened, or that is corrupted, shows "The file <path> is corrupted!" in a
// "Warning" box and gives no lines; a file shorter than one record gives no lines without a
// word. Nothing of AppState changes.
Array1<QString> ReadScriptLines(Runtime& rt, const QString& path, const QString& family,
                                int16_t stopLine = 0);

// How a reader of many files fared with one of them.
enum class ScriptRead {
    Missing,    // no such file: nothing said, nothing read
    Unreadable, // it could not be opened or is corrupted: said in a box, no lines
    Read,       // its lines stand in the buffer
};

// Reads the script file at path into out with one open of the file, reusing the memory of its
// bytes: a missing file is passed over without a word, an unreadable or corrupted one is reported
// as ReadScriptLines does.
ScriptRead ReadScriptInto(Runtime& rt, const QString& path, const SubstitutionTable* table,
                          int16_t stopLine, ScriptBuffer& out);

// ReadScriptLines into rt.app.ScriptLines and ScriptLineCount, both emptied first.
void ReadScriptFile(Runtime& rt, const QString& path, const QString& family, int16_t stopLine);

// The bytes of a script file holding lines, the same for the same seed. Each code unit is one
// record; a line feed follows every line, so every list of lines, a last empty line included,
// reads back as it was written (up to 32767 lines). With encipher, records carry keys of the
// family's table, each split at random into PartA + PartB; a character the table has no key for,
// and every character of a family without a table, is written as a plain record. Code units 0,
// 10 and 13 inside a line cannot survive the reader (blanks, a line end, nothing).
QByteArray EncodeScriptLines(const QStringList& lines, const QString& family, quint64 seed,
                             bool encipher = true);

// Writes EncodeScriptLines(lines, family, seed) to path, atomically. False when it could not be
// written.
bool WriteScriptFile(FileStore& files, const QString& path, const QStringList& lines,
                     const QString& family, quint64 seed);

} // namespace vt
