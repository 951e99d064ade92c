#include "lesson_checks.h"

#include "core/blank_layout.h"
#include "core/pinyin.h"
#include "platform/helpers.h"

#include <algorithm>
#include <vector>

namespace vt::coursepack {

namespace {} // namespace

int MeaningCount(const QString& english) {
    return static_cast<int>(english.count(u';')) + 1;
}

std::optional<int> BlankCuttingStalls(const QStringList& lines, bool play,
                                      const QString& playTitle) {
    if (lines.isEmpty()) return std::nullopt;
    const QString& title = play ? playTitle : lines[0];
    if (title.size() > kBlankTitleWidth) return std::nullopt;
    const BlankText laid = LayOutBlankText(lines, title, play);
    // Follow every cut the task can make, from where it starts, and look for one after which
    // the next could land nowhere.
    const int n = static_cast<int>(laid.text.size());
    const int lead = BlankLead(title);
    std::vector<bool> reachable(static_cast<size_t>(n) + 1, false);
    reachable[static_cast<size_t>(lead)] = true;
    for (int last = lead; last <= n; ++last) {
        if (!reachable[static_cast<size_t>(last)]) continue;
        if (CuttingStallsAfter(laid.text, last)) return laid.line[static_cast<size_t>(last + 1)];
        for (int pos = last + kNearestCut; pos <= std::min(last + kFarthestCut, n); ++pos)
            if (IsCuttable(laid.text[pos - 1])) reachable[static_cast<size_t>(pos)] = true;
    }
    return std::nullopt;
}

} // namespace vt::coursepack
