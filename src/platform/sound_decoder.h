#pragma once
// Turning sound files into clips the mixer can play. A clip is 16-bit PCM, interleaved, already
// at the output's rate and channel count, so playing it is a plain copy and Position is exact to
// the sample.
//
// Only two kinds of file are accepted: WAV with PCM or float samples, and MP3. A WAV header is
// checked here before the decoder sees it (format, rate, channels, size), so a damaged or hostile
// file gets a clear reason instead of reaching the decoder's less common paths. Decoding reads
// until the decoder has nothing more and never trusts a frame count from the header: an MP3
// without a length tag reports none at all.
//
// SoundCache keeps recently decoded clips, bounded by bytes and dropping the least recently used,
// so a syllable heard once starts at once the next time.

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <unordered_map>
#include <vector>

namespace vt {

struct Clip {
    int rate = 0;     // frames per second of samples, the output's rate
    int channels = 0; // interleaved channels of samples, the output's count
    std::vector<int16_t> samples;
    int64_t sourceFrames = 0; // frames as decoded from the file, at its own rate
    int sourceRate = 0;

    int64_t Frames() const { return channels ? int64_t(samples.size()) / channels : 0; }
    // The length in milliseconds, from the file's own frames and rate.
    int64_t LengthMs() const;
    size_t Bytes() const { return samples.size() * sizeof(int16_t) + sizeof(Clip); }
};

// Limits on what is accepted. The course's sounds are short: a syllable lasts well under a
// second (27 KB), a lesson's sentence a few seconds, a TV play's track a minute or a few (the
// sample course's is 66 s, 270 KB of MP3). Ten minutes leave room for a full-length play; a
// clip of that length takes about 100 MB decoded at the output's rate. 32 MB hold ten minutes
// of the course's own WAV format (22050 Hz, mono, 16 bits) and of MP3 at any bit rate. A
// larger or longer file is refused as unreadable before it is decoded, or as soon as the decoder
// passes the limit, so that nothing holds the program for seconds or fills its memory.
constexpr int64_t kMaxSoundFileBytes = 32LL * 1024 * 1024;
constexpr int kMaxClipSeconds = 10 * 60;
constexpr int kMinSampleRate = 4000;
constexpr int kMaxSampleRate = 192000;
constexpr int kMaxChannels = 8;

// True when the bytes start like a RIFF/WAVE file.
bool LooksLikeWav(const char* data, size_t size);
// Checks a WAV file's header: empty when it is a WAV we play, else the reason.
QString CheckWavHeader(const char* data, size_t size);

// Decodes a whole file held in memory and converts it to rate and channels. On failure returns
// null and puts the reason in error.
std::shared_ptr<const Clip> DecodeSound(const QByteArray& bytes, int rate, int channels,
                                        QString* error = nullptr);

class SoundCache {
public:
    SoundCache(int rate, int channels, size_t capacityBytes = 64u * 1024 * 1024);

    // The clip of a file on disk (a path already resolved), decoded on first use. A changed
    // file (size or time) is decoded again. Null with a reason when it cannot be played.
    std::shared_ptr<const Clip> Load(const QString& diskPath, QString* error = nullptr);

    size_t BytesHeld() const { return bytes_; }
    size_t Capacity() const { return capacity_; }
    int Entries() const { return int(entries_.size()); }
    int Decodes() const { return decodes_; }
    void Clear();

private:
    struct Entry {
        QString path;
        int64_t size = 0;
        QDateTime modified;
        std::shared_ptr<const Clip> clip;
    };
    void evictTo(size_t limit);

    int rate_;
    int channels_;
    size_t capacity_;
    size_t bytes_ = 0;
    int decodes_ = 0;
    std::list<Entry> lru_; // most recent first
    std::unordered_map<QString, std::list<Entry>::iterator> entries_;
};

} // namespace vt
