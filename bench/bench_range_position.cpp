// How far a player's Position stands from the time that has passed since its "Play", while it
// plays a stretch of an MP3 track given by From and To in milliseconds (the way a TV play's
// lines are heard), and where it stands when Done arrives.
//
//   bench_range_position [--buffer N]    N: frames per device buffer (default about 10 ms)
//
// Position counts the frames the mixer has handed to the output. What the learner hears lags it
// by what the output still holds: the device buffer, plus the sound card's own latency, which no
// output reports. The bench prints the lead against a steady clock, sampled every 2 ms, and how
// early Done comes before the stretch's end.

#include "core/speech.h"
#include "platform/media_control.h"
#include "platform/timers.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QThread>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <sndfile.h>
#include <vector>

using namespace vt;

namespace {

// A 20-second tone track as MP3; empty when libsndfile here cannot write MP3.
QString writeTrack(const QTemporaryDir& dir) {
    SF_INFO info{};
    info.samplerate = 44100;
    info.channels = 1;
    info.format = SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III;
    if (!sf_format_check(&info)) return {};
    const QString path = dir.filePath(QStringLiteral("track.mp3"));
    SNDFILE* f = sf_open(path.toLocal8Bit().constData(), SFM_WRITE, &info);
    if (!f) return {};
    std::vector<float> s(size_t(44100) * 20);
    for (size_t k = 0; k < s.size(); ++k)
        s[k] = float(0.3 * std::sin(2 * M_PI * 440 * double(k) / 44100));
    sf_writef_float(f, s.data(), sf_count_t(s.size()));
    sf_close(f);
    return path;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    int buffer = 0;
    for (int i = 1; i + 1 < argc; ++i)
        if (std::strcmp(argv[i], "--buffer") == 0) buffer = std::atoi(argv[i + 1]);

    QTemporaryDir dir;
    const QString track = writeTrack(dir);
    if (track.isEmpty()) {
        std::printf("no MP3 writer in libsndfile here\n");
        return 0;
    }
    QtTimeService time;
    auto sound = SoundSystem::CreateForProgram(time, buffer);
    std::printf("output: %s\n", qPrintable(sound->OutputDescription()));
    if (SdlOutput* device = sound->Device())
        std::printf("device buffer: %d frames (%.1f ms at 44100 Hz)\n", device->BufferFrames(),
                    device->BufferFrames() * 1000.0 / 44100);

    MMControl* player = sound->NewControl(nullptr, QStringLiteral("MMControl1"));
    player->SetDeviceType(QStringLiteral("MpegvIDEO"));
    player->SetFileName(track);
    QElapsedTimer opening;
    opening.start();
    player->SetCommand(QStringLiteral("Open"));
    std::printf("open and decode: %lld ms, length %lld ms\n",
                static_cast<long long>(opening.elapsed()),
                static_cast<long long>(player->Length()));

    // Five lines of a play, 1.5 to 3.5 seconds long, each played by range.
    const std::pair<int, int> lines[] = {
        {1200, 3100}, {4000, 6500}, {7000, 8500}, {9100, 12600}, {15000, 17250}};
    double worstLead = 0, worstLag = 0;
    for (const auto& [from, to] : lines) {
        bool done = false;
        int64_t atDone = -1;
        double doneMs = -1;
        QElapsedTimer clock;
        const auto conn = QObject::connect(player, &MMControl::Done, [&](int code) {
            if (code == MMControl::NotifySuccessful) {
                done = true;
                atDone = player->Position();
                doneMs = double(clock.nsecsElapsed()) / 1e6;
            }
        });
        player->SetFrom(from);
        player->SetTo(to);
        player->SetNotify(true);
        clock.start();
        player->SetCommand(QStringLiteral("Play"));
        std::vector<double> leads;
        while (!done && clock.elapsed() < (to - from) + 2000) {
            app.processEvents();
            const double elapsed = double(clock.nsecsElapsed()) / 1e6;
            const double heard = from + elapsed;
            if (!done && heard < to) leads.push_back(double(player->Position()) - heard);
            QThread::usleep(2000);
        }
        QObject::disconnect(conn);
        // Done comes a little before the stretch's last frames sound, and a play started then
        // follows them; a learner's next line comes later, so the bench waits for silence.
        QElapsedTimer rest;
        rest.start();
        while (rest.elapsed() < 300) {
            app.processEvents();
            QThread::usleep(2000);
        }
        std::sort(leads.begin(), leads.end());
        const double median = leads.empty() ? 0 : leads[leads.size() / 2];
        const double lo = leads.empty() ? 0 : leads.front();
        const double hi = leads.empty() ? 0 : leads.back();
        worstLead = std::max(worstLead, hi);
        worstLag = std::min(worstLag, lo);
        std::printf("line %5d..%5d ms: Position - elapsed: median %+6.1f, from %+6.1f to %+6.1f ms "
                    "(%zu samples); Done at Position %lld, %.0f ms before the stretch ends\n",
                    from, to, median, lo, hi, leads.size(), static_cast<long long>(atDone),
                    (to - from) - doneMs);
    }
    std::printf("worst: Position ahead by %.1f ms, behind by %.1f ms\n", worstLead, -worstLag);
    delete player;
    return 0;
}
