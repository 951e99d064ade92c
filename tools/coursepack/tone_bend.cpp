#include "tone_bend.h"

#include "pitch.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vt::coursepack {

namespace {

constexpr float kNearEdge = 5.0f;    // semitones: the voice around the part goes on from it
constexpr size_t kInitialGap = 8;    // frames the tracker may lose between an initial and its vowel
constexpr float kInitialJoin = 2.0f; // semitones between such an initial and its vowel
constexpr float kFading = 0.01f;     // of the loudest frame: the fading voice after the part
constexpr float kMaxShift = 9.0f;    // semitones; a larger shift means the tracker slipped
constexpr int kUnvoicedStepMs = 5;   // spacing of the windows where nothing is voiced

float ease(float t) {
    return 0.5f - 0.5f * std::cos(std::numbers::pi_v<float> * std::clamp(t, 0.0f, 1.0f));
}

// One pitch period of the recording, as the overlap-add cuts it out.
struct Mark {
    long pos;    // sample at the centre of the window
    long period; // spacing to the next mark when laid down unchanged
    bool voiced;
};

// The recorded pitch of every frame (0 where nothing is voiced) and the ratio that brings it
// where the tone wants it, with their values at any sample.
class FramePlan {
public:
    FramePlan(const PitchTrack& track, const VoicedPart& part, int tone, float referenceHz);

    double PitchAt(double sample) const { return between(hz_, sample); }
    double RatioAt(double sample) const { return between(ratio_, sample); }

private:
    // The frame whose centre is nearest; between two voiced frames' centres on a straight line.
    double between(const std::vector<float>& v, double sample) const {
        const double last = static_cast<double>(hz_.size() - 1);
        const double f = std::clamp((sample - centre0_) / hop_, 0.0, last);
        const size_t a = static_cast<size_t>(f), b = std::min(hz_.size() - 1, a + 1);
        if (hz_[a] <= 0 || hz_[b] <= 0) return v[static_cast<size_t>(std::round(f))];
        return v[a] + (v[b] - v[a]) * (f - static_cast<double>(a));
    }

    std::vector<float> hz_, ratio_;
    double hop_, centre0_;
};

// The recorded pitch of every frame: the voiced part, and around it the voice that goes on,
// however quiet, as long as its pitch goes on from the part's end. A syllable ends in its vowel
// or nasal, so after the part the voice fades out at the pitch it had even where the tracker
// lost it; before the part a voiceless initial may stand, and a hiss must not be given a pitch:
// there only tracked frames joined to the part count.
std::vector<float> voicedPitch(const PitchTrack& track, const VoicedPart& part) {
    const size_t frames = track.hz.size();
    const size_t first = part.first, last = part.first + part.hz.size() - 1;
    const float loudest = *std::max_element(track.rms.begin(), track.rms.end());
    std::vector<float> hz(frames, 0.0f);
    for (size_t i = first; i <= last; ++i)
        hz[i] = part.hz[i - first];
    auto near = [&](size_t i, float edge, float semitones) {
        return track.hz[i] > 0 && std::fabs(12.0f * std::log2(track.hz[i] / edge)) <= semitones;
    };
    for (size_t i = first; i-- > 0;) {
        if (near(i, hz[i + 1], kNearEdge)) {
            hz[i] = track.hz[i];
            continue;
        }
        // A voiced initial (m, n, l, r) may be parted from its vowel by a few frames the
        // tracker lost: bridged when the voice stays audible and its pitch carries on closely.
        size_t j = i;
        while (j > 0 && i - j < kInitialGap && track.hz[j] <= 0 &&
               track.rms[j] >= kFading * loudest)
            --j;
        if (!near(j, hz[i + 1], kInitialJoin)) break;
        for (size_t k = j + 1; k <= i; ++k)
            hz[k] = hz[i + 1] + (track.hz[j] - hz[i + 1]) * static_cast<float>(i + 1 - k) /
                                    static_cast<float>(i + 1 - j);
        i = j + 1;
    }
    for (size_t i = last + 1; i < frames; ++i) {
        if (near(i, part.hz.back(), kNearEdge))
            hz[i] = track.hz[i];
        else if (track.rms[i] >= kFading * loudest)
            hz[i] = hz[i - 1];
        else
            break;
    }
    return hz;
}

FramePlan::FramePlan(const PitchTrack& track, const VoicedPart& part, int tone, float referenceHz)
    : hz_(voicedPitch(track, part)), hop_(track.hop), centre0_(track.CentreOf(0)) {
    // Inside the voiced part the ratio brings the pitch onto the tone's contour; voiced frames
    // around it keep the ratio of the nearest end of the part, so the pitch goes on without a
    // jump.
    const std::vector<float>& hz = hz_;
    const size_t frames = hz.size();
    const size_t first = part.first, last = part.first + part.hz.size() - 1;
    std::vector<float> ratio(frames, 1.0f);
    auto wanted = [&](size_t i) {
        const float f = static_cast<float>(i - first) / static_cast<float>(last - first);
        const float shift = ToneTarget(tone, f) + 12.0f * std::log2(referenceHz / hz[i]);
        return std::pow(2.0f, std::clamp(shift, -kMaxShift, kMaxShift) / 12.0f);
    };
    for (size_t i = 0; i < frames; ++i)
        if (hz[i] > 0) ratio[i] = wanted(std::clamp(i, first, last));
    // A little smoothing of the ratio over the voiced frames: the tracker's last wobble.
    std::vector<float> smooth = ratio;
    for (size_t i = 0; i < frames; ++i) {
        if (hz[i] <= 0) continue;
        float sum = 0;
        int count = 0;
        for (size_t k = i >= 2 ? i - 2 : 0; k < std::min(frames, i + 3); ++k)
            if (hz[k] > 0) {
                sum += ratio[k];
                ++count;
            }
        smooth[i] = sum / static_cast<float>(count);
    }
    ratio_ = std::move(smooth);
}

// Analysis marks: one per pitch period where the sound is voiced, evenly spaced where it is
// not. A voiced run starts where the energy of its first period peaks, the moment the glottis
// closes and the vocal tract rings, so a window centred there carries the whole ring and little
// of its neighbours. Each further mark is the point one period on whose surroundings match
// those of the mark before best, so every window cuts its cycle at the same phase and the marks
// follow the voice without hopping between the peaks of one ring.
std::vector<Mark> analysisMarks(const Pcm& syllable, const FramePlan& plan) {
    const std::vector<float>& x = syllable.samples;
    const long n = static_cast<long>(x.size());
    std::vector<Mark> marks;
    const long unvoicedStep = std::max(1, syllable.rate * kUnvoicedStepMs / 1000);
    auto sample = [&](long s) { return s >= 0 && s < n ? x[static_cast<size_t>(s)] : 0.0f; };
    auto loudestIn = [&](long from, long length) {
        const long ring = std::max(1L, length / 8);
        long best = from;
        double bestEnergy = -1;
        for (long s = from; s < from + length; ++s) {
            double e = 0;
            for (long k = -ring; k <= ring; ++k)
                e += static_cast<double>(sample(s + k)) * sample(s + k);
            if (e > bestEnergy) {
                bestEnergy = e;
                best = s;
            }
        }
        return best;
    };
    auto likeness = [&](long a, long b, long half) {
        double ab = 0, aa = 0, bb = 0;
        for (long k = -half; k <= half; ++k) {
            const double va = sample(a + k), vb = sample(b + k);
            ab += va * vb;
            aa += va * va;
            bb += vb * vb;
        }
        return aa > 0 && bb > 0 ? ab / std::sqrt(aa * bb) : 0.0;
    };
    for (long t = 0; t < n;) {
        const double f0 = plan.PitchAt(static_cast<double>(t));
        if (f0 <= 0) {
            marks.push_back({t, unvoicedStep, false});
            t += unvoicedStep;
            continue;
        }
        const long period = std::lround(syllable.rate / f0);
        long pos = t;
        if (marks.empty() || !marks.back().voiced) {
            pos = loudestIn(t, period);
        } else {
            double best = -2;
            for (long d = -period / 6; d <= period / 6; ++d) {
                const double l = likeness(marks.back().pos, t + d, period / 2);
                if (l > best) {
                    best = l;
                    pos = t + d;
                }
            }
        }
        if (!marks.empty() && pos <= marks.back().pos) {
            t = marks.back().pos + 1;
            continue;
        }
        marks.push_back({pos, period, true});
        t = pos + period;
    }
    return marks;
}

// Synthesis: walk the output at the wanted periods; each step lays down the window of the
// analysis mark nearest to it. A window reaches to the neighbouring marks, but never further
// than the new spacing, so a raised pitch does not pile up copies of a period.
Pcm overlapAdd(const Pcm& syllable, const std::vector<Mark>& marks, const FramePlan& plan) {
    const std::vector<float>& x = syllable.samples;
    const long n = static_cast<long>(x.size());
    Pcm out;
    out.rate = syllable.rate;
    out.samples.assign(x.size(), 0.0f);
    size_t a = 0;
    for (double ts = static_cast<double>(marks.front().pos); ts < static_cast<double>(n);) {
        while (a + 1 < marks.size() && std::fabs(static_cast<double>(marks[a + 1].pos) - ts) <=
                                           std::fabs(static_cast<double>(marks[a].pos) - ts))
            ++a;
        const Mark& m = marks[a];
        // The new spacing follows the output's own time: the pitch and ratio where it stands,
        // not where the copied period came from, else every skipped or repeated period would
        // jolt the spacing.
        const double f0 = plan.PitchAt(ts);
        const double spacing = (f0 > 0 ? syllable.rate / f0 : static_cast<double>(m.period)) /
                               std::max(0.1, plan.RatioAt(ts));
        const long reach = std::max(1L, std::lround(spacing));
        const long left = std::min(a > 0 ? m.pos - marks[a - 1].pos : m.pos, reach);
        const long right =
            std::min(a + 1 < marks.size() ? marks[a + 1].pos - m.pos : n - m.pos, reach);
        const long at = std::lround(ts);
        for (long k = -left; k <= right; ++k) {
            const long src = m.pos + k, dst = at + k;
            if (src < 0 || src >= n || dst < 0 || dst >= n) continue;
            const double w =
                k < 0 ? 0.5 + 0.5 * std::cos(std::numbers::pi * static_cast<double>(k) / left)
                : right > 0
                    ? 0.5 + 0.5 * std::cos(std::numbers::pi * static_cast<double>(k) / right)
                    : 1.0;
            out.samples[static_cast<size_t>(dst)] +=
                static_cast<float>(w * x[static_cast<size_t>(src)]);
        }
        ts += m.voiced ? spacing : static_cast<double>(std::max(1L, right));
    }
    return out;
}

} // namespace

float ToneTarget(int tone, float f) {
    f = std::clamp(f, 0.0f, 1.0f);
    switch (tone) {
    case 1:
        return 4.0f;
    case 2: // a short level start, then an ever steeper rise
        return f < 0.15f ? 0.0f : 5.5f * std::pow((f - 0.15f) / 0.85f, 1.5f);
    case 3: // down to the bottom at three fifths, then part of the way back
        return f < 0.6f ? -1.0f - 4.5f * ease(f / 0.6f) : -5.5f + 3.0f * ease((f - 0.6f) / 0.4f);
    case 4: // from above the top, falling ever faster
        return 5.5f - 7.0f * std::pow(f, 1.3f);
    default:
        return 0.0f;
    }
}

Pcm BendTone(const Pcm& syllable, int tone, float referenceHz) {
    if (tone < 1 || tone > 4 || referenceHz <= 0) return syllable;
    const PitchTrack track = TrackPitch(syllable, 5, 50, 450);
    const VoicedPart part = FindVoicedPart(track);
    if (part.hz.size() < 5) return syllable;
    const FramePlan plan(track, part, tone, referenceHz);
    const std::vector<Mark> marks = analysisMarks(syllable, plan);
    if (marks.empty()) return syllable;
    return overlapAdd(syllable, marks, plan);
}

} // namespace vt::coursepack
