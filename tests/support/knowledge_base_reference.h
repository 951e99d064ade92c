#pragma once
// The character table built the plain way, written apart from the program's: every character is
// searched for in CharTable row by row. The program's indexed build must give exactly this
// table; the knowledge base test checks it and its benchmark measures both.

namespace vt {
struct Runtime;
struct LoadProgress;
} // namespace vt

namespace vt::test {

void BuildCharTableByScanning(Runtime& rt, LoadProgress& progress);

} // namespace vt::test
