#pragma once
// Sound for the whole program: the shared players of the desktop, the routing of a finished
// sound to the form that asked for it, and speech put together from one recording per syllable.
//
// Every form plays through PlayWave, ReplayWave or SpeakPinyin on MMControl1, naming itself by an
// owner tag (core/sound_owners.h). When that sound ends well, the handler registered for the tag
// in SoundOwner at that moment runs; the speech's own tag starts the next syllable. A form
// registers its handler when it loads and removes it when it unloads (AppForm::OnSoundEnd does
// both), so a tag whose form is not there receives nothing. MMControl2 is for sounds nobody waits
// for: it closes itself at the end.
//
// Speech plays the recording of each syllable (SyllableSoundFile of core/data_paths.h) one after
// the other with no pause, a neutral syllable with its first-tone recording; a final "er1" is said
// "er2". Each syllable sound shows its tone on the desktop. There is no tone sandhi.

#include "core/sound_owners.h"
#include "platform/audio_engine.h"
#include "platform/media_control.h"

#include <QString>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>

namespace vt {

struct Runtime;
class TimeService;
class VirtualClock;

class SoundSystem {
public:
    // The program's: the sound device, or a silent output at the same pace when none opens.
    // bufferFrames: frames per device buffer, 0 for about 10 ms. Asks a sound server for 60 ms
    // of latency unless PULSE_LATENCY_MSEC says otherwise.
    static std::unique_ptr<SoundSystem> CreateForProgram(TimeService& time, int bufferFrames = 0);
    // The tests': a virtual output on the clock that records what is played (mono).
    static std::unique_ptr<SoundSystem> CreateVirtual(VirtualClock& clock, int sampleRate = 22050);

    ~SoundSystem();
    SoundSystem(const SoundSystem&) = delete;
    SoundSystem& operator=(const SoundSystem&) = delete;

    // Makes this the runtime's sound system (rt.sound) and routes MMControl1's end of sound.
    void Attach(Runtime& rt);

    AudioEngine& Engine() { return output_->Engine(); }
    SoundCache& Cache() { return *cache_; }
    // What the sound goes to, for the program to print at start.
    QString OutputDescription() const { return output_->Description(); }
    // The virtual output, or null for the program's.
    VirtualOutput* Virtual() { return virtual_; }
    // The SDL output, or null for the virtual one.
    SdlOutput* Device() { return device_; }

    // A further player for a form of its own, owned by parent.
    MMControl* NewControl(QObject* parent, const QString& name);

    // The desktop's two players.
    MMControl* MMControl1 = nullptr;
    MMControl* MMControl2 = nullptr;

    // What a finished sound of this owner tag calls. None and Speech cannot be taken.
    void SetOwnerHandler(OwnerTag tag, std::function<void()> handler);
    void RemoveOwnerHandler(OwnerTag tag);
    // What the end of a speech calls while OpenTask has this value (the reading-aloud and
    // vocabulary tasks hook in here; the handler does its own checks).
    void SetSpeechEndHandler(int16_t openTask, std::function<void()> handler);
    void RemoveSpeechEndHandler(int16_t openTask);

private:
    explicit SoundSystem(std::unique_ptr<AudioOutput> output);
    void soundDone(int notifyCode);
    friend void SpeakNextSyllable(Runtime& rt);

    std::unique_ptr<AudioOutput> output_;
    VirtualOutput* virtual_ = nullptr;
    SdlOutput* device_ = nullptr;
    std::unique_ptr<SoundCache> cache_;
    std::unique_ptr<QObject> owner_; // parent of the two players
    Runtime* rt_ = nullptr;
    std::map<OwnerTag, std::function<void()>> owners_;
    std::map<int16_t, std::function<void()>> speechEnd_;
};

// Sets up a player of wave files as the desktop sets up its two: notification as given, no
// waiting, not shared, times in milliseconds.
void SetUpWavePlayer(MMControl* player, bool notify);

// Plays path on MMControl1 for the owner tag (None: nobody waits for the end).
void PlayWave(Runtime& rt, const QString& path, OwnerTag tag);
// Plays the open file again from its start for the owner tag.
void ReplayWave(Runtime& rt, OwnerTag tag);
// Speaks numeric-tone Pinyin ("ni3 hao3") and returns at once.
void SpeakPinyin(Runtime& rt, const QString& text);
// One step of the speech: the next syllable, or the end of the speech.
void SpeakNextSyllable(Runtime& rt);
// True while the desktop's shared player plays: a click that would speak must not cut into it.
bool SharedPlayerPlaying(const Runtime& rt);
// Shows a tone ("0" to "4") on the desktop's tone marker, when the desktop stands.
void ShowToneCurve(Runtime& rt, const QString& tone);

} // namespace vt
