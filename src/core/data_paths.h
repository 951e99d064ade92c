#pragma once
// Every path of the data folder, spelt once. Each is built from a root: AppPath (the program
// folder with a trailing separator), the folder a course is compiled into (through
// DataFolderRoot), or an empty text for the path relative to the data folder.
//
// Parts are joined with "/", the platform's separator, so that a path a message shows reads the
// way the file system writes it. The files are looked up without regard to case (FileStore), so
// "Sound/right.WAV" finds "sound/Right.wav" too.

#include <QString>

namespace vt {

// A folder as a root: with a trailing separator added when it has none.
QString DataFolderRoot(const QString& folder);

// Script files (enciphered).
QString TitleFile(const QString& root);                          // Lessons\Title.zvk
QString LessonScriptFolder(const QString& root, int lesson);     // Lessons\Script\Lesson_<n>\ .
QString LessonWordsFile(const QString& root, int lesson);        // ...\Lesson_<n>\icwp.zvk
QString LessonTextFile(const QString& root, int lesson);         // ...\Lesson_<n>\lifr.zvk
QString LessonQuestionsFile(const QString& root, int lesson);    // ...\Lesson_<n>\ogae.zvk
QString VocabularyFile(const QString& root, int n);              // Vocabulary\ci<n>.zvk
QString DialogScriptFile(const QString& root);                   // Spoken\Script.zvk
QString SentenceCategoryFile(const QString& root, int category); // Spoken\Script_<k>.zvk
QString SpokenSentenceFile(const QString& root, int n);          // Spoken\Script<n>.zvk

// A TV play's line positions (8-byte records, not enciphered).
QString PlayLinePositionsFile(const QString& root, int lesson); // ...\Lesson_<n>\yeap.zvk

// Lesson media: the folder of a read text's sentence recordings (Lessons\Sound\Lesson_<n>\),
// sentence i's recording there (<i>.wav), a play's track (Lessons\Sound\<n>.mp3) and its
// pictures (Lessons\Picture\Lesson_<n>\<i>.jpg).
QString LessonSoundFolder(const QString& root, int lesson);
QString SentenceSoundFile(const QString& root, int lesson, int sentence);
QString PlayTrackFile(const QString& root, int lesson);
QString PlayPictureFile(const QString& root, int lesson, int picture);

// The recordings of the syllables (Phonetic Symbols\ ), and the one of a syllable in one tone,
// "zhong1": Phonetic Symbols\Z\zhong1.wav.
QString SyllableSoundFolder(const QString& root);
QString SyllableSoundFile(const QString& root, const QString& syllable);
// True when a path lies in the syllable recordings ("Symbols\" or "Symbols/" in it, in any
// case): a sound from there shows its tone on the desktop.
bool IsSyllableSoundPath(const QString& path);

// The number speech: Numbers\<symbol>.wav, and the two lists it keeps.
QString NumberSoundFile(const QString& root, const QString& symbol);
QString CardinalNumbersFile(const QString& root);  // Numbers\cardinal.txt
QString TelephoneNumbersFile(const QString& root); // Numbers\telephone.txt

// The dialogs' recordings: Spoken\Sound\<file> ("haytm.wav"), and the farewell b.wav.
QString DialogSoundFile(const QString& root, const QString& fileName);
QString FarewellSoundFile(const QString& root);

// The verdicts of the tasks: Sound\right.WAV, wrong.WAV, careful.WAV, carryon.WAV.
enum class Verdict { Right, Wrong, Careful, CarryOn };
inline constexpr Verdict kVerdicts[] = {Verdict::Right, Verdict::Wrong, Verdict::Careful,
                                        Verdict::CarryOn};
QString VerdictName(Verdict verdict); // "right", "wrong", "careful", "carryon"
QString VerdictSoundFile(const QString& root, Verdict verdict);

// The stroke trace of sample character n: Characters\<n>.zvk.
QString StrokeFile(const QString& root, int n);

// Where a deployment keeps substitution tables of its own: Tables\ .
QString SubstitutionTableFolder(const QString& root);

// What the program writes.
QString StudyFile(const QString& root);                        // Study.zvk
QString SettingFile(const QString& root);                      // Setting.zvk
QString TranslationNotesFile(const QString& root, int lesson); // Translation_<n>.txt
QString ChatHistoryFile(const QString& root);                  // Chat.txt

} // namespace vt
