#pragma once
// Sound for the course: speech from espeak-ng (run as a process, Mandarin voice that reads
// numeric Pinyin), trimmed of its leading and trailing silence and evened in loudness so that
// recordings played back to back sound like one voice; WAV and MP3 output; the short verdict
// sounds, made here from tones.

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

namespace vt::coursepack {

inline constexpr int kSampleRate = 22050;

// Mono samples in -1..1.
struct Pcm {
    int rate = kSampleRate;
    std::vector<float> samples;
    int Milliseconds() const {
        return static_cast<int>(samples.size() * 1000 / static_cast<size_t>(rate));
    }
};

// A speaking voice: a variant of the Pinyin voice with its pitch and speed.
struct Voice {
    QString variant; // "" or "f2", "m3", ...
    int pitch = 50;  // 0..99
    int speed = 150; // words per minute
    // The middle of the voice's tone register in Hz, where single syllables are bent to their
    // tones; 0 for a voice whose syllables are left as spoken.
    float toneReferenceHz = 0;
};

// The voices of the TV plays by their names in the sources; unknown names give male1.
Voice VoiceNamed(const QString& name);
// The voice of syllables, numbers and sentence recordings.
Voice TeacherVoice();

// The samples of a WAV file (16-bit PCM, any channel count: the first channel). Empty on a file
// that is no such WAV. A data size the writer could not know (a stream) means: to the end.
Pcm DecodeWav(const QByteArray& bytes);
// A 16-bit mono PCM WAV file.
QByteArray EncodeWav(const Pcm& pcm);

// Cuts what lies below threshold (of full scale) at both ends, keeping marginMs around the sound.
void TrimSilence(Pcm& pcm, float threshold = 0.02f, int marginMs = 8);
// Scales the sound to a common loudness (RMS of its voiced part), never past the peak limit.
void EvenLoudness(Pcm& pcm, float targetRms = 0.12f, float peakLimit = 0.9f);
// Appends silence.
void AppendSilence(Pcm& pcm, int ms);

// Speaks numeric Pinyin ("ni3 hao3, ma5") with espeak-ng; trimmed and evened. Empty when
// espeak-ng could not be run; error then says why.
Pcm SpeakPinyin(const QString& pinyin, const Voice& voice, QString* error);
// Speaks many short items (single syllables or words) in one run of espeak-ng, with a long
// pause between them, and cuts the result at those pauses; each piece is trimmed and evened as
// SpeakPinyin does. When the pieces cannot be told apart, each item is spoken on its own.
std::vector<Pcm> SpeakPinyinBatch(const QStringList& items, const Voice& voice, QString* error);
// Whether espeak-ng can be run at all.
bool SpeechAvailable();

// The verdict sounds: "right", "wrong", "careful", "carryon".
Pcm VerdictSound(const QString& name);

// MPEG Layer III bytes of the sound, through libsndfile; empty with error on failure.
QByteArray EncodeMp3(const Pcm& pcm, QString* error);
// The number of samples and the rate of an MP3 or WAV file's bytes, decoded to the end.
Pcm DecodeSoundFile(const QByteArray& bytes);

// Runs jobs on `workers` threads at a time, in any order; returns when all are done.
void RunParallel(const std::vector<std::function<void()>>& jobs, int workers);

} // namespace vt::coursepack
