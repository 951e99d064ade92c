#pragma once
// Clear tones for the syllable recordings. The speech engine speaks every tone within about
// three semitones, too close together for a beginner's ear; here the voiced part of a syllable
// is bent onto its tone's contour by pitch-synchronous overlap-add: the pitch periods of the
// recording are cut out with smooth windows and laid down again at the spacing of the wanted
// pitch. The vocal tract (the vowel's colour, the voice) stays as it was, the length does not
// change, and every syllable of a voice ends up in the same register, so that syllables played
// one after the other sound like one speaker.
//
// The result depends only on the samples and the arguments: the same recording always gives the
// same bend.

#include "audio.h"

namespace vt::coursepack {

// The pitch a tone follows across the voiced part of its syllable, in semitones against the
// voice's reference pitch, at fraction 0..1 of the voiced part. Tone 1 is high and level,
// tone 2 rises from the middle to the top, tone 3 dips to the bottom and comes part of the way
// back, tone 4 falls from above the top to below the middle. Other tones: 0.
float ToneTarget(int tone, float fraction);

// The syllable with its voiced part bent onto ToneTarget(tone) around referenceHz. A recording
// without a voiced part to measure, or a tone other than 1 to 4, comes back unchanged.
Pcm BendTone(const Pcm& syllable, int tone, float referenceHz);

} // namespace vt::coursepack
