#pragma once
// The pitch of a recording, for the syllables whose tone a learner must hear: a YIN tracker
// (difference function, cumulative mean normalisation, absolute threshold, parabolic
// refinement) gives the fundamental frequency every few milliseconds, and the contour of the
// voiced part is measured in semitones against its start. The course check reports these
// figures per tone; the tone bend uses the same tracker to know what it is bending.
//
// Nothing here knows files or the course: samples in, numbers out.

#include "audio.h"

#include <vector>

namespace vt::coursepack {

struct PitchTrack {
    int rate = kSampleRate;
    int hop = 0;            // samples between frames; frame i describes the samples from i * hop
    int window = 0;         // samples each frame looks at
    std::vector<float> hz;  // per frame: the fundamental frequency, 0 where the sound is unvoiced
    std::vector<float> rms; // per frame: loudness of the frame
    // The sample a frame's value belongs to: the middle of its window.
    double CentreOf(size_t frame) const { return static_cast<double>(frame * hop) + window / 2.0; }
};

// Tracks the fundamental frequency between minHz and maxHz, one frame every hopMs.
PitchTrack TrackPitch(const Pcm& pcm, int hopMs = 5, float minHz = 60, float maxHz = 450);

// The voiced part of a track: the longest run of voiced frames (a gap of up to four frames
// bridged) that is at least a tenth as loud as the loudest frame, without frames at its ends
// that lie more than 5 semitones from its middle pitch or jump 3 semitones from their
// neighbour (a fading voice lets the tracker slip), its values smoothed by a median over five
// frames. Empty when nothing is voiced.
struct VoicedPart {
    size_t first = 0;      // frame index of values[0]
    std::vector<float> hz; // smoothed
};
VoicedPart FindVoicedPart(const PitchTrack& track);

// The tone contour of a syllable, in semitones relative to the start of its voiced part.
struct ToneContour {
    bool voiced = false;
    int frames = 0;
    float startHz = 0;
    float startToEnd = 0; // end minus start
    float lowest = 0;     // the lowest point minus the start (0 or below)
    float highest = 0;    // the highest point minus the start (0 or above)
};
ToneContour MeasureContour(const Pcm& pcm);

// Whether a contour carries its tone clearly: tone 1 stays within a semitone of its start,
// tone 2 rises at least 4, tone 3 dips at least 3 below its start, tone 4 falls at least 5.
bool ContourIsClear(int tone, const ToneContour& contour);

// The largest sample-to-sample step of a recording measured against the steps around it: the
// step divided by the largest other step within 15 ms on either side (a period of the lowest
// voice). A voice repeats its sharpest edge every period and noise has its like nearby, so
// speech stays near 1; a click (a cut or a badly joined segment) is a step with no like around
// it and stands out by a factor of several.
float LargestStepRatio(const Pcm& pcm);

} // namespace vt::coursepack
