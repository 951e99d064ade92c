#pragma once
// The knowledge base loaded the plain way, written apart from the program's: each file looked
// for, read into whole lines, trimmed line by line, rows appended one at a time; every character
// searched for in CharTable row by row. The program's load must give exactly these tables; the
// knowledge base test checks it and its benchmark measures the character table against it.

namespace vt {
struct Runtime;
struct LoadProgress;
} // namespace vt

namespace vt::test {

// Words and sentences as LoadWordsAndSentences fills them, the bars moved the same way.
void LoadWordsAndSentencesPlainly(Runtime& rt, LoadProgress& progress);

void BuildCharTableByScanning(Runtime& rt, LoadProgress& progress);

} // namespace vt::test
