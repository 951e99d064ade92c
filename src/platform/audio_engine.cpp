#include "platform/audio_engine.h"

#include "platform/timers.h"

#include <QObject>
#include <SDL.h>
#include <algorithm>
#include <chrono>
#include <cstring>

namespace vt {

AudioEngine::AudioEngine(int rate, int channels, int leadFrames)
    : rate_(rate), channels_(channels), lead_(leadFrames) {}

AudioEngine::Voice* AudioEngine::find(int voice) {
    for (auto& v : voices_)
        if (v->id == voice) return v.get();
    return nullptr;
}
const AudioEngine::Voice* AudioEngine::find(int voice) const {
    for (const auto& v : voices_)
        if (v->id == voice) return v.get();
    return nullptr;
}

int AudioEngine::AddVoice(EndReport onEnd) {
    auto v = std::make_unique<Voice>();
    v->onEnd = std::move(onEnd);
    v->tails.reserve(8);
    std::lock_guard lock(mutex_);
    v->id = nextId_++;
    voices_.push_back(std::move(v));
    return voices_.back()->id;
}

void AudioEngine::RemoveVoice(int voice) {
    std::unique_ptr<Voice> gone; // released after the lock
    std::lock_guard lock(mutex_);
    auto it = std::find_if(voices_.begin(), voices_.end(),
                           [voice](const auto& v) { return v->id == voice; });
    if (it == voices_.end()) return;
    gone = std::move(*it);
    voices_.erase(it);
}

// Runs on the user-interface thread only, so no clip is released by the output's thread.
void AudioEngine::pruneTails(Voice& v) {
    v.tails.erase(std::remove_if(v.tails.begin(), v.tails.end(),
                                 [](const Segment& s) { return s.Remaining() == 0; }),
                  v.tails.end());
}

uint64_t AudioEngine::Play(int voice, std::shared_ptr<const Clip> clip, int64_t from, int64_t to) {
    const uint64_t serial = start(voice, std::move(clip), from, to);
    if (serial && onPlay_) onPlay_();
    return serial;
}

uint64_t AudioEngine::start(int voice, std::shared_ptr<const Clip> clip, int64_t from, int64_t to) {
    std::shared_ptr<const Clip> old;
    std::lock_guard lock(mutex_);
    Voice* v = find(voice);
    if (!v) return 0;
    pruneTails(*v);
    if (v->active && v->reported && v->current.Remaining() > 0 && v->tails.size() < 8)
        v->tails.push_back(v->current);
    old = std::move(v->current.clip);
    const int64_t frames = clip ? clip->Frames() : 0;
    to = std::clamp<int64_t>(to, 0, frames);
    from = std::clamp<int64_t>(from, 0, to);
    v->current = Segment{std::move(clip), from, to};
    v->active = true;
    v->reported = false;
    v->serial = nextSerial_++;
    return v->serial;
}

void AudioEngine::Stop(int voice) {
    std::lock_guard lock(mutex_);
    Voice* v = find(voice);
    if (!v) return;
    pruneTails(*v);
    if (v->active && v->reported && v->current.Remaining() > 0 && v->tails.size() < 8) {
        v->tails.push_back(v->current);
        v->current.pos = v->current.end; // for the owner the play is over at its end
    }
    v->active = false;
}

AudioEngine::VoiceState AudioEngine::State(int voice) const {
    std::lock_guard lock(mutex_);
    const Voice* v = find(voice);
    if (!v) return {};
    VoiceState s;
    s.serial = v->serial;
    s.playing = v->active && !v->reported;
    // Once reported over, the play stands at its end, though its last frames may still sound.
    s.position = v->active && v->reported ? v->current.end : v->current.pos;
    return s;
}

bool AudioEngine::Idle() const {
    std::lock_guard lock(mutex_);
    for (const auto& v : voices_) {
        for (const Segment& t : v->tails)
            if (t.Remaining() > 0) return false;
        if (v->active && (!v->reported || v->current.Remaining() > 0)) return false;
    }
    return true;
}

int64_t AudioEngine::FramesMixed() const {
    std::lock_guard lock(mutex_);
    return framesMixed_;
}

void AudioEngine::mixSegment(Segment& s, float* out, int& done, int frames) {
    const int64_t n = std::min<int64_t>(s.Remaining(), frames - done);
    if (n <= 0) return;
    const int16_t* src = s.clip->samples.data() + s.pos * channels_;
    float* dst = out + int64_t(done) * channels_;
    for (int64_t i = 0; i < n * channels_; ++i)
        dst[i] += float(src[i]) * (1.0f / 32768.0f);
    s.pos += n;
    done += int(n);
}

void AudioEngine::Mix(float* out, int frames) {
    std::fill(out, out + int64_t(frames) * channels_, 0.0f);
    std::lock_guard lock(mutex_);
    for (auto& vp : voices_) {
        Voice& v = *vp;
        int done = 0;
        for (Segment& t : v.tails)
            mixSegment(t, out, done, frames);
        if (v.active) mixSegment(v.current, out, done, frames);
        if (v.active && !v.reported) {
            int64_t left = v.current.Remaining();
            for (const Segment& t : v.tails)
                left += t.Remaining();
            if (left <= lead_) {
                v.reported = true;
                if (v.onEnd) v.onEnd(v.serial);
            }
        }
    }
    for (int64_t i = 0; i < int64_t(frames) * channels_; ++i)
        out[i] = std::clamp(out[i], -1.0f, 1.0f);
    framesMixed_ += frames;
}

// ---- SDL device ----

namespace {

// SDL's audio is set up once for the life of the program, on the user-interface thread.
bool startSdlAudio() {
    static bool tried = false;
    static bool started = false;
    if (!tried) {
        tried = true;
        SDL_SetMainReady();
        // The program ends through its forms; SDL must not take over Ctrl-C and SIGTERM.
        SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
        started = SDL_InitSubSystem(SDL_INIT_AUDIO) == 0;
    }
    return started;
}

} // namespace

std::unique_ptr<SdlOutput> SdlOutput::Open(int wantRate, int bufferFrames) {
    std::unique_ptr<SdlOutput> out(new SdlOutput());
    SDL_AudioSpec want{};
    want.freq = wantRate;
    want.format = AUDIO_F32SYS;
    want.channels = 2;
    // About 10 ms per callback by default.
    want.samples = uint16_t(bufferFrames > 0 ? bufferFrames : wantRate / 100);
    want.callback = &SdlOutput::callback;
    want.userdata = out.get();
    SDL_AudioSpec have{};
    QString why;
    if (startSdlAudio()) {
        const char* driver = SDL_GetCurrentAudioDriver();
        if (driver && std::strcmp(driver, "dummy") == 0)
            why = QStringLiteral("SDL was told to use no device");
        else
            out->device_ =
                SDL_OpenAudioDevice(nullptr, 0, &want, &have, SDL_AUDIO_ALLOW_FREQUENCY_CHANGE);
    }
    if (out->device_ == 0) {
        if (why.isEmpty()) why = QString::fromUtf8(SDL_GetError());
        have = want;
        out->silent_ = true;
    }
    out->bufferFrames_ = have.samples;
    const int lead = have.samples + have.freq * kAnswerMs / 1000;
    out->engine_ = std::make_unique<AudioEngine>(have.freq, have.channels, lead);
    if (out->silent_) {
        out->description_ =
            QStringLiteral("silent output, %1 Hz, %2 frames per buffer (no sound device: %3)")
                .arg(have.freq)
                .arg(int(have.samples))
                .arg(why);
        SdlOutput* self = out.get();
        out->pacer_ = std::thread(
            [self, frames = int(have.samples), rate = have.freq, channels = int(have.channels)] {
                std::vector<float> block(size_t(frames) * size_t(channels));
                using Clock = std::chrono::steady_clock;
                auto start = Clock::now();
                int64_t blocks = 0;
                while (!self->stopPacer_) {
                    callback(self, reinterpret_cast<uint8_t*>(block.data()),
                             int(block.size() * sizeof(float)));
                    ++blocks;
                    const auto due =
                        start + std::chrono::nanoseconds(blocks * frames * 1'000'000'000LL / rate);
                    if (Clock::now() - due > std::chrono::milliseconds(250)) {
                        start = Clock::now(); // after a long stall, go on from now rather than rush
                        blocks = 0;
                    }
                    std::this_thread::sleep_until(due);
                }
            });
        return out;
    }
    const char* driver = SDL_GetCurrentAudioDriver();
    out->description_ =
        QStringLiteral("sound driver \"%1\", %2 Hz, %3 channels, %4 frames per buffer")
            .arg(QString::fromUtf8(driver ? driver : "?"))
            .arg(have.freq)
            .arg(int(have.channels))
            .arg(int(have.samples));
    SDL_PauseAudioDevice(out->device_, 0);
    return out;
}

SdlOutput::~SdlOutput() {
    stopPacer_ = true;
    if (pacer_.joinable()) pacer_.join();
    if (device_ != 0) SDL_CloseAudioDevice(device_);
}

void SdlOutput::callback(void* user, uint8_t* stream, int len) {
    auto* self = static_cast<SdlOutput*>(user);
    auto* out = reinterpret_cast<float*>(stream);
    const int channels = self->engine_->Channels();
    const int frames = len / int(sizeof(float)) / channels;
    self->engine_->Mix(out, frames);
    std::lock_guard lock(self->tapMutex_);
    if (!self->tapOn_) return;
    if (self->tap_.empty()) self->tapStart_ = self->engine_->FramesMixed() - frames;
    self->tap_.insert(self->tap_.end(), out, out + int64_t(frames) * channels);
}

int64_t SdlOutput::TapStart() {
    std::lock_guard lock(tapMutex_);
    return tapStart_;
}

void SdlOutput::SetTap(bool on) {
    std::lock_guard lock(tapMutex_);
    tapOn_ = on;
    if (on) tap_.reserve(size_t(engine_->Rate()) * size_t(engine_->Channels()) * 60);
}

std::vector<float> SdlOutput::TakeTap() {
    std::lock_guard lock(tapMutex_);
    return std::exchange(tap_, {});
}

// ---- virtual output ----

VirtualOutput::VirtualOutput(VirtualClock& clock, int rate, int channels, int tickMs,
                             bool continuous)
    : owner_(std::make_unique<QObject>()) {
    const int most = (rate * tickMs + 999) / 1000;
    engine_ = std::make_unique<AudioEngine>(rate, channels, most + rate * kAnswerMs / 1000);
    block_.resize(size_t(most) * size_t(channels));
    timer_ = clock.CreateTimer(owner_.get(), QStringLiteral("SoundOutput"), tickMs, false);
    timer_->OnTick = [this, rate, tickMs, continuous] {
        // Whole frames per tick, carrying the fractions, so the pace is exact over time.
        ++ticks_;
        const int frames = int(ticks_ * tickMs * rate / 1000 - (ticks_ - 1) * tickMs * rate / 1000);
        block_.resize(size_t(frames) * size_t(engine_->Channels()));
        engine_->Mix(block_.data(), frames);
        recorded_.insert(recorded_.end(), block_.begin(), block_.end());
        if (!continuous && engine_->Idle()) timer_->SetEnabled(false);
    };
    if (!continuous)
        engine_->SetOnPlay([this] {
            if (!timer_->Enabled()) timer_->SetEnabled(true);
        });
    timer_->SetEnabled(continuous);
}

VirtualOutput::~VirtualOutput() {
    owner_.reset(); // the timer goes first, then the engine
}

QString VirtualOutput::Description() const {
    return QStringLiteral("virtual output, %1 Hz, %2 channels")
        .arg(engine_->Rate())
        .arg(engine_->Channels());
}

} // namespace vt
