#include "platform/sound_decoder.h"

#include "platform/files.h"
#include "platform/memory_sound_file.h"

#include <QFileInfo>
#include <SDL.h>
#include <algorithm>
#include <cstring>
#include <sndfile.h>

namespace vt {

int64_t Clip::LengthMs() const {
    if (sourceRate <= 0) return 0;
    return (sourceFrames * 1000 + sourceRate / 2) / sourceRate;
}

namespace {

uint32_t le32(const char* p) {
    const auto* u = reinterpret_cast<const unsigned char*>(p);
    return uint32_t(u[0]) | uint32_t(u[1]) << 8 | uint32_t(u[2]) << 16 | uint32_t(u[3]) << 24;
}
uint16_t le16(const char* p) {
    const auto* u = reinterpret_cast<const unsigned char*>(p);
    return uint16_t(u[0] | u[1] << 8);
}

constexpr uint16_t kFormatPcm = 1;
constexpr uint16_t kFormatFloat = 3;
constexpr uint16_t kFormatExtensible = 0xFFFE;

// An MP3 starts with an ID3 tag or directly with a frame: 11 set sync bits, a layer that is
// not the reserved value, and a bitrate index that is neither free nor bad.
bool looksLikeMp3(const char* data, size_t size) {
    if (size >= 3 && std::memcmp(data, "ID3", 3) == 0) return true;
    if (size < 4) return false;
    const auto* u = reinterpret_cast<const unsigned char*>(data);
    if (u[0] != 0xFF || (u[1] & 0xE0) != 0xE0) return false;
    const int layer = (u[1] >> 1) & 3;
    const int bitrate = u[2] >> 4;
    const int rate = (u[2] >> 2) & 3;
    return layer != 0 && bitrate != 0 && bitrate != 15 && rate != 3;
}

struct StreamFreer {
    void operator()(SDL_AudioStream* s) const { SDL_FreeAudioStream(s); }
};

void setError(QString* error, const QString& text) {
    if (error) *error = text;
}

// Moves whatever the converter has ready to the end of out.
bool drain(SDL_AudioStream* stream, std::vector<int16_t>& out, size_t maxSamples) {
    const int available = SDL_AudioStreamAvailable(stream);
    if (available <= 0) return true;
    const size_t n = size_t(available) / sizeof(int16_t);
    if (out.size() + n > maxSamples) return false;
    const size_t at = out.size();
    out.resize(at + n);
    const int got = SDL_AudioStreamGet(stream, out.data() + at, available);
    out.resize(at + size_t(std::max(got, 0)) / sizeof(int16_t));
    return true;
}

} // namespace

bool LooksLikeWav(const char* data, size_t size) {
    return size >= 12 && std::memcmp(data, "RIFF", 4) == 0 && std::memcmp(data + 8, "WAVE", 4) == 0;
}

QString CheckWavHeader(const char* data, size_t size) {
    if (!LooksLikeWav(data, size)) return QStringLiteral("not a WAV file");
    if (int64_t(size) > kMaxSoundFileBytes) return QStringLiteral("the file is too large");
    bool haveFormat = false;
    uint32_t frameRate = 0;
    int frameBytes = 0;
    size_t at = 12;
    while (at + 8 <= size) {
        const char* chunk = data + at;
        const uint32_t length = le32(chunk + 4);
        if (std::memcmp(chunk, "fmt ", 4) == 0) {
            if (length < 16 || at + 8 + 16 > size) return QStringLiteral("the format is cut short");
            const char* f = chunk + 8;
            uint16_t tag = le16(f);
            const int channels = le16(f + 2);
            const uint32_t rate = le32(f + 4);
            const int blockAlign = le16(f + 12);
            const int bits = le16(f + 14);
            if (tag == kFormatExtensible) {
                if (length < 40 || at + 8 + 40 > size)
                    return QStringLiteral("the extended format is cut short");
                tag = le16(f + 24); // the first two bytes of the sub-format's identifier
            }
            if (tag != kFormatPcm && tag != kFormatFloat)
                return QStringLiteral("the samples are neither PCM nor float (format %1)").arg(tag);
            if (channels < 1 || channels > kMaxChannels)
                return QStringLiteral("%1 channels").arg(channels);
            if (rate < uint32_t(kMinSampleRate) || rate > uint32_t(kMaxSampleRate))
                return QStringLiteral("a sample rate of %1 Hz").arg(rate);
            const bool bitsOk = tag == kFormatPcm
                                    ? (bits == 8 || bits == 16 || bits == 24 || bits == 32)
                                    : (bits == 32 || bits == 64);
            if (!bitsOk) return QStringLiteral("%1 bits per sample").arg(bits);
            if (blockAlign != channels * bits / 8)
                return QStringLiteral("a block size of %1 bytes").arg(blockAlign);
            haveFormat = true;
            frameRate = rate;
            frameBytes = blockAlign;
        } else if (std::memcmp(chunk, "data", 4) == 0) {
            if (!haveFormat) return QStringLiteral("the samples come before their format");
            // The data may run to the end of the file, whatever its length says; the decoder
            // reads what is there, so that is what must stay within the limit.
            const uint64_t bytes = std::min<uint64_t>(length, size - at - 8);
            if (bytes / uint64_t(frameBytes) > uint64_t(kMaxClipSeconds) * frameRate)
                return QStringLiteral("the sound is longer than %1 minutes")
                    .arg(kMaxClipSeconds / 60);
            return {};
        }
        const uint64_t next = uint64_t(at) + 8 + length + (length & 1);
        if (next > size) break;
        at = size_t(next);
    }
    return haveFormat ? QStringLiteral("there are no samples")
                      : QStringLiteral("there is no format");
}

std::shared_ptr<const Clip> DecodeSound(const QByteArray& bytes, int rate, int channels,
                                        QString* error) {
    const char* data = bytes.constData();
    const auto size = size_t(bytes.size());
    if (rate < kMinSampleRate || rate > kMaxSampleRate || channels < 1 || channels > kMaxChannels) {
        setError(error, QStringLiteral("the output format is not usable"));
        return nullptr;
    }
    if (LooksLikeWav(data, size)) {
        const QString why = CheckWavHeader(data, size);
        if (!why.isEmpty()) {
            setError(error, why);
            return nullptr;
        }
    } else if (!looksLikeMp3(data, size)) {
        setError(error, QStringLiteral("not a WAV or MP3 sound"));
        return nullptr;
    } else if (int64_t(size) > kMaxSoundFileBytes) {
        setError(error, QStringLiteral("the file is too large"));
        return nullptr;
    }

    MemorySoundFile file(bytes);
    if (!file.IsOpen()) {
        setError(error, file.Error());
        return nullptr;
    }
    const SF_INFO& info = file.Info();
    if (info.channels < 1 || info.channels > kMaxChannels || info.samplerate < kMinSampleRate ||
        info.samplerate > kMaxSampleRate) {
        setError(error,
                 QStringLiteral("%1 channels at %2 Hz").arg(info.channels).arg(info.samplerate));
        return nullptr;
    }
    std::unique_ptr<SDL_AudioStream, StreamFreer> stream(
        SDL_NewAudioStream(AUDIO_F32SYS, uint8_t(info.channels), info.samplerate, AUDIO_S16SYS,
                           uint8_t(channels), rate));
    if (!stream) {
        setError(error, QString::fromUtf8(SDL_GetError()));
        return nullptr;
    }

    auto clip = std::make_shared<Clip>();
    clip->rate = rate;
    clip->channels = channels;
    clip->sourceRate = info.samplerate;
    const int64_t maxSourceFrames = int64_t(kMaxClipSeconds) * info.samplerate;
    const QString tooLong =
        QStringLiteral("the sound is longer than %1 minutes").arg(kMaxClipSeconds / 60);
    // A length the file states is not trusted to be whole, but one beyond the limit is reason
    // enough to refuse it before decoding.
    if (info.frames > maxSourceFrames) {
        setError(error, tooLong);
        return nullptr;
    }
    const size_t maxSamples = size_t(kMaxClipSeconds + 1) * size_t(rate) * size_t(channels);
    constexpr sf_count_t kChunkFrames = 4096;
    // Room for the whole sound and the silence that flushes the converter (below), so that a
    // long sound is never copied to a larger buffer on its way in.
    if (info.frames > 0)
        clip->samples.reserve(size_t((info.frames + kChunkFrames) * rate / info.samplerate + 1024) *
                              size_t(channels));

    std::vector<float> chunk(size_t(kChunkFrames) * size_t(info.channels));
    for (;;) {
        const sf_count_t got = file.ReadFrames(chunk.data(), kChunkFrames);
        if (got <= 0) break;
        clip->sourceFrames += got;
        if (clip->sourceFrames > maxSourceFrames) {
            setError(error, tooLong);
            return nullptr;
        }
        // A damaged file can decode to values far outside the range; keep them within it.
        for (sf_count_t i = 0; i < got * info.channels; ++i) {
            float& v = chunk[size_t(i)];
            v = v != v ? 0.0f : std::clamp(v, -1.0f, 1.0f);
        }
        if (SDL_AudioStreamPut(stream.get(), chunk.data(),
                               int(got * info.channels * sf_count_t(sizeof(float)))) != 0 ||
            !drain(stream.get(), clip->samples, maxSamples)) {
            setError(error, QStringLiteral("the sound could not be converted"));
            return nullptr;
        }
    }
    // The converter holds back the last few hundred frames for its filter, and its flush drops
    // them; a little silence behind the sound pushes them out, and the cut below removes it.
    std::fill(chunk.begin(), chunk.end(), 0.0f);
    SDL_AudioStreamPut(stream.get(), chunk.data(), int(chunk.size() * sizeof(float)));
    SDL_AudioStreamFlush(stream.get());
    drain(stream.get(), clip->samples, maxSamples + chunk.size() * size_t(channels));
    if (clip->sourceFrames == 0) {
        setError(error, QStringLiteral("the file holds no sound"));
        return nullptr;
    }
    // The converter may round the length by a frame or two; the clip lasts exactly as long as
    // the file says in its own frames.
    const size_t exact =
        size_t((clip->sourceFrames * rate + clip->sourceRate / 2) / clip->sourceRate) *
        size_t(channels);
    clip->samples.resize(exact, 0);
    // Giving back a little slack would cost a copy of the whole sound; a sound whose length was
    // not known beforehand may hold up to twice its size, and that is worth the copy.
    if (clip->samples.capacity() - clip->samples.size() > clip->samples.size() / 8 + 65536)
        clip->samples.shrink_to_fit();
    return clip;
}

SoundCache::SoundCache(int rate, int channels, size_t capacityBytes)
    : rate_(rate), channels_(channels), capacity_(capacityBytes) {}

std::shared_ptr<const Clip> SoundCache::Load(const QString& diskPath, QString* error) {
    const QFileInfo info(diskPath);
    if (!info.isFile()) {
        setError(error, QStringLiteral("the file does not exist"));
        return nullptr;
    }
    auto found = entries_.find(diskPath);
    if (found != entries_.end()) {
        auto it = found->second;
        if (it->size == info.size() && it->modified == info.lastModified()) {
            lru_.splice(lru_.begin(), lru_, it);
            return it->clip;
        }
        bytes_ -= it->clip->Bytes();
        lru_.erase(it);
        entries_.erase(found);
    }
    if (info.size() > kMaxSoundFileBytes) {
        setError(error, QStringLiteral("the file is too large"));
        return nullptr;
    }
    // One byte beyond the limit tells a file that grew since it was looked at.
    const std::optional<QByteArray> bytes = ReadRegularFile(diskPath, kMaxSoundFileBytes + 1);
    if (!bytes) {
        setError(error, QStringLiteral("the file cannot be read"));
        return nullptr;
    }
    ++decodes_;
    auto clip = DecodeSound(*bytes, rate_, channels_, error);
    if (!clip) return nullptr;
    if (clip->Bytes() > capacity_) return clip; // played, but not kept
    evictTo(capacity_ - clip->Bytes());
    lru_.push_front(Entry{diskPath, info.size(), info.lastModified(), clip});
    entries_[diskPath] = lru_.begin();
    bytes_ += clip->Bytes();
    return clip;
}

void SoundCache::evictTo(size_t limit) {
    while (bytes_ > limit && !lru_.empty()) {
        bytes_ -= lru_.back().clip->Bytes();
        entries_.erase(lru_.back().path);
        lru_.pop_back();
    }
}

void SoundCache::Clear() {
    lru_.clear();
    entries_.clear();
    bytes_ = 0;
}

} // namespace vt
