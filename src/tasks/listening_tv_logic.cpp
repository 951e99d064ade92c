#include "tasks/listening_tv_logic.h"

#include "platform/helpers.h"

namespace vt {

QString BuildPlayText(const QString& title, const Array1<QString>& lines, int lineCount) {
    QString text = title + QStringLiteral("\r\n");
    const int count = std::min(lineCount, lines.Count());
    for (int i = 1; i <= count; ++i) {
        if (i > 1) text += QStringLiteral("\r\n");
        text += QString::number(i) + QStringLiteral(") ") + lines[i];
    }
    return text;
}

QStringList PlayListItems(const Array1<QString>& lines, int lineCount) {
    QStringList items = {QStringLiteral("- Select 请选择 -"), QStringLiteral(" Step 1 "),
                         QStringLiteral(" Step 2 ")};
    const int count = std::min(lineCount, lines.Count());
    for (int i = 1; i <= count; ++i) {
        const QString& line = lines[i];
        items << QString::number(i) + QStringLiteral(". ") +
                     (line.size() >= 9 ? line.left(8) + QStringLiteral("......") : line);
    }
    return items;
}

std::optional<TextMark> PlayLineMark(const QString& text, const QString& line) {
    if (line.isEmpty()) return std::nullopt;
    const qsizetype at = text.indexOf(line);
    if (at < 0) return std::nullopt;
    return TextMark{static_cast<int>(at), static_cast<int>(line.size())};
}

int PictureInterval(int64_t playLength, int pictureCount) {
    if (pictureCount <= 0) return 0;
    return static_cast<int>(
        RoundHalfEven(static_cast<double>(playLength + 1000) / static_cast<double>(pictureCount)));
}

int NextPicture(int index, int pictureCount) {
    return index >= pictureCount ? 1 : index + 1;
}

int LineAtPosition(const std::vector<LinePosition>& lines, int64_t position) {
    for (size_t i = lines.size(); i > 0; --i)
        if (lines[i - 1].From < position) return static_cast<int>(i);
    return 0;
}

QString PlayTimeText(int64_t positionMs, int64_t lengthMs) {
    const auto seconds = [](int64_t ms) {
        return QString::number(static_cast<double>(ms) / 1000.0, 'f', 1);
    };
    return seconds(positionMs) + QStringLiteral(" / ") + seconds(lengthMs);
}

PlayListButtons PlayListButtonsAt(int index, int lastIndex) {
    if (index < kPlayFirstLine) return {false, false};
    if (index == kPlayFirstLine) return {false, index != lastIndex};
    if (index == lastIndex) return {true, false};
    return {true, true};
}

} // namespace vt
