#include "core/knowledge_base.h"

#include "core/data_paths.h"
#include "core/pinyin.h"
#include "core/runtime.h"
#include "core/script_file.h"
#include "core/substitution_tables.h"
#include "platform/files.h"

#include <QChar>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <unordered_map>

namespace vt {

namespace {

constexpr int kVocabularyBarMax = 160;
constexpr int kVocabularyBarShortfall = 144;

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

// Which files of the course are there, from one listing of each folder: a course may leave many
// lessons without files, and looking for each missing file by itself lists its folder again
// every time. Names are matched without regard to case, as the file store matches them.
class PresentFiles {
public:
    explicit PresentFiles(const QString& root) : rootSize_(root.size()) {}

    // path: the root followed by folders and a file name. A name spelt as on disk is found at
    // once; only then are folders listed.
    bool Has(const QString& path) {
        const qsizetype cut = std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'));
        if (cut < rootSize_) return true; // the root itself, or a file in it: the reader looks
        if (QFileInfo::exists(QString(path).replace(u'\\', u'/'))) return true;
        return namesIn(path.left(cut)).contains(path.mid(cut + 1).toLower());
    }

private:
    const QSet<QString>& namesIn(const QString& folder) {
        const auto known = listings_.constFind(folder);
        if (known != listings_.constEnd()) return *known;
        QSet<QString> names;
        if (Has(folder)) {
            const QStringList entries = QDir(FileStore::Resolve(folder))
                                            .entryList(QDir::AllEntries | QDir::Hidden |
                                                       QDir::System | QDir::NoDotAndDotDot);
            for (const QString& e : entries)
                names.insert(e.toLower());
        }
        return *listings_.insert(folder, std::move(names));
    }

    qsizetype rootSize_;
    QHash<QString, QSet<QString>> listings_;
};

// The files of one family read and decoded ahead, so that the tables can be reserved at their
// final size before the first row goes in. An unreadable file stands there with no lines.
struct ReadFiles {
    std::vector<ScriptBuffer> buffers;
    std::vector<int> numbers;
};

// Reads path(n) for n in 1..count; each file found moves bar by one.
template <class PathOf>
ReadFiles readAll(Runtime& rt, PresentFiles& present, int count, PathOf pathOf,
                  const QString& family, LoadProgress& progress, int bar) {
    const SubstitutionTable* table = TableForFamily(family);
    ReadFiles out;
    out.buffers.reserve(size_t(count));
    ScriptBuffer buffer;
    for (int n = 1; n <= count; ++n) {
        const QString path = pathOf(n);
        if (!present.Has(path)) continue;
        const ScriptRead read = ReadScriptInto(rt, path, table, 0, buffer);
        if (read == ScriptRead::Missing) continue;
        out.buffers.push_back(std::move(buffer));
        out.numbers.push_back(n);
        progress.Step(bar);
    }
    return out;
}

// Appends the triples of decoded word files (Pinyin, Chinese, meaning) to the word tables. A
// rest of one or two lines is passed over; the tables stop at their largest count.
void takeWords(AppState& app, ReadFiles& files, int16_t kind) {
    for (size_t f = 0; f < files.buffers.size(); ++f) {
        ScriptBuffer& lines = files.buffers[f];
        const int room = kMaxRows - app.WordTable.Count();
        const int take = std::min(lines.LineCount() / 3, room);
        const auto number = static_cast<int16_t>(files.numbers[f]);
        for (int k = 1; k <= take; ++k) {
            app.WordPinyin.Append(lines.TrimmedLine(3 * k - 2));
            app.WordTable.Append(WordRow{lines.TrimmedLine(3 * k - 1), lines.PaddedLine(3 * k)});
            app.WordOrigin.Append(WordSource{kind, number});
        }
    }
}

int triplesIn(const ReadFiles& files) {
    int n = 0;
    for (const ScriptBuffer& b : files.buffers)
        n += b.LineCount() / 3;
    return n;
}

// One digit as text, shared rather than allocated for each of the course's readings.
QString digitText(QChar digit) {
    static const QString digits[10] = {
        QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"),
        QStringLiteral("4"), QStringLiteral("5"), QStringLiteral("6"), QStringLiteral("7"),
        QStringLiteral("8"), QStringLiteral("9")};
    return digits[digit.unicode() - u'0'];
}

// The first letter of a syllable as text; the ASCII ones are shared by all readings.
QString letterText(const QString& plain) {
    if (plain.isEmpty()) return QString();
    static const auto ascii = [] {
        std::array<QString, 128> letters;
        for (char16_t c = 0; c < 128; ++c)
            letters[c] = QString(QChar(c));
        return letters;
    }();
    const char16_t c = plain[0].unicode();
    return c < 128 ? ascii[c] : QString(QChar(c));
}

// Two texts of a few letters compared in place: this runs for every character of every word.
bool sameText(const QString& a, QStringView b) {
    if (a.size() != b.size()) return false;
    const QChar* x = a.constData();
    const QChar* y = b.data();
    for (qsizetype i = 0; i < b.size(); ++i)
        if (x[i] != y[i]) return false;
    return true;
}

// The three tone fields of a reading from the digit of its syllable (none when empty).
void fillTone(CharReading& r, QStringView digit) {
    r.Tone = digit.isEmpty() ? QString() : digitText(digit[0]);
    if (r.Tone.isEmpty()) {
        r.ToneKey = QStringLiteral("0");
        r.ToneSound = QString();
    } else if (r.Tone == u"0") {
        r.ToneKey = r.Tone;
        r.ToneSound = digitText(u'1');
    } else {
        r.ToneKey = r.Tone;
        r.ToneSound = r.Tone;
    }
}

// Makes the readings of the character table. Many characters share a syllable ("sh.i" is read
// by dozens), so its letter fields are made once and shared by every reading of it.
class ReadingMaker {
public:
    CharReading Make(const WordSyllable& s) {
        const std::u16string_view letters(reinterpret_cast<const char16_t*>(s.Letters.data()),
                                          size_t(s.Letters.size()));
        auto it = known_.find(letters);
        if (it == known_.end()) {
            const CharReading fresh = MakeReading({s.Letters, QStringView()});
            it = known_.emplace(std::u16string(letters), fresh).first;
        }
        CharReading r;
        r.Pinyin = it->second.Pinyin;
        r.Plain = it->second.Plain;
        r.Initial = it->second.Initial;
        fillTone(r, s.ToneDigit);
        return r;
    }

private:
    struct Hash {
        using is_transparent = void;
        size_t operator()(std::u16string_view v) const {
            return std::hash<std::u16string_view>{}(v);
        }
    };
    std::unordered_map<std::u16string, CharReading, Hash, std::equal_to<>> known_;
};

bool sameReading(const CharReading& r, const WordSyllable& s) {
    // The tone is one digit or none: told apart before the letters are compared.
    const qsizetype tone = s.ToneDigit.size();
    if (r.Tone.size() != tone) return false;
    if (tone == 1 && r.Tone.constData()[0] != s.ToneDigit.data()[0]) return false;
    return sameText(r.Pinyin, s.Letters);
}

// Adds the readings of one word to CharTable; rowOf holds the row of each character met so far
// (by its UTF-16 code unit, 0 when not met yet). The Chinese text is walked as it stands, its
// stripped marks passed over, so no stripped copy is made.
void addWord(AppState& app, QStringView chinese, QStringView pinyin,
             std::vector<WordSyllable>& syllables, std::vector<int16_t>& rowOf,
             ReadingMaker& readings) {
    CutWordSyllables(pinyin, syllables);
    const auto kept = [](QChar c) { return !IsStrippedPunctuation(c.unicode()); };
    if (std::count_if(chinese.begin(), chinese.end(), kept) !=
        static_cast<qsizetype>(syllables.size()))
        return;
    size_t i = 0;
    for (const QChar c : chinese) {
        if (!kept(c)) continue;
        const WordSyllable& s = syllables[i++];
        const int row = rowOf[c.unicode()];
        if (row > 0) {
            CharEntry& entry = app.CharTable[row];
            const bool known = std::any_of(entry.Readings.begin(), entry.Readings.end(),
                                           [&](const CharReading& r) { return sameReading(r, s); });
            if (known || entry.ReadingCount >= kMaxRows) continue;
            entry.Readings.Append(readings.Make(s));
            ++entry.ReadingCount;
        } else {
            if (app.CharTable.Count() >= kMaxRows) continue;
            CharEntry entry;
            entry.Character = QString(c);
            entry.ReadingCount = 1;
            entry.Readings.Append(readings.Make(s));
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
    const QChar* const text = pinyin.data();
    const qsizetype size = pinyin.size();
    // Blanks around the letters are trimmed in place; this runs for every word of the course.
    const auto letters = [text](qsizetype begin, qsizetype end) {
        while (begin < end && text[begin] == u' ')
            ++begin;
        while (end > begin && text[end - 1] == u' ')
            --end;
        return QStringView(text + begin, end - begin);
    };
    qsizetype start = 0;
    for (qsizetype i = 0; i < size; ++i) {
        if (!isDigit(text[i])) continue;
        out.push_back({letters(start, i), QStringView(text + i, 1)});
        start = i + 1;
    }
    if (out.empty()) out.push_back({letters(0, size), QStringView()});
}

CharReading MakeReading(const WordSyllable& s) {
    CharReading r;
    r.Pinyin = s.Letters.toString();
    r.Plain = StripPunctuation(r.Pinyin);
    r.Initial = letterText(r.Plain);
    fillTone(r, s.ToneDigit);
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
    ScriptBuffer lines;
    ReadScriptInto(rt, path, TableForFamily(QStringLiteral("RT")), 0, lines);
    // The list has room for the course's lessons; lines beyond them are not titles.
    const int titles = std::min(lines.LineCount(), kLessonCount);
    for (int i = 1; i <= titles; ++i)
        app.TitleList[i] = lines.LineText(i);
}

void LoadWordsAndSentences(Runtime& rt, LoadProgress& progress) {
    AppState& app = rt.app;
    const QString& root = app.AppPath;

    app.WordTable.Erase();
    app.WordPinyin.Erase();
    app.WordOrigin.Erase();
    PresentFiles present(root);
    ReadFiles lessonWords = readAll(
        rt, present, kLessonCount, [&](int n) { return LessonWordsFile(root, n); },
        QStringLiteral("RW"), progress, VocabularyBar);
    ReadFiles vocabulary = readAll(
        rt, present, kVocabularyFileCount, [&](int n) { return VocabularyFile(root, n); },
        QStringLiteral("VO"), progress, VocabularyBar);
    const int words = std::min(triplesIn(lessonWords) + triplesIn(vocabulary), int{kMaxRows});
    app.WordTable.Reserve(words);
    app.WordPinyin.Reserve(words);
    app.WordOrigin.Reserve(words);
    takeWords(app, lessonWords, 1);
    app.LessonWordCount = static_cast<int16_t>(app.WordTable.Count());
    takeWords(app, vocabulary, 2);

    // A course without its vocabulary files still shows a full bar.
    if (progress.Value[VocabularyBar] == kVocabularyBarShortfall)
        progress.SetValue(VocabularyBar, kVocabularyBarMax);

    app.WordCount = static_cast<int16_t>(app.WordTable.Count());
    app.WordCountCopy = app.WordCount;
    if (app.WordCount > 0) progress.SetMax(CharacterBar, app.WordCount);

    app.SentenceTable.Erase();
    app.SentenceLesson.Erase();
    ReadFiles texts = readAll(
        rt, present, kLessonCount, [&](int n) { return LessonTextFile(root, n); },
        QStringLiteral("RT"), progress, SentenceBar);
    int sentences = 0;
    for (const ScriptBuffer& b : texts.buffers)
        sentences += b.LineCount();
    app.SentenceTable.Reserve(std::min(sentences, int{kMaxRows}));
    app.SentenceLesson.Reserve(std::min(sentences, int{kMaxRows}));
    for (size_t f = 0; f < texts.buffers.size(); ++f) {
        ScriptBuffer& lines = texts.buffers[f];
        const int n = texts.numbers[f];
        // The first line (and for a TV play also the second) heads the text.
        const int first = (IsPlayLesson(n) ? 2 : 1) + 1;
        for (int i = first; i <= lines.LineCount(); ++i) {
            if (app.SentenceTable.Count() >= kMaxRows) break;
            app.SentenceTable.Append(lines.TrimmedLine(i));
            app.SentenceLesson.Append(static_cast<int16_t>(n));
        }
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
    ReadingMaker readings;
    for (int w = 1; w <= app.WordCount; ++w) {
        addWord(app, app.WordTable[w].Chinese, app.WordPinyin[w], syllables, rowOf, readings);
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
