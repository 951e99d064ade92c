// What one sound file can cost the program: the time to load it into a clip and the memory it
// takes, for the longest sounds the limits let through and for files beyond them. Each case runs
// in a process of its own, so that its peak memory is its own.
//
//   bench_sound_limits [course sound files...]
//
// Files named on the command line (say, the largest syllable and a TV play's track of the built
// course) are measured beside the made-up ones.

#include "platform/sound_decoder.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cmath>
#include <cstdio>
#include <sndfile.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kRate = 22050; // the course's own recordings

// A tone of the given length, written by the decoder library in the given format.
bool writeTone(const QString& path, double seconds, int format) {
    SF_INFO info{};
    info.samplerate = kRate;
    info.channels = 1;
    info.format = format;
    if (!sf_format_check(&info)) return false;
    SNDFILE* f = sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info);
    if (!f) return false;
    std::vector<float> block(kRate);
    const auto total = static_cast<long>(seconds * kRate);
    for (long done = 0; done < total;) {
        const long n = std::min<long>(long(block.size()), total - done);
        for (long i = 0; i < n; ++i)
            block[size_t(i)] = 0.3f * float(std::sin(2 * M_PI * 440.0 * double(done + i) / kRate));
        sf_writef_float(f, block.data(), n);
        done += n;
    }
    sf_close(f);
    return true;
}

long peakKilobytes() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:")) return line.mid(6).trimmed().split(' ').first().toLong();
    return 0;
}

void measure(const QString& path) {
    std::fflush(stdout);
    const pid_t child = ::fork();
    if (child == 0) {
        vt::SoundCache cache(44100, 2); // the program's output format
        const long before = peakKilobytes();
        QElapsedTimer timer;
        timer.start();
        QString error;
        const auto clip = cache.Load(path, &error);
        const double ms = double(timer.nsecsElapsed()) / 1e6;
        const double fileMb = double(QFileInfo(path).size()) / 1e6;
        std::printf("%-28s %8.1f MB  %9.2f ms  %+8.1f MB peak  %s\n",
                    qPrintable(QFileInfo(path).fileName()), fileMb, ms,
                    double(peakKilobytes() - before) / 1024.0,
                    clip ? qPrintable(QStringLiteral("played, %1 s").arg(clip->LengthMs() / 1000.0))
                         : qPrintable(QStringLiteral("refused: ") + error));
        std::fflush(stdout);
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const int wav = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    const int mp3 = SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III;
    struct Made {
        const char* name;
        double seconds;
        int format;
    } made[] = {
        {"syllable-0.6s.wav", 0.6, wav},   {"play-10min.mp3", 600, mp3},
        {"play-10min.wav", 600, wav},      {"play-11min.mp3", 660, mp3},
        {"syllable-20min.wav", 1200, wav}, // 53 MB, the size of the damaged syllable once met
    };
    std::printf("limits: %lld MB a file, %d minutes a sound\n",
                static_cast<long long>(vt::kMaxSoundFileBytes / (1024 * 1024)),
                vt::kMaxClipSeconds / 60);
    std::printf("%-28s %11s  %12s  %13s\n", "file", "size", "load", "memory");
    for (int i = 1; i < argc; ++i)
        measure(QString::fromLocal8Bit(argv[i]));
    for (const Made& m : made) {
        const QString path = dir.filePath(QString::fromLatin1(m.name));
        if (writeTone(path, m.seconds, m.format))
            measure(path);
        else
            std::printf("%-28s cannot be written here\n", m.name);
    }
    return 0;
}
