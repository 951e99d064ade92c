// The WAV header check, decoding with conversion to the output's format, and the clip cache.
#include "platform/sound_decoder.h"
#include "support/sound_fixtures.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace vt {
namespace {

using test::ToneMp3;
using test::ToneWav;

void set16(QByteArray& b, int at, int v) {
    b[at] = char(v & 0xFF);
    b[at + 1] = char((v >> 8) & 0xFF);
}
void set32(QByteArray& b, int at, quint32 v) {
    set16(b, at, int(v & 0xFFFF));
    set16(b, at + 2, int(v >> 16));
}

// Offsets in the canonical 44-byte header that ToneWav writes.
constexpr int kTag = 20, kChannels = 22, kRate = 24, kAlign = 32, kBits = 34, kFmtSize = 16;

TEST(WavHeaderCheck, AcceptsPlayableAndRejectsTheRestWithAReason) {
    struct Row {
        const char* name;
        std::function<void(QByteArray&)> damage;
        bool ok;
    };
    const std::vector<Row> rows = {
        {"pcm16 mono", [](QByteArray&) {}, true},
        {"float32",
         [](QByteArray& b) {
             set16(b, kTag, 3);
             set16(b, kBits, 32);
             set16(b, kAlign, 4);
         },
         true},
        {"adpcm", [](QByteArray& b) { set16(b, kTag, 2); }, false},
        {"no channels", [](QByteArray& b) { set16(b, kChannels, 0); }, false},
        {"nine channels",
         [](QByteArray& b) {
             set16(b, kChannels, 9);
             set16(b, kAlign, 18);
         },
         false},
        {"rate too low", [](QByteArray& b) { set32(b, kRate, 1000); }, false},
        {"rate too high", [](QByteArray& b) { set32(b, kRate, 500000); }, false},
        {"12 bits", [](QByteArray& b) { set16(b, kBits, 12); }, false},
        {"block size wrong", [](QByteArray& b) { set16(b, kAlign, 7); }, false},
        {"format chunk too small", [](QByteArray& b) { set32(b, kFmtSize, 8); }, false},
        {"format chunk runs past the end", [](QByteArray& b) { b.truncate(30); }, false},
        {"no data chunk", [](QByteArray& b) { b.truncate(36); }, false},
        {"huge chunk length", [](QByteArray& b) { set32(b, kFmtSize, 0xFFFFFFF0u); }, false},
        {"not RIFF", [](QByteArray& b) { b[0] = 'X'; }, false},
    };
    for (const Row& row : rows) {
        QByteArray b = ToneWav(440, 50);
        row.damage(b);
        const QString why = CheckWavHeader(b.constData(), size_t(b.size()));
        EXPECT_EQ(why.isEmpty(), row.ok) << row.name << ": " << why.toStdString();
        if (!row.ok) {
            QString error;
            EXPECT_EQ(DecodeSound(b, 22050, 1, &error), nullptr) << row.name;
            EXPECT_FALSE(error.isEmpty()) << row.name;
        }
    }
}

TEST(DecodeSound, ConvertsToTheOutputFormatWithExactLength) {
    struct Row {
        const char* name;
        int fileRate, fileChannels, ms, outRate, outChannels;
    };
    const std::vector<Row> rows = {
        {"same format", 22050, 1, 300, 22050, 1},
        {"upsampled", 16000, 1, 250, 44100, 2},
        {"downsampled stereo to mono", 48000, 2, 123, 22050, 1},
        {"odd length", 11025, 1, 7, 48000, 2},
    };
    for (const Row& r : rows) {
        QString error;
        auto clip = DecodeSound(ToneWav(500, r.ms, r.fileRate, r.fileChannels), r.outRate,
                                r.outChannels, &error);
        ASSERT_NE(clip, nullptr) << r.name << ": " << error.toStdString();
        const long fileFrames = long(r.fileRate) * r.ms / 1000;
        EXPECT_EQ(clip->sourceFrames, fileFrames) << r.name;
        EXPECT_EQ(clip->Frames(), (fileFrames * r.outRate + r.fileRate / 2) / r.fileRate) << r.name;
        EXPECT_EQ(clip->channels, r.outChannels) << r.name;
        EXPECT_EQ(clip->LengthMs(), r.ms) << r.name;
        // The tone keeps its pitch through the conversion.
        std::vector<float> mono;
        for (long i = 0; i < clip->Frames(); ++i)
            mono.push_back(clip->samples[size_t(i * r.outChannels)] / 32768.0f);
        if (r.ms >= 100) {
            EXPECT_NEAR(test::ToneHz(mono, 0, long(mono.size()), r.outRate), 500, 15) << r.name;
        }
    }
}

TEST(DecodeSound, RejectsWhatIsNotASound) {
    const std::vector<std::pair<const char*, QByteArray>> rows = {
        {"empty", QByteArray()},
        {"text", QByteArray("Hello, this is not a sound at all.")},
        {"header without samples", ToneWav(440, 0)},
        {"mp3 sync and nothing after", QByteArray("\xFF\xFB\x90\x00", 4)},
        {"id3 tag only", QByteArray("ID3\x03\x00\x00\x00\x00\x00\x00", 10)},
    };
    for (const auto& [name, bytes] : rows) {
        QString error;
        EXPECT_EQ(DecodeSound(bytes, 22050, 1, &error), nullptr) << name;
        EXPECT_FALSE(error.isEmpty()) << name;
    }
}

TEST(DecodeSound, Mp3IsReadToItsEnd) {
    const QByteArray mp3 = ToneMp3(700, 1000);
    if (mp3.isEmpty()) GTEST_SKIP() << "this libsndfile cannot write MP3, so there is no fixture";
    QString error;
    auto clip = DecodeSound(mp3, 22050, 1, &error);
    ASSERT_NE(clip, nullptr) << error.toStdString();
    // The encoder pads the start and end by up to a few frames of 1152 samples.
    EXPECT_GE(clip->LengthMs(), 1000);
    EXPECT_LE(clip->LengthMs(), 1200);
    std::vector<float> mono(clip->samples.begin(), clip->samples.end());
    EXPECT_NEAR(test::ToneHz(mono, 4000, 11000, 22050), 700, 15);
}

// A WAV header followed by frames of 16-bit mono silence; its data chunk says dataLength bytes.
QByteArray silenceWav(int rate, int64_t frames, quint32 dataLength) {
    QByteArray b = ToneWav(440, 0, rate);
    b.append(QByteArray(qsizetype(frames * 2), '\0'));
    set32(b, 4, quint32(b.size() - 8));
    set32(b, 40, dataLength);
    return b;
}

TEST(WavHeaderCheck, NothingLongerThanTenMinutesIsDecoded) {
    constexpr int rate = 4000;
    const int64_t tenMinutes = int64_t(kMaxClipSeconds) * rate;
    struct Row {
        const char* name;
        int64_t frames;
        quint32 dataLength;
        bool ok;
    } rows[] = {
        {"ten minutes", tenMinutes, quint32(tenMinutes * 2), true},
        {"one frame more", tenMinutes + 1, quint32(tenMinutes * 2 + 2), false},
        {"a length beyond the file counts what is there", rate, 0xFFFFFFFFu, true},
        {"a short length hides no more than it says", tenMinutes + 1, 2 * rate, true},
    };
    for (const Row& r : rows) {
        const QByteArray b = silenceWav(rate, r.frames, r.dataLength);
        const QString why = CheckWavHeader(b.constData(), size_t(b.size()));
        EXPECT_EQ(why.isEmpty(), r.ok) << r.name << ": " << why.toStdString();
        if (!r.ok) {
            EXPECT_EQ(why, "the sound is longer than 10 minutes") << r.name;
        }
    }
}

TEST(SoundCache, TooLargeOrNotAFileIsUnreadableAtOnce) {
    QTemporaryDir dir;
    QFile big(dir.filePath("big.wav"));
    ASSERT_TRUE(big.open(QIODevice::WriteOnly));
    big.write(ToneWav(440, 100, 22050));
    ASSERT_TRUE(big.resize(kMaxSoundFileBytes + 1)); // sparse: costs no disk
    big.close();
    const QString fifo = dir.filePath("fifo.wav");
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);

    SoundCache cache(22050, 1);
    QString error;
    EXPECT_EQ(cache.Load(big.fileName(), &error), nullptr);
    EXPECT_EQ(error, "the file is too large");
    EXPECT_EQ(cache.Load(fifo, &error), nullptr);
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(cache.Decodes(), 0);
}

TEST(SoundCache, DecodesOnceKeepsWithinItsBoundAndNoticesChanges) {
    QTemporaryDir dir;
    auto write = [&](const QString& name, const QByteArray& bytes) {
        QFile f(dir.filePath(name));
        f.open(QIODevice::WriteOnly);
        f.write(bytes);
        return f.fileName();
    };
    const QString a = write("a.wav", ToneWav(440, 500, 22050));
    const QString b = write("b.wav", ToneWav(660, 500, 22050));
    // Room for about one and a half clips of half a second.
    SoundCache cache(22050, 1, 22050 * 2 * 3 / 4);
    ASSERT_NE(cache.Load(a), nullptr);
    ASSERT_NE(cache.Load(a), nullptr);
    EXPECT_EQ(cache.Decodes(), 1);
    ASSERT_NE(cache.Load(b), nullptr);
    EXPECT_EQ(cache.Entries(), 1);
    EXPECT_LE(cache.BytesHeld(), cache.Capacity());
    cache.Load(a);
    EXPECT_EQ(cache.Decodes(), 3) << "a was dropped for b";

    write("a.wav", ToneWav(440, 200, 22050));
    auto changed = cache.Load(a);
    ASSERT_NE(changed, nullptr);
    EXPECT_EQ(changed->LengthMs(), 200);

    QString error;
    EXPECT_EQ(cache.Load(dir.filePath("missing.wav"), &error), nullptr);
    EXPECT_FALSE(error.isEmpty());
}

} // namespace
} // namespace vt
