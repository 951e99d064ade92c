// The pitch tracker and the contour figures of the course check, and the bend that gives the
// syllable recordings their tones, on made-up voices whose pitch is known sample by sample.

#include "audio.h"
#include "pitch.h"
#include "tone_bend.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <numbers>

namespace vt::coursepack {
namespace {

// A buzzy voice: eight harmonics of a fundamental that follows hzAt(fraction of the length),
// with short fades and, optionally, a voiceless hiss before it.
Pcm Voice(const std::function<double(double)>& hzAt, int ms, int hissMs = 0) {
    Pcm p;
    uint32_t noise = 12345;
    for (int i = 0; i < kSampleRate * hissMs / 1000; ++i) {
        noise = noise * 1664525u + 1013904223u;
        p.samples.push_back(0.05f * (static_cast<float>(noise >> 8) / 8388608.0f - 1.0f));
    }
    const int n = kSampleRate * ms / 1000;
    double phase = 0;
    for (int i = 0; i < n; ++i) {
        const double t = static_cast<double>(i) / n;
        phase += 2 * std::numbers::pi * hzAt(t) / kSampleRate;
        double v = 0;
        for (int h = 1; h <= 8; ++h)
            v += std::sin(h * phase) / h;
        const double fade = std::min({1.0, t * 20, (1 - t) * 20});
        p.samples.push_back(static_cast<float>(0.3 * fade * v));
    }
    return p;
}

// A voice as a speech engine makes it: one pulse per period through two vocal-tract
// resonances (the vowel), ringing down before the next pulse; with an optional hiss before it.
Pcm RingingVoice(const std::function<double(double)>& hzAt, int ms, int hissMs = 0) {
    Pcm p = Voice([](double) { return 100.0; }, 0, hissMs);
    struct Resonance {
        double a1, a2, y1 = 0, y2 = 0;
        Resonance(double hz, double bandwidth) {
            const double r = std::exp(-std::numbers::pi * bandwidth / kSampleRate);
            a1 = 2 * r * std::cos(2 * std::numbers::pi * hz / kSampleRate);
            a2 = -r * r;
        }
        double Step(double in) {
            const double y = in + a1 * y1 + a2 * y2;
            y2 = y1;
            y1 = y;
            return y;
        }
    } first(700, 90), second(1200, 110);
    const int n = kSampleRate * ms / 1000;
    double phase = 1;
    for (int i = 0; i < n; ++i) {
        const double t = static_cast<double>(i) / n;
        phase += hzAt(t) / kSampleRate;
        double pulse = 0;
        if (phase >= 1) {
            phase -= 1;
            pulse = 1;
        }
        const double fade = std::min({1.0, t * 20, (1 - t) * 20});
        p.samples.push_back(
            static_cast<float>(0.05 * fade * (first.Step(pulse) + 0.7 * second.Step(pulse))));
    }
    return p;
}

double Semitones(double to, double from) {
    return 12 * std::log2(to / from);
}

TEST(PitchTrack, FollowsAKnownFundamental) {
    const Pcm level = Voice([](double) { return 120.0; }, 300);
    const PitchTrack track = TrackPitch(level);
    int voiced = 0;
    for (float hz : track.hz)
        if (hz > 0) {
            ++voiced;
            EXPECT_NEAR(hz, 120.0, 1.0);
        }
    EXPECT_GT(voiced, 40);
    // Low and high voices alike, without octave slips.
    for (double hz : {70.0, 95.0, 210.0, 380.0}) {
        const ToneContour c = MeasureContour(Voice([hz](double) { return hz; }, 250));
        ASSERT_TRUE(c.voiced) << hz;
        EXPECT_NEAR(c.startHz, hz, hz * 0.01);
        EXPECT_NEAR(c.startToEnd, 0, 0.2) << hz;
    }
}

TEST(PitchTrack, ContoursOfTheFourTonesAreMeasuredAgainstTheStart) {
    const struct {
        const char* name;
        int tone;
        std::function<double(double)> hz;
        double startToEnd, lowest, highest;
        bool clear;
    } rows[] = {
        {"level", 1, [](double) { return 150.0; }, 0, 0, 0, true},
        {"level with a drift", 1, [](double t) { return 100 * std::pow(2, 1.7 * t / 12); }, 1.7, 0,
         1.7, false},
        {"rise of five", 2, [](double t) { return 100 * std::pow(2, 5 * t / 12); }, 5, 0, 5, true},
        {"rise of three", 2, [](double t) { return 100 * std::pow(2, 3 * t / 12); }, 3, 0, 3,
         false},
        {"dip of four and back up two", 3,
         [](double t) {
             return 100 * std::pow(2, (t < 0.6 ? -4 * t / 0.6 : -4 + 2 * (t - 0.6) / 0.4) / 12);
         },
         -2, -4, 0, true},
        {"fall of six", 4, [](double t) { return 140 * std::pow(2, -6 * t / 12); }, -6, -6, 0,
         true},
        {"fall of three", 4, [](double t) { return 140 * std::pow(2, -3 * t / 12); }, -3, -3, 0,
         false},
    };
    for (const auto& r : rows) {
        // The hiss of a voiceless initial stands before the vowel and is not part of the tone.
        const ToneContour c = MeasureContour(Voice(r.hz, 320, 80));
        ASSERT_TRUE(c.voiced) << r.name;
        // The ends of the contour are fades and a median: up to half a semitone short on a steep
        // contour.
        EXPECT_NEAR(c.startToEnd, r.startToEnd, 0.8) << r.name;
        EXPECT_NEAR(c.lowest, r.lowest, 0.8) << r.name;
        EXPECT_NEAR(c.highest, r.highest, 0.8) << r.name;
        EXPECT_EQ(ContourIsClear(r.tone, c), r.clear) << r.name;
    }
    // Hiss alone has no contour.
    EXPECT_FALSE(MeasureContour(Voice([](double) { return 100.0; }, 0, 200)).voiced);
}

TEST(PitchTrack, AClickStandsOutOfItsSurroundings) {
    Pcm voice = Voice([](double t) { return 100 + 60 * t; }, 300);
    const float smooth = LargestStepRatio(voice);
    EXPECT_LT(smooth, 1.5f);
    // A waveform cut and joined a quarter period off: one step as large as the wave itself.
    std::vector<float> joined(voice.samples.begin(), voice.samples.begin() + 3000);
    joined.insert(joined.end(), voice.samples.begin() + 3055, voice.samples.end());
    Pcm cut;
    cut.samples = joined;
    const float step = LargestStepRatio(cut);
    EXPECT_GT(step, 3.0f);
}

// Each tone bent onto its contour, from a level voice and from one that already moves the wrong
// way, in the register of the reference pitch; the length stays, and nothing clicks.
TEST(ToneBend, EveryToneReachesItsContour) {
    const Pcm level = RingingVoice([](double) { return 90.0; }, 320);
    const Pcm rising = RingingVoice([](double t) { return 80 * std::pow(2, 2 * t / 12); }, 320);
    for (const Pcm* voice : {&level, &rising}) {
        for (int tone = 1; tone <= 4; ++tone) {
            SCOPED_TRACE(::testing::Message() << "tone " << tone);
            const Pcm bent = BendTone(*voice, tone, 92);
            ASSERT_EQ(bent.samples.size(), voice->samples.size());
            const ToneContour c = MeasureContour(bent);
            ASSERT_TRUE(c.voiced);
            EXPECT_TRUE(ContourIsClear(tone, c))
                << c.startToEnd << " " << c.lowest << " " << c.highest;
            // The contour starts where the tone starts in the register of 92 Hz.
            EXPECT_NEAR(Semitones(c.startHz, 92), ToneTarget(tone, 0), 0.6);
            EXPECT_LT(LargestStepRatio(bent), 2.0f);
        }
    }
    // Syllables spoken higher or lower come out in one register: one speaker.
    const Pcm low = RingingVoice([](double) { return 78.0; }, 300);
    const Pcm high = RingingVoice([](double) { return 105.0; }, 300);
    EXPECT_NEAR(MeasureContour(BendTone(low, 1, 92)).startHz,
                MeasureContour(BendTone(high, 1, 92)).startHz, 1.5);
}

TEST(ToneBend, AVoicelessInitialKeepsItsHissAndNothingElseChanges) {
    const Pcm syllable = RingingVoice([](double) { return 90.0; }, 300, 100);
    const Pcm bent = BendTone(syllable, 4, 92);
    ASSERT_EQ(bent.samples.size(), syllable.samples.size());
    // The hiss is laid down window by window unchanged: the same samples, not a buzz.
    const size_t hiss = kSampleRate * 80 / 1000;
    double worst = 0;
    for (size_t i = 0; i < hiss; ++i)
        worst =
            std::max(worst, std::fabs(static_cast<double>(bent.samples[i]) - syllable.samples[i]));
    EXPECT_LT(worst, 1e-5);
    EXPECT_TRUE(ContourIsClear(4, MeasureContour(bent)));

    // What has no voice to bend, or no tone, comes back as it was.
    const Pcm hissOnly = Voice([](double) { return 100.0; }, 0, 200);
    EXPECT_EQ(BendTone(hissOnly, 2, 92).samples, hissOnly.samples);
    EXPECT_EQ(BendTone(syllable, 0, 92).samples, syllable.samples);
}

} // namespace
} // namespace vt::coursepack
