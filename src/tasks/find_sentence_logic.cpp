#include "tasks/find_sentence_logic.h"

#include "core/sentence_swap.h"
#include "platform/helpers.h"
#include "platform/random.h"

#include <QtEndian>

namespace vt {

QString SwapTwoCharacters(const QString& line, Random& random) {
    if (!LineCanBeSwapped(line)) return line;
    const int length = static_cast<int>(line.size());
    for (;;) {
        const int i = random.Pick(length);
        const int j = random.Pick(length);
        const QChar a = line[i - 1];
        const QChar b = line[j - 1];
        if (i == j || a == b || SwapPassesOver(a) || SwapPassesOver(b)) continue;
        QString swapped = line;
        swapped[i - 1] = b;
        swapped[j - 1] = a;
        return swapped;
    }
}

PlacedVersions PlaceVersions(const QString& line, const QString& altered1, const QString& altered2,
                             Random& random) {
    constexpr int16_t kNotPlaced = 4;
    std::vector<QString> left = {line, altered1, altered2};
    PlacedVersions placed;
    int16_t right = kNotPlaced;

    int r = static_cast<int>(Int(random.Rnd() * 3));
    if (r == 0) right = 0;
    placed.text[0] = left[static_cast<size_t>(r)];
    left.erase(left.begin() + r);

    r = static_cast<int>(Int(random.Rnd() * 2));
    if (r == 0 && right == kNotPlaced) right = 1;
    placed.text[1] = left[static_cast<size_t>(r)];
    left.erase(left.begin() + r);

    if (right == kNotPlaced) right = 2;
    placed.text[2] = left[0];
    placed.rightOption = right;
    return placed;
}

QString MarkSwap(const QString& wrong, const QString& right) {
    QString marked;
    marked.reserve(wrong.size() + 8);
    for (qsizetype k = 0; k < wrong.size(); ++k) {
        if (k < right.size() && wrong[k] == right[k]) {
            marked += wrong[k];
        } else {
            marked += u'【';
            marked += wrong[k];
            marked += u'】';
        }
    }
    return marked;
}

int CorrectnessRate(int right, int wrong) {
    const int asked = right + wrong;
    if (asked <= 0) return 0;
    // The share to two places is the percentage to whole numbers.
    return static_cast<int>(RoundHalfEven(100.0 * right / asked));
}

LinePositions ReadLinePositions(const QByteArray& bytes, int lineCount, int64_t trackLength) {
    LinePositions result;
    const int records = static_cast<int>(bytes.size() / 8);
    if (records != lineCount) {
        result.fault = records == 0 ? PositionsFault::Empty : PositionsFault::CountMismatch;
        return result;
    }
    result.positions.reserve(static_cast<size_t>(records));
    const auto* data = reinterpret_cast<const uchar*>(bytes.constData());
    for (int r = 0; r < records; ++r) {
        const LinePosition p{qFromLittleEndian<qint32>(data + 8 * r),
                             qFromLittleEndian<qint32>(data + 8 * r + 4)};
        if (p.From < 0 || p.From >= p.To || p.To > trackLength) {
            result.positions.clear();
            result.fault = PositionsFault::BadRecord;
            return result;
        }
        result.positions.push_back(p);
    }
    return result;
}

QByteArray PackLinePositions(const std::vector<LinePosition>& positions) {
    QByteArray bytes(static_cast<qsizetype>(positions.size() * 8), '\0');
    auto* data = reinterpret_cast<uchar*>(bytes.data());
    for (size_t r = 0; r < positions.size(); ++r) {
        qToLittleEndian<qint32>(positions[r].From, data + 8 * r);
        qToLittleEndian<qint32>(positions[r].To, data + 8 * r + 4);
    }
    return bytes;
}

QString PositionsFaultMessage(PositionsFault fault) {
    switch (fault) {
    case PositionsFault::CountMismatch:
        return QStringLiteral("Error: File yeap.zvk doesn't match file voep.zvk!");
    case PositionsFault::Empty:
        return QStringLiteral("File yeap.zvk is empty!");
    case PositionsFault::BadRecord:
        return QStringLiteral("Error: There is an error in control file!");
    case PositionsFault::None:
        break;
    }
    return {};
}

float BarProgress(int barWidth, int64_t position, int64_t from, int64_t to) {
    if (to <= from) return 0;
    return static_cast<float>(static_cast<double>(barWidth) * static_cast<double>(position - from) /
                              static_cast<double>(to - from));
}

} // namespace vt
