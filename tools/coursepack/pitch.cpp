#include "pitch.h"

#include <algorithm>
#include <cmath>
#include <deque>

namespace vt::coursepack {

namespace {

constexpr float kYinThreshold = 0.15f; // first dip below this is the period
constexpr float kYinVoiced = 0.45f;    // a best dip above this means no period at all
constexpr float kLoudEnough = 0.1f;    // of the loudest frame, for the voiced part
constexpr float kStray = 5.0f;         // semitones from the middle of a contour: a slip
constexpr float kJump = 3.0f;          // semitones from one voiced frame to the next: a slip

// Half the rate, low-passed on the way: the tracker needs no more, and runs four times faster.
std::vector<float> halve(const std::vector<float>& s) {
    std::vector<float> out(s.size() / 2);
    for (size_t n = 0; n < out.size(); ++n) {
        const float before = 2 * n > 0 ? s[2 * n - 1] : 0.0f;
        const float after = 2 * n + 1 < s.size() ? s[2 * n + 1] : 0.0f;
        out[n] = 0.25f * before + 0.5f * s[2 * n] + 0.25f * after;
    }
    return out;
}

float semitones(float hz, float reference) {
    return 12.0f * std::log2(hz / reference);
}

} // namespace

PitchTrack TrackPitch(const Pcm& pcm, int hopMs, float minHz, float maxHz) {
    PitchTrack track;
    track.rate = pcm.rate;
    const bool half = pcm.rate >= 16000;
    const std::vector<float> x = half ? halve(pcm.samples) : pcm.samples;
    const int rate = half ? pcm.rate / 2 : pcm.rate;
    const int scale = half ? 2 : 1;
    const int hop = std::max(1, rate * hopMs / 1000);
    const int window = rate * 15 / 1000;
    const int tauMin = std::max(2, static_cast<int>(static_cast<float>(rate) / maxHz));
    const int tauMax = static_cast<int>(static_cast<float>(rate) / minHz) + 1;
    track.hop = hop * scale;
    track.window = window * scale;
    if (x.size() < static_cast<size_t>(window)) return track;

    std::vector<float> d(static_cast<size_t>(tauMax) + 2);
    for (size_t start = 0; start + static_cast<size_t>(window) <= x.size();
         start += static_cast<size_t>(hop)) {
        double energy = 0;
        for (int j = 0; j < window; ++j)
            energy += static_cast<double>(x[start + j]) * x[start + j];
        track.rms.push_back(static_cast<float>(std::sqrt(energy / window)));
        if (energy <= 1e-9) {
            track.hz.push_back(0);
            continue;
        }
        // Cumulative mean normalised difference, computed only as far as the period needs and
        // the recording reaches: near its end only shorter periods can be seen.
        const int reach = static_cast<int>(
            std::min<size_t>(static_cast<size_t>(tauMax), x.size() - start - window));
        double running = 0;
        int best = -1;
        float bestValue = 1e9f;
        d[0] = 1;
        for (int tau = 1; tau <= reach; ++tau) {
            double sum = 0;
            for (int j = 0; j < window; ++j) {
                const float diff = x[start + j] - x[start + j + tau];
                sum += static_cast<double>(diff) * diff;
            }
            running += sum;
            d[tau] = running > 0 ? static_cast<float>(sum * tau / running) : 1.0f;
            if (tau < tauMin + 1) continue;
            const int prev = tau - 1;
            // prev is a local minimum below the threshold: that is the period.
            if (d[prev] < kYinThreshold && d[prev] <= d[tau] && d[prev] <= d[prev - 1]) {
                best = prev;
                bestValue = d[prev];
                break;
            }
            if (d[prev] < bestValue && d[prev] <= d[tau] && d[prev] <= d[prev - 1]) {
                best = prev;
                bestValue = d[prev];
            }
        }
        if (best < 0 || bestValue > kYinVoiced) {
            track.hz.push_back(0);
            continue;
        }
        // Parabola through the dip and its neighbours.
        const float a = d[best - 1], b = d[best], c = d[best + 1];
        const float denom = a - 2 * b + c;
        const float shift = denom > 1e-9f ? 0.5f * (a - c) / denom : 0.0f;
        track.hz.push_back(static_cast<float>(rate) /
                           (static_cast<float>(best) + std::clamp(shift, -0.5f, 0.5f)));
    }
    return track;
}

VoicedPart FindVoicedPart(const PitchTrack& track) {
    VoicedPart part;
    const size_t n = track.hz.size();
    if (n == 0) return part;
    const float loudest = *std::max_element(track.rms.begin(), track.rms.end());
    auto voiced = [&](size_t i) {
        return track.hz[i] > 0 && track.rms[i] >= kLoudEnough * loudest;
    };
    size_t bestFirst = 0, bestLast = 0, bestLength = 0;
    for (size_t i = 0; i < n;) {
        if (!voiced(i)) {
            ++i;
            continue;
        }
        size_t last = i;
        for (size_t j = i + 1; j < n && j <= last + 5; ++j)
            if (voiced(j)) last = j;
        if (last - i + 1 > bestLength) {
            bestFirst = i;
            bestLast = last;
            bestLength = last - i + 1;
        }
        i = last + 1;
    }
    if (bestLength == 0) return part;
    // The ends of a voice fade, and there the tracker may lock onto an octave or a ring: frames
    // at either end that lie far from the part's middle pitch are not part of the contour.
    std::vector<float> sorted;
    for (size_t i = bestFirst; i <= bestLast; ++i)
        if (voiced(i)) sorted.push_back(track.hz[i]);
    std::nth_element(sorted.begin(), sorted.begin() + static_cast<long>(sorted.size() / 2),
                     sorted.end());
    const float middle = sorted[sorted.size() / 2];
    auto kept = [&](size_t i) {
        return voiced(i) && std::fabs(semitones(track.hz[i], middle)) <= kStray;
    };
    // Nor are frames that jump away from the voiced frame next to them.
    auto nextVoiced = [&](size_t i, bool forward) {
        do
            i = forward ? i + 1 : i - 1;
        while (i > bestFirst && i < bestLast && !voiced(i));
        return i;
    };
    auto joins = [&](size_t i, size_t j) {
        return voiced(j) && std::fabs(semitones(track.hz[i], track.hz[j])) <= kJump;
    };
    while (bestFirst < bestLast &&
           (!kept(bestFirst) || !joins(bestFirst, nextVoiced(bestFirst, true))))
        ++bestFirst;
    while (bestLast > bestFirst &&
           (!kept(bestLast) || !joins(bestLast, nextVoiced(bestLast, false))))
        --bestLast;
    if (!kept(bestFirst)) return part;
    // Bridged gaps take the line between their neighbours.
    std::vector<float> hz(track.hz.begin() + static_cast<long>(bestFirst),
                          track.hz.begin() + static_cast<long>(bestLast + 1));
    for (size_t i = 0; i < hz.size(); ++i) {
        if (voiced(bestFirst + i)) continue;
        size_t next = i + 1;
        while (!voiced(bestFirst + next))
            ++next;
        const float from = hz[i - 1], to = hz[next];
        for (size_t k = i; k < next; ++k)
            hz[k] = from +
                    (to - from) * static_cast<float>(k - i + 1) / static_cast<float>(next - i + 1);
        i = next;
    }
    // Median over five frames: a single octave slip does not make a contour.
    part.first = bestFirst;
    part.hz.resize(hz.size());
    for (size_t i = 0; i < hz.size(); ++i) {
        const size_t lo = i >= 2 ? i - 2 : 0, hi = std::min(hz.size(), i + 3);
        std::vector<float> w(hz.begin() + static_cast<long>(lo),
                             hz.begin() + static_cast<long>(hi));
        std::nth_element(w.begin(), w.begin() + static_cast<long>(w.size() / 2), w.end());
        part.hz[i] = w[w.size() / 2];
    }
    return part;
}

ToneContour MeasureContour(const Pcm& pcm) {
    ToneContour c;
    const VoicedPart part = FindVoicedPart(TrackPitch(pcm));
    c.frames = static_cast<int>(part.hz.size());
    if (c.frames < 5) return c;
    c.voiced = true;
    c.startHz = part.hz.front();
    c.startToEnd = semitones(part.hz.back(), c.startHz);
    for (float hz : part.hz) {
        const float st = semitones(hz, c.startHz);
        c.lowest = std::min(c.lowest, st);
        c.highest = std::max(c.highest, st);
    }
    return c;
}

bool ContourIsClear(int tone, const ToneContour& c) {
    if (!c.voiced) return false;
    switch (tone) {
    case 1:
        return c.lowest >= -1 && c.highest <= 1;
    case 2:
        return c.startToEnd >= 4;
    case 3:
        return c.lowest <= -3;
    case 4:
        return c.startToEnd <= -5;
    default:
        return true;
    }
}

float LargestStepRatio(const Pcm& pcm) {
    const auto& s = pcm.samples;
    if (s.size() < 3) return 0;
    const size_t n = s.size() - 1;
    std::vector<float> step(n);
    for (size_t i = 0; i < n; ++i)
        step[i] = std::fabs(s[i + 1] - s[i]);
    // The largest step within reach on the left of each step, and on its right, leaving out the
    // two next to it: a sliding maximum each way.
    const size_t reach = static_cast<size_t>(pcm.rate) * 15 / 1000, gap = 3;
    auto sliding = [&](bool leftwards) {
        std::vector<float> out(n, 0.0f);
        std::deque<size_t> window; // indexes of falling steps, the largest in front
        for (size_t k = 0; k < n; ++k) {
            const size_t i = leftwards ? k : n - 1 - k;
            if (k >= gap) {
                const size_t enter = leftwards ? i - gap : i + gap;
                while (!window.empty() && step[window.back()] <= step[enter])
                    window.pop_back();
                window.push_back(enter);
            }
            while (!window.empty() &&
                   (leftwards ? window.front() + reach < i : window.front() > i + reach))
                window.pop_front();
            out[i] = window.empty() ? 0.0f : step[window.front()];
        }
        return out;
    };
    const std::vector<float> left = sliding(true), right = sliding(false);
    constexpr float kQuiet = 0.01f; // steps this small are never heard
    float worst = 0;
    for (size_t i = 0; i < n; ++i)
        worst = std::max(worst, step[i] / std::max({left[i], right[i], kQuiet}));
    return worst;
}

} // namespace vt::coursepack
