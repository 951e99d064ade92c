#pragma once
// The learner's whole progress: Study.zvk in the program folder, one record of four bytes
// (lesson, task; signed 16-bit little-endian). Written whole and renamed over the old file, so a
// crash never leaves a broken or older file behind a newer screen.

namespace vt {

struct Runtime;

// Reads the position into StudyLesson and StudyTask. A missing file is created empty and reads
// as zeros; a zero lesson is a first start: lesson 1, and then a zero task becomes task 1 too.
// A short or garbled file gives what its bytes say, missing bytes as zeros.
void LoadStudyPosition(Runtime& rt);

// Stores StudyLesson and StudyTask. False when the file could not be written (the old file then
// stands as it was).
bool SaveStudyPosition(Runtime& rt);

} // namespace vt
