#include "tasks/vocabulary_logic.h"

#include "core/pinyin.h"
#include "platform/random.h"

#include <algorithm>

namespace vt {

Array1<LessonWord> ShuffleWords(const Array1<LessonWord>& words, int count, Random& random) {
    count = std::clamp(count, 0, words.Count());
    std::vector<LessonWord> left;
    left.reserve(static_cast<size_t>(count));
    for (int i = 1; i <= count; ++i) {
        LessonWord w = words[i];
        w.Pinyin = StripPunctuation(w.Pinyin);
        left.push_back(std::move(w));
    }
    Array1<LessonWord> drill;
    drill.Reserve(count);
    while (!left.empty()) {
        const int k = random.Pick(static_cast<int>(left.size()));
        const auto at = left.begin() + (k - 1);
        drill.Append(std::move(*at));
        left.erase(at);
    }
    return drill;
}

QStringList SplitMeanings(const QString& english) {
    QStringList meanings = english.split(u';');
    for (QString& m : meanings)
        m = Trim(m);
    return meanings;
}

std::vector<int> DrawAnswerLines(int count, int lastOption, Random& random) {
    count = std::clamp(count, 0, lastOption);
    std::vector<int> lines;
    lines.reserve(static_cast<size_t>(count));
    while (static_cast<int>(lines.size()) < count) {
        const int line = random.Pick(lastOption);
        if (std::find(lines.begin(), lines.end(), line) == lines.end()) lines.push_back(line);
    }
    return lines;
}

QString DrawWrongMeaning(const Array1<LessonWord>& drill, int current, Random& random) {
    const int rows = drill.Count();
    if (rows < 2 && (rows == 0 || current == 1)) return {};
    int r = 0;
    do {
        r = random.Pick(rows);
    } while (r == current);
    const QString& english = drill[r].Meaning;
    if (!english.contains(u';')) return english;
    const QStringList pieces = SplitMeanings(english);
    return pieces[static_cast<qsizetype>(random.Rnd() * static_cast<double>(pieces.size()))];
}

QString OptionCaption(const QString& meaning) {
    return u' ' + RTrim(meaning) + u' ';
}

} // namespace vt
