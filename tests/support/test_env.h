#pragma once
// What a form test needs: a runtime on the virtual clock, with scripted message boxes, a seeded
// random generator, a fixed 1024 x 768 screen, silent sound on the same clock, the program's
// forms registered by name, and a data folder of its own on disk.

#include "core/runtime.h"
#include "core/speech.h"
#include "support/faulty_file_store.h"

#include <QTemporaryDir>
#include <memory>

namespace vt::test {

struct TestEnv {
    TestEnv();
    ~TestEnv();

    // Writes a file below the data folder ("Lessons\Title.zvk"), creating folders.
    void WriteFile(const QString& relative, const QByteArray& bytes);
    QString Path(const QString& relative) const { return rt->app.AppPath + relative; }
    // A file below the data folder as it stands on disk; empty when there is none.
    QByteArray Read(const QString& relative) const;
    // Copies the script files (titles, lesson words, texts and questions) of a built course in
    // folder from into the test's own folder, so that the study position written on the way
    // never lands in the built course. False when there is no built course there.
    bool CopyCourseScripts(const QString& from);
    // Copies every file below folder (relative to the data folder, "Phonetic Symbols") of a built
    // course in from. False when the course has no such folder.
    bool CopyCourseFolder(const QString& from, const QString& folder);
    // Copies the scripts of the sample course, stores the study position (lesson 0: a first
    // start, nothing stored) and runs the start chain up to the lesson menu. False when the
    // sample course is not built beside the program.
    bool StartOnSampleCourse(int lesson = 0, int task = 0);

    QTemporaryDir dir;
    VirtualClock clock;
    ScriptedMessageBoxes boxes;
    SeededRandom random{12345};
    FaultyFileStore files;
    FixedScreenInfo screen;
    // What is "played" can be read back: sound->Virtual()->Recorded().
    std::unique_ptr<SoundSystem> sound;
    std::unique_ptr<Runtime> rt;
};

} // namespace vt::test
