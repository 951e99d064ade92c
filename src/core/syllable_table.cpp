#include "core/syllable_table.h"

#include <QHash>

namespace vt {

namespace {

// The table as it is written: per group, its row count and its rows separated by one blank.
struct GroupText {
    const char* group;
    int count;
    const char* rows;
};

// clang-format off
constexpr GroupText kTable[] = {
    {"A", 5,
     "|a1101 |ai1111 |an1011 |ang1101 |ao1111"},
    {"B", 16,
     "b|a1111 b|ai1111 b|an1111 b|ang1111 b|ao1111 b|ei1111 b|en1111 "
     "b|eng1101 b|i1111 bi|an1011 bi|ao1111 bi|e1111 b|in1011 b|ing1011 "
     "b|o1111 b|u1111"},
    {"C", 34,
     "c|a1000 c|ai1111 c|an1111 c|ang1100 c|ao1111 c|e0001 c|en1100 "
     "c|eng1101 ch|a1111 ch|ai1111 ch|an1111 ch|ang1111 ch|ao1111 ch|e1011 "
     "ch|en1111 ch|eng1111 ch|i1111 ch|ong1111 ch|ou1111 ch|u1111 chu|ai1111 "
     "chu|an1111 chu|ang1111 chu|i1100 ch|un1110 chu|o1001 c|i1111 c|ong1100 "
     "c|ou0001 c|u1101 cu|an1101 cu|i1011 c|un1111 cu|o1111"},
    {"D", 22,
     "d|a1111 d|ai1111 d|an1011 d|ang1111 d|ao1111 d|e1100 d|ei1010 d|en0001 "
     "d|eng1111 d|i1111 di|an1111 di|ao1011 di|e1100 d|ing1011 di|u1000 "
     "d|ong1011 d|ou1011 d|u1111 du|an1011 du|i1001 d|un1011 du|o1111"},
    {"E", 3,
     "|e1111 |en1001 |er0111"},
    {"F", 9,
     "f|a1111 f|an1111 f|ang1111 f|ei1111 f|en1111 f|eng1111 f|o0100 "
     "f|ou0010 f|u1111"},
    {"G", 19,
     "g|a1011 g|ai1011 g|an1011 g|ang1011 g|ao1011 g|e1111 g|ei0110 g|en1011 "
     "g|eng1011 g|ong1111 g|ou1111 g|u1111 gu|a1011 gu|ai1011 gu|an1111 "
     "gu|ang1011 gu|i1111 g|un0111 gu|o1111"},
    {"H", 19,
     "h|a1001 h|ai1111 h|an1111 h|ang1101 h|ao1111 h|e1101 h|ei1001 h|en1111 "
     "h|eng1101 h|ong1111 h|ou0111 h|u1111 hu|a1101 hu|ai0101 hu|an1111 "
     "hu|ang1111 hu|i1111 h|un1101 hu|o1111"},
    {"J", 14,
     "j|i1111 ji|a1111 ji|an1111 ji|ang1011 ji|ao1111 ji|e1111 j|in1111 "
     "j|ing1111 ji|ong0110 ji|u1111 j|u1111 ju|an1111 ju|e1101 j|un1001"},
    {"K", 18,
     "k|a1010 k|ai1011 k|an1011 k|ang1101 k|ao1111 k|e1111 k|en0010 "
     "k|eng1000 k|ong1011 k|ou1111 k|u1111 ku|a1011 ku|ai0011 ku|an1010 "
     "ku|ang1111 ku|i1111 k|un1011 ku|o0001"},
    {"L", 24,
     "l|a1001 l|ai0101 l|an0111 l|ang1111 l|ao1111 l|e1001 l|ei1111 "
     "l|eng0111 l|i1111 li|an0111 li|ang1111 li|ao1111 li|e1011 l|in0111 "
     "l|ing1111 li|u1111 l|ong1111 l|ou1111 l|u1111 l|v0111 lu|an0111 "
     "lv|e0011 l|un1101 lu|o1111"},
    {"M", 19,
     "m|a1111 m|ai0111 m|an1111 m|ang0110 m|ao1111 m|e1000 m|ei1111 m|en1101 "
     "m|eng1111 m|i1111 mi|an0111 mi|ao1111 mi|e1001 m|in0110 m|ing0111 "
     "mi|u0001 m|o1111 m|ou0110 m|u0111"},
    {"N", 23,
     "n|a1111 n|ai1011 n|an1111 n|ang1111 n|ao1111 n|e1101 n|ei0011 n|en0001 "
     "n|eng0100 n|i1111 ni|an1111 ni|ang1101 ni|ao0011 ni|e1101 n|in0100 "
     "n|ing0111 ni|u1111 n|ong0101 n|u0111 n|v0110 nu|an0010 nv|e0001 "
     "nu|o0101"},
    {"O", 2,
     "|o1101 |ou1011"},
    {"P", 17,
     "p|a1101 p|ai1101 p|an1101 p|ang1101 p|ao1111 p|ei1101 p|en1101 "
     "p|eng1111 p|i1111 pi|an1101 pi|ao1111 pi|e1010 p|in1111 p|ing1100 "
     "p|o1111 p|ou1100 p|u1111"},
    {"Q", 14,
     "q|i1111 qi|a1011 qi|an1111 qi|ang1111 qi|ao1111 qi|e1111 q|in1111 "
     "q|ing1111 qi|ong0100 qi|u1100 q|u1111 qu|an1111 qu|e1101 q|un0100"},
    {"R", 14,
     "r|an0110 r|ang1111 r|ao0111 r|e0011 r|en0111 r|eng1100 r|i0001 "
     "r|ong0110 r|ou0101 r|u0111 ru|an0010 ru|i0011 r|un0001 ru|o0001"},
    {"S", 35,
     "s|a1011 s|ai1001 s|an1011 s|ang1011 s|ao1011 s|e0001 s|en1000 "
     "s|eng1000 sh|a1011 sh|ai1001 sh|an1111 sh|ang1011 sh|ao1111 sh|e1111 "
     "sh|ei0100 sh|en1111 sh|eng1111 sh|i1111 sh|ou1111 sh|u1111 shu|a1011 "
     "shu|ai1011 shu|an1001 shu|ang1010 shu|i0111 sh|un0011 shu|o1001 "
     "s|i1011 s|ong1111 s|ou1011 s|u1101 su|an1001 su|i1111 s|un1010 "
     "su|o1010"},
    {"T", 19,
     "t|a1011 t|ai1101 t|an1111 t|ang1111 t|ao1111 t|e0001 t|eng0100 t|i1111 "
     "ti|an1110 ti|ao1111 ti|e1111 t|ing1110 t|ong1111 t|ou1101 t|u1111 "
     "tu|an1100 tu|i1111 t|un1100 tu|o1111"},
    {"W", 9,
     "w|a1111 w|ai1011 w|an1111 w|ang1111 w|ei1111 w|en1111 w|eng1001 "
     "w|o1111 w|u1111"},
    {"X", 14,
     "x|i1111 xi|a1101 xi|an1111 xi|ang1111 xi|ao1111 xi|e1111 x|in1111 "
     "x|ing1111 xi|ong1100 xi|u1011 x|u1111 xu|an1111 xu|e1111 x|un1101"},
    {"Y", 15,
     "y|a1111 y|an1111 y|ang1111 y|ao1111 y|e1111 y|i1111 y|in1111 y|ing1111 "
     "y|o1000 y|ong1111 y|ou1111 y|u1111 yu|an1111 yu|e1001 y|un1111"},
    {"Z", 36,
     "z|a1110 z|ai1011 z|an1111 z|ang1011 z|ao1111 z|e0101 z|ei0100 z|en0010 "
     "z|eng1001 zh|a1111 zh|ai1111 zh|an1111 zh|ang1011 zh|ao1111 zh|e1111 "
     "zh|en1011 zh|eng1011 zh|i1111 zh|ong1011 zh|ou1111 zh|u1111 zhu|a1010 "
     "zhu|ai1011 zhu|an1011 zhu|ang1011 zhu|i1001 zh|un1010 zhu|o1100 "
     "z|i1011 z|ong1111 z|ou1011 z|u1110 zu|an1011 zu|i1011 z|un1010 "
     "zu|o1111"},
};
// clang-format on

struct Table {
    std::vector<QString> groups;
    std::vector<std::vector<QString>> rowsByGroup; // parallel to groups
    std::vector<SyllableInfo> all;
    QHash<QString, int> byPlain; // plain syllable -> index into all
};

SyllableInfo parseRow(const QString& group, const QString& row) {
    SyllableInfo info;
    info.group = group;
    const qsizetype bar = row.indexOf(u'|');
    const qsizetype flags = row.size() - 4;
    info.before = row.left(bar);
    info.rest = row.mid(bar + 1, flags - bar - 1);
    for (int k = 0; k < 4; ++k)
        info.tones[static_cast<size_t>(k)] = row[flags + k] == u'1';
    return info;
}

const Table& table() {
    static const Table built = [] {
        Table t;
        for (const GroupText& g : kTable) {
            const QString group = QString::fromLatin1(g.group);
            t.groups.push_back(group);
            std::vector<QString> rows;
            for (const QString& row : QString::fromLatin1(g.rows).split(u' ', Qt::SkipEmptyParts)) {
                rows.push_back(row);
                SyllableInfo info = parseRow(group, row);
                t.byPlain.insert(info.plain(), static_cast<int>(t.all.size()));
                t.all.push_back(std::move(info));
            }
            t.rowsByGroup.push_back(std::move(rows));
        }
        return t;
    }();
    return built;
}

bool isAsciiLetter(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

} // namespace

const std::vector<QString>& SyllableGroups() {
    return table().groups;
}

const std::vector<QString>& SyllableGroupRows(const QString& group) {
    static const std::vector<QString> none;
    const Table& t = table();
    for (size_t i = 0; i < t.groups.size(); ++i)
        if (t.groups[i] == group) return t.rowsByGroup[i];
    return none;
}

const std::vector<SyllableInfo>& AllSyllables() {
    return table().all;
}

const SyllableInfo* FindSyllable(const QString& plain) {
    const Table& t = table();
    const auto it = t.byPlain.constFind(plain);
    return it == t.byPlain.cend() ? nullptr : &t.all[static_cast<size_t>(*it)];
}

bool SyllableHasTone(const QString& plain, int tone) {
    const SyllableInfo* info = FindSyllable(plain);
    if (!info || tone < 0 || tone > 4) return false;
    return tone == 0 || info->tones[static_cast<size_t>(tone - 1)];
}

QString NumericToDotted(const QString& numeric, QString* error) {
    auto fail = [error](const QString& why) {
        if (error) *error = why;
        return QString();
    };
    QString result;
    result.reserve(numeric.size() + numeric.size() / 3 + 1);
    QString syllable; // letters of the syllable being read, lower case, "v" for the two dots
    qsizetype i = 0;
    const qsizetype n = numeric.size();
    while (i <= n) {
        const QChar c = i < n ? numeric[i] : QChar(u' ');
        if (c == u' ' || c == u'\'' || i == n) {
            if (!syllable.isEmpty()) return fail(QStringLiteral("missing tone digit: ") + syllable);
            ++i;
            continue;
        }
        if (c >= u'0' && c <= u'9') {
            if (syllable.isEmpty())
                return fail(
                    QStringLiteral("tone digit without a syllable at position %1").arg(i + 1));
            int tone = c.unicode() - u'0';
            if (tone > 5) return fail(QStringLiteral("no such tone: %1%2").arg(syllable).arg(tone));
            if (tone == 5) tone = 0;
            const SyllableInfo* info = FindSyllable(syllable);
            if (!info) return fail(QStringLiteral("no such syllable: ") + syllable);
            if (!result.isEmpty()) result += u' ';
            result += info->before;
            result += u'.';
            result += info->rest;
            result += QChar(u'0' + tone);
            syllable.clear();
            ++i;
            continue;
        }
        if (c == u'\u00FC' || c == u'\u00DC') {
            syllable += u'v';
        } else if ((c == u'u' || c == u'U') && i + 1 < n && numeric[i + 1] == u':') {
            syllable += u'v';
            ++i; // the colon
        } else if (isAsciiLetter(c)) {
            syllable += c.toLower();
        } else {
            return fail(QStringLiteral("unexpected character \"%1\" in %2").arg(c).arg(numeric));
        }
        ++i;
    }
    if (result.isEmpty()) return fail(QStringLiteral("no Pinyin given"));
    return result;
}

} // namespace vt
