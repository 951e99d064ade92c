#include "tasks/blank_filling.h"

#include "core/course_shape.h"
#include "platform/random.h"

#include <algorithm>

namespace vt {

QString BlankCut::Shown() const {
    QString shown = text;
    shown.replace(kBlankLineBreak, QStringLiteral("\n"));
    return shown;
}

BlankCut CutBlanks(const QString& laidOut, int lead, Random& random) {
    BlankCut cut;
    const int size = static_cast<int>(laidOut.size());
    int last = std::clamp(lead, 0, size);
    cut.text = laidOut.left(last);
    int shownLength = static_cast<int>(cut.text.size()); // grows with the text as shown
    // Appends places from..to of the laid-out text. A cut never falls inside a line break, so
    // each piece holds whole ones.
    auto appendPlain = [&](int from, int to) {
        if (to < from) return;
        const QString piece = laidOut.mid(from - 1, to - from + 1);
        cut.text += piece;
        shownLength += static_cast<int>(piece.size() - piece.count(kBlankLineBreak));
    };
    while (!CuttingStallsAfter(laidOut, last) && cut.blanks.Count() < kMaxRows) {
        int pos = 0;
        do {
            pos = static_cast<int>(RoundHalfEven(random.Rnd() * 20 + last + 1));
        } while (pos - last < kNearestCut || (pos <= size && !IsCuttable(laidOut[pos - 1])));
        if (pos > size) break;
        appendPlain(last + 1, pos - 1);
        cut.blanks.Append(Blank{QString(laidOut[pos - 1]), QString()});
        cut.cutPlaces.push_back(pos);
        cut.shownPlaces.push_back(shownLength);
        const QString mark = QStringLiteral("(%1)__").arg(cut.blanks.Count());
        cut.text += mark;
        shownLength += static_cast<int>(mark.size());
        last = pos;
    }
    appendPlain(last + 1, size);
    return cut;
}

BlankCut CutLessonBlanks(const AppState& app, Random& random) {
    QStringList lines;
    const int count = std::min<int>(app.TextLineCount, app.TextLines.Count());
    for (int i = 1; i <= count; ++i)
        lines << app.TextLines[i];
    const BlankText laid = LayOutBlankText(lines, app.TextTitle, IsPlayLesson(app.OpenLesson));
    return CutBlanks(laid.text, BlankLead(app.TextTitle), random);
}

namespace {

// Draws `draws` entries of pool one after the other, each taken out of the running, from the
// first `remaining` entries only.
std::vector<QString> drawFrom(std::vector<QString> pool, int remaining, int draws, Random& random) {
    std::vector<QString> drawn;
    for (int i = 0; i < draws; ++i) {
        const int r = random.Pick(remaining);
        drawn.push_back(pool[static_cast<size_t>(r - 1)]);
        pool.erase(pool.begin() + (r - 1));
        --remaining;
    }
    return drawn;
}

std::vector<QString> charactersOf(const Array1<Blank>& blanks) {
    std::vector<QString> pool;
    for (const Blank& b : blanks)
        pool.push_back(b.Character);
    return pool;
}

} // namespace

std::vector<QString> FixedCandidates(const Array1<Blank>& blanks, Random& random) {
    const int count = std::min(blanks.Count(), kCandidateCount);
    return drawFrom(charactersOf(blanks), blanks.Count(), count, random);
}

std::array<QString, kCandidateCount> CandidatesFor(const Array1<Blank>& blanks, int current,
                                                   Random& random) {
    std::array<QString, kCandidateCount> offered;
    const std::vector<QString> drawn =
        drawFrom(charactersOf(blanks), kCandidateCount, kCandidateCount, random);
    std::copy(drawn.begin(), drawn.end(), offered.begin());
    const QString& own = blanks[current].Character;
    if (std::find(offered.begin(), offered.end(), own) == offered.end())
        offered[static_cast<size_t>(random.Pick(kCandidateCount) - 1)] = own;
    return offered;
}

BlankScore ScoreBlanks(const Array1<Blank>& blanks) {
    BlankScore score;
    for (const Blank& b : blanks) {
        if (b.Answer.isEmpty())
            ++score.empty;
        else if (b.Answer == b.Character)
            ++score.right;
        else
            ++score.wrong;
    }
    return score;
}

int CorrectnessRate(const BlankScore& score) {
    const int total = score.Total();
    if (total <= 0) return 0;
    // Right out of total to two places, exactly: the hundredths and what is left over.
    const int hundredths = score.right * 100 / total;
    const int rest = score.right * 100 % total;
    if (2 * rest > total || (2 * rest == total && hundredths % 2 == 1)) return hundredths + 1;
    return hundredths;
}

QString BlankVerdict(const Blank& blank) {
    if (blank.Answer.isEmpty()) return QStringLiteral("___(Blank)  未填");
    if (blank.Answer == blank.Character) return QStringLiteral("Right  正确");
    return QStringLiteral("Your answer ") + blank.Answer + QStringLiteral(" is wrong");
}

QString BlankItem(int number, const QString& answer) {
    const QString n = QString::number(number);
    return answer.isEmpty() ? n : n + QStringLiteral(" - ") + answer;
}

} // namespace vt
