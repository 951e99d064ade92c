#pragma once
// The program's one sound output: a mixer of voices feeding one stream that runs from start to
// end and plays silence when nothing sounds, so one clip can follow another without a gap.
//
// Each player control is a voice. A voice plays one clip from a start frame to an end frame.
// Shortly before its end (the lead) the voice reports that it is over, so that the next clip can
// be queued while the last frames still sound: a clip played on a voice whose earlier clip has
// reported its end follows those last frames directly, sample for sample. A play that is stopped
// before it reported its end is cut at once.
//
// The mixer runs on the output's thread (the sound device's callback) and shares the voices with
// the user-interface thread under one mutex, held only to copy a few numbers or samples. The end
// report is handed to a function given by the voice's owner, called on the output's thread with
// the lock held; it must only post an event.
//
// Three outputs drive the mixer: the sound device through SDL; when no device opens, a silent
// output that pulls at the same pace (so every end is reported when it would be with sound); and
// a virtual output on the tests' clock that records every sample it pulls.

#include "platform/sound_decoder.h"

#include <QString>
#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace vt {

class Timer;
class VirtualClock;

class AudioEngine {
public:
    using EndReport = std::function<void(uint64_t serial)>;

    AudioEngine(int rate, int channels, int leadFrames);

    int Rate() const { return rate_; }
    int Channels() const { return channels_; }
    int LeadFrames() const { return lead_; }

    int AddVoice(EndReport onEnd);
    // After this returns the voice reports nothing more.
    void RemoveVoice(int voice);

    // Plays frames [from, to) of clip on the voice and returns the serial its end report
    // will carry. A play of the voice that has not reported its end is cut.
    uint64_t Play(int voice, std::shared_ptr<const Clip> clip, int64_t from, int64_t to);
    // Stops the voice; what sounds after a reported end is let sound out.
    void Stop(int voice);

    struct VoiceState {
        bool playing = false; // started and not yet reported over
        int64_t position = 0; // frames from the clip's start
        uint64_t serial = 0;  // of the last play
    };
    VoiceState State(int voice) const;

    // The output pulls frames * Channels() samples.
    void Mix(float* out, int frames);
    int64_t FramesMixed() const;
    // True when nothing sounds and nothing is left to report.
    bool Idle() const;
    // Called on the user-interface thread after each Play; the virtual output wakes with it.
    void SetOnPlay(std::function<void()> f) { onPlay_ = std::move(f); }

private:
    struct Segment {
        std::shared_ptr<const Clip> clip;
        int64_t pos = 0;
        int64_t end = 0;
        int64_t Remaining() const { return end > pos ? end - pos : 0; }
    };
    struct Voice {
        int id = 0;
        EndReport onEnd;
        std::vector<Segment> tails; // plays that reported their end and still sound
        Segment current;
        bool active = false;
        bool reported = false;
        uint64_t serial = 0;
    };
    uint64_t start(int voice, std::shared_ptr<const Clip> clip, int64_t from, int64_t to);
    Voice* find(int voice);
    const Voice* find(int voice) const;
    void mixSegment(Segment& s, float* out, int& done, int frames);
    static void pruneTails(Voice& v);

    const int rate_;
    const int channels_;
    const int lead_;
    mutable std::mutex mutex_;
    std::vector<std::unique_ptr<Voice>> voices_;
    int nextId_ = 1;
    uint64_t nextSerial_ = 1;
    int64_t framesMixed_ = 0;
    std::function<void()> onPlay_;
};

// Owns an engine and drives it.
class AudioOutput {
public:
    virtual ~AudioOutput() = default;
    AudioEngine& Engine() { return *engine_; }
    // What plays the sound, for the program to print.
    virtual QString Description() const = 0;

protected:
    std::unique_ptr<AudioEngine> engine_;
};

// The lead: the device's buffer plus time for the user-interface thread to answer.
constexpr int kAnswerMs = 50;

// The sound device through SDL, opened once. When none opens, or SDL is told to use its dummy
// driver, a thread of ours pulls the same buffers in silence, on deadlines from a steady clock:
// SDL's own dummy driver sleeps a buffer's time after each one and so falls behind under load
// (a fifth slower on a busy machine), which would change when Done arrives.
class SdlOutput final : public AudioOutput {
public:
    // bufferFrames: frames per callback; 0 picks about 10 ms.
    static std::unique_ptr<SdlOutput> Open(int wantRate = 44100, int bufferFrames = 0);
    SdlOutput(const SdlOutput&) = delete;
    SdlOutput& operator=(const SdlOutput&) = delete;
    ~SdlOutput() override;
    QString Description() const override { return description_; }
    bool IsSilent() const { return silent_; }
    int BufferFrames() const { return bufferFrames_; }

    // A copy of everything mixed, for measuring; off unless switched on. TapStart is the
    // engine's frame count at the first frame in the copy.
    void SetTap(bool on);
    std::vector<float> TakeTap();
    int64_t TapStart();

private:
    SdlOutput() = default;
    static void callback(void* user, uint8_t* stream, int len);
    uint32_t device_ = 0;
    bool silent_ = false;
    std::thread pacer_;
    std::atomic<bool> stopPacer_{false};
    int bufferFrames_ = 0;
    QString description_;
    std::mutex tapMutex_;
    bool tapOn_ = false;
    int64_t tapStart_ = -1;
    std::vector<float> tap_;
};

// The tests' output: every tickMs of virtual time it pulls that many frames and records them.
// Unless continuous, it rests while the engine is idle and wakes at the next play, so that
// VirtualClock::RunUntilIdle ends when the sound does; the silence while it rests is not
// recorded.
class VirtualOutput final : public AudioOutput {
public:
    VirtualOutput(VirtualClock& clock, int rate, int channels = 1, int tickMs = 10,
                  bool continuous = false);
    ~VirtualOutput() override;
    QString Description() const override;
    // Everything "played" so far, interleaved.
    const std::vector<float>& Recorded() const { return recorded_; }
    void ClearRecorded() { recorded_.clear(); }

private:
    std::unique_ptr<QObject> owner_;
    Timer* timer_ = nullptr;
    std::vector<float> recorded_;
    std::vector<float> block_;
    int64_t ticks_ = 0;
};

} // namespace vt
