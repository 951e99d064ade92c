#include "core/pinyin.h"

#include "core/app_state.h"
#include "platform/helpers.h"

namespace vt {

namespace {

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

// The marked vowels: rows a, o, e, i, u, v; columns tones 1 to 4.
constexpr char16_t kMarked[6][4] = {
    {u'\u0101', u'\u00E1', u'\u01CE', u'\u00E0'}, // a
    {u'\u014D', u'\u00F3', u'\u01D2', u'\u00F2'}, // o
    {u'\u0113', u'\u00E9', u'\u011B', u'\u00E8'}, // e
    {u'\u012B', u'\u00ED', u'\u01D0', u'\u00EC'}, // i
    {u'\u016B', u'\u00FA', u'\u01D4', u'\u00F9'}, // u
    {u'\u01D6', u'\u01D8', u'\u01DA', u'\u01DC'}, // v, shown as u with two dots
};

// The row of kMarked for a letter, or -1.
int vowelRow(QChar c) {
    switch (c.unicode()) {
    case u'a':
        return 0;
    case u'o':
        return 1;
    case u'e':
        return 2;
    case u'i':
        return 3;
    case u'u':
        return 4;
    case u'v':
        return 5;
    default:
        return -1;
    }
}

// The character ToneVowel gives for one letter, or 0 for an empty result.
char16_t markedVowel(QChar letter, int tone) {
    const int row = vowelRow(letter);
    if (row < 0) return 0;
    if (tone >= 1 && tone <= 4) return kMarked[row][tone - 1];
    return row == 5 ? char16_t(0) : letter.unicode();
}

// Appends one syllable of a dotted text, s[begin, end) without its digit, in marks.
void appendMarkedSyllable(QString& out, const QChar* s, qsizetype begin, qsizetype end, int tone) {
    // The mark goes onto the letter after the last "." that is read as one (a "." and the letter
    // after it are taken together); what stands before the first "." is the head, where "v"
    // becomes the u with two dots, and what follows is the tail, kept as it stands.
    qsizetype firstDot = -1;
    QChar vowel; // null: none
    for (qsizetype i = begin; i < end; ++i) {
        if (s[i] == u'.') {
            if (firstDot < 0) firstDot = i;
            vowel = i + 1 < end ? s[i + 1] : QChar(); // a "." at the end marks nothing
            ++i;
        }
    }
    out += u' ';
    const qsizetype headEnd = firstDot < 0 ? end : firstDot;
    for (qsizetype i = begin; i < headEnd; ++i)
        out += s[i] == u'v' ? QChar(u'\u00FC') : s[i];
    if (firstDot < 0) return;
    if (const char16_t m = markedVowel(vowel, tone)) out += QChar(m);
    for (qsizetype i = firstDot; i < end; ++i) {
        if (s[i] == u'.') {
            ++i;
            continue;
        }
        out += s[i];
    }
}

bool isChinese(QChar c) {
    const char16_t u = c.unicode();
    if (u <= 0xFF) return false;
    switch (u) {
    case u'\uFF0C': // ，
    case u'\u3002': // 。
    case u'\uFF1B': // ；
    case u'\uFF1A': // ：
    case u'\u201C': // “
    case u'\u201D': // ”
    case u'\uFF01': // ！
    case u'\uFF1F': // ？
    case u'\u3001': // 、
    case u'\u2026': // …
    case u'\uFF08': // （
    case u'\uFF09': // ）
    case u'\u2018': // ‘
    case u'\u2019': // ’
    case u'\u3010': // 【
    case u'\u3011': // 】
    case u'\u300A': // 《
    case u'\u300B': // 》
    case u'\u2014': // —
        return false;
    default:
        return true; // "·" (U+00B7) is below 256 anyway
    }
}

// The text without the characters for which drop() is true.
template <class Pred> QString without(const QString& text, Pred drop) {
    QString out(text.size(), Qt::Uninitialized);
    QChar* to = out.data();
    for (QChar c : text)
        if (!drop(c.unicode())) *to++ = c;
    out.truncate(to - out.constData());
    return out;
}

} // namespace

QString ToneVowel(const QString& letter, int16_t tone) {
    if (letter.size() != 1) return QString();
    const char16_t m = markedVowel(letter[0], tone);
    return m ? QString(QChar(m)) : QString();
}

QString VToUmlaut(const QString& text) {
    QString out = text;
    out.replace(u'v', u'\u00FC');
    return out;
}

QString PinyinToMarks(const QString& text) {
    if (!text.contains(u'.')) return text;
    QString out;
    out.reserve(text.size() + 1);
    const QChar* s = text.constData();
    const qsizetype n = text.size();
    qsizetype start = 0; // where the current syllable's text begins
    for (qsizetype i = 0; i < n; ++i) {
        if (!isDigit(s[i])) continue;
        qsizetype b = start, e = i;
        while (b < e && s[b] == u' ')
            ++b;
        while (e > b && s[e - 1] == u' ')
            --e;
        appendMarkedSyllable(out, s, b, e, s[i].unicode() - u'0');
        start = i + 1;
    }
    qsizetype lead = 0;
    while (lead < out.size() && out[lead] == u' ')
        ++lead;
    out.remove(0, lead);
    return out;
}

QString DotsToSpaces(const QString& text) {
    QString out = text;
    out.replace(u'.', u' ');
    return Trim(out);
}

QString StripPunctuation(const QString& text) {
    return without(text, IsStrippedPunctuation);
}

QString StripSentenceMarks(const QString& text) {
    return without(text, [](char16_t c) {
        return c == u')' || c == u'(' || c == u'\uFF1F' || c == u'\uFF01' || c == u'\uFF0C';
    });
}

QString StripParenthesised(const QString& text) {
    bool inside = false;
    return Trim(without(text, [&inside](char16_t c) {
        if (c == u'(') {
            inside = true;
            return true;
        }
        if (c == u')') {
            inside = false;
            return true;
        }
        return inside || c == u';';
    }));
}

bool HasNonChinese(const QString& text) {
    for (QChar c : text)
        if (!isChinese(c)) return true;
    return false;
}

QString ChineseOnly(const QString& text) {
    return without(text, [](char16_t c) { return !isChinese(QChar(c)); });
}

void SplitPinyinSyllables(AppState& app, const QString& text) {
    app.PinyinSyllables.Erase();
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!isDigit(text[i])) continue;
        app.PinyinSyllables.Append(Trim(text.mid(start, i + 1 - start)));
        start = i + 1;
    }
}

QString PadNumber(int16_t n) {
    const QString digits = QString::number(n);
    if (n < 10) return QStringLiteral("  ") + digits;
    if (n < 100) return QStringLiteral(" ") + digits;
    return digits;
}

QString WeekdayText(int chinese, int day) {
    static const char16_t* const kChinese[7] = {u"星期日", u"星期一", u"星期二", u"星期三",
                                                u"星期四", u"星期五", u"星期六"};
    static const char* const kEnglish[7] = {"Sunday",   "Monday", "Tuesday", "Wednsday",
                                            "Thursday", "Friday", "Saturday"};
    if (day < 1 || day > 7) return QString();
    if (chinese == -1) return QString::fromUtf16(kChinese[day - 1]);
    return QString::fromLatin1(kEnglish[day - 1]);
}

void LoadSyllableRows(AppState& app) {
    const std::vector<QString>& rows = SyllableGroupRows(app.SyllableGroup);
    if (rows.empty()) return;
    app.SyllableRowCount = static_cast<int16_t>(rows.size());
    app.SyllableRows.ReDim(app.SyllableRowCount, false);
    for (int i = 1; i <= app.SyllableRowCount; ++i)
        app.SyllableRows[i] = rows[static_cast<size_t>(i - 1)];
}

} // namespace vt
