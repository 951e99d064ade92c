#include "support/char_table_reference.h"

#include "core/knowledge_base.h"
#include "core/pinyin.h"
#include "core/runtime.h"

namespace vt::test {

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
