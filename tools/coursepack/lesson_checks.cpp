#include "lesson_checks.h"

#include "core/pinyin.h"
#include "platform/helpers.h"

#include <vector>

namespace vt::coursepack {

namespace {

bool isChinese(QChar c) {
    return !HasNonChinese(QString(c));
}

// A text as blank filling lays it out, with the line each character came from.
struct LaidOut {
    QString text;
    std::vector<int> line; // per character of text
    void Add(const QString& piece, int from) {
        text += piece;
        line.insert(line.end(), static_cast<size_t>(piece.size()), from);
    }
};

// The text box breaks a line with a carriage return and a line feed; a program that breaks
// with one character only makes the stretches shorter.
const QString kLineBreak = QStringLiteral("\r\n");

} // namespace

int MeaningCount(const QString& english) {
    return static_cast<int>(english.count(u';')) + 1;
}

std::optional<int> BlankCuttingStalls(const QStringList& lines, bool play,
                                      const QString& playTitle) {
    if (lines.isEmpty()) return std::nullopt;
    const QString& title = play ? playTitle : lines[0];
    if (title.size() > kWidestTitle) return std::nullopt;
    // Blanks that centre the title, then the title; a read text runs its lines on within a
    // paragraph, a play puts every line on a line of its own.
    LaidOut laid;
    const int pad = (kWidestTitle - static_cast<int>(title.size())) * 2;
    laid.Add(QString(pad, u' '), 0);
    if (play) {
        laid.Add(title, 0);
        for (int i = 0; i < lines.size(); ++i) {
            laid.Add(kLineBreak, i + 1);
            laid.Add(lines[i], i + 1);
        }
    } else {
        laid.Add(lines[0], 0);
        for (int i = 1; i < lines.size(); ++i) {
            if (lines[i].startsWith(QStringLiteral("  "))) laid.Add(kLineBreak, i);
            laid.Add(lines[i], i);
        }
    }
    // The cutting loop, with positions counted from 1: from the last cut, the next lands 2 to
    // 21 places on; past the end the loop ends; on anything but a Chinese character it draws
    // again from the same place. Follow every cut it can make and look for one after which
    // all 20 places it can land on lie inside the text and none holds a Chinese character.
    const int n = static_cast<int>(laid.text.size());
    std::vector<bool> reachable(static_cast<size_t>(n) + 1, false);
    reachable[static_cast<size_t>(pad)] = true;
    for (int last = pad; last <= n; ++last) {
        if (!reachable[static_cast<size_t>(last)] || last + 21 > n) continue;
        bool landing = false;
        for (int pos = last + 2; pos <= last + 21; ++pos)
            if (isChinese(laid.text[pos - 1])) {
                reachable[static_cast<size_t>(pos)] = true;
                landing = true;
            }
        if (!landing) return laid.line[static_cast<size_t>(last + 1)];
    }
    return std::nullopt;
}

} // namespace vt::coursepack
