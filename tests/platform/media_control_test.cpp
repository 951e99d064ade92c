// The player control on the mixer's virtual output: what is heard, when Done comes and with which
// code, Position and range play.
#include "platform/audio_engine.h"
#include "platform/media_control.h"
#include "platform/timers.h"
#include "support/sound_fixtures.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace vt {
namespace {

using test::FramesOf, test::SoundRuns, test::ToneHz, test::ToneWav;
constexpr int kRate = test::kOutputRate;

struct Player : ::testing::Test {
    QTemporaryDir dir;
    VirtualClock clock;
    VirtualOutput out{clock, kRate};
    SoundCache cache{kRate, 1};
    MMControl control{out.Engine(), cache};
    std::vector<int> done;

    Player() {
        QObject::connect(&control, &MMControl::Done, [this](int code) { done.push_back(code); });
    }
    QString file(const QString& name, const QByteArray& bytes) {
        QFile f(dir.filePath(name));
        f.open(QIODevice::WriteOnly);
        f.write(bytes);
        return f.fileName();
    }
    void open(const QString& path) {
        control.SetFileName(path);
        control.SetCommand("Open");
    }
    void play(bool notify = true) {
        control.SetNotify(notify);
        control.SetCommand("Play");
    }
    const std::vector<float>& heard() const { return out.Recorded(); }
};

TEST_F(Player, PlaysTheWholeFileThenReportsSuccessOnce) {
    open(file("a.wav", ToneWav(440, 300)));
    EXPECT_EQ(control.Error(), 0) << control.ErrorMessage().toStdString();
    EXPECT_EQ(control.Mode(), MMControl::ModeStopped);
    EXPECT_EQ(control.Length(), 300);
    play();
    EXPECT_EQ(control.Mode(), MMControl::ModePlaying);
    clock.Advance(100);
    EXPECT_EQ(control.Position(), 100);
    clock.Advance(50);
    EXPECT_EQ(control.Position(), 150);
    EXPECT_TRUE(done.empty());
    clock.RunUntilIdle();
    EXPECT_EQ(done, std::vector<int>{MMControl::NotifySuccessful});
    EXPECT_EQ(control.Mode(), MMControl::ModeStopped);
    EXPECT_EQ(control.Position(), 300);

    const auto runs = SoundRuns(heard());
    ASSERT_EQ(runs.size(), 1u);
    EXPECT_NEAR(runs[0].frames, FramesOf(300), 2);
    EXPECT_NEAR(ToneHz(heard(), runs[0].start, runs[0].frames, kRate), 440, 10);
}

TEST_F(Player, RangePlayGivesExactlyThatSlice) {
    // 400 Hz for half a second, then 1200 Hz for half a second.
    open(file("two.wav", ToneWav(400, 500, 16000, 1, 1200, 500)));
    EXPECT_EQ(control.Length(), 1000);
    control.SetFrom(600);
    control.SetTo(900);
    play();
    clock.RunUntilIdle();
    EXPECT_EQ(done, std::vector<int>{MMControl::NotifySuccessful});
    EXPECT_EQ(control.Position(), 900);
    const auto runs = SoundRuns(heard());
    ASSERT_EQ(runs.size(), 1u);
    EXPECT_NEAR(runs[0].frames, FramesOf(300), 2);
    EXPECT_NEAR(ToneHz(heard(), runs[0].start, runs[0].frames, kRate), 1200, 10);

    // From and To served that play only: the next one runs on from where it stands to the end.
    control.SetCommand("Prev");
    play();
    clock.RunUntilIdle();
    EXPECT_EQ(control.Position(), 1000);
}

TEST_F(Player, StopPrevReplaceAndCloseEachEndThePlayWithTheirCode) {
    open(file("a.wav", ToneWav(440, 1000)));
    play();
    clock.Advance(200);
    control.SetCommand("Stop");
    clock.Advance(100);
    EXPECT_EQ(control.Mode(), MMControl::ModeStopped);
    EXPECT_EQ(control.Position(), 200);
    play(); // goes on from where it stopped
    clock.Advance(100);
    EXPECT_EQ(control.Position(), 300);
    control.SetCommand("Prev");
    EXPECT_EQ(control.Position(), 0);
    play();
    clock.Advance(50);
    play(); // a new play replaces the running one
    clock.Advance(50);
    control.SetCommand("Close");
    clock.Advance(10);
    EXPECT_EQ(control.Mode(), MMControl::ModeNotOpen);
    EXPECT_EQ(done, (std::vector<int>{MMControl::NotifyAborted, MMControl::NotifyAborted,
                                      MMControl::NotifySuperseded, MMControl::NotifyAborted}));
    // 200 + 100 + 50 + 50 ms were heard, and nothing after the close.
    long total = 0;
    for (const auto& r : SoundRuns(heard()))
        total += r.frames;
    EXPECT_NEAR(total, FramesOf(400), 8);
    const long afterClose = long(heard().size()) - FramesOf(10);
    for (long i = afterClose; i < long(heard().size()); ++i)
        ASSERT_EQ(heard()[size_t(i)], 0.0f);
}

TEST_F(Player, MissingOrBrokenFilePlaysNothingAndNeverSucceeds) {
    const std::vector<std::pair<const char*, QString>> rows = {
        {"missing", dir.filePath("none.wav")},
        {"broken", file("broken.wav", QByteArray("RIFF\x10\0\0\0WAVEjunkjunk", 20))},
    };
    for (const auto& [name, path] : rows) {
        done.clear();
        open(path);
        EXPECT_NE(control.Error(), 0) << name;
        EXPECT_EQ(control.Mode(), MMControl::ModeNotOpen) << name;
        play();
        clock.RunUntilIdle();
        EXPECT_EQ(done, std::vector<int>{MMControl::NotifyFailure}) << name;
    }
    EXPECT_TRUE(SoundRuns(heard()).empty());
}

TEST_F(Player, WithoutNotifyNothingIsReported) {
    open(file("a.wav", ToneWav(440, 100)));
    play(false);
    clock.RunUntilIdle();
    EXPECT_TRUE(done.empty());
    EXPECT_EQ(SoundRuns(heard()).size(), 1u);
}

TEST_F(Player, ClipStartedFromDoneFollowsWithoutAGap) {
    const QString first = file("a.wav", ToneWav(500, 230));
    const QString second = file("b.wav", ToneWav(1500, 170, 44100));
    int step = 0;
    QObject::connect(&control, &MMControl::Done, [&](int code) {
        if (code != MMControl::NotifySuccessful || step++ > 0) return;
        // The last frames of the first clip still sound when its end is reported.
        EXPECT_EQ(control.Position(), 230);
        control.SetCommand("Close");
        open(second);
        play();
    });
    open(first);
    play();
    clock.RunUntilIdle();
    const auto runs = SoundRuns(heard());
    ASSERT_EQ(runs.size(), 1u) << "a gap between the clips";
    EXPECT_NEAR(runs[0].frames, FramesOf(230) + FramesOf(170), 3);
    EXPECT_NEAR(ToneHz(heard(), runs[0].start, FramesOf(200), kRate), 500, 10);
    EXPECT_NEAR(ToneHz(heard(), runs[0].start + FramesOf(250), FramesOf(140), kRate), 1500, 10);
}

TEST_F(Player, ControlGoneWhilePlayingFallsSilent) {
    auto extra = std::make_unique<MMControl>(out.Engine(), cache);
    extra->SetFileName(file("a.wav", ToneWav(440, 500)));
    extra->SetCommand("Open");
    extra->SetNotify(true);
    extra->SetCommand("Play");
    clock.Advance(100);
    extra.reset();
    clock.Advance(100);
    const auto runs = SoundRuns(heard());
    ASSERT_EQ(runs.size(), 1u);
    EXPECT_NEAR(runs[0].frames, FramesOf(100), 2);
}

} // namespace
} // namespace vt
