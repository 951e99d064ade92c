#pragma once
// The shape of the course, each fact under one name: how many lessons and tasks there are, where
// the TV plays begin, how many vocabulary and sentence files the data folder holds, and the most
// rows a table may have. The program and the course compiler both read these.

namespace vt {

// Lessons 1 to 140, each worked through seven tasks in order.
inline constexpr int kLessonCount = 140;
inline constexpr int kTaskCount = 7;

// Lessons from this one on are TV plays; the ones before are read texts. A play's text file has
// its title on its second line and its lines from the third.
inline constexpr int kFirstPlayLesson = 81;

// The additional vocabulary: Vocabulary\ci1.zvk to ci20.zvk.
inline constexpr int kVocabularyFileCount = 20;

// The categories of spoken sentences: Spoken\Script_1.zvk to Script_20.zvk.
inline constexpr int kSentenceCategoryCount = 20;

// Every table of the course is counted in signed 16 bits, so none holds more rows than this.
inline constexpr int kMaxRows = 32767;

// True for a TV play, false for a read text.
constexpr bool IsPlayLesson(int lesson) {
    return lesson >= kFirstPlayLesson;
}

} // namespace vt
