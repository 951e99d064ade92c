// The gap between spoken syllables in what goes to the sound device, over a sentence of 20
// syllables: our engine (one device, one mixer, the next clip queued before the last one ends)
// beside a naive player that opens, plays and closes one file per syllable. Also the cost of a
// play command for a file heard for the first time and for one already decoded.
//
//   bench_speech_gap              runs both and prints the figures
//   bench_speech_gap --ours       only our engine (with a sound server, or silent without one)
//   bench_speech_gap --buffer N   our device buffer of N frames instead of about 10 ms
//   bench_speech_gap --analyze FILE RATE
//                                 prints the sounds and gaps in a raw recording (signed 16-bit,
//                                 stereo, e.g. from parec of the server's monitor)
//
// The syllables are sine tones of known lengths written for this run; gaps are stretches of
// exact silence of at least 8 samples between sounds. Our engine is opened as the program opens
// it, with the sound server latency the program asks for; the naive player is given the same.

#include "core/data_paths.h"
#include "core/runtime.h"
#include "core/speech.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/random.h"
#include "platform/screen.h"
#include "platform/timers.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <sndfile.h>
#include <vector>

#ifdef VANTORIA_HAVE_QT_MULTIMEDIA
#include <QAudioOutput>
#include <QMediaPlayer>
#endif

using namespace vt;

namespace {

int bufferFrames = 0; // of the device; 0 for the program's choice

const char* const kSentence = "wo3 men0 jin1 tian1 qu4 tu2 shu1 guan3 kan4 shu1 "
                              "ni3 xiang3 gen1 wo3 men0 yi4 qi3 qu4 ma0 ne0";

struct Syllable {
    QString sound; // file name without extension
    int ms;
};

// The syllables of the sentence as the speech will play them, each written as a tone file.
std::vector<Syllable> writeSyllables(const QString& root) {
    std::vector<Syllable> out;
    int i = 0;
    for (const QString& word : QString::fromLatin1(kSentence).split(u' ')) {
        QString sound = word;
        if (sound.endsWith(u'0')) sound.back() = u'1'; // a neutral syllable's recording
        auto same = std::find_if(out.begin(), out.end(),
                                 [&](const Syllable& s) { return s.sound == sound; });
        if (same != out.end()) { // a syllable said twice has one recording
            out.push_back(*same);
            ++i;
            continue;
        }
        const int ms = 180 + (i * 37) % 140;
        const int hz = 300 + 60 * i;
        const QString path = SyllableSoundFile(DataFolderRoot(root), sound);
        QDir().mkpath(QFileInfo(path).absolutePath());
        SF_INFO info{};
        info.samplerate = 16000;
        info.channels = 1;
        info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
        SNDFILE* f = sf_open(path.toLocal8Bit().constData(), SFM_WRITE, &info);
        std::vector<float> s(size_t(16 * ms));
        for (size_t k = 0; k < s.size(); ++k)
            s[k] = float(0.4 * std::sin(2 * M_PI * hz * double(k) / 16000 + 0.3));
        sf_writef_float(f, s.data(), sf_count_t(s.size()));
        sf_close(f);
        out.push_back({sound, ms});
        ++i;
    }
    return out;
}

struct Gaps {
    double firstMs = -1; // where the first sound starts
    double lastMs = 0;   // where the last one ends
    int sounds = 0;
    int gaps = 0;
    double totalMs = 0;
    double maxMs = 0;
};

// Sounds and the silences between them in interleaved samples (first channel read).
Gaps findGaps(const std::vector<float>& samples, int channels, int rate, bool print) {
    Gaps g;
    long quiet = 0;
    bool inSound = false;
    const long frames = long(samples.size()) / channels;
    for (long i = 0; i < frames; ++i) {
        const bool silent = std::fabs(samples[size_t(i * channels)]) < 1e-4f;
        if (silent) {
            ++quiet;
            continue;
        }
        if (!inSound || quiet >= 8) {
            if (inSound) {
                const double ms = quiet * 1000.0 / rate;
                if (print)
                    std::printf("  gap %8.2f ms at %8.1f ms\n", ms, (i - quiet) * 1000.0 / rate);
                if (ms < 500) { // a longer silence separates two runs of the bench
                    ++g.gaps;
                    g.totalMs += ms;
                    g.maxMs = std::max(g.maxMs, ms);
                }
            }
            ++g.sounds;
            inSound = true;
            if (g.firstMs < 0) g.firstMs = i * 1000.0 / rate;
        }
        quiet = 0;
        g.lastMs = (i + 1) * 1000.0 / rate;
    }
    return g;
}

int analyze(const char* file, int rate) {
    QFile f(QString::fromLocal8Bit(file));
    if (!f.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", file);
        return 1;
    }
    const QByteArray raw = f.readAll();
    std::vector<float> s(size_t(raw.size()) / 2);
    const auto* p = reinterpret_cast<const int16_t*>(raw.constData());
    for (size_t i = 0; i < s.size(); ++i)
        s[i] = p[i] / 32768.0f;
    const Gaps g = findGaps(s, 2, rate, true);
    std::printf("%d sounds, %d gaps under 500 ms, total %.2f ms, largest %.2f ms\n", g.sounds,
                g.gaps, g.totalMs, g.maxMs);
    return 0;
}

void runLoop(int ms) {
    QTimer::singleShot(ms, qApp, [] { QCoreApplication::quit(); });
    QCoreApplication::exec();
}

double ours(const QString& root, const std::vector<Syllable>& syllables) {
    QtTimeService time;
    ScriptedMessageBoxes boxes;
    SeededRandom random(1);
    FileStore files;
    FixedScreenInfo screen;
    Runtime rt(time, boxes, random, files, screen);
    rt.app.AppPath = root + u'/';
    auto sound = SoundSystem::CreateForProgram(time, bufferFrames);
    sound->Attach(rt);
    std::printf("output: %s\n", qPrintable(sound->OutputDescription()));
    SdlOutput* device = sound->Device();
    const int rate = sound->Engine().Rate();
    const int channels = sound->Engine().Channels();

    // The cost of a play command: a file heard for the first time, then again from the cache.
    QElapsedTimer t;
    const QString first = SyllableSoundFile(rt.app.AppPath, syllables[0].sound);
    t.start();
    PlayWave(rt, first, OwnerTag::None);
    const double firstUs = t.nsecsElapsed() / 1000.0;
    t.restart();
    PlayWave(rt, first, OwnerTag::None);
    const double cachedUs = t.nsecsElapsed() / 1000.0;
    sound->MMControl1->SetCommand("Close");
    const double bufferMs = device->BufferFrames() * 1000.0 / rate;
    std::printf(
        "play command, first time:   %8.1f us (decoding), then the next buffer (<= %.1f ms)\n",
        firstUs, bufferMs);
    std::printf("play command, cached:       %8.1f us, then the next buffer (<= %.1f ms)\n",
                cachedUs, bufferMs);
    runLoop(700); // apart from the sentence in a recording

    // The sentence, timed on the wall clock from the call to the end of speech.
    sound->Cache().Clear();
    device->SetTap(true);
    double wallMs = 0;
    double mixedMs = 0;
    int64_t mixedBefore = 0;
    sound->SetSpeechEndHandler(0, [&] {
        wallMs = t.nsecsElapsed() / 1e6;
        mixedMs = (sound->Engine().FramesMixed() - mixedBefore) * 1000.0 / rate;
        QCoreApplication::quit();
    });
    t.restart();
    mixedBefore = sound->Engine().FramesMixed();
    SpeakPinyin(rt, QString::fromLatin1(kSentence));
    QTimer::singleShot(30000, qApp, [] { QCoreApplication::quit(); });
    QCoreApplication::exec();
    runLoop(300); // the last syllable's last frames
    device->SetTap(false);
    const std::vector<float> tap = device->TakeTap();
    const Gaps g = findGaps(tap, channels, rate, false);
    double sumMs = 0;
    for (const Syllable& s : syllables)
        sumMs += s.ms;
    std::printf("ours:  %d sounds in the output, %d silent gaps, %.3f ms in all, largest %.3f ms; "
                "speech took %.1f ms for %.1f ms of syllables\n",
                g.sounds, g.gaps, g.totalMs, g.maxMs, wallMs, sumMs);
    std::printf("ours:  sound from %.2f ms to %.2f ms of the output: %.2f ms\n", g.firstMs,
                g.lastMs, g.lastMs - g.firstMs);
    std::printf("ours:  the output pulled %.1f ms of sound in %.1f ms on the wall clock\n", mixedMs,
                wallMs);
    return g.totalMs / double(syllables.size() - 1);
}

#ifdef VANTORIA_HAVE_QT_MULTIMEDIA
// Opens, plays and closes one file per syllable; the next one is opened when the last one ends.
double naive(const QString& root, const std::vector<Syllable>& syllables) {
    size_t index = 0;
    double sumMs = 0;
    for (const Syllable& s : syllables)
        sumMs += s.ms;
    QElapsedTimer t;
    std::function<void()> next = [&] {
        if (index == syllables.size()) {
            QCoreApplication::quit();
            return;
        }
        const Syllable& s = syllables[index++];
        auto* player = new QMediaPlayer;
        auto* out = new QAudioOutput(player);
        player->setAudioOutput(out);
        QObject::connect(player, &QMediaPlayer::mediaStatusChanged, player,
                         [player, &next](QMediaPlayer::MediaStatus status) {
                             if (status != QMediaPlayer::EndOfMedia &&
                                 status != QMediaPlayer::InvalidMedia)
                                 return;
                             player->stop();
                             player->deleteLater();
                             next();
                         });
        player->setSource(QUrl::fromLocalFile(SyllableSoundFile(DataFolderRoot(root), s.sound)));
        player->play();
    };
    t.start();
    QTimer::singleShot(0, qApp, next);
    QCoreApplication::exec();
    const double wallMs = t.nsecsElapsed() / 1e6;
    const double perJoint = (wallMs - sumMs) / double(syllables.size() - 1);
    std::printf("naive: speech took %.1f ms for %.1f ms of syllables: %.2f ms per joint "
                "(from its end-of-media events; a recording of the server shows the real gaps)\n",
                wallMs, sumMs, perJoint);
    return perJoint;
}
#endif

} // namespace

int main(int argc, char** argv) {
    if (argc >= 4 && std::strcmp(argv[1], "--analyze") == 0)
        return analyze(argv[2], std::atoi(argv[3]));
    for (int i = 1; i + 1 < argc; ++i)
        if (std::strcmp(argv[i], "--buffer") == 0) bufferFrames = std::atoi(argv[i + 1]);
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const std::vector<Syllable> syllables = writeSyllables(dir.path());
    const double oursMs = ours(dir.path(), syllables);
    std::printf("ours:  %.3f ms per joint over %zu joints\n", oursMs, syllables.size() - 1);
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], "--ours") == 0) return 0;
#ifdef VANTORIA_HAVE_QT_MULTIMEDIA
    runLoop(1000); // a clear pause between the two in a recording
    const double naiveMs = naive(dir.path(), syllables);
    std::printf("per joint: ours %.3f ms, naive %.2f ms, ratio naive/ours %s\n", oursMs, naiveMs,
                oursMs > 0 ? qPrintable(QString::number(naiveMs / oursMs, 'f', 1))
                           : "unbounded (ours has no gap)");
#else
    std::printf("naive player not built: Qt Multimedia (qt6-multimedia-dev) was not found\n");
#endif
    return 0;
}
