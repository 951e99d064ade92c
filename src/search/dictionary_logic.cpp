#include "search/dictionary_logic.h"

#include "core/pinyin.h"

namespace vt {

namespace {

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

bool isLatinLetter(QChar c) {
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

constexpr int kOtherLessonsLimit = 20;

} // namespace

SearchKind KindOfSearch(const QString& text) {
    if (text.isEmpty()) return SearchKind::Chinese;
    if (isDigit(text.back())) return SearchKind::Pinyin;
    if (isLatinLetter(text.front())) return SearchKind::English;
    return SearchKind::Chinese;
}

void WordSearchIndex::Prepare(const AppState& app) {
    const int words = std::min<int>(app.WordCount, app.WordTable.Count());
    const int pinyinRows = std::min<int>({app.WordCountCopy, app.WordPinyin.Count(), words});
    if (words == words_ && pinyinRows == pinyinRows_) return;
    words_ = words;
    pinyinRows_ = pinyinRows;
    pinyin_.assign(static_cast<size_t>(pinyinRows), {});
    meaning_.assign(static_cast<size_t>(words), {});
    chinese_.assign(static_cast<size_t>(words), {});
    for (int i = 1; i <= pinyinRows; ++i)
        pinyin_[size_t(i - 1)] = (u' ' + StripPunctuation(app.WordPinyin[i]) + u' ').toLower();
    for (int i = 1; i <= words; ++i) {
        meaning_[size_t(i - 1)] = app.WordTable[i].Meaning.toLower();
        chinese_[size_t(i - 1)] = StripSentenceMarks(app.WordTable[i].Chinese).toLower();
    }
}

std::vector<int> WordSearchIndex::Find(const AppState& app, const QString& text, bool inLesson) {
    Prepare(app);
    std::vector<int> hits;
    if (text.isEmpty()) return hits;
    const QString lower = text.toLower();
    switch (KindOfSearch(text)) {
    case SearchKind::Pinyin: {
        const QString needle = u' ' + lower + u' ';
        for (int i = 0; i < pinyinRows_; ++i)
            if (pinyin_[size_t(i)].contains(needle)) hits.push_back(i + 1);
        break;
    }
    case SearchKind::English: {
        const QString afterBlank = u' ' + lower + u' ';
        const QString afterSemicolon = u';' + lower + u' ';
        for (int i = 0; i < words_; ++i) {
            const QString& m = meaning_[size_t(i)];
            if (m.contains(afterBlank) || m.contains(afterSemicolon)) hits.push_back(i + 1);
        }
        break;
    }
    case SearchKind::Chinese:
        for (int i = 0; i < words_; ++i) {
            if (inLesson ? app.WordTable[i + 1].Chinese.compare(text, Qt::CaseInsensitive) == 0
                         : chinese_[size_t(i)].contains(lower))
                hits.push_back(i + 1);
        }
        break;
    }
    return hits;
}

QStringList HitCells(const AppState& app, int row, int n) {
    const WordRow& w = app.WordTable[row];
    const WordSource origin = row <= app.WordOrigin.Count() ? app.WordOrigin[row] : WordSource{};
    const QString pinyin =
        row <= app.WordCountCopy && row <= app.WordPinyin.Count() ? app.WordPinyin[row] : QString();
    return {PadNumber(static_cast<int16_t>(std::min(n, 32767))),
            w.Chinese,
            w.Meaning,
            pinyin,
            QString::number(origin.Kind),
            QString::number(origin.Number)};
}

QStringList WordPieces(const QString& word) {
    QStringList pieces;
    QString piece;
    int depth = 0;
    for (const QChar c : word) {
        if (c == u'(' || c == u'（') {
            ++depth;
        } else if (c == u')' || c == u'）') {
            depth = 0;
        } else if (depth > 0) {
            continue;
        } else if (c == u'.') {
            if (!piece.isEmpty()) pieces << piece;
            piece.clear();
        } else {
            piece += c;
        }
    }
    if (!piece.isEmpty()) pieces << piece;
    return pieces;
}

bool HasParenthesis(const QString& word) {
    return word.contains(u'(') || word.contains(u'（');
}

namespace {

// All pieces in the sentence, each after the one before it.
bool holdsInOrder(const QString& sentence, const QStringList& pieces) {
    qsizetype from = 0;
    for (const QString& piece : pieces) {
        const qsizetype at = sentence.indexOf(piece, from);
        if (at < 0) return false;
        from = at + piece.size();
    }
    return true;
}

void addSentence(QString& out, int& number, const AppState& app, int row) {
    ++number;
    out += u'\n' + QString::number(number) + QStringLiteral("）") + app.SentenceTable[row] +
           QStringLiteral(" [Lesson  第 ") + QString::number(app.SentenceLesson[row]) +
           QStringLiteral(" 课]");
}

} // namespace

QString ExampleSentences(const AppState& app, const QString& word, int lesson, bool inLessonOnly) {
    const QStringList pieces = WordPieces(word);
    if (pieces.isEmpty()) return {};
    const int count =
        std::min<int>({app.SentenceCount, app.SentenceTable.Count(), app.SentenceLesson.Count()});

    // The lesson's block: the table is ordered by lesson.
    int first = 0, last = -1;
    for (int i = 1; i <= count; ++i) {
        if (app.SentenceLesson[i] != lesson) continue;
        if (first == 0) first = i;
        last = i;
    }

    QString out;
    int number = 0;
    for (int i = first; first > 0 && i <= last; ++i)
        if (holdsInOrder(app.SentenceTable[i], pieces)) addSentence(out, number, app, i);

    if (!HasParenthesis(word) && !inLessonOnly && pieces.size() <= 1) {
        for (int i = 1; i <= count && number < kOtherLessonsLimit; ++i) {
            if (first > 0 && i >= first && i <= last) continue;
            if (holdsInOrder(app.SentenceTable[i], pieces)) addSentence(out, number, app, i);
        }
    }
    return out;
}

QString EntryText(const EntryParts& row, bool feedsTask, int openTask, const QString& examples) {
    QString head = row.chinese;
    const QString marks = PinyinToMarks(row.pinyin);
    if (!marks.isEmpty()) head += QStringLiteral("  ( ") + marks + QStringLiteral(" )  ");
    QString meaning = u'\n' + Trim(row.meaning);
    if (row.originKind == 1)
        meaning += QStringLiteral("\n[Lesson 第 ") + row.originNumber + QStringLiteral(" 课]");
    else if (row.originKind == 2)
        meaning += QStringLiteral("\n[Additional Vocabulary 附加词汇]");

    if (feedsTask) return head + meaning + QStringLiteral("\nExample Sentences  例句：(being hid)");
    const bool none = examples.isEmpty() || examples == u"0";
    if (none) return openTask == 3 ? QString() : head + meaning;
    if (openTask != 3)
        return head + meaning + QStringLiteral("\nExample Sentences  例句：") + examples;
    // The vocabulary task asks for the meaning: the word and its sentences only.
    return examples.size() >= 3 ? head + examples : QString();
}

CharSound SoundOfSingleCharacter(const QString& pinyin) {
    const QString syllable = Trim(StripPunctuation(pinyin));
    if (!syllable.isEmpty() && isDigit(syllable.back())) return {syllable, syllable.right(1)};
    return {syllable + u'1', QStringLiteral("0")};
}

int LocateNext(const QString& text, const QString& needle, int from, int restart) {
    if (needle.isEmpty()) return 0;
    for (const int start : {from, restart}) {
        if (start < 1 || start > text.size()) continue;
        const qsizetype at = text.indexOf(needle, start - 1, Qt::CaseInsensitive);
        if (at >= 0) return static_cast<int>(at) + 1;
    }
    return 0;
}

} // namespace vt
