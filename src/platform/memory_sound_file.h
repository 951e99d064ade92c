#pragma once
// A sound file held in memory, read through libsndfile, which reads from the bytes and never
// writes. The program decodes every sound this way and the course compiler reads back what it
// made. The bytes must outlive the reader.

#include <QByteArrayView>
#include <QString>
#include <sndfile.h>

namespace vt {

class MemorySoundFile {
public:
    explicit MemorySoundFile(QByteArrayView bytes);
    ~MemorySoundFile();
    MemorySoundFile(const MemorySoundFile&) = delete;
    MemorySoundFile& operator=(const MemorySoundFile&) = delete;

    // False when libsndfile took the bytes for no sound it knows; Error says why.
    bool IsOpen() const { return file_ != nullptr; }
    QString Error() const { return error_; }
    // Rate, channels and format as the file's header gives them.
    const SF_INFO& Info() const { return info_; }

    // Reads up to frames frames of interleaved samples in -1..1 into out; the number read, 0 at
    // the end.
    sf_count_t ReadFrames(float* out, sf_count_t frames);

private:
    struct Bytes {
        const char* data = nullptr;
        sf_count_t size = 0;
        sf_count_t pos = 0;
    };
    Bytes bytes_;
    SF_INFO info_{};
    SNDFILE* file_ = nullptr;
    QString error_;
};

} // namespace vt
