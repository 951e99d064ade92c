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
    // Copies the script files of a built course (titles, lesson words, texts and questions)
    // from its data folder into this one, so that whatever a test writes on the way never lands
    // in the built course. False when that folder holds no course.
    bool CopyLessonScripts(const QString& from);

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
