#include "support/knowledge_base_reference.h"

#include "core/data_paths.h"
#include "core/knowledge_base.h"
#include "core/pinyin.h"
#include "core/runtime.h"
#include "core/script_file.h"

namespace vt::test {

void LoadWordsAndSentencesPlainly(Runtime& rt, LoadProgress& progress) {
    AppState& app = rt.app;
    app.WordTable.Erase();
    app.WordPinyin.Erase();
    app.WordOrigin.Erase();
    const auto words = [&](const QString& path, const char* family, int16_t kind, int n) {
        if (!rt.files.Exists(path)) return;
        const Array1<QString> lines = ReadScriptLines(rt, path, QLatin1String(family));
        for (int k = 1; k <= lines.Count() / 3 && app.WordTable.Count() < kMaxRows; ++k) {
            app.WordPinyin.Append(Trim(lines[3 * k - 2]));
            app.WordTable.Append(WordRow{Trim(lines[3 * k - 1]), u' ' + Trim(lines[3 * k]) + u' '});
            app.WordOrigin.Append(WordSource{kind, int16_t(n)});
        }
        progress.Step(VocabularyBar);
    };
    for (int n = 1; n <= kLessonCount; ++n)
        words(LessonWordsFile(app.AppPath, n), "RW", 1, n);
    app.LessonWordCount = int16_t(app.WordTable.Count());
    for (int n = 1; n <= kVocabularyFileCount; ++n)
        words(VocabularyFile(app.AppPath, n), "VO", 2, n);
    if (progress.Value[VocabularyBar] == 144) progress.SetValue(VocabularyBar, 160);
    app.WordCount = app.WordCountCopy = int16_t(app.WordTable.Count());
    if (app.WordCount > 0) progress.SetMax(CharacterBar, app.WordCount);

    app.SentenceTable.Erase();
    app.SentenceLesson.Erase();
    for (int n = 1; n <= kLessonCount; ++n) {
        const QString path = LessonTextFile(app.AppPath, n);
        if (!rt.files.Exists(path)) continue;
        const Array1<QString> lines = ReadScriptLines(rt, path, QStringLiteral("RT"));
        for (int i = (n >= 81 ? 3 : 2); i <= lines.Count(); ++i) {
            if (app.SentenceTable.Count() >= kMaxRows) break;
            app.SentenceTable.Append(Trim(lines[i]));
            app.SentenceLesson.Append(int16_t(n));
        }
        progress.Step(SentenceBar);
    }
    app.SentenceCount = app.SentenceCountCopy = int16_t(app.SentenceTable.Count());
}

void BuildCharTableByScanning(Runtime& rt, LoadProgress& progress) {
    AppState& app = rt.app;
    app.CharTable.Erase();
    app.CharCount = 0;
    std::vector<WordSyllable> syllables;
    for (int w = 1; w <= app.WordCount; ++w) {
        CutWordSyllables(app.WordPinyin[w], syllables);
        const QString chars = StripPunctuation(app.WordTable[w].Chinese);
        // A word whose characters and syllables do not pair one to one adds nothing.
        for (qsizetype i = 0; chars.size() == qsizetype(syllables.size()) && i < chars.size();
             ++i) {
            const WordSyllable& s = syllables[size_t(i)];
            int row = 0;
            for (int r = 1; r <= app.CharCount && row == 0; ++r)
                if (app.CharTable[r].Character == chars[i]) row = r;
            if (row == 0) {
                if (app.CharTable.Count() >= kMaxRows) continue;
                CharEntry entry;
                entry.Character = QString(chars[i]);
                entry.ReadingCount = 1;
                entry.Readings.Append(MakeReading(s));
                app.CharTable.Append(std::move(entry));
                app.CharCount = int16_t(app.CharTable.Count());
                continue;
            }
            CharEntry& entry = app.CharTable[row];
            bool known = false;
            for (const CharReading& r : entry.Readings)
                known = known || (r.Tone == s.ToneDigit && r.Pinyin == s.Letters);
            if (!known && entry.ReadingCount < kMaxRows) {
                entry.Readings.Append(MakeReading(s));
                ++entry.ReadingCount;
            }
        }
        progress.Step(CharacterBar);
    }
}

} // namespace vt::test
