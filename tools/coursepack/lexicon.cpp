#include "lexicon.h"

#include "core/pinyin.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QStringTokenizer>
#include <cmath>
#include <limits>

namespace vt::coursepack {

namespace {

QString readText(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return QString();
    return QString::fromUtf8(f.readAll());
}

// The text between the first "`" after marker and the next "`".
QString templateLiteral(const QString& js, const QString& marker) {
    const qsizetype at = js.indexOf(marker);
    if (at < 0) return QString();
    const qsizetype open = js.indexOf(u'`', at);
    const qsizetype close = open < 0 ? -1 : js.indexOf(u'`', open + 1);
    return close < 0 ? QString() : js.mid(open + 1, close - open - 1);
}

bool isNumeral(QChar c) {
    return QStringView(u"零〇一二三四五六七八九十百千万亿两").contains(c);
}

bool isPunctuation(QChar c) {
    return !c.isLetterOrNumber() && !c.isSpace();
}

int score(const LexEntry& e, const QString& rawPinyin) {
    // Lower is better: proper names (capitalised readings) and variant spellings come last.
    int s = 0;
    if (!rawPinyin.isEmpty() && rawPinyin[0].isUpper()) s += 4;
    if (e.meanings.isEmpty()) s += 8;
    return s;
}

} // namespace

QString CedictToNumeric(const QString& pinyin) {
    QString p = pinyin.toLower();
    p.replace(QStringLiteral("u:"), QStringLiteral("v"));
    static const QRegularExpression syllable(QStringLiteral("^[a-z]+[0-5]$"));
    QStringList out;
    for (QString s : p.split(u' ', Qt::SkipEmptyParts)) {
        if (!syllable.match(s).hasMatch()) return QString();
        if (s.back() == u'5') s.back() = u'0';
        out << s;
    }
    return out.join(u' ');
}

QStringList CleanMeanings(const QStringList& definitions, const QString& traditional,
                          const QString& simplified, GlossChanges* changes) {
    static const QRegularExpression pair(QStringLiteral("[^\\s|\\[\\],;:]+\\|([^\\s\\[\\],;]+)"));
    static const QRegularExpression reading(QStringLiteral("\\[[^\\]]*\\]"));
    // Notes on how else the word is read: whole meanings ("Taiwan pr. [jiao4]", "also pr.
    // [...]"), notes in parentheses ("(Taiwan pr. [...] for this sense)") and the romanised
    // reading of a Taiwanese word ("(Taiwanese, POJ pr. [...])").
    static const QRegularExpression readingNote(QStringLiteral("^(?:[A-Za-z]+ )?pr\\. "));
    static const QRegularExpression readingAside(
        QStringLiteral("\\s*\\((?:[A-Za-z]+ )?pr\\.[^)]*\\)|,\\s*POJ pr\\.\\s*\\[[^\\]]*\\]"));
    static const QRegularExpression vulgarWord(QStringLiteral("\\b(?:mother)?fuck|\\bcunt"),
                                               QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression personName(
        QStringLiteral("^[A-Z][\\w'.-]*(?:,? (?:or )?[A-Z][\\w'.-]*)* \\((?:name|person name|given "
                       "name|female name|feminine name|male name|Western name)\\)$"));
    GlossChanges local;
    GlossChanges& did = changes ? *changes : local;
    QStringList out;
    int names = 0;
    for (QString d : definitions) {
        d = d.trimmed();
        const QString lower = d.toLower();
        if (d.isEmpty() || lower.contains(QStringLiteral("variant of")) ||
            lower.startsWith(QStringLiteral("surname ")) ||
            lower.startsWith(QStringLiteral("see ")) ||
            lower.startsWith(QStringLiteral("used in ")))
            continue;
        if (readingNote.match(d).hasMatch()) {
            did.pronunciation = true;
            continue;
        }
        if (const QString before = d; d.replace(readingAside, QString()) != before)
            did.pronunciation = true;
        if (d.startsWith(QStringLiteral("CL:"))) {
            QStringList words = d.mid(3).split(u',', Qt::SkipEmptyParts);
            for (QString& w : words)
                w = w.replace(pair, QStringLiteral("\\1")).replace(reading, QString()).trimmed();
            d = (words.size() == 1 ? QStringLiteral("measure word: ")
                                   : QStringLiteral("measure words: ")) +
                words.join(QStringLiteral(", "));
            did.classifier = true;
        }
        d.replace(pair, QStringLiteral("\\1"));
        d.replace(reading, QString());
        d = d.simplified();
        if (d.startsWith(QStringLiteral("also written ")) &&
            (d.mid(13) == simplified || d.mid(13) == traditional) && !d.mid(13).isEmpty()) {
            did.selfReference = true;
            continue;
        }
        if (d.contains(QStringLiteral("(vulgar)")) || vulgarWord.match(d).hasMatch()) {
            d = (QStringLiteral("(vulgar) ") + d.remove(QStringLiteral("(vulgar)"))).simplified();
            did.vulgar = true;
        }
        if (personName.match(d).hasMatch()) ++names;
        if (!d.isEmpty() && !out.contains(d)) out << d;
        if (out.size() == 7) break;
    }
    if (names > 0 && names == out.size()) {
        did.bareName = true;
        out.clear();
    }
    return out;
}

bool Lexicon::Load(const QString& npmDir, QString* error) {
    const QString base = npmDir + QStringLiteral("/node_modules/chinese-lexicon/");
    const QString cedict = readText(base + QStringLiteral("dictionary/cedict.js"));
    const QString hsk = readText(base + QStringLiteral("statistics/hsk.js"));
    const QString movie = readText(base + QStringLiteral("statistics/movieWordFrequency.js"));
    if (cedict.isEmpty() || hsk.isEmpty() || movie.isEmpty()) {
        if (error)
            *error =
                QStringLiteral(
                    "chinese-lexicon is not installed in %1 (run scripts/fetch_course_data.sh)")
                    .arg(npmDir);
        return false;
    }
    LoadFromTexts(templateLiteral(cedict, QStringLiteral("module.exports")), hsk,
                  templateLiteral(movie, QStringLiteral("let data")),
                  readText(base + QStringLiteral("statistics/pinyinFrequency.js")));
    return true;
}

void Lexicon::LoadFromTexts(const QString& cedict, const QString& hsk,
                            const QString& subtitleFrequency, const QString& readingFrequency) {
    // How often a character is read one way: "了le": "30101" (character + marked reading).
    static const QRegularExpression countLine(QStringLiteral("\"([^\"]+)\":\\s*\"(\\d+)\""));
    for (auto it = countLine.globalMatch(readingFrequency); it.hasNext();) {
        const auto m = it.next();
        const QString key = m.captured(1);
        const int count = m.captured(2).toInt();
        readingCount_.insert(key, count);
        int& usual = usualReadingCount_[key[0]];
        usual = std::max(usual, count);
    }
    auto usage = [&](const LexEntry& e) {
        if (e.simplified.size() != 1 || readingCount_.isEmpty()) return 0;
        return readingCount_.value(e.simplified + PinyinToMarks(NumericToDotted(e.numeric)));
    };
    QHash<QString, std::pair<int, int>> bestScore; // score (lower is better), usage
    for (QStringView line : QStringTokenizer(cedict, u'\n')) {
        if (line.isEmpty() || line[0] == u'#') continue;
        // "Trad Simp [pin1 yin1] /meaning/meaning/"
        const qsizetype open = line.indexOf(u'[');
        const qsizetype close = line.indexOf(QStringLiteral("] /"));
        if (open < 0 || close < open) continue;
        const QStringList chars =
            line.left(open).trimmed().toString().split(u' ', Qt::SkipEmptyParts);
        if (chars.size() != 2) continue;
        const QString raw = line.mid(open + 1, close - open - 1).toString();
        LexEntry e{chars[1], CedictToNumeric(raw), {}, {}, !raw.isEmpty() && raw[0].isUpper()};
        if (e.numeric.isEmpty()) continue;
        QString defs = line.mid(close + 3).toString().trimmed();
        if (defs.endsWith(u'/')) defs.chop(1);
        e.meanings = CleanMeanings(defs.split(u'/'), chars[0], chars[1], &e.changes);
        const int s = score(e, raw);
        auto it = bestScore.find(e.simplified);
        if (it != bestScore.end() && s > it->first) continue;
        const int used = usage(e);
        if (it == bestScore.end() || s < it->first || used > it->second) {
            bestScore[e.simplified] = {s, used};
            longest_ = std::max(longest_, static_cast<int>(e.simplified.size()));
            best_[e.simplified] = e;
        }
    }
    QSet<QString> seen;
    static const QRegularExpression quoted(QStringLiteral("\"([^\"]+)\""));
    for (QStringView line : QStringTokenizer(hsk, u'\n')) {
        if (!line.trimmed().startsWith(u'[')) continue;
        auto it = quoted.globalMatch(line.toString());
        while (it.hasNext()) {
            const QString w = it.next().captured(1);
            if (!seen.contains(w)) {
                seen.insert(w);
                ranked_ << w;
            }
        }
    }
    for (QStringView line : QStringTokenizer(subtitleFrequency, u'\n')) {
        const qsizetype tab = line.indexOf(u'\t');
        const QString w = (tab < 0 ? line : line.left(tab)).trimmed().toString();
        if (tab >= 0 && !w.isEmpty()) {
            const QStringView rest = line.mid(tab + 1);
            const qsizetype end = rest.indexOf(u'\t');
            const double count = (end < 0 ? rest : rest.left(end)).trimmed().toDouble();
            if (count > 0 && !wordCount_.contains(w)) {
                wordCount_.insert(w, count);
                totalCount_ += count;
            }
        }
        if (!w.isEmpty() && !seen.contains(w)) {
            seen.insert(w);
            ranked_ << w;
        }
    }
}

const LexEntry* Lexicon::Find(const QString& simplified) const {
    auto it = best_.find(simplified);
    return it == best_.end() ? nullptr : &*it;
}

void Lexicon::AddCourseReading(const QString& chinese, const QString& numeric) {
    const QString word = StripPunctuation(chinese);
    if (word.isEmpty() || CountSyllables(numeric) != word.size()) return;
    course_.insert(word, numeric.simplified());
    const QStringList syllables = numeric.simplified().split(u' ');
    if (syllables.size() == word.size())
        for (qsizetype i = 0; i < word.size(); ++i)
            if (!courseChars_.contains(word[i])) courseChars_.insert(word[i], syllables[i]);
    longest_ = std::max(longest_, static_cast<int>(word.size()));
}

// How a text is cut into words. Every word of a cut costs -ln of its share of the subtitles'
// words; the cut that costs least together wins.
namespace {
// A dictionary word the subtitles never show counts as if seen half a time.
constexpr double kUnseenCount = 0.5;
// A course word counts as if seen at least a thousand times, about as often as 作业 or 中文.
constexpr double kCourseWordCount = 1000;
// Each word of a cut costs as much again as a word a thousand times rarer: without it the
// frequent single characters would cut apart what the dictionary knows as one word (还给,
// 长得, 了不起); with much more the dictionary's rare words would win over two common ones
// (到了 dào liǎo, 着花 zháo huā).
const double kWordCost = std::log(1000.0);
// A proper name of the dictionary (花都, 上都) counts as if twenty times rarer.
const double kNameCost = std::log(20.0);
} // namespace

double Lexicon::wordCost(const QString& piece, const Reading& r) const {
    const double total = totalCount_ + kCourseWordCount; // every share stays below one
    const double seen = wordCount_.value(piece, kUnseenCount);
    if (r.courseWord) return kWordCost - std::log(std::max(seen, kCourseWordCount) / total);
    double cost = kWordCost - std::log(seen / total);
    if (piece.size() < 2) return cost;
    if (r.name) cost += kNameCost;
    // The subtitles count strings of characters, not readings: much of what they count as 都会
    // is dōu huì, not the dictionary's dū huì. So a word that reads a character in a way rarely
    // heard is made rarer by as much as that reading is rarer than the character's usual one.
    // Neutral tones and readings the counts do not know (the r of erhua) pass.
    const QStringList syllables = r.numeric.split(u' ', Qt::SkipEmptyParts);
    if (syllables.size() != piece.size()) return cost;
    for (qsizetype i = 0; i < piece.size(); ++i) {
        if (syllables[i].endsWith(u'0')) continue;
        const int usual = usualReadingCount_.value(piece[i]);
        const QString marked = PinyinToMarks(NumericToDotted(syllables[i]));
        if (usual == 0 || marked.isEmpty()) continue;
        const int heard = readingCount_.value(piece[i] + marked);
        cost -= std::log((heard + 1.0) / (usual + 1.0));
    }
    return cost;
}

Lexicon::Reading Lexicon::wordReading(QStringView run, qsizetype at, qsizetype len) const {
    const QString piece = run.mid(at, len).toString();
    // 了 and 着 right after 不 are complements, read liǎo and zháo (做不了, 睡不着).
    if (len == 1 && at > 0 && run[at - 1] == u'不' && (piece[0] == u'了' || piece[0] == u'着'))
        return {piece[0] == u'了' ? QStringLiteral("liao3") : QStringLiteral("zhao2"), true};
    if (auto cw = course_.find(piece); cw != course_.end()) return {*cw, true};
    if (const LexEntry* e = Find(piece)) {
        // 着 ending a word is the particle zhe after a verb (穿着 chuān zhe); the dictionary's
        // zhuó belongs to written words (衣着, 穿着 "attire").
        if (len == 2 && piece[1] == u'着' && e->numeric.endsWith(QStringLiteral(" zhuo2")))
            return {};
        return {e->numeric, false, e->name};
    }
    // A character the dictionary lacks: the course's reading of it, else none (it is left out).
    if (len == 1) return {courseChars_.value(piece[0], QStringLiteral("")), false};
    return {};
}

std::vector<Lexicon::Piece> Lexicon::segment(QStringView run) const {
    const qsizetype n = run.size();
    // A number is one word: no cut falls between two of its characters (十一点 is 十一 + 点,
    // never 十 + 一点).
    auto insideNumber = [&](qsizetype at) {
        return at > 0 && at < n && isNumeral(run[at - 1]) && isNumeral(run[at]);
    };
    // best[i]: the cost of the best cut of run[i..n); take[i]: the length of its first word and
    // that word's reading. Of two cuts that cost the same, the one with the longer first word.
    std::vector<double> best(static_cast<size_t>(n + 1), 0.0);
    std::vector<std::pair<qsizetype, QString>> take(static_cast<size_t>(n));
    for (qsizetype i = n - 1; i >= 0; --i) {
        double& bestCost = best[static_cast<size_t>(i)];
        bestCost = std::numeric_limits<double>::infinity();
        if (insideNumber(i)) continue;
        auto consider = [&](qsizetype len, const Reading& r) {
            const double cost =
                wordCost(run.mid(i, len).toString(), r) + best[static_cast<size_t>(i + len)];
            if (cost < bestCost) {
                bestCost = cost;
                take[static_cast<size_t>(i)] = {len, r.numeric};
            }
        };
        qsizetype numberEnd = i;
        while (numberEnd < n && isNumeral(run[numberEnd]))
            ++numberEnd;
        bool numberKnown = numberEnd - i < 2;
        for (qsizetype len = std::min<qsizetype>(longest_, n - i); len >= 1; --len) {
            if (insideNumber(i + len)) continue;
            const Reading r = wordReading(run, i, len);
            if (r.numeric.isNull()) continue;
            numberKnown = numberKnown || i + len == numberEnd;
            consider(len, r);
        }
        // A number the dictionary does not know as a word is read digit by digit.
        if (!numberKnown) {
            QStringList digits;
            for (qsizetype k = i; k < numberEnd; ++k)
                digits << wordReading(run, k, 1).numeric;
            consider(numberEnd - i, {digits.join(u' ').simplified(), false});
        }
    }
    std::vector<Piece> out;
    for (qsizetype i = 0; i < n;) {
        const auto& [len, reading] = take[static_cast<size_t>(i)];
        out.push_back({run.mid(i, len).toString(), reading});
        i += len;
    }
    return out;
}

namespace {

// One syllable of a run of characters and the character it reads (-1 when the word's syllables
// do not pair with its characters).
struct Syllable {
    qsizetype at;
    QString numeric;
};

int toneOf(const QString& numeric) {
    return numeric.isEmpty() || !numeric.back().isDigit() ? -1 : numeric.back().digitValue();
}

// 一 and 不 change their tone before another syllable, as the lessons write them: 不 is bú before
// a fourth tone, 一 is yí before a fourth tone and yì before the others. 一 keeps its own tone
// where it counts or orders: in a number (十一, 一九九八, but 一百 is yì bǎi), after 第 and 星期
// (第一次, 星期一), and before 月, 号, 楼, 班 and 年级 (一月一号, 一年级; but 大一号 is a size
// larger). Before a neutral tone nothing changes.
void changeTones(QStringView run, std::vector<Syllable>& syllables) {
    auto at = [&](qsizetype i) { return i >= 0 && i < run.size() ? run[i] : QChar(); };
    for (size_t k = 0; k + 1 < syllables.size(); ++k) {
        Syllable& s = syllables[k];
        const int next = toneOf(syllables[k + 1].numeric);
        if (s.at < 0 || next < 1) continue;
        if (s.numeric == QStringLiteral("bu4") && at(s.at) == u'不') {
            if (next == 4) s.numeric = QStringLiteral("bu2");
            continue;
        }
        if (s.numeric != QStringLiteral("yi1") || at(s.at) != u'一') continue;
        const QChar before = at(s.at - 1), after = at(s.at + 1);
        if (isNumeral(before) || before == u'第' || before == u'期') continue;
        if (QStringView(u"零〇一二三四五六七八九十两月楼班").contains(after)) continue;
        if (after == u'号' && before != u'大' && before != u'小') continue;
        if (after == u'年' && at(s.at + 2) == u'级') continue;
        s.numeric = next == 4 ? QStringLiteral("yi2") : QStringLiteral("yi4");
    }
}

} // namespace

QString Lexicon::ToSpokenPinyin(const QString& text, int* unknown) const {
    QStringList out;
    int missing = 0;
    for (qsizetype i = 0; i < text.size();) {
        const QChar c = text[i];
        if (c.isSpace()) {
            ++i;
            continue;
        }
        if (isPunctuation(c)) {
            const bool full = QStringLiteral("。！？.!?").contains(c);
            const bool part = QStringLiteral("，、；：,;:…—").contains(c);
            if ((full || part) && !out.isEmpty() && !out.last().endsWith(u',') &&
                !out.last().endsWith(u'.'))
                out.last() += full ? u'.' : u',';
            ++i;
            continue;
        }
        qsizetype end = i;
        while (end < text.size() && !text[end].isSpace() && !isPunctuation(text[end]))
            ++end;
        const QStringView run = QStringView(text).mid(i, end - i);
        std::vector<Syllable> syllables;
        qsizetype at = 0;
        for (const Piece& p : segment(run)) {
            if (p.reading.isEmpty()) ++missing;
            const QStringList read = p.reading.split(u' ', Qt::SkipEmptyParts);
            const bool paired = read.size() == p.text.size();
            for (qsizetype k = 0; k < read.size(); ++k)
                syllables.push_back({paired ? at + k : -1, read[k]});
            at += p.text.size();
        }
        changeTones(run, syllables);
        for (Syllable& s : syllables) {
            if (s.numeric.back() == u'0') s.numeric.back() = u'5';
            out << s.numeric;
        }
        i = end;
    }
    if (unknown) *unknown = missing;
    return out.join(u' ');
}

std::vector<VocabularyEntry> BuildVocabulary(const Lexicon& lexicon, const Course& course,
                                             int maxEntries, VocabularyFigures* figures) {
    VocabularyFigures local;
    VocabularyFigures& f = figures ? *figures : local;
    f = VocabularyFigures{};
    QSet<QString> lessonWords;
    for (const Lesson& l : course.lessons)
        for (const Word& w : l.words)
            lessonWords.insert(StripPunctuation(w.chinese));
    std::vector<VocabularyEntry> out;
    for (const QString& w : lexicon.RankedWords()) {
        if (static_cast<int>(out.size()) >= maxEntries) break;
        if (lessonWords.contains(w) || HasNonChinese(w)) continue;
        const LexEntry* e = lexicon.Find(w);
        if (!e) continue;
        const QString dotted = NumericToDotted(e->numeric);
        if (dotted.isEmpty() || CountSyllables(dotted) != StripPunctuation(w).size()) continue;
        if (e->meanings.isEmpty()) {
            ++(e->changes.bareName ? f.leftOutNames : f.leftOutEmpty);
            continue;
        }
        f.pronunciation += e->changes.pronunciation;
        f.selfReference += e->changes.selfReference;
        f.classifier += e->changes.classifier;
        f.vulgar += e->changes.vulgar;
        out.push_back({dotted, w, e->meanings.join(QStringLiteral("; "))});
    }
    return out;
}

} // namespace vt::coursepack
