#pragma once
// Who waits for the end of a sound on the desktop's shared player. PlayWave and ReplayWave (and
// the speech) store the tag of the sound they start in AppState::SoundOwner; when that sound ends
// well, the handler of the tag of that moment runs: the form's own SoundDone, which the form
// registers when it loads (AppForm::OnSoundEnd). A tag whose form is not loaded reaches nobody,
// and so does any number this table does not list.

#include <cstdint>

namespace vt {

enum class OwnerTag : int16_t {
    None = 0,          // nobody: the end is not even notified
    ListeningTV = 1,   // ListeningTV's SoundDone (the TV-play task)
    Text = 2,          // Text's SoundDone (the read-text task)
    Spoken = 6,        // Spoken's SoundDone (the dialog trainer)
    Alphabet1 = 7,     // Alphabet1's SoundDone (the Pinyin chart)
    Vocabulary = 12,   // Vocabulary's SoundDone (the vocabulary task)
    FindSentence = 13, // FindSentence's SoundDone (the sound-to-sentence task)
    Speech = 15,       // the speech itself: the next syllable (SpeakNextSyllable)
    Figure = 16,       // Figure's Play1 (the number speech)
};

// The tags that reach a form, with the form and the public routine each reaches.
struct OwnerTagRow {
    OwnerTag tag;
    const char* form;
    const char* routine;
};
inline constexpr OwnerTagRow kOwnerTags[] = {
    {OwnerTag::ListeningTV, "ListeningTV", "SoundDone"},
    {OwnerTag::Text, "Text", "SoundDone"},
    {OwnerTag::Spoken, "Spoken", "SoundDone"},
    {OwnerTag::Alphabet1, "Alphabet1", "SoundDone"},
    {OwnerTag::Vocabulary, "Vocabulary", "SoundDone"},
    {OwnerTag::FindSentence, "FindSentence", "SoundDone"},
    {OwnerTag::Figure, "Figure", "Play1"},
};

} // namespace vt
