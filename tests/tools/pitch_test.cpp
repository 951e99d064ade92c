// The pitch tracker and the contour figures of the course check, on made-up voices whose pitch
// is known sample by sample.

#include "audio.h"
#include "pitch.h"

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

} // namespace
} // namespace vt::coursepack
