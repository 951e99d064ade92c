#include "core/stroke_offsets.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace vt {

const QString& SampleCharacters() {
    static const QString chars = QStringLiteral("爱爸妈早晨扫地田方拿起抹布擦桌子笑了也晚上灯在下看"
                                                "报送杯热茶爷和小树我的家门口有棵冬天到给穿"
                                                "暖衣裳不冷夏撑开绿色伞大鸟鱼飞来只对那是机条游去海"
                                                "底潜水艇比尾巴谁长短好像把猴兔松鼠弯扁最公鸡"
                                                "鸭孔雀影前后个黑狗常跟着左右朋友陪秋气凉叶黄片从落"
                                                "空么蓝高群雁往南会儿排成人字啊神奇塔江边座星"
                                                "说多离们这近月亮美就盏明宫问什广播电视它很能让彩世"
                                                "界坐船梦里向太见球山平原还岛屿洋中国河万城自"
                                                "己您带泳吗溪深过几学鹰想风");
    return chars;
}

namespace {

// Quarter-twip offsets keep every sum exact in a 32-bit float.
constexpr std::array<float, kStrokeKeyCount> kOffsets = {
    1873.25f,  -612.5f, 2409.75f, -1555.0f, 377.5f,  -2980.25f, 1164.0f,  -88.75f, 3301.5f,
    -1027.25f, 745.0f,  -2251.5f, 2890.25f, -419.0f, 1598.75f,  -3312.0f, 96.5f,   -1740.75f};

void putFloat(char* at, float v) {
    uint32_t bits;
    std::memcpy(&bits, &v, 4);
    for (int i = 0; i < 4; ++i)
        at[i] = static_cast<char>((bits >> (8 * i)) & 0xFF);
}

float getFloat(const char* at) {
    uint32_t bits = 0;
    for (int i = 0; i < 4; ++i)
        bits |= static_cast<uint32_t>(static_cast<uint8_t>(at[i])) << (8 * i);
    float v;
    std::memcpy(&v, &bits, 4);
    return v;
}

} // namespace

float StrokeOffset(int key) {
    return key >= 0 && key < kStrokeKeyCount ? kOffsets[static_cast<size_t>(key)] : 0.0f;
}

QByteArray EncodeStrokeRecords(const std::vector<StrokePoint>& points) {
    QByteArray out(static_cast<qsizetype>(points.size()) * kStrokeRecordSize, '\0');
    char* p = out.data();
    for (size_t i = 0; i < points.size(); ++i, p += kStrokeRecordSize) {
        const int keyX = static_cast<int>((i * 7 + 3) % kStrokeKeyCount);
        const int keyY = static_cast<int>((i * 11 + 5) % kStrokeKeyCount);
        putFloat(p, points[i].x - StrokeOffset(keyX));
        p[4] = static_cast<char>(keyX);
        putFloat(p + 5, points[i].y - StrokeOffset(keyY));
        p[9] = static_cast<char>(keyY);
    }
    return out;
}

std::vector<StrokePoint> DecodeStrokeRecords(const QByteArray& bytes) {
    std::vector<StrokePoint> points;
    const qsizetype count = bytes.size() / kStrokeRecordSize;
    points.reserve(static_cast<size_t>(count));
    const char* p = bytes.constData();
    for (qsizetype i = 0; i < count; ++i, p += kStrokeRecordSize) {
        StrokePoint pt;
        pt.x = getFloat(p) + StrokeOffset(static_cast<uint8_t>(p[4]));
        pt.y = getFloat(p + 5) + StrokeOffset(static_cast<uint8_t>(p[9]));
        points.push_back(pt);
    }
    return points;
}

int CountStrokes(const std::vector<StrokePoint>& points) {
    int n = 0;
    for (const StrokePoint& pt : points)
        if (pt.IsSeparator()) ++n;
    return n;
}

} // namespace vt
