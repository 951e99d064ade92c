#include "search/related_words.h"

#include "core/pinyin.h"

namespace vt {

namespace {

// Row i of WordTable as the list shows it; words beyond the dictionary's own have no Pinyin.
RelatedRow tableRow(const AppState& app, int i) {
    RelatedRow r;
    r.Chinese = app.WordTable[i].Chinese;
    if (i <= app.WordCountCopy && i <= app.WordPinyin.Count()) {
        r.Pinyin1 = app.WordPinyin[i];
        r.Pinyin = PinyinToMarks(r.Pinyin1);
    }
    r.English = Trim(app.WordTable[i].Meaning);
    if (i <= app.WordOrigin.Count()) r.Origin = app.WordOrigin[i];
    return r;
}

RelatedRow lessonRow(const AppState& app, int i) {
    const LessonWord& w = app.LessonWords[i];
    RelatedRow r;
    r.Chinese = w.Chinese;
    r.Pinyin1 = w.Pinyin;
    r.Pinyin = PinyinToMarks(w.Pinyin);
    r.English = Trim(w.Meaning);
    r.Origin = WordSource{1, app.OpenLesson};
    return r;
}

int wordCount(const AppState& app) {
    return std::min<int>(app.WordCount, app.WordTable.Count());
}

} // namespace

std::vector<RelatedRow> RelatedByCharacter(const AppState& app, const QString& text,
                                           const QString& meaning) {
    std::vector<RelatedRow> rows;
    if (text.isEmpty()) return rows;
    const QString own = Trim(meaning);
    const bool oneChar = text.size() == 1;
    const int count = wordCount(app);
    for (int i = 1; i <= count && int(rows.size()) < kRelatedByCharacterLimit; ++i) {
        const QString& w = app.WordTable[i].Chinese;
        if (w.isEmpty()) continue;
        const bool otherMeaning = Trim(app.WordTable[i].Meaning) != own;
        bool hit = false;
        if (oneChar && w.size() == 1)
            hit = w == text && otherMeaning;
        else if (oneChar)
            hit = w.contains(text) && otherMeaning;
        else if (w.size() == 1)
            hit = text.contains(w);
        else
            hit = w.back() == text.back() && otherMeaning;
        if (hit) rows.push_back(tableRow(app, i));
    }
    return rows;
}

std::vector<RelatedRow> WordsHolding(const AppState& app, const QString& text) {
    std::vector<RelatedRow> rows;
    const int count = wordCount(app);
    for (int i = 1; i <= count && int(rows.size()) < kRelatedLimit; ++i)
        if (app.WordTable[i].Chinese.contains(text)) rows.push_back(tableRow(app, i));
    return rows;
}

std::vector<RelatedRow> EntryWithRelated(const AppState& app, const QString& text,
                                         const QString& pinyin, int row, bool fromLesson,
                                         bool withRelated) {
    std::vector<RelatedRow> rows;
    const int last = fromLesson ? std::min<int>(app.LessonWordRows, app.LessonWords.Count())
                                : std::min<int>(app.LessonWordCount, wordCount(app));
    const int own =
        fromLesson ? std::min<int>(app.LessonWordRows, app.LessonWords.Count()) : wordCount(app);
    if (row >= 1 && row <= own) {
        rows.push_back(fromLesson ? lessonRow(app, row) : tableRow(app, row));
        if (!pinyin.isEmpty()) {
            rows.back().Pinyin1 = pinyin;
            rows.back().Pinyin = PinyinToMarks(pinyin);
        }
    }
    if (!withRelated || text.isEmpty()) return rows;
    int added = 0;
    for (int i = 1; i <= last && added < kRelatedLimit; ++i) {
        if (i == row) continue;
        const QString& w = fromLesson ? app.LessonWords[i].Chinese : app.WordTable[i].Chinese;
        if (!StripParenthesised(w).contains(text)) continue;
        rows.push_back(fromLesson ? lessonRow(app, i) : tableRow(app, i));
        ++added;
    }
    return rows;
}

} // namespace vt
