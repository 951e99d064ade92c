#include "support/sound_fixtures.h"

#include <QFile>
#include <QTemporaryDir>
#include <cmath>
#include <sndfile.h>

namespace vt::test {

namespace {

void put16(QByteArray& b, int v) {
    b.append(char(v & 0xFF));
    b.append(char((v >> 8) & 0xFF));
}
void put32(QByteArray& b, quint32 v) {
    put16(b, int(v & 0xFFFF));
    put16(b, int(v >> 16));
}

std::vector<float> tone(int hz, int ms, int rate, int hz2, int ms2) {
    std::vector<float> s;
    const long n1 = long(rate) * ms / 1000;
    const long n2 = long(rate) * ms2 / 1000;
    for (long i = 0; i < n1 + n2; ++i) {
        const int f = i < n1 ? hz : hz2;
        s.push_back(float(0.5 * std::sin(2 * M_PI * f * double(i) / rate)));
    }
    return s;
}

} // namespace

QByteArray ToneWav(int hz, int ms, int rate, int channels, int hz2, int ms2) {
    const std::vector<float> s = tone(hz, ms, rate, hz2, ms2);
    const quint32 dataBytes = quint32(s.size() * 2 * size_t(channels));
    QByteArray b("RIFF");
    put32(b, 36 + dataBytes);
    b.append("WAVEfmt ");
    put32(b, 16);
    put16(b, 1);
    put16(b, channels);
    put32(b, quint32(rate));
    put32(b, quint32(rate * channels * 2));
    put16(b, channels * 2);
    put16(b, 16);
    b.append("data");
    put32(b, dataBytes);
    for (float v : s)
        for (int c = 0; c < channels; ++c)
            put16(b, int(std::lround(v * 32767)));
    return b;
}

QByteArray ToneMp3(int hz, int ms, int rate) {
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = 1;
    info.format = SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III;
    if (!sf_format_check(&info)) return {};
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("tone.mp3"));
    SNDFILE* f = sf_open(path.toLocal8Bit().constData(), SFM_WRITE, &info);
    if (!f) return {};
    const std::vector<float> s = tone(hz, ms, rate, 0, 0);
    sf_writef_float(f, s.data(), sf_count_t(s.size()));
    sf_close(f);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return file.readAll();
}

std::vector<Run> SoundRuns(const std::vector<float>& samples, int minSilence) {
    std::vector<Run> runs;
    long quiet = minSilence; // the recording starts in silence
    for (long i = 0; i < long(samples.size()); ++i) {
        if (std::fabs(samples[size_t(i)]) < 1e-4f) {
            ++quiet;
            continue;
        }
        if (quiet >= minSilence || runs.empty()) runs.push_back(Run{i, 0});
        runs.back().frames = i - runs.back().start + 1;
        quiet = 0;
    }
    return runs;
}

double ToneHz(const std::vector<float>& samples, long start, long frames, int rate) {
    long crossings = 0;
    for (long i = start + 1; i < start + frames && i < long(samples.size()); ++i)
        if ((samples[size_t(i - 1)] < 0) != (samples[size_t(i)] < 0)) ++crossings;
    return frames > 0 ? crossings * double(rate) / (2.0 * double(frames)) : 0.0;
}

} // namespace vt::test
