// A child process for the tests of the learner's records: it saves them the way the program does,
// under a file size limit or until it is killed, so that the tests see what real failed and
// interrupted writes leave on disk.
//
//   record_writer [--fsize-limit BYTES] advance FOLDER     moves the study position on by a task
//   record_writer [--fsize-limit BYTES] mode FOLDER MODE   stores a screen mode from the desktop
//   record_writer [--fsize-limit BYTES] write PATH SIZE    writes SIZE bytes to PATH
//   record_writer kills FOLDER                             see below
//   record_writer notekills FILE                           the same for translation notes
//
// Each message box is printed as "title: text" on its own line. The exit code is 0 when the
// command ran, 2 on bad arguments, 3 when a plain write reported failure.
//
// "kills" reads lines "TASK MICROSECONDS" from its input. For each it starts a process that
// saves the study position over and over (lessons 1, 2, 3, ... with that task), kills it with
// SIGKILL after that many microseconds, and answers "killed" once it is gone. The saving
// processes are forked from this one, which has loaded its libraries once, so that hundreds of
// kills take a second or two instead of the start-up of hundreds of programs.
//
// "notekills" reads lines "ROUND MICROSECONDS" and does the same with a process that saves
// translation notes to FILE as the notes window does, save after save of the round's sample
// notes (tests/support/notes_sample.h).

#include "core/runtime.h"
#include "platform/application.h"
#include "shell/background.h"
#include "shell/study.h"
#include "shell/study_file.h"
#include "support/notes_sample.h"
#include "tasks/notes_file.h"

#include <csignal>
#include <cstdio>
#include <cstring>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace vt;

namespace {

struct ChildRuntime {
    VirtualClock clock;
    ScriptedMessageBoxes boxes;
    SeededRandom random{1};
    FileStore files;
    FixedScreenInfo screen;
    Runtime rt{clock, boxes, random, files, screen};

    explicit ChildRuntime(const QString& folder) {
        rt.ProgramFolder = folder.endsWith(u'/') ? folder : folder + u'/';
        rt.app.AppPath = rt.ProgramFolder;
    }
    ~ChildRuntime() {
        for (const ScriptedMessageBoxes::Shown& b : boxes.Boxes())
            std::printf("%s: %s\n", qPrintable(b.title), qPrintable(b.text));
        std::fflush(stdout);
    }
};

// The position as a learner who has just finished the task they stood at.
int advance(const QString& folder) {
    ChildRuntime child(folder);
    LoadStudyPosition(child.rt);
    child.rt.app.OpenLesson = child.rt.app.StudyLesson;
    child.rt.app.OpenTask = child.rt.app.StudyTask;
    AdvanceStudy(child.rt);
    return 0;
}

int mode(int argc, char** argv, const QString& folder, int16_t value) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Application app(argc, argv);
    ChildRuntime child(folder);
    if (auto* desktop = child.rt.forms.Load<Background>()) desktop->ApplyScreenMode(value, true);
    child.rt.forms.DestroyAll();
    return 0;
}

// Lesson i with the given task for i = 1, 2, 3, ...: a record with another task is not one of
// this loop's.
[[noreturn]] void saveForEver(const QString& folder, int16_t task) {
    ChildRuntime child(folder);
    for (int i = 1;; i = i % 30000 + 1) {
        child.rt.app.StudyLesson = static_cast<int16_t>(i);
        child.rt.app.StudyTask = task;
        SaveStudyPosition(child.rt);
    }
}

[[noreturn]] void saveNotesForEver(const QString& file, int round) {
    FileStore files;
    for (int i = 1;; ++i)
        WriteNotes(files, file, test::SampleNotes(round, i));
}

// Runs the saver of each line of the input and kills it after the line's time.
int kills(const QString& target, bool notes) {
    int task = 0;
    long microseconds = 0;
    while (std::scanf("%d %ld", &task, &microseconds) == 2) {
        std::fflush(stdout);
        const pid_t saver = ::fork();
        if (saver < 0) return 1;
        if (saver == 0) {
            if (notes) saveNotesForEver(target, task);
            saveForEver(target, int16_t(task));
        }
        ::usleep(useconds_t(microseconds));
        ::kill(saver, SIGKILL);
        int status = 0;
        ::waitpid(saver, &status, 0);
        std::printf("killed\n");
        std::fflush(stdout);
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    std::signal(SIGXFSZ, SIG_IGN); // as the program does: a write past the limit fails instead
    int at = 1;
    if (at + 1 < argc && std::strcmp(argv[at], "--fsize-limit") == 0) {
        const rlim_t limit = std::strtoull(argv[at + 1], nullptr, 10);
        const rlimit r{limit, limit};
        if (::setrlimit(RLIMIT_FSIZE, &r) != 0) return 2;
        at += 2;
    }
    if (at + 1 >= argc) return 2;
    const QByteArray command = argv[at];
    const QString target = QString::fromLocal8Bit(argv[at + 1]);
    if (command == "advance") return advance(target);
    if (command == "kills") return kills(target, false);
    if (command == "notekills") return kills(target, true);
    if (at + 2 >= argc) return 2;
    if (command == "mode") return mode(argc, argv, target, int16_t(std::atoi(argv[at + 2])));
    if (command == "write") {
        FileStore files;
        const QByteArray bytes(std::atoi(argv[at + 2]), 'n');
        return files.WriteAll(target, bytes) ? 0 : 3;
    }
    return 2;
}
