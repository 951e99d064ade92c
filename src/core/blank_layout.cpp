#include "core/blank_layout.h"

#include "core/pinyin.h"

#include <algorithm>

namespace vt {

namespace {

void add(BlankText& laid, const QString& piece, int from) {
    laid.text += piece;
    laid.line.insert(laid.line.end(), static_cast<size_t>(piece.size()), from);
}

} // namespace

int BlankLead(const QString& title) {
    return (kBlankTitleWidth - static_cast<int>(title.size())) * 2;
}

BlankText LayOutBlankText(const QStringList& lines, const QString& title, bool play) {
    BlankText laid;
    // The centring blanks never go below none, even for a title too wide.
    const int pad =
        (kBlankTitleWidth - std::min<int>(static_cast<int>(title.size()), kBlankTitleWidth)) * 2;
    add(laid, QString(pad, u' '), 0);
    if (play) {
        add(laid, title, 0);
        for (int i = 0; i < lines.size(); ++i) {
            add(laid, kBlankLineBreak, i + 1);
            add(laid, lines[i], i + 1);
        }
        return laid;
    }
    if (lines.isEmpty()) return laid;
    add(laid, lines[0], 0);
    for (int i = 1; i < lines.size(); ++i) {
        if (lines[i].startsWith(QStringLiteral("  "))) add(laid, kBlankLineBreak, i);
        add(laid, lines[i], i);
    }
    return laid;
}

bool IsCuttable(QChar c) {
    return !HasNonChinese(QString(c));
}

bool CuttingStallsAfter(const QString& text, int last) {
    const int size = static_cast<int>(text.size());
    if (last + kFarthestCut > size) return false; // a draw may land past the end
    for (int pos = std::max(last + kNearestCut, 1); pos <= last + kFarthestCut; ++pos)
        if (IsCuttable(text[pos - 1])) return false;
    return true;
}

} // namespace vt
