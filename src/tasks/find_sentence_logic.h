#pragma once
// The rules of the sound-to-sentence task, without a widget: the wrong versions of a sentence
// (two of its characters swapped), where the right version stands among A, B and C, how a wrong
// version shows its swap after an answer, the correctness rate, and the positions of a TV play's
// lines in its track (yeap.zvk).

#include <QByteArray>
#include <QString>
#include <array>
#include <cstdint>
#include <vector>

namespace vt {

class Random;

// The mark that passes the task.
inline constexpr int kFindSentencePass = 80;

// The line with two characters swapped: positions i and j (from 1) are drawn from the line's
// length until they differ, hold different characters, and neither is one the swap passes over
// (SwapPassesOver). The line must hold such a pair (LineCanBeSwapped); a line without one comes
// back as it is, with no draw made.
QString SwapTwoCharacters(const QString& line, Random& random);

// The three versions as they stand in A, B and C, and the place (0..2) of the right one.
struct PlacedVersions {
    std::array<QString, 3> text;
    int16_t rightOption = 0;
};

// Places the line among its two altered versions: a draw from 3 gives A, a draw from 2 among the
// remaining gives B, and C takes the last. Version 0 is the line itself.
PlacedVersions PlaceVersions(const QString& line, const QString& altered1, const QString& altered2,
                             Random& random);

// A wrong version as it shows after the answer: every character that differs from the right
// version in its place is wrapped in 【 and 】.
QString MarkSwap(const QString& wrong, const QString& right);

// The correctness rate as a whole percentage: the share of right answers rounded to two places,
// halves to the even digit. No answer at all is 0.
int CorrectnessRate(int right, int wrong);

// One line's stretch of a TV play's track, in milliseconds.
struct LinePosition {
    int32_t From = 0;
    int32_t To = 0;
    bool operator==(const LinePosition&) const = default;
};

enum class PositionsFault {
    None,
    CountMismatch, // the records do not match the text's lines
    Empty,         // no record at all, for a text that has lines
    BadRecord,     // From below 0, From not below To, or To past the track's end
};

struct LinePositions {
    PositionsFault fault = PositionsFault::None;
    std::vector<LinePosition> positions; // record r at index r - 1; empty after any fault
};

// Reads the 8-byte records of yeap.zvk (From, To: signed 32-bit little-endian) and checks them
// against the text's line count and the track's length. Bytes past the last whole record are
// left out.
LinePositions ReadLinePositions(const QByteArray& bytes, int lineCount, int64_t trackLength);

// The bytes of yeap.zvk for these positions, one record each.
QByteArray PackLinePositions(const std::vector<LinePosition>& positions);

// The message box text of a fault ("" for None).
QString PositionsFaultMessage(PositionsFault fault);

// The filled width of a position bar of barWidth twips: how far position has come through the
// stretch [from, to).
float BarProgress(int barWidth, int64_t position, int64_t from, int64_t to);

} // namespace vt
