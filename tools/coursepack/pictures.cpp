#include "pictures.h"

#include <QBuffer>
#include <QFont>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace vt::coursepack {

namespace {
QColor hue(int seed, int saturation, int value) {
    return QColor::fromHsv((seed * 47) % 360, saturation, value);
}
} // namespace

QImage DrawPlayPicture(const Lesson& play, int index, int count) {
    QImage img(kPictureWidth, kPictureHeight, QImage::Format_RGB32);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    const int seed = play.number;

    // Sky or wall, floor, and a window that moves a little from picture to picture.
    QLinearGradient back(0, 0, 0, kPictureHeight);
    back.setColorAt(0, hue(seed, 60, 250));
    back.setColorAt(1, hue(seed + 3, 90, 200));
    p.fillRect(img.rect(), back);
    p.fillRect(QRect(0, 170, kPictureWidth, 70), hue(seed + 5, 80, 150));
    p.setPen(Qt::NoPen);
    p.setBrush(hue(seed + 1, 40, 255));
    p.drawRect(QRect(20 + (index * 37) % 200, 24, 80, 56));

    // The speakers in order of their first line; the one speaking now stands in front.
    QStringList speakers;
    for (const PlayLine& l : play.playLines)
        if (!speakers.contains(l.speaker)) speakers << l.speaker;
    const int lines = static_cast<int>(play.playLines.size());
    const int lineIndex =
        lines == 0 ? -1 : std::min(lines - 1, (index - 1) * lines / std::max(1, count));
    const QString speaking =
        lineIndex >= 0 ? play.playLines[static_cast<size_t>(lineIndex)].speaker : QString();
    const int n = std::max<int>(1, static_cast<int>(speakers.size()));
    QFont small(QStringLiteral("Noto Sans CJK SC"));
    small.setPixelSize(12);
    p.setFont(small);
    for (int i = 0; i < speakers.size(); ++i) {
        const int cx = (i + 1) * kPictureWidth / (n + 1);
        const bool now = speakers[i] == speaking;
        const int top = now ? 110 : 122;
        p.setPen(Qt::NoPen);
        p.setBrush(hue(seed + 7 * (i + 1), 150, 190));
        p.drawRoundedRect(QRect(cx - 20, top + 30, 40, 60), 12, 12);
        p.setBrush(QColor(255, 224, 189));
        p.drawEllipse(QPoint(cx, top + 14), 16, 16);
        p.setPen(Qt::black);
        p.drawText(QRect(cx - 40, 212, 80, 20), Qt::AlignCenter, speakers[i]);
    }

    // The speech bubble.
    if (lineIndex >= 0) {
        QString said = play.playLines[static_cast<size_t>(lineIndex)].text;
        if (said.size() > 14) said = said.left(13) + QStringLiteral("…");
        QFont big(QStringLiteral("Noto Sans CJK SC"));
        big.setPixelSize(16);
        p.setFont(big);
        const QRect bubble(16, 62, kPictureWidth - 32, 30);
        p.setPen(QPen(Qt::black, 1));
        p.setBrush(Qt::white);
        p.drawRoundedRect(bubble, 10, 10);
        p.drawText(bubble, Qt::AlignCenter, said);
    }

    // The title on a band at the top.
    QFont title(QStringLiteral("Noto Sans CJK SC"));
    title.setPixelSize(14);
    title.setBold(true);
    p.setFont(title);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0, 0, 0, 110));
    p.drawRect(QRect(0, 0, kPictureWidth, 20));
    p.setPen(Qt::white);
    p.drawText(QRect(6, 0, kPictureWidth - 12, 20), Qt::AlignVCenter | Qt::AlignLeft,
               QStringLiteral("%1  %2/%3").arg(play.playTitle).arg(index).arg(count));
    p.end();
    return img;
}

QByteArray JpegBytes(const QImage& image) {
    QByteArray bytes;
    QBuffer buf(&bytes);
    buf.open(QIODevice::WriteOnly);
    image.save(&buf, "JPG", 85);
    return bytes;
}

} // namespace vt::coursepack
