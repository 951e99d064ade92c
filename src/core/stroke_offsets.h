#pragma once
// The stroke traces of the writing samples: the 200 sample characters in their teaching order,
// the 18 offsets that unscramble a stored coordinate, and the 10-byte record file that holds one
// character's trace (Characters\<n>.zvk, n being the character's place in the sample string).
//
// A record is X (32-bit float, little-endian, scrambled), the key of X (one byte, 0..17), Y and
// its key likewise. The true coordinate is the stored one plus the offset of its key. A record
// whose true X is 0 is no point: it ends a stroke, so a trace of k strokes holds k separators.
// Coordinates are twips inside the drawing area of the sample pad.
//
// The course compiler writes these files and the sample screen reads them; both go through this
// one unit so that the two can never disagree.

#include <QByteArray>
#include <QString>
#include <vector>

namespace vt {

// The 200 distinct sample characters, character n (from 1) having the file Characters\<n>.zvk.
const QString& SampleCharacters();

inline constexpr int kStrokeKeyCount = 18;
inline constexpr int kStrokeRecordSize = 10;
// The drawing area a trace is laid out in, in twips (square).
inline constexpr int kStrokeAreaTwips = 3600;

// The offset of a key; a key outside 0..17 has none (0).
float StrokeOffset(int key);

struct StrokePoint {
    float x = 0; // true coordinates in twips; x == 0 marks the end of a stroke
    float y = 0;
    bool IsSeparator() const { return x == 0.0f; }
};

// Scrambles the points into records. The keys follow a fixed walk over the 18 offsets, so the
// same trace always gives the same bytes. Coordinates in whole or quarter twips come back exact.
QByteArray EncodeStrokeRecords(const std::vector<StrokePoint>& points);

// Unscrambles the records of a file: length / 10 records, a short tail ignored.
std::vector<StrokePoint> DecodeStrokeRecords(const QByteArray& bytes);

// The number of strokes of a trace: its separators.
int CountStrokes(const std::vector<StrokePoint>& points);

} // namespace vt
