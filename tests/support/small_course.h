#pragma once
// A small course written straight into the knowledge base's tables: a few words of three
// lessons and a vocabulary file, the lessons' sentences, and characters with one, two and three
// readings. Enough to tell each kind of search, table order and the sentence rules apart.

#include "core/app_state.h"
#include "core/knowledge_base.h"

namespace vt::test {

inline void AddWord(AppState& app, const char* chinese, const char* meaning, const char* pinyin,
                    int16_t kind, int16_t number) {
    app.WordTable.Append(
        WordRow{QString::fromUtf8(chinese), u' ' + QString::fromUtf8(meaning) + u' '});
    app.WordPinyin.Append(QString::fromUtf8(pinyin));
    app.WordOrigin.Append(WordSource{kind, number});
    app.WordCount = app.WordCountCopy = static_cast<int16_t>(app.WordTable.Count());
}

inline void AddSentence(AppState& app, const char* sentence, int16_t lesson) {
    app.SentenceTable.Append(QString::fromUtf8(sentence));
    app.SentenceLesson.Append(lesson);
    app.SentenceCount = static_cast<int16_t>(app.SentenceTable.Count());
}

inline void AddCharacter(AppState& app, const char* character,
                         std::initializer_list<const char*> readings) {
    CharEntry entry;
    entry.Character = QString::fromUtf8(character);
    for (const char* r : readings) {
        std::vector<WordSyllable> cut;
        const QString pinyin = QString::fromUtf8(r);
        CutWordSyllables(pinyin, cut);
        entry.Readings.Append(MakeReading(cut.front()));
    }
    entry.ReadingCount = static_cast<int16_t>(entry.Readings.Count());
    app.CharTable.Append(entry);
    app.CharCount = static_cast<int16_t>(app.CharTable.Count());
}

inline void WriteSmallCourse(AppState& app) {
    AddWord(app, "你好", "hello", "n.i3 h.ao3", 1, 1);                 // 1
    AddWord(app, "我", "I; me", "w.o3", 1, 1);                         // 2
    AddWord(app, "老师", "teacher", "l.ao3 sh.i1", 1, 1);              // 3
    AddWord(app, "好", "good; well", "h.ao3", 1, 1);                   // 4
    AddWord(app, "我们", "we", "w.o3 m.en0", 1, 2);                    // 5
    AddWord(app, "打(电话)", "to make (a call)", "d.a3", 1, 2);        // 6
    AddWord(app, "你好", "hi", "n.i3 h.ao3", 1, 3);                    // 7
    AddWord(app, "握手", "to shake hands;greet", "w.o4 sh.ou3", 2, 1); // 8
    AddWord(app, "好好", "well;properly", "h.ao3 h.ao3", 2, 1);        // 9

    AddSentence(app, "你好，老师！", 1);
    AddSentence(app, "我很好。", 1);
    AddSentence(app, "老师好。", 1);
    AddSentence(app, "我们是朋友。", 2);
    AddSentence(app, "我打电话。", 2);
    AddSentence(app, "你好吗？", 3);
    AddSentence(app, "老师，你好。", 3);
    AddSentence(app, "他打球。", 3);

    AddCharacter(app, "好", {"h.ao3", "h.ao4"});
    AddCharacter(app, "我", {"w.o3"});
    AddCharacter(app, "长", {"ch.ang2", "zh.ang3", "zh.ang4"});
}

} // namespace vt::test
