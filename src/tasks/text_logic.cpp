#include "tasks/text_logic.h"

#include "core/pinyin.h"

#include <algorithm>

namespace vt {

namespace {

constexpr int kTitleColumns = 28;

// The two words the walk never takes whole in front of certain characters.
const QString kWoKan = QStringLiteral("我看");
const QString kWo = QStringLiteral("我");
const QString kXiaoShan = QStringLiteral("小山");
const QString kXiao = QStringLiteral("小");
constexpr char16_t kYang = u'羊';

int usableRows(const Array1<LessonWord>& words, int wordRows) {
    return std::clamp(wordRows, 0, words.Count());
}

} // namespace

QString BuildLessonText(const QString& title, const Array1<QString>& lines, int lineCount) {
    lineCount = std::clamp(lineCount, 0, lines.Count());
    QString text;
    if (!title.isEmpty()) {
        const int n = std::min<int>(static_cast<int>(title.size()), kTitleColumns);
        text = QString((kTitleColumns - n) * 2, u' ') + (lineCount >= 1 ? lines[1] : title);
    }
    for (int i = 2; i <= lineCount; ++i) {
        text += lines[i];
        if (lines[i].startsWith(QStringLiteral("  "))) text += u'\n';
    }
    return text;
}

QStringList SentenceListItems(const Array1<QString>& lines, int lineCount) {
    lineCount = std::clamp(lineCount, 0, lines.Count());
    QStringList items{QStringLiteral("- Select 请选择 -")};
    for (int i = 1; i <= lineCount; ++i)
        items << QStringLiteral("%1. %2...").arg(i).arg(LTrim(lines[i]).left(5));
    return items;
}

std::optional<TextMark> SentenceMark(const QString& text, const QString& line) {
    const QString sentence = Trim(line);
    if (sentence.isEmpty()) return std::nullopt;
    const qsizetype at = text.indexOf(sentence);
    if (at < 0) return std::nullopt;
    return TextMark{static_cast<int>(at), static_cast<int>(sentence.size())};
}

int EnglishTokensFound(const Array1<LessonWord>& words, int wordRows, const QString& translation) {
    QString joined;
    for (int row = 1; row <= usableRows(words, wordRows); ++row)
        joined += StripParenthesised(words[row].Meaning) + u' ';
    int found = 0;
    for (const QString& token : joined.split(u' ', Qt::SkipEmptyParts))
        if (translation.contains(token, Qt::CaseInsensitive)) ++found;
    return found;
}

TranslationVerdict JudgeTranslation(const QString& lessonText, const QString& translation,
                                    const Array1<LessonWord>& words, int wordRows,
                                    bool blankTextLeavesFreely) {
    if (blankTextLeavesFreely && Trim(lessonText).isEmpty())
        return TranslationVerdict::NothingToJudge;
    if (2 * translation.size() < lessonText.size()) return TranslationVerdict::TooShort;
    if (wordRows <= 0) return TranslationVerdict::Passes;
    const double ratio = static_cast<double>(EnglishTokensFound(words, wordRows, translation)) /
                         static_cast<double>(wordRows);
    // Rounded first, then scaled: anything up to one half fails.
    return RoundHalfEven(ratio) * 100 <= 50 ? TranslationVerdict::Fails
                                            : TranslationVerdict::Passes;
}

bool IsChineseCharacter(QChar c) {
    return !HasNonChinese(QString(c));
}

void CandidateIndex::Add(const QString& chineseCell, int row) {
    QString cell = StripParenthesised(chineseCell);
    if (cell.contains(u'.')) cell = DotsToSpaces(cell);
    if (cell.contains(u' ')) {
        for (const QString& piece : cell.split(u' '))
            if (!piece.isEmpty()) byFirst_[piece.front().unicode()].push_back({piece, row});
    } else if (!cell.isEmpty()) {
        byFirst_[cell.front().unicode()].push_back({cell, row});
    }
}

const std::vector<CandidateIndex::Candidate>& CandidateIndex::For(QChar c) const {
    static const std::vector<Candidate> kNone;
    const auto it = byFirst_.constFind(c.unicode());
    return it == byFirst_.cend() ? kNone : *it;
}

void WordWalk::SetLesson(const Array1<LessonWord>& words, int wordRows) {
    lesson_ = {};
    for (int row = 1; row <= usableRows(words, wordRows); ++row)
        lesson_.Add(words[row].Chinese, row);
}

void WordWalk::SetWordTable(const Array1<WordRow>& table, int wordCount) {
    table_ = {};
    firstRowHolding_.clear();
    const int rows = std::clamp(wordCount, 0, table.Count());
    for (int row = 1; row <= rows; ++row) {
        const QString& word = table[row].Chinese;
        table_.Add(word, row);
        for (const QChar c : word)
            if (!firstRowHolding_.contains(c.unicode())) firstRowHolding_.insert(c.unicode(), row);
    }
}

std::optional<WalkWord> WordWalk::WordAt(const QString& text, int pos) const {
    const int n = static_cast<int>(text.size());
    if (pos < 0 || pos >= n) return std::nullopt;
    const QChar c = text[pos];
    const QStringView view(text);
    auto fits = [&](const QString& word) { return pos + word.size() <= n; };
    auto standsHere = [&](const QString& word) {
        return fits(word) && view.mid(pos, word.size()) == word;
    };

    // The lesson's own words first: the longest that stands here, the first of equal lengths.
    const CandidateIndex::Candidate* best = nullptr;
    for (const auto& cand : lesson_.For(c))
        if (standsHere(cand.word) && (!best || cand.word.size() > best->word.size())) best = &cand;
    if (best) return WalkWord{best->word, best->row, true, true};

    // Then the word table, where "我看" before a Chinese character is read as "我" and "小山"
    // before "羊" as "小", whatever the text holds at this place; a word so forced ends the
    // search at once.
    const auto& list = table_.For(c);
    if (!list.empty()) {
        auto find = [&](const QString& word) -> const CandidateIndex::Candidate* {
            for (const auto& cand : list)
                if (cand.word == word) return &cand;
            return nullptr;
        };
        const CandidateIndex::Candidate* chosen = nullptr;
        for (const auto& cand : list) {
            if (!fits(cand.word)) continue;
            const qsizetype after = pos + cand.word.size();
            auto nextChinese = [&] { return after >= n || IsChineseCharacter(text[after]); };
            if (cand.word == kWoKan && nextChinese()) {
                if (const auto* wo = find(kWo)) {
                    chosen = wo;
                    break;
                }
            } else if (cand.word == kXiaoShan && after < n && text[after] == kYang) {
                if (const auto* xiao = find(kXiao)) {
                    chosen = xiao;
                    break;
                }
            } else if (standsHere(cand.word) &&
                       (!chosen || cand.word.size() > chosen->word.size())) {
                chosen = &cand;
            }
        }
        if (chosen) return WalkWord{chosen->word, chosen->row, false, true};
        return WalkWord{QString(c), list.front().row, false, true};
    }

    // Last, any word that holds the character gives it a reading of its own.
    const auto it = firstRowHolding_.constFind(c.unicode());
    if (it == firstRowHolding_.cend()) return std::nullopt;
    return WalkWord{QString(c), *it, false, false};
}

QString KeptSyllables(const QString& chineseCell, const QString& pinyin, const QString& word) {
    const QString cell = StripPunctuation(chineseCell);
    const qsizetype place = cell.indexOf(word) + 1; // 0 when the word is not in the cell
    const qsizetype end = place + word.size();
    QString kept;
    QString syllable;
    int count = 0;
    for (const QChar ch : pinyin) {
        if (ch == u'.') continue;
        syllable += ch;
        if (ch >= u'0' && ch <= u'9') {
            ++count;
            if (place <= count && count < end) kept += syllable;
            syllable.clear();
        }
    }
    return kept;
}

} // namespace vt
