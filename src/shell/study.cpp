#include "shell/study.h"

#include "core/data_paths.h"
#include "core/runtime.h"
#include "core/script_file.h"
#include "shell/study_file.h"

#include <algorithm>

namespace vt {

std::array<TaskRowState, kTaskCount> TaskListState(int openLesson, int studyLesson, int studyTask) {
    std::array<TaskRowState, kTaskCount> rows{};
    for (int i = 0; i < kTaskCount; ++i) {
        TaskRowState& row = rows[static_cast<size_t>(i)];
        const int task = i + 1;
        if (openLesson < studyLesson) {
            row = {kTaskDone, true};
        } else if (openLesson == studyLesson) {
            if (task < studyTask)
                row = {kTaskDone, true};
            else if (task == studyTask)
                row = {kTaskCurrent, true};
            else
                row = {kTaskAhead, false};
        } else {
            // A lesson ahead of the position may always be started with its first task.
            row = {kTaskAhead, task == 1};
        }
    }
    return rows;
}

int FocusTarget(int openLesson, int studyLesson, int studyTask) {
    if (openLesson != studyLesson) return kAdditionalPage;
    if (studyTask < 1 || studyTask > kTaskCount) return -1;
    return studyTask - 1;
}

int MenuIndexForPosition(int studyLesson) {
    return std::clamp(studyLesson, 1, kLessonCount) - 1;
}

bool AtStudyPosition(const AppState& app) {
    return app.OpenLesson == app.StudyLesson && app.OpenTask == app.StudyTask;
}

bool AdvanceStudy(Runtime& rt) {
    AppState& app = rt.app;
    if (!AtStudyPosition(app)) return false;
    bool finishedCourse = false;
    ++app.StudyTask;
    if (app.StudyTask > kTaskCount) {
        // The last lesson is not treated apart: the position goes on to lesson 141.
        finishedCourse = app.StudyLesson == kLessonCount;
        app.StudyTask = 1;
        ++app.StudyLesson;
    }
    // Stored before any box waits for the learner, so that no step is lost meanwhile.
    const bool saved = SaveStudyPosition(rt);
    if (finishedCourse)
        rt.MsgBox(
            QStringLiteral("Congratulations! You have finished studying all the 140 lessons."),
            Mb::Information, QStringLiteral("Notice"));
    if (!saved)
        rt.MsgBox(QStringLiteral("Your progress could not be saved in Study.zvk; the disk may be "
                                 "full or write-protected. The program keeps your place (lesson "
                                 "%1, task %2) until it is closed.")
                      .arg(app.StudyLesson)
                      .arg(app.StudyTask),
                  Mb::Exclamation, QStringLiteral("Warning"));
    UpdateTaskList(rt);
    return true;
}

void LoadLessonScripts(Runtime& rt) {
    AppState& app = rt.app;
    app.LessonWords.Erase();
    app.TextLines.Erase();

    // New words: groups of three lines (Pinyin, Chinese, English).
    const Array1<QString> words =
        ReadScriptLines(rt, LessonWordsFile(app.AppPath, app.OpenLesson), QStringLiteral("RW"));
    if (words.Count() > 0) {
        app.LessonWordRows = static_cast<int16_t>(words.Count() / 3);
        app.LessonWords.ReDim(app.LessonWordRows);
        for (int i = 1; i <= app.LessonWordRows; ++i) {
            LessonWord& w = app.LessonWords[i];
            w.Pinyin = Trim(words[3 * i - 2]);
            w.Chinese = Trim(words[3 * i - 1]);
            w.Meaning = Trim(words[3 * i]);
        }
    } else {
        // No words read: the count stays as it was, over empty rows, so that nothing that walks
        // the rows by the count ever reaches past the table.
        app.LessonWords.ReDim(std::max<int>(app.LessonWordRows, 0));
    }

    // The text: line 1 is not used; a read text starts on line 2, which is also its title; a TV
    // play has its title on line 2 and its lines from line 3.
    const Array1<QString> text =
        ReadScriptLines(rt, LessonTextFile(app.AppPath, app.OpenLesson), QStringLiteral("RT"));
    if (text.Count() < 1) {
        app.TextLineCount = 0;
        return;
    }
    const bool tvPlay = IsPlayLesson(app.OpenLesson);
    if (tvPlay) app.TextTitle = text.Count() >= 2 ? text[2] : QString();
    for (int i = tvPlay ? 3 : 2; i <= text.Count(); ++i)
        if (!text[i].isEmpty()) app.TextLines.Append(text[i]);
    if (!tvPlay) app.TextTitle = app.TextLines.Empty() ? QString() : app.TextLines[1];
    app.TextLineCount = static_cast<int16_t>(app.TextLines.Count());
}

StackLayout ComputeStack(const StackHeights& h) {
    const int total = h.mainHeight + h.dictionaryHeight + h.notepadHeight + h.belowHeight;
    const int above = h.dictionaryHeight + h.notepadHeight;
    StackLayout s;
    s.left = static_cast<int>(RoundHalfEven((h.screenWidth - h.mainWidth) / 2.0));
    s.mainTop = static_cast<int>(RoundHalfEven((h.screenHeight - total) / 2.0)) + above - 260;
    s.dictionaryTop = s.mainTop - h.dictionaryHeight - h.pixel;
    s.notepadTop = s.dictionaryTop - h.notepadHeight - h.pixel;
    s.belowTop = s.mainTop + h.mainHeight + h.pixel;
    return s;
}

const TaskStackRow& TaskStackFor(int buttonIndex) {
    static const TaskStackRow rows[] = {
        {1, "Text", "ListeningTV", "Notepad", "WordsPanel", true},
        {2, "Typing", "Typing", nullptr, "Expressions_Related", true},
        {3, "Vocabulary", "Vocabulary", nullptr, nullptr, true},
        {4, "Exercise3", "Exercise3", nullptr, "Result1", false},
        {5, "FindSentence", "FindSentence", nullptr, nullptr, false},
        {6, "Text", "ListeningTV", nullptr, "Expressions_Related", true},
        {7, "Question", "Question", nullptr, nullptr, false},
        {8, "Newwords", "Newwords", nullptr, "Expressions_Related", true},
    };
    return rows[std::clamp(buttonIndex, 0, kAdditionalPage)];
}

} // namespace vt
