#include "strokes.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>

namespace vt::coursepack {

namespace {
// The source grid is 1024 units wide with y pointing up and the baseline at 900.
constexpr double kMargin = 180.0;
constexpr double kScale = (kStrokeAreaTwips - 2 * kMargin) / 1024.0;

StrokePoint toTwips(double x, double y) {
    const double tx = std::round(kMargin + std::clamp(x, 0.0, 1024.0) * kScale);
    const double ty = std::round(kMargin + std::clamp(900.0 - y, 0.0, 1024.0) * kScale);
    return {static_cast<float>(std::max(1.0, tx)), static_cast<float>(std::max(1.0, ty))};
}
} // namespace

QString StrokeJsonPath(const QString& npmDir, QChar character) {
    return npmDir + QStringLiteral("/node_modules/hanzi-writer-data/") + character +
           QStringLiteral(".json");
}

std::vector<StrokePoint> TraceFromJson(const QByteArray& json, int* strokeCount) {
    std::vector<StrokePoint> out;
    const QJsonArray medians =
        QJsonDocument::fromJson(json).object().value(QStringLiteral("medians")).toArray();
    int strokes = 0;
    for (const QJsonValue& m : medians) {
        std::vector<StrokePoint> corners;
        for (const QJsonValue& p : m.toArray()) {
            const QJsonArray xy = p.toArray();
            if (xy.size() == 2) corners.push_back(toTwips(xy[0].toDouble(), xy[1].toDouble()));
        }
        if (corners.empty()) continue;
        // Walk the polyline and drop a point every kStrokeStep twips, corners included.
        out.push_back(corners.front());
        double carried = 0;
        for (size_t i = 1; i < corners.size(); ++i) {
            const double dx = corners[i].x - corners[i - 1].x, dy = corners[i].y - corners[i - 1].y;
            const double len = std::hypot(dx, dy);
            double at = kStrokeStep - carried;
            for (; at < len; at += kStrokeStep)
                out.push_back({static_cast<float>(std::round(corners[i - 1].x + dx * at / len)),
                               static_cast<float>(std::round(corners[i - 1].y + dy * at / len))});
            carried = len - (at - kStrokeStep);
            if (i + 1 == corners.size() || carried > kStrokeStep / 3) {
                out.push_back(corners[i]);
                carried = 0;
            }
        }
        out.push_back(StrokePoint{}); // end of the stroke
        ++strokes;
    }
    if (strokeCount) *strokeCount = strokes;
    return out;
}

} // namespace vt::coursepack
