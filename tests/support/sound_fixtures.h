#pragma once
// Sounds the tests make for themselves: sine tones of known frequency and length, as WAV bytes
// or (where the decoder library can write it) MP3, and the reading back of what an output
// "played": where sound and silence lie, and which tone sounded.

#include <QByteArray>
#include <QString>
#include <vector>

namespace vt::test {

// The rate of the virtual output the sound tests listen to, and its frames in ms milliseconds.
constexpr int kOutputRate = 22050;
constexpr long FramesOf(int ms) {
    return long(kOutputRate) * ms / 1000;
}

// A 16-bit PCM WAV of a sine tone, optionally followed by a second tone.
QByteArray ToneWav(int hz, int ms, int rate = 16000, int channels = 1, int hz2 = 0, int ms2 = 0);
// The same as MP3; empty when the decoder library cannot write MP3 here.
QByteArray ToneMp3(int hz, int ms, int rate = 22050);

// A stretch of sound between silences, in frames of the recording.
struct Run {
    long start = 0;
    long frames = 0;
};
// The stretches of sound in a mono recording; a silence is at least minSilence samples at zero.
std::vector<Run> SoundRuns(const std::vector<float>& samples, int minSilence = 8);
// The frequency of a tone in samples [start, start + frames), from its zero crossings.
double ToneHz(const std::vector<float>& samples, long start, long frames, int rate);

} // namespace vt::test
