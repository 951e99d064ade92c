#include "core/speech.h"

#include "core/data_paths.h"
#include "core/runtime.h"
#include "platform/helpers.h"
#include "platform/timers.h"

namespace vt {

void SetUpWavePlayer(MMControl* c, bool notify) {
    c->SetNotify(notify);
    c->SetWait(false);
    c->SetShareable(false);
    c->SetDeviceType(QStringLiteral("WaveAudio"));
    c->SetTimeFormat(0);
}

SoundSystem::SoundSystem(std::unique_ptr<AudioOutput> output)
    : output_(std::move(output)), owner_(std::make_unique<QObject>()) {
    cache_ = std::make_unique<SoundCache>(Engine().Rate(), Engine().Channels());
    MMControl1 = NewControl(owner_.get(), QStringLiteral("MMControl1"));
    MMControl2 = NewControl(owner_.get(), QStringLiteral("MMControl2"));
    SetUpWavePlayer(MMControl1, false);
    SetUpWavePlayer(MMControl2, true);
    QObject::connect(MMControl1, &MMControl::Done, owner_.get(),
                     [this](int code) { soundDone(code); });
    QObject::connect(MMControl2, &MMControl::Done, owner_.get(), [this](int code) {
        if (code == MMControl::NotifySuccessful) MMControl2->SetCommand(QStringLiteral("Close"));
    });
}

SoundSystem::~SoundSystem() {
    if (rt_ && rt_->sound == this) rt_->sound = nullptr;
    owner_.reset(); // the players leave the engine before it goes
}

std::unique_ptr<SoundSystem> SoundSystem::CreateForProgram(TimeService&, int bufferFrames) {
    // A sound server that is given 10 ms buffers under-runs on a busy machine and the voice
    // breaks up; 60 ms of server latency keeps it whole and is not heard as a delay. Set here, so
    // that whatever opens the program's sound (the program, its benchmarks) asks for the same.
    if (!qEnvironmentVariableIsSet("PULSE_LATENCY_MSEC")) qputenv("PULSE_LATENCY_MSEC", "60");
    auto out = SdlOutput::Open(44100, bufferFrames);
    SdlOutput* device = out.get();
    std::unique_ptr<SoundSystem> s(new SoundSystem(std::move(out)));
    s->device_ = device;
    return s;
}

std::unique_ptr<SoundSystem> SoundSystem::CreateVirtual(VirtualClock& clock, int sampleRate) {
    auto out = std::make_unique<VirtualOutput>(clock, sampleRate);
    VirtualOutput* v = out.get();
    std::unique_ptr<SoundSystem> s(new SoundSystem(std::move(out)));
    s->virtual_ = v;
    return s;
}

void SoundSystem::Attach(Runtime& rt) {
    rt_ = &rt;
    rt.sound = this;
}

MMControl* SoundSystem::NewControl(QObject* parent, const QString& name) {
    auto* c = new MMControl(Engine(), *cache_, parent);
    c->setObjectName(name);
    return c;
}

void SoundSystem::SetOwnerHandler(OwnerTag tag, std::function<void()> handler) {
    if (tag == OwnerTag::None || tag == OwnerTag::Speech) return;
    owners_[tag] = std::move(handler);
}
void SoundSystem::RemoveOwnerHandler(OwnerTag tag) {
    owners_.erase(tag);
}
void SoundSystem::SetSpeechEndHandler(int16_t openTask, std::function<void()> handler) {
    speechEnd_[openTask] = std::move(handler);
}
void SoundSystem::RemoveSpeechEndHandler(int16_t openTask) {
    speechEnd_.erase(openTask);
}

void SoundSystem::soundDone(int notifyCode) {
    if (notifyCode != MMControl::NotifySuccessful || !rt_) return;
    const auto owner = static_cast<OwnerTag>(rt_->app.SoundOwner);
    if (owner == OwnerTag::Speech) {
        SpeakNextSyllable(*rt_);
        return;
    }
    auto it = owners_.find(owner);
    if (it == owners_.end()) return;
    // The handler may remove itself; call a copy.
    std::function<void()> handler = it->second;
    if (handler) handler();
}

void ShowToneCurve(Runtime& rt, const QString& tone) {
    if (rt.ShowToneCurve) rt.ShowToneCurve(tone);
}

namespace {

// Starts the open file for an owner: its end is notified only when someone waits for it, and the
// owner is noted before the sound begins, so that its end finds it.
void startPlay(Runtime& rt, MMControl* player, OwnerTag tag) {
    player->SetNotify(tag != OwnerTag::None);
    rt.app.SoundOwner = static_cast<int16_t>(tag);
    player->SetCommand(QStringLiteral("Play"));
}

} // namespace

void PlayWave(Runtime& rt, const QString& path, OwnerTag tag) {
    if (!rt.sound) return;
    MMControl* player = rt.sound->MMControl1;
    player->SetCommand(QStringLiteral("Close"));
    player->SetFileName(path);
    player->SetCommand(QStringLiteral("Open"));
    startPlay(rt, player, tag);
    if (IsSyllableSoundPath(path)) ShowToneCurve(rt, rt.app.CurrentTone);
}

bool SharedPlayerPlaying(const Runtime& rt) {
    return rt.sound && rt.sound->MMControl1 &&
           rt.sound->MMControl1->Mode() == MMControl::ModePlaying;
}

void ReplayWave(Runtime& rt, OwnerTag tag) {
    if (!rt.sound) return;
    MMControl* player = rt.sound->MMControl1;
    player->SetCommand(QStringLiteral("Prev"));
    startPlay(rt, player, tag);
    if (IsSyllableSoundPath(player->FileName())) ShowToneCurve(rt, rt.app.CurrentTone);
}

void SpeakPinyin(Runtime& rt, const QString& text) {
    if (text.isEmpty()) return;
    AppState& a = rt.app;
    a.SpeechSyllableCount = 0;
    a.SpeechPosition = 0;
    a.SpeechQueue.Erase();
    QString acc;
    for (const QChar ch : text) {
        if (ch >= u'0' && ch <= u'9') {
            if (a.SpeechSyllableCount == INT16_MAX) break;
            const QString digit(ch);
            a.SpeechQueue.Append(
                SpeechRow{digit, Trim(acc) + (digit == u"0" ? QStringLiteral("1") : digit)});
            ++a.SpeechSyllableCount;
            acc.clear();
        } else {
            acc += ch;
        }
    }
    if (a.SpeechSyllableCount > 0 && a.SpeechQueue.Last().Sound == u"er1")
        a.SpeechQueue.Last().Sound = QStringLiteral("er2");
    SpeakNextSyllable(rt);
}

void SpeakNextSyllable(Runtime& rt) {
    AppState& a = rt.app;
    if (a.SpeechPosition < a.SpeechSyllableCount) {
        ++a.SpeechPosition;
        const SpeechRow& row = a.SpeechQueue[a.SpeechPosition];
        a.CurrentTone = row.Tone;
        PlayWave(rt, SyllableSoundFile(a.AppPath, row.Sound), OwnerTag::Speech);
        return;
    }
    if (!rt.sound) return;
    rt.sound->MMControl1->SetCommand(QStringLiteral("Close"));
    auto it = rt.sound->speechEnd_.find(a.OpenTask);
    if (it == rt.sound->speechEnd_.end()) return;
    std::function<void()> handler = it->second;
    if (handler) handler();
}

} // namespace vt
