#include "core/sentence_swap.h"

#include "core/pinyin.h"
#include "platform/helpers.h"

namespace vt {

bool SwapPassesOver(QChar c) {
    static const QString marks = QStringLiteral("，。；！.？、“”（）- ：");
    return marks.contains(c) || IsNumeric(QString(c));
}

bool LineIsAsked(const QString& line) {
    return ChineseOnly(Trim(line)).size() >= 4;
}

bool LineCanBeSwapped(const QString& line) {
    const QString trimmed = Trim(line);
    QChar first;
    bool haveFirst = false;
    for (QChar c : trimmed) {
        if (SwapPassesOver(c)) continue;
        if (!haveFirst) {
            first = c;
            haveFirst = true;
        } else if (c != first) {
            return true;
        }
    }
    return false;
}

} // namespace vt
