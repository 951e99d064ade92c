#include "core/knowledge_base.h"

#include "core/data_paths.h"
#include "core/pinyin.h"
#include "core/runtime.h"
#include "core/script_file.h"

#include <QChar>
#include <QHash>
#include <algorithm>

namespace vt {

namespace {

constexpr int kVocabularyBarMax = 160;
constexpr int kVocabularyBarShortfall = 144;

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

// The meaning trimmed, with one blank at each end so that a search for " book " also finds the
// first and the last word. Built in one allocation: this runs for every word of the course.
QString paddedMeaning(const QString& line) {
    const QStringView core = TrimView(line);
    QString out;
    out.reserve(core.size() + 2);
    out += u' ';
    out += core;
    out += u' ';
    return out;
}

// Reads the triples of one word file (Pinyin, Chinese, meaning) into the word tables. A rest of
// one or two lines is passed over.
void takeWords(Runtime& rt, const QString& path, const QString& family, int16_t kind,
               int16_t number) {
    AppState& app = rt.app;
    const Array1<QString> lines = ReadScriptLines(rt, path, family);
    const int triples = lines.Count() / 3;
    const int room = kMaxRows - app.WordTable.Count();
    const int take = std::min(triples, room);
    for (int k = 1; k <= take; ++k) {
        app.WordPinyin.Append(Trim(lines[3 * k - 2]));
        app.WordTable.Append(WordRow{Trim(lines[3 * k - 1]), paddedMeaning(lines[3 * k])});
        app.WordOrigin.Append(WordSource{kind, number});
    }
}

// One digit as text, shared rather than allocated for each of the course's readings.
QString digitText(QChar digit) {
    static const QString digits[10] = {
        QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"),
        QStringLiteral("4"), QStringLiteral("5"), QStringLiteral("6"), QStringLiteral("7"),
        QStringLiteral("8"), QStringLiteral("9")};
    return digits[digit.unicode() - u'0'];
}

bool sameReading(const CharReading& r, const WordSyllable& s) {
    return r.Tone == s.ToneDigit && r.Pinyin == s.Letters;
}

// Adds the readings of one word to CharTable; rowOf holds the row of each character met so far
// (by its UTF-16 code unit, 0 when not met yet).
void addWord(AppState& app, const QString& chinese, const QString& pinyin,
             std::vector<WordSyllable>& syllables, std::vector<int16_t>& rowOf) {
    CutWordSyllables(pinyin, syllables);
    const QString chars = StripPunctuation(chinese);
    if (chars.size() != static_cast<qsizetype>(syllables.size())) return;
    for (qsizetype i = 0; i < chars.size(); ++i) {
        const QChar c = chars[i];
        const WordSyllable& s = syllables[static_cast<size_t>(i)];
        const int row = rowOf[c.unicode()];
        if (row > 0) {
            CharEntry& entry = app.CharTable[row];
            const bool known = std::any_of(entry.Readings.begin(), entry.Readings.end(),
                                           [&](const CharReading& r) { return sameReading(r, s); });
            if (known || entry.ReadingCount >= kMaxRows) continue;
            entry.Readings.Append(MakeReading(s));
            ++entry.ReadingCount;
        } else {
            if (app.CharTable.Count() >= kMaxRows) continue;
            CharEntry entry;
            entry.Character = QString(c);
            entry.ReadingCount = 1;
            entry.Readings.Append(MakeReading(s));
            app.CharTable.Append(std::move(entry));
            app.CharCount = static_cast<int16_t>(app.CharTable.Count());
            rowOf[c.unicode()] = app.CharCount;
        }
    }
}

} // namespace

void LoadProgress::SetMax(int bar, int max) {
    Max[bar] = max;
    if (Changed) Changed(bar);
}

void LoadProgress::SetValue(int bar, int value) {
    Value[bar] = value;
    if (Changed) Changed(bar);
}

void CutWordSyllables(QStringView pinyin, std::vector<WordSyllable>& out) {
    out.clear();
    qsizetype start = 0;
    for (qsizetype i = 0; i < pinyin.size(); ++i) {
        if (!isDigit(pinyin[i])) continue;
        out.push_back({TrimView(pinyin.sliced(start, i - start)), pinyin.sliced(i, 1)});
        start = i + 1;
    }
    if (out.empty()) out.push_back({TrimView(pinyin), QStringView()});
}

CharReading MakeReading(const WordSyllable& s) {
    CharReading r;
    r.Pinyin = s.Letters.toString();
    r.Plain = StripPunctuation(r.Pinyin);
    r.Initial = r.Plain.left(1);
    r.Tone = s.ToneDigit.isEmpty() ? QString() : digitText(s.ToneDigit[0]);
    if (r.Tone.isEmpty()) {
        r.ToneKey = QStringLiteral("0");
    } else if (r.Tone == u"0") {
        r.ToneKey = r.Tone;
        r.ToneSound = QStringLiteral("1");
    } else {
        r.ToneKey = r.Tone;
        r.ToneSound = r.Tone;
    }
    return r;
}

void LoadTitles(Runtime& rt, LoadProgress& progress) {
    AppState& app = rt.app;
    progress.SetMax(VocabularyBar, kVocabularyBarMax);
    progress.SetMax(SentenceBar, kLessonCount);
    app.TitleList.ReDim(kLessonCount, false);

    const QString path = TitleFile(app.AppPath);
    if (!rt.files.Exists(path)) {
        rt.MsgBox(QStringLiteral("Error: Fail to find file Title.zvk in folder Lessons!"),
                  Mb::Exclamation, QStringLiteral("Warning"));
        return;
    }
    const Array1<QString> lines = ReadScriptLines(rt, path, QStringLiteral("RT"));
    // The list has room for the course's lessons; lines beyond them are not titles.
    const int titles = std::min(lines.Count(), kLessonCount);
    for (int i = 1; i <= titles; ++i)
        app.TitleList[i] = lines[i];
}

void LoadWordsAndSentences(Runtime& rt, LoadProgress& progress) {
    AppState& app = rt.app;
    const QString wordFamily = QStringLiteral("RW");
    const QString vocabularyFamily = QStringLiteral("VO");
    const QString textFamily = QStringLiteral("RT");

    app.WordTable.Erase();
    app.WordPinyin.Erase();
    app.WordOrigin.Erase();
    for (int n = 1; n <= kLessonCount; ++n) {
        const QString path = LessonWordsFile(app.AppPath, n);
        if (!rt.files.Exists(path)) continue;
        takeWords(rt, path, wordFamily, 1, static_cast<int16_t>(n));
        progress.Step(VocabularyBar);
    }
    app.LessonWordCount = static_cast<int16_t>(app.WordTable.Count());

    for (int n = 1; n <= kVocabularyFileCount; ++n) {
        const QString path = VocabularyFile(app.AppPath, n);
        if (!rt.files.Exists(path)) continue;
        takeWords(rt, path, vocabularyFamily, 2, static_cast<int16_t>(n));
        progress.Step(VocabularyBar);
    }
    // A course without its vocabulary files still shows a full bar.
    if (progress.Value[VocabularyBar] == kVocabularyBarShortfall)
        progress.SetValue(VocabularyBar, kVocabularyBarMax);

    app.WordCount = static_cast<int16_t>(app.WordTable.Count());
    app.WordCountCopy = app.WordCount;
    if (app.WordCount > 0) progress.SetMax(CharacterBar, app.WordCount);

    app.SentenceTable.Erase();
    app.SentenceLesson.Erase();
    for (int n = 1; n <= kLessonCount; ++n) {
        const QString path = LessonTextFile(app.AppPath, n);
        if (!rt.files.Exists(path)) continue;
        const Array1<QString> lines = ReadScriptLines(rt, path, textFamily);
        // The first line (and for a TV play also the second) heads the text.
        const int first = (IsPlayLesson(n) ? 2 : 1) + 1;
        for (int i = first; i <= lines.Count(); ++i) {
            if (app.SentenceTable.Count() >= kMaxRows) break;
            app.SentenceTable.Append(Trim(lines[i]));
            app.SentenceLesson.Append(static_cast<int16_t>(n));
        }
        progress.Step(SentenceBar);
    }
    app.SentenceCount = static_cast<int16_t>(app.SentenceTable.Count());
    app.SentenceCountCopy = app.SentenceCount;
}

void BuildCharTable(Runtime& rt, LoadProgress& progress) {
    AppState& app = rt.app;
    app.CharTable.Erase();
    app.CharCount = 0;
    std::vector<int16_t> rowOf(0x10000, 0);
    std::vector<WordSyllable> syllables; // reused from word to word
    for (int w = 1; w <= app.WordCount; ++w) {
        addWord(app, app.WordTable[w].Chinese, app.WordPinyin[w], syllables, rowOf);
        progress.Step(CharacterBar);
    }
}

int16_t CharRowOf(const AppState& app, const QString& character) {
    if (character.size() != 1) return 0;
    const int rows = std::min<int>(app.CharCount, app.CharTable.Count());
    for (int i = 1; i <= rows; ++i)
        if (app.CharTable[i].Character == character) return static_cast<int16_t>(i);
    return 0;
}

std::vector<int16_t> CharRowsOf(const AppState& app, const std::vector<QString>& characters) {
    std::vector<int16_t> rows(characters.size(), 0);
    QHash<QString, std::vector<size_t>> wanted; // each character and where it was asked for
    for (size_t i = 0; i < characters.size(); ++i)
        if (characters[i].size() == 1) wanted[characters[i]].push_back(i);
    const int count = std::min<int>(app.CharCount, app.CharTable.Count());
    for (int r = 1; r <= count && !wanted.isEmpty(); ++r) {
        const auto it = wanted.constFind(app.CharTable[r].Character);
        if (it == wanted.constEnd()) continue;
        for (size_t i : *it)
            rows[i] = static_cast<int16_t>(r);
        wanted.erase(it);
    }
    return rows;
}

QString ReadingSoundFile(const QString& root, const CharReading& reading) {
    return SyllableSoundFile(root, reading.Plain + reading.ToneSound);
}

void LoadKnowledgeBase(Runtime& rt, LoadProgress& progress) {
    LoadTitles(rt, progress);
    LoadWordsAndSentences(rt, progress);
    BuildCharTable(rt, progress);
}

} // namespace vt
