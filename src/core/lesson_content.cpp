#include "core/lesson_content.h"

#include "core/course_shape.h"
#include "core/data_paths.h"
#include "core/runtime.h"
#include "core/script_file.h"

#include <algorithm>

namespace vt {

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

} // namespace vt
