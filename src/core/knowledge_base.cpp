#include "core/knowledge_base.h"

#include "core/data_paths.h"
#include "core/pinyin.h"
#include "core/runtime.h"
#include "core/script_file.h"
#include "core/shared_text.h"
#include "core/substitution_tables.h"
#include "platform/files.h"

#include <QChar>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <new>
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

// Reads path(n) for n in 1..count into one buffer, file after file, and hands each file found
// to take(n, lines) before the next is read; each file found moves bar by one. An unreadable
// file is handed over with no lines.
template <class PathOf, class Take>
void readEach(Runtime& rt, PresentFiles& present, int count, PathOf pathOf, const QString& family,
              LoadProgress& progress, int bar, Take take) {
    const SubstitutionTable* table = TableForFamily(family);
    ScriptBuffer buffer;
    for (int n = 1; n <= count; ++n) {
        const QString path = pathOf(n);
        if (!present.Has(path)) continue;
        if (ReadScriptInto(rt, path, table, 0, buffer) == ScriptRead::Missing) continue;
        take(n, buffer);
        progress.Step(bar);
    }
}

// Appends the triples of a decoded word file (Pinyin, Chinese, meaning) to the word tables. A
// rest of one or two lines is passed over; the tables stop at their largest count.
void takeWords(AppState& app, ScriptBuffer& lines, int16_t kind, int number) {
    const int take = std::min(lines.LineCount() / 3, kMaxRows - app.WordTable.Count());
    for (int k = 1; k <= take; ++k) {
        app.WordPinyin.Append(lines.TrimmedLine(3 * k - 2));
        app.WordTable.Append(WordRow{lines.TrimmedLine(3 * k - 1), lines.PaddedLine(3 * k)});
        app.WordOrigin.Append(WordSource{kind, static_cast<int16_t>(number)});
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
    if (digit.isEmpty()) {
        r.Tone = QString();
        r.ToneKey = digitText(u'0');
        r.ToneSound = QString();
        return;
    }
    r.Tone = digitText(digit[0]);
    r.ToneKey = r.Tone;
    r.ToneSound = digit[0] == u'0' ? digitText(u'1') : r.Tone;
}

// A reading of at most seven ASCII letters packs into one number: a bit that says so, the tone
// (10 for none), the count of letters and the letters at seven bits each. Two such readings are
// the same reading exactly when their numbers are equal. 0 for a syllable that does not pack.
uint64_t readingKey(uint64_t letters, qsizetype count, QStringView toneDigit) {
    const uint64_t tone = toneDigit.isEmpty() ? 10 : toneDigit[0].unicode() - u'0';
    return (uint64_t{1} << 63) | (tone << 56) | (uint64_t(count) << 49) | letters;
}

// A word's Pinyin cut into syllables as CutWordSyllables cuts it, each packed on the way.
struct PackedSyllable {
    WordSyllable syllable;
    uint64_t key; // as readingKey gives it; 0 when the syllable does not pack
};

// The packed form of a syllable: at most seven ASCII letters, seven bits each; 0 for others.
uint64_t packSyllable(const WordSyllable& s) {
    const qsizetype n = s.Letters.size();
    if (n > 7) return 0;
    const char16_t* letters = s.Letters.utf16();
    uint64_t packed = 0;
    char16_t all = 0;
    for (qsizetype k = 0; k < n; ++k) {
        all |= letters[k];
        packed |= uint64_t(letters[k]) << (7 * k);
    }
    return all < 128 ? readingKey(packed, n, s.ToneDigit) : 0;
}

void cutAndPack(QStringView pinyin, std::vector<PackedSyllable>& out) {
    out.clear();
    const QChar* const text = pinyin.data();
    const qsizetype size = pinyin.size();
    for (qsizetype i = 0;;) {
        qsizetype begin = i;
        while (i<size&& static_cast<char16_t>(text[i].unicode() - u'0')> 9)
            ++i;
        if (i == size && !out.empty()) return; // text after the last digit is dropped
        // The letters without the blanks around them.
        qsizetype end = i;
        while (begin < end && text[begin] == u' ')
            ++begin;
        while (end > begin && text[end - 1] == u' ')
            --end;
        const WordSyllable s{QStringView(text + begin, end - begin),
                             i < size ? QStringView(text + i, 1) : QStringView()};
        out.push_back({s, packSyllable(s)});
        if (i++ == size) return;
    }
}

// Makes the readings of the character table. Many characters share a reading ("sh.i4" is read
// by dozens): the letter fields of a reading that packs are written once, and every character
// read so gets strings cut from them, which costs neither an allocation nor a shared count.
class ReadingMaker {
public:
    // The reading of s; key is its packed form (cutAndPack), 0 when it does not pack.
    CharReading Make(const WordSyllable& s, uint64_t key) {
        if (key == 0) return MakeReading(s);
        auto it = known_.find(key);
        if (it == known_.end()) it = known_.emplace(key, write(s.Letters)).first;
        const Letters& l = it->second;
        SharedText& text = blocks_[l.block];
        CharReading r;
        r.Pinyin = text.Cut(l.pinyin, l.pinyinSize);
        r.Plain = text.Cut(l.plain, l.plainSize);
        r.Initial = text.Cut(l.plain + l.plainSize + 1, l.plainSize > 0 ? 1 : 0);
        fillTone(r, s.ToneDigit);
        return r;
    }

private:
    // Where the letters of a reading stand: its Pinyin, then its plain letters, then the first
    // of those again, each followed by a free unit.
    struct Letters {
        size_t block;
        qsizetype pinyin, pinyinSize, plain, plainSize;
    };

    Letters write(QStringView pinyin) {
        const QString plain = StripPunctuation(pinyin.toString());
        const qsizetype need = pinyin.size() + plain.size() + 4;
        if (blocks_.empty() || used_ + need > blocks_.back().Capacity()) {
            blocks_.emplace_back(std::max(kBlockSize, need));
            used_ = 0;
        }
        char16_t* text = blocks_.back().Data();
        const Letters l{blocks_.size() - 1, used_, pinyin.size(), used_ + pinyin.size() + 1,
                        plain.size()};
        std::copy_n(pinyin.utf16(), pinyin.size(), text + l.pinyin);
        std::copy_n(plain.utf16(), plain.size(), text + l.plain);
        if (!plain.isEmpty()) text[l.plain + l.plainSize + 1] = plain[0].unicode();
        used_ += need;
        return l;
    }

    static constexpr qsizetype kBlockSize = 8192;
    std::unordered_map<uint64_t, Letters> known_;
    std::vector<SharedText> blocks_;
    qsizetype used_ = 0;
};

bool sameReading(const CharReading& r, const WordSyllable& s) {
    // The tone is one digit or none: told apart before the letters are compared.
    const qsizetype tone = s.ToneDigit.size();
    if (r.Tone.size() != tone) return false;
    if (tone == 1 && r.Tone.constData()[0] != s.ToneDigit.data()[0]) return false;
    return sameText(r.Pinyin, s.Letters);
}

// The packed readings beyond the first that each row of the character table has: one probe
// tells whether a character has a reading, however many readings it has (the most frequent
// characters have the most). Open addressing, kept at most half full.
class KnownReadings {
public:
    KnownReadings() : slots_(kFirstSize), mask_(kFirstSize - 1) {}

    // Adds the reading key of row; false when the row had it already.
    bool Add(int row, uint64_t key) {
        for (size_t i = slotOf(row, key);; i = (i + 1) & mask_) {
            Slot& slot = slots_[i];
            if (slot.row == row && slot.key == key) return false;
            if (slot.row != 0) continue;
            slot = {key, row};
            if (2 * ++count_ > slots_.size()) grow();
            return true;
        }
    }

private:
    static constexpr size_t kFirstSize = 4096;
    struct Slot {
        uint64_t key = 0;
        int32_t row = 0; // 0: empty
    };

    size_t slotOf(int row, uint64_t key) const {
        const uint64_t h = (key ^ (uint64_t(row) * 0x9E3779B97F4A7C15ULL)) * 0xFF51AFD7ED558CCDULL;
        return size_t(h >> 32) & mask_;
    }

    void grow() {
        std::vector<Slot> old(slots_.size() * 2);
        old.swap(slots_);
        mask_ = slots_.size() - 1;
        for (const Slot& s : old) {
            if (s.row == 0) continue;
            size_t i = slotOf(s.row, s.key);
            while (slots_[i].row != 0)
                i = (i + 1) & mask_;
            slots_[i] = s;
        }
    }

    std::vector<Slot> slots_;
    size_t mask_;
    size_t count_ = 0;
};

// Builds CharTable word by word. Where each character stands is one index by its code unit;
// whether it has a reading is one comparison with its first reading, which is the usual one, and
// else one probe of KnownReadings, so no row is ever searched for. The Chinese text is walked as
// it stands, its stripped marks passed over, so no stripped copy is made.
class CharTableBuilder {
public:
    explicit CharTableBuilder(AppState& app)
        : app_(app),
          rowOf_(static_cast<int16_t*>(std::calloc(0x10000, sizeof(int16_t))), &std::free),
          firstKey_(1, 0) {
        if (!rowOf_) throw std::bad_alloc();
        // Room for the most rows the table may have: only the rows used are ever touched, and the
        // table never moves while it grows.
        app_.CharTable.Reserve(kMaxRows);
        firstKey_.reserve(kMaxRows + 1);
    }

    void AddWord(QStringView chinese, QStringView pinyin) {
        cutAndPack(pinyin, syllables_);
        const auto kept = [](QChar c) { return !IsStrippedPunctuation(c.unicode()); };
        if (std::count_if(chinese.begin(), chinese.end(), kept) !=
            static_cast<qsizetype>(syllables_.size()))
            return;
        size_t i = 0;
        for (const QChar c : chinese)
            if (kept(c)) {
                const PackedSyllable& p = syllables_[i++];
                place(c.unicode(), p.syllable, p.key);
            }
    }

private:
    void place(char16_t c, const WordSyllable& s, uint64_t key) {
        const int row = rowOf_[c];
        if (row == 0) {
            if (app_.CharTable.Count() >= kMaxRows) return;
            CharEntry entry;
            entry.Character = character(c);
            entry.ReadingCount = 1;
            entry.Readings.Append(readings_.Make(s, key));
            app_.CharTable.Append(std::move(entry));
            app_.CharCount = static_cast<int16_t>(app_.CharTable.Count());
            rowOf_[c] = app_.CharCount;
            firstKey_.push_back(key);
            return;
        }
        if (key && key == firstKey_[size_t(row)]) return;
        CharEntry& entry = app_.CharTable[row];
        // A reading that does not pack is told by its letters; it can only equal another such.
        const bool known =
            key ? !known_.Add(row, key)
                : std::any_of(entry.Readings.begin(), entry.Readings.end(),
                              [&](const CharReading& r) { return sameReading(r, s); });
        if (known || entry.ReadingCount >= kMaxRows) return;
        entry.Readings.Append(readings_.Make(s, key));
        ++entry.ReadingCount;
    }

    // The character as a string of its own, cut from a shared block rather than allocated.
    QString character(char16_t c) {
        if (charactersUsed_ + 2 > characters_.Capacity()) {
            characters_ = SharedText(2 * kCharactersPerBlock);
            charactersUsed_ = 0;
        }
        characters_.Data()[charactersUsed_] = c;
        const QString out = characters_.Cut(charactersUsed_, 1);
        charactersUsed_ += 2;
        return out;
    }

    static constexpr qsizetype kCharactersPerBlock = 2048;

    AppState& app_;
    // By code unit: the row of the character, 0 when not met yet. Zeroed by the allocator, so
    // that only the pages of the code units met are touched.
    std::unique_ptr<int16_t[], decltype(&std::free)> rowOf_;
    std::vector<uint64_t> firstKey_; // by row: the packed first reading, 0 when it does not pack
    std::vector<PackedSyllable> syllables_; // of the word at hand, kept from word to word
    KnownReadings known_;
    ReadingMaker readings_;
    SharedText characters_;
    qsizetype charactersUsed_ = 0;
};

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
    app.SentenceTable.Erase();
    app.SentenceLesson.Erase();
    // Room for the most rows a table may have, so that no table moves while it fills: only the
    // rows used are ever touched.
    app.WordTable.Reserve(kMaxRows);
    app.WordPinyin.Reserve(kMaxRows);
    app.WordOrigin.Reserve(kMaxRows);
    app.SentenceTable.Reserve(kMaxRows);
    app.SentenceLesson.Reserve(kMaxRows);

    PresentFiles present(root);
    readEach(
        rt, present, kLessonCount, [&](int n) { return LessonWordsFile(root, n); },
        QStringLiteral("RW"), progress, VocabularyBar,
        [&](int n, ScriptBuffer& lines) { takeWords(app, lines, 1, n); });
    app.LessonWordCount = static_cast<int16_t>(app.WordTable.Count());
    readEach(
        rt, present, kVocabularyFileCount, [&](int n) { return VocabularyFile(root, n); },
        QStringLiteral("VO"), progress, VocabularyBar,
        [&](int n, ScriptBuffer& lines) { takeWords(app, lines, 2, n); });

    // A course without its vocabulary files still shows a full bar.
    if (progress.Value[VocabularyBar] == kVocabularyBarShortfall)
        progress.SetValue(VocabularyBar, kVocabularyBarMax);

    app.WordCount = static_cast<int16_t>(app.WordTable.Count());
    app.WordCountCopy = app.WordCount;
    if (app.WordCount > 0) progress.SetMax(CharacterBar, app.WordCount);

    readEach(
        rt, present, kLessonCount, [&](int n) { return LessonTextFile(root, n); },
        QStringLiteral("RT"), progress, SentenceBar,
        [&](int n, ScriptBuffer& lines) {
            // The first line (and for a TV play also the second) heads the text.
            const int first = (IsPlayLesson(n) ? 2 : 1) + 1;
            for (int i = first; i <= lines.LineCount(); ++i) {
                if (app.SentenceTable.Count() >= kMaxRows) break;
                app.SentenceTable.Append(lines.TrimmedLine(i));
                app.SentenceLesson.Append(static_cast<int16_t>(n));
            }
        });
    app.SentenceCount = static_cast<int16_t>(app.SentenceTable.Count());
    app.SentenceCountCopy = app.SentenceCount;
}

void BuildCharTable(Runtime& rt, LoadProgress& progress) {
    AppState& app = rt.app;
    app.CharTable.Erase();
    app.CharCount = 0;
    CharTableBuilder table(app);
    for (int w = 1; w <= app.WordCount; ++w) {
        table.AddWord(app.WordTable[w].Chinese, app.WordPinyin[w]);
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
