#include "audio.h"

#include "platform/memory_sound_file.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryFile>
#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <numbers>
#include <sndfile.h>
#include <thread>

namespace vt::coursepack {

namespace {

uint32_t le32(const char* p) {
    return static_cast<uint32_t>(static_cast<uint8_t>(p[0])) |
           static_cast<uint32_t>(static_cast<uint8_t>(p[1])) << 8 |
           static_cast<uint32_t>(static_cast<uint8_t>(p[2])) << 16 |
           static_cast<uint32_t>(static_cast<uint8_t>(p[3])) << 24;
}
uint16_t le16(const char* p) {
    return static_cast<uint16_t>(static_cast<uint8_t>(p[0]) | static_cast<uint8_t>(p[1]) << 8);
}
void put32(QByteArray& b, uint32_t v) {
    for (int i = 0; i < 4; ++i)
        b.append(static_cast<char>((v >> (8 * i)) & 0xFF));
}
void put16(QByteArray& b, uint16_t v) {
    b.append(static_cast<char>(v & 0xFF));
    b.append(static_cast<char>(v >> 8));
}

} // namespace

Voice VoiceNamed(const QString& name) {
    if (name == QStringLiteral("male2")) return {QStringLiteral("m3"), 35, 150};
    if (name == QStringLiteral("female1")) return {QStringLiteral("f2"), 60, 150};
    if (name == QStringLiteral("female2")) return {QStringLiteral("f4"), 72, 155};
    if (name == QStringLiteral("child1")) return {QStringLiteral("f5"), 90, 160};
    return {QString(), 45, 150};
}

Voice TeacherVoice() {
    // The engine speaks this voice at about 90 Hz; its tones are laid around 92 Hz, so that the
    // lowest point of tone 3 stays above 65 Hz and the start of tone 4 below 130 Hz.
    return {QString(), 50, 140, 92.0f};
}

Pcm DecodeWav(const QByteArray& bytes) {
    Pcm pcm;
    const char* d = bytes.constData();
    const qsizetype n = bytes.size();
    if (n < 12 || std::memcmp(d, "RIFF", 4) != 0 || std::memcmp(d + 8, "WAVE", 4) != 0) return pcm;
    int channels = 1, bits = 16;
    for (qsizetype at = 12; at + 8 <= n;) {
        const uint32_t size = le32(d + at + 4);
        if (std::memcmp(d + at, "fmt ", 4) == 0 && at + 24 <= n) {
            if (le16(d + at + 8) != 1) return pcm; // PCM only
            channels = std::max<int>(1, le16(d + at + 10));
            pcm.rate = static_cast<int>(le32(d + at + 12));
            bits = le16(d + at + 22);
        } else if (std::memcmp(d + at, "data", 4) == 0) {
            if (bits != 16) return pcm;
            const qsizetype begin = at + 8;
            const qsizetype avail = n - begin;
            const qsizetype len = (size == 0 || size > static_cast<uint32_t>(avail)) ? avail : size;
            const qsizetype frames = len / (2 * channels);
            pcm.samples.resize(static_cast<size_t>(frames));
            for (qsizetype i = 0; i < frames; ++i)
                pcm.samples[static_cast<size_t>(i)] =
                    static_cast<int16_t>(le16(d + begin + i * 2 * channels)) / 32768.0f;
            return pcm;
        }
        at += 8 + size + (size & 1);
        if (size > static_cast<uint32_t>(n)) break;
    }
    return pcm;
}

QByteArray EncodeWav(const Pcm& pcm) {
    QByteArray b;
    const uint32_t dataBytes = static_cast<uint32_t>(pcm.samples.size() * 2);
    b.reserve(static_cast<qsizetype>(44 + dataBytes));
    b.append("RIFF");
    put32(b, 36 + dataBytes);
    b.append("WAVEfmt ");
    put32(b, 16);
    put16(b, 1);
    put16(b, 1);
    put32(b, static_cast<uint32_t>(pcm.rate));
    put32(b, static_cast<uint32_t>(pcm.rate * 2));
    put16(b, 2);
    put16(b, 16);
    b.append("data");
    put32(b, dataBytes);
    for (float s : pcm.samples) {
        const float c = std::clamp(s, -1.0f, 1.0f);
        put16(b, static_cast<uint16_t>(static_cast<int16_t>(std::lround(c * 32767.0f))));
    }
    return b;
}

namespace {
float peakOf(const std::vector<float>& s) {
    float peak = 0;
    for (float v : s)
        peak = std::max(peak, std::fabs(v));
    return peak;
}
} // namespace

void TrimSilence(Pcm& pcm, float threshold, int marginMs) {
    auto& s = pcm.samples;
    if (s.empty()) return;
    const float peak = peakOf(s);
    const float level = std::max(threshold * peak, 1e-4f);
    size_t first = 0, last = s.size();
    while (first < s.size() && std::fabs(s[first]) < level)
        ++first;
    while (last > first && std::fabs(s[last - 1]) < level)
        --last;
    if (first >= last) {
        s.clear();
        return;
    }
    const size_t margin = static_cast<size_t>(pcm.rate) * static_cast<size_t>(marginMs) / 1000;
    first = first > margin ? first - margin : 0;
    last = std::min(s.size(), last + margin);
    s = std::vector<float>(s.begin() + static_cast<long>(first),
                           s.begin() + static_cast<long>(last));
    // Short fades so a cut never clicks.
    const size_t fade = std::min(s.size() / 2, static_cast<size_t>(pcm.rate) * 4 / 1000);
    for (size_t i = 0; i < fade; ++i) {
        const float g = static_cast<float>(i) / static_cast<float>(fade);
        s[i] *= g;
        s[s.size() - 1 - i] *= g;
    }
}

void EvenLoudness(Pcm& pcm, float targetRms, float peakLimit) {
    auto& s = pcm.samples;
    if (s.empty()) return;
    const float peak = peakOf(s);
    if (peak <= 0) return;
    // Loudness of the voiced part only: pauses inside a sentence must not make it louder.
    double sum = 0;
    size_t count = 0;
    for (float v : s)
        if (std::fabs(v) > 0.05f * peak) {
            sum += static_cast<double>(v) * v;
            ++count;
        }
    if (count == 0) return;
    const float rms = static_cast<float>(std::sqrt(sum / static_cast<double>(count)));
    const float gain = std::min(targetRms / rms, peakLimit / peak);
    for (float& v : s)
        v *= gain;
}

void AppendSilence(Pcm& pcm, int ms) {
    pcm.samples.resize(
        pcm.samples.size() + static_cast<size_t>(pcm.rate) * static_cast<size_t>(ms) / 1000, 0.0f);
}

bool SpeechAvailable() {
    QProcess p;
    p.start(QStringLiteral("espeak-ng"), {QStringLiteral("--version")});
    return p.waitForFinished(10000) && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
}

namespace {
// The raw speech of espeak-ng for a text; with ssml the text may carry <break> marks.
Pcm runSpeech(const QString& text, const Voice& voice, bool ssml, QString* error) {
    QString name = QStringLiteral("cmn-latn-pinyin");
    if (!voice.variant.isEmpty()) name += u'+' + voice.variant;
    QStringList args{QStringLiteral("-v"),      name,
                     QStringLiteral("-p"),      QString::number(voice.pitch),
                     QStringLiteral("-s"),      QString::number(voice.speed),
                     QStringLiteral("--stdout")};
    if (ssml) args << QStringLiteral("-m");
    QProcess p;
    p.start(QStringLiteral("espeak-ng"), args << text);
    if (!p.waitForFinished(120000) || p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0) {
        if (error)
            *error =
                QStringLiteral("espeak-ng could not speak \"%1\": %2").arg(text, p.errorString());
        return {};
    }
    return DecodeWav(p.readAllStandardOutput());
}

constexpr int kBatchPauseMs = 1200;
constexpr int kBatchCutMs = 600; // a silence this long only stands between two items
} // namespace

std::vector<Pcm> SpeakPinyinBatch(const QStringList& items, const Voice& voice, QString* error) {
    QString text = QStringLiteral("<speak>");
    for (int i = 0; i < items.size(); ++i) {
        if (i > 0) text += QStringLiteral("<break time=\"%1ms\"/>").arg(kBatchPauseMs);
        text += items[i].toHtmlEscaped();
    }
    text += QStringLiteral("</speak>");
    const Pcm all = runSpeech(text, voice, true, error);
    std::vector<Pcm> out;
    const size_t cut = static_cast<size_t>(all.rate) * kBatchCutMs / 1000;
    size_t begin = 0, quiet = 0;
    bool voiced = false;
    for (size_t i = 0; i <= all.samples.size(); ++i) {
        const bool end = i == all.samples.size();
        if (!end && std::fabs(all.samples[i]) > 0.002f) {
            if (!voiced) begin = i;
            voiced = true;
            quiet = 0;
            continue;
        }
        if (!end) ++quiet;
        if (voiced && (end || quiet >= cut)) {
            Pcm piece;
            piece.rate = all.rate;
            piece.samples.assign(all.samples.begin() + static_cast<long>(begin),
                                 all.samples.begin() + static_cast<long>(i));
            TrimSilence(piece);
            EvenLoudness(piece);
            out.push_back(std::move(piece));
            voiced = false;
        }
    }
    if (static_cast<qsizetype>(out.size()) == items.size()) return out;
    out.clear();
    for (const QString& item : items)
        out.push_back(SpeakPinyin(item, voice, error));
    return out;
}

Pcm SpeakPinyin(const QString& pinyin, const Voice& voice, QString* error) {
    Pcm pcm = runSpeech(pinyin, voice, false, error);
    TrimSilence(pcm);
    EvenLoudness(pcm);
    if (pcm.samples.empty() && error)
        *error = QStringLiteral("espeak-ng said nothing for \"%1\"").arg(pinyin);
    return pcm;
}

Pcm VerdictSound(const QString& name) {
    // Each sound is a few notes: (frequency Hz, length ms); 0 Hz is a rest.
    std::vector<std::pair<double, int>> notes;
    if (name == QStringLiteral("right"))
        notes = {{880, 110}, {1318.5, 220}};
    else if (name == QStringLiteral("wrong"))
        notes = {{220, 160}, {0, 40}, {185, 280}};
    else if (name == QStringLiteral("careful"))
        notes = {{660, 90}, {0, 70}, {660, 90}, {0, 70}, {660, 90}};
    else
        notes = {{523.25, 100}, {659.25, 100}, {783.99, 100}, {1046.5, 220}};
    Pcm pcm;
    const bool buzz = name == QStringLiteral("wrong");
    for (const auto& [hz, ms] : notes) {
        const size_t n = static_cast<size_t>(pcm.rate) * static_cast<size_t>(ms) / 1000;
        for (size_t i = 0; i < n; ++i) {
            const double t = static_cast<double>(i) / pcm.rate;
            const double env = std::min(1.0, static_cast<double>(i) / (pcm.rate * 0.005)) *
                               std::exp(-3.0 * static_cast<double>(i) / static_cast<double>(n));
            double v = 0;
            if (hz > 0) {
                const double ph = 2 * std::numbers::pi * hz * t;
                v = buzz ? 0.6 * std::sin(ph) + 0.3 * std::sin(3 * ph)
                         : std::sin(ph) + 0.25 * std::sin(2 * ph);
            }
            pcm.samples.push_back(static_cast<float>(0.45 * env * v));
        }
    }
    return pcm;
}

QByteArray EncodeMp3(const Pcm& pcm, QString* error) {
    QTemporaryFile tmp;
    tmp.setFileTemplate(QDir::tempPath() + QStringLiteral("/coursepack-XXXXXX.mp3"));
    if (!tmp.open()) {
        if (error) *error = QStringLiteral("no temporary file for the MP3 encoder");
        return {};
    }
    const QByteArray name = tmp.fileName().toLocal8Bit();
    tmp.close();
    SF_INFO info{};
    info.samplerate = pcm.rate;
    info.channels = 1;
    info.format = SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III;
    SNDFILE* f = sf_open(name.constData(), SFM_WRITE, &info);
    if (!f) {
        if (error)
            *error = QStringLiteral("libsndfile cannot write MP3 here: %1")
                         .arg(QString::fromUtf8(sf_strerror(nullptr)));
        return {};
    }
    double quality = 0.3; // VBR quality: 0 best .. 1 smallest
    sf_command(f, SFC_SET_VBR_ENCODING_QUALITY, &quality, sizeof quality);
    sf_write_float(f, pcm.samples.data(), static_cast<sf_count_t>(pcm.samples.size()));
    sf_close(f);
    QFile in(tmp.fileName());
    if (!in.open(QIODevice::ReadOnly)) return {};
    return in.readAll();
}

Pcm DecodeSoundFile(const QByteArray& bytes) {
    Pcm pcm;
    MemorySoundFile file(bytes);
    if (!file.IsOpen()) return pcm;
    const int channels = std::max(1, file.Info().channels);
    pcm.rate = file.Info().samplerate;
    std::vector<float> buf(4096 * static_cast<size_t>(channels));
    sf_count_t got;
    while ((got = file.ReadFrames(buf.data(), 4096)) > 0)
        for (sf_count_t i = 0; i < got; ++i)
            pcm.samples.push_back(buf[static_cast<size_t>(i * channels)]);
    return pcm;
}

void RunParallel(const std::vector<std::function<void()>>& jobs, int workers) {
    std::atomic<size_t> next{0};
    auto work = [&]() {
        for (size_t i; (i = next.fetch_add(1)) < jobs.size();)
            jobs[i]();
    };
    std::vector<std::thread> threads;
    for (int w = 1; w < std::max(1, workers); ++w)
        threads.emplace_back(work);
    work();
    for (auto& t : threads)
        t.join();
}

} // namespace vt::coursepack
