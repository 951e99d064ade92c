// Syllable speech and the shared player, heard on the virtual output: which recordings play, in
// which order and without gaps, which tone the desktop shows, and who is told of the end.
#include "core/runtime.h"
#include "core/speech.h"
#include "support/sound_fixtures.h"
#include "support/test_env.h"

#include <gtest/gtest.h>

namespace vt {
namespace {

using test::FramesOf, test::SoundRuns, test::ToneHz, test::ToneWav;
constexpr int kRate = test::kOutputRate;

// A recording of a syllable: its tone and length, so the output tells which one sounded.
struct Recording {
    const char* file;
    int hz;
    int ms;
};
const Recording kNi3{"Phonetic Symbols\\N\\ni3.wav", 400, 230};
const Recording kHao3{"Phonetic Symbols\\H\\hao3.wav", 700, 270};
const Recording kMa1{"Phonetic Symbols\\M\\ma1.wav", 1000, 210};
const Recording kEr1{"Phonetic Symbols\\E\\er1.wav", 1300, 190};
const Recording kEr2{"Phonetic Symbols\\E\\er2.wav", 1600, 250};
const Recording kZi1{"Phonetic Symbols\\Z\\zi1.wav", 1900, 180};
const Recording kLesson{"Lessons\\Sound\\Lesson_3\\1.wav", 2500, 400};

struct Speech : ::testing::Test {
    test::TestEnv env;
    std::unique_ptr<SoundSystem> sound = SoundSystem::CreateVirtual(env.clock, kRate);
    std::vector<QString> tonesShown;
    Runtime& rt = *env.rt;

    Speech() {
        sound->Attach(rt);
        rt.ShowToneCurve = [this](const QString& t) { tonesShown.push_back(t); };
        for (const Recording& r : {kNi3, kHao3, kMa1, kEr1, kEr2, kZi1, kLesson})
            env.WriteFile(r.file, ToneWav(r.hz, r.ms, 16000));
    }
    const std::vector<float>& heard() { return sound->Virtual()->Recorded(); }

    // The recordings were heard in this order, each straight after the one before.
    void expectHeard(const std::vector<Recording>& parts, const char* what) {
        const auto runs = SoundRuns(heard());
        ASSERT_EQ(runs.size(), parts.empty() ? 0u : 1u) << what << ": gaps or extra sound";
        if (parts.empty()) return;
        long at = runs[0].start, total = 0;
        for (const Recording& r : parts) {
            const long n = FramesOf(r.ms);
            EXPECT_NEAR(ToneHz(heard(), at + n / 5, n * 3 / 5, kRate), r.hz, 25)
                << what << ": " << r.file;
            at += n;
            total += n;
        }
        EXPECT_NEAR(runs[0].frames, total, 2 * long(parts.size())) << what;
    }
};

TEST_F(Speech, SpeaksEachSyllableWithItsRecordingAndShowsItsTone) {
    struct Row {
        const char* text;
        std::vector<Recording> heard;
        std::vector<QString> tones;
    };
    const std::vector<Row> rows = {
        {"ni3 hao3", {kNi3, kHao3}, {"3", "3"}},
        {"ma0", {kMa1}, {"0"}},                  // neutral: the first-tone recording
        {"er1", {kEr2}, {"1"}},                  // a final "er1" is said "er2"
        {"er1 zi0", {kEr1, kZi1}, {"1", "0"}},   // ... but only when it is last
        {"ni3hao3.", {kNi3, kHao3}, {"3", "3"}}, // text after the last digit is dropped
    };
    for (const Row& row : rows) {
        sound->Virtual()->ClearRecorded();
        tonesShown.clear();
        SpeakPinyin(rt, row.text);
        env.clock.RunUntilIdle();
        expectHeard(row.heard, row.text);
        EXPECT_EQ(tonesShown, row.tones) << row.text;
        EXPECT_EQ(rt.app.SpeechPosition, int16_t(row.heard.size())) << row.text;
        EXPECT_EQ(rt.app.CurrentTone, row.tones.back()) << row.text;
        EXPECT_EQ(sound->MMControl1->Mode(), MMControl::ModeNotOpen) << row.text << ": not closed";
    }
}

TEST_F(Speech, EmptyTextLeavesTheRunningSoundAlone) {
    SpeakPinyin(rt, "ni3 hao3");
    env.clock.Advance(50);
    SpeakPinyin(rt, "");
    env.clock.RunUntilIdle();
    expectHeard({kNi3, kHao3}, "ni3 hao3");
}

TEST_F(Speech, PlayWaveWithoutOwnerCutsTheSpeechSilently) {
    int told = 0;
    sound->SetSpeechEndHandler(3, [&] { ++told; });
    rt.app.OpenTask = 3;
    SpeakPinyin(rt, "ni3 hao3 ma0");
    env.clock.Advance(100);
    PlayWave(rt, rt.app.AppPath + kLesson.file, OwnerTag::None);
    env.clock.RunUntilIdle();
    EXPECT_EQ(rt.app.SpeechPosition, 1);
    EXPECT_EQ(rt.app.SoundOwner, 0);
    EXPECT_EQ(told, 0);
    // 100 ms of ni3, then the lesson sound at once.
    const auto runs = SoundRuns(heard());
    ASSERT_EQ(runs.size(), 1u);
    EXPECT_NEAR(runs[0].frames, FramesOf(100) + FramesOf(kLesson.ms), 4);
    EXPECT_NEAR(ToneHz(heard(), runs[0].start + FramesOf(150), FramesOf(300), kRate), kLesson.hz,
                25);
}

TEST_F(Speech, MissingRecordingStopsTheSpeechThereWithoutAWord) {
    int told = 0;
    sound->SetSpeechEndHandler(0, [&] { ++told; });
    SpeakPinyin(rt, "ni3 xyz3 hao3");
    env.clock.RunUntilIdle();
    expectHeard({kNi3}, "ni3 xyz3 hao3");
    EXPECT_EQ(rt.app.SpeechPosition, 2);
    EXPECT_EQ(told, 0);
    EXPECT_EQ(env.boxes.Count(), 0);
}

TEST_F(Speech, ReplayShowsTheToneAgainOnlyForSyllables) {
    struct Row {
        const char* file;
        size_t tonesAfterReplay;
    };
    for (const Row& row : {Row{kMa1.file, 2}, Row{kLesson.file, 0}}) {
        tonesShown.clear();
        sound->Virtual()->ClearRecorded();
        rt.app.CurrentTone = "1";
        PlayWave(rt, rt.app.AppPath + row.file, OwnerTag::None);
        env.clock.Advance(100);
        ReplayWave(rt, OwnerTag::None);
        env.clock.RunUntilIdle();
        EXPECT_EQ(tonesShown.size(), row.tonesAfterReplay) << row.file;
        // 100 ms, then the whole file again from its start.
        const auto runs = SoundRuns(heard());
        ASSERT_EQ(runs.size(), 1u) << row.file;
        const int ms = row.file == kMa1.file ? kMa1.ms : kLesson.ms;
        EXPECT_NEAR(runs[0].frames, FramesOf(100) + FramesOf(ms), 4) << row.file;
    }
}

TEST_F(Speech, EndOfSoundGoesToTheOwnerOfTheMoment) {
    std::vector<int> calls;
    sound->SetOwnerHandler(OwnerTag::Alphabet1, [&] { calls.push_back(7); });
    sound->SetOwnerHandler(OwnerTag::Vocabulary, [&] { calls.push_back(12); });
    sound->SetOwnerHandler(OwnerTag::None, [&] { calls.push_back(0); }); // refused: wants nothing
    const QString path = rt.app.AppPath + kMa1.file;

    PlayWave(rt, path, OwnerTag::Alphabet1);
    env.clock.RunUntilIdle();
    EXPECT_EQ(calls, std::vector<int>{7});

    PlayWave(rt, path, OwnerTag::Alphabet1);
    rt.app.SoundOwner = 12; // the tag is read when the sound ends
    env.clock.RunUntilIdle();
    EXPECT_EQ(calls, (std::vector<int>{7, 12}));

    sound->RemoveOwnerHandler(OwnerTag::Alphabet1); // the form has gone
    PlayWave(rt, path, OwnerTag::Alphabet1);
    // Nobody has tag 9; the first play is cut and reports nothing.
    PlayWave(rt, path, static_cast<OwnerTag>(9));
    env.clock.RunUntilIdle();
    EXPECT_EQ(calls, (std::vector<int>{7, 12}));
}

TEST_F(Speech, EndOfSpeechCallsTheHookOfTheOpenTask) {
    std::vector<int> calls;
    sound->SetSpeechEndHandler(3, [&] { calls.push_back(3); });
    sound->SetSpeechEndHandler(6, [&] { calls.push_back(6); });
    for (int16_t task : {3, 6, 1}) {
        rt.app.OpenTask = task;
        SpeakPinyin(rt, "ma0");
        env.clock.RunUntilIdle();
    }
    EXPECT_EQ(calls, (std::vector<int>{3, 6}));
}

TEST_F(Speech, SecondPlayerClosesItselfAtTheEnd) {
    MMControl* p = sound->MMControl2;
    p->SetFileName(rt.app.AppPath + kHao3.file);
    p->SetCommand("Open");
    p->SetCommand("Play");
    EXPECT_EQ(p->Mode(), MMControl::ModePlaying);
    env.clock.RunUntilIdle();
    EXPECT_EQ(p->Mode(), MMControl::ModeNotOpen);
    expectHeard({kHao3}, "MMControl2");
}

} // namespace
} // namespace vt
