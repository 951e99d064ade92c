#include "platform/memory_sound_file.h"

#include <algorithm>
#include <cstring>

namespace vt {

MemorySoundFile::MemorySoundFile(QByteArrayView bytes)
    : bytes_{bytes.data(), static_cast<sf_count_t>(bytes.size())} {
    static SF_VIRTUAL_IO io{
        [](void* user) { return static_cast<Bytes*>(user)->size; },
        [](sf_count_t offset, int whence, void* user) {
            Bytes* b = static_cast<Bytes*>(user);
            const sf_count_t base = whence == SEEK_CUR ? b->pos : whence == SEEK_END ? b->size : 0;
            b->pos = std::clamp<sf_count_t>(base + offset, 0, b->size);
            return b->pos;
        },
        [](void* out, sf_count_t count, void* user) -> sf_count_t {
            Bytes* b = static_cast<Bytes*>(user);
            const sf_count_t n = std::min(count, b->size - b->pos);
            if (n <= 0) return 0;
            std::memcpy(out, b->data + b->pos, static_cast<size_t>(n));
            b->pos += n;
            return n;
        },
        [](const void*, sf_count_t, void*) -> sf_count_t { return 0; },
        [](void* user) { return static_cast<Bytes*>(user)->pos; },
    };
    file_ = sf_open_virtual(&io, SFM_READ, &info_, &bytes_);
    if (!file_) error_ = QString::fromUtf8(sf_strerror(nullptr));
}

MemorySoundFile::~MemorySoundFile() {
    if (file_) sf_close(file_);
}

sf_count_t MemorySoundFile::ReadFrames(float* out, sf_count_t frames) {
    return file_ ? sf_readf_float(file_, out, frames) : 0;
}

} // namespace vt
