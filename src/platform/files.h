#pragma once
// File access as the course data expects it. Paths are written with "\" as in the data layout
// ("Lessons\Script\Lesson_3\icwp.zvk") and looked up without regard to case, so "1.WAV" and
// "1.wav" are one file. Fixed-record files are little-endian. Every file the program writes is
// written whole to a temporary file and renamed over the old one: a crash or a full disk never
// leaves half a file behind.

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <optional>
#include <vector>

namespace vt {

class FileStore {
public:
    virtual ~FileStore() = default;

    // The path on disk: "\" becomes "/", and each part is matched without regard to case.
    // A part that does not exist is kept as written, so the result can be created.
    static QString Resolve(const QString& path);

    // The Dir test: true when the file exists.
    bool Exists(const QString& path) const;

    // The whole file, or nothing when it cannot be opened.
    std::optional<QByteArray> ReadAll(const QString& path) const;

    // Replaces the whole file atomically. False when it could not be written; the old file,
    // if any, is then untouched.
    virtual bool WriteAll(const QString& path, const QByteArray& bytes);

    // Record recNo (from 1) of a file of fixed records of recLen bytes. A missing file is
    // created empty, as opening it for records does; missing bytes read as zeros.
    QByteArray ReadRecord(const QString& path, int recLen, int recNo = 1);
    // Writes record recNo and keeps the rest of the file; atomically as WriteAll.
    bool WriteRecord(const QString& path, int recLen, const QByteArray& record, int recNo = 1);
};

// A store whose writes can be made to fail, as on a full disk.
class FaultyFileStore final : public FileStore {
public:
    bool failWrites = false;
    int writesAttempted = 0;
    bool WriteAll(const QString& path, const QByteArray& bytes) override;
};

// Little-endian 16-bit fields of fixed records.
int16_t ReadInt16LE(const QByteArray& bytes, int offset);
void WriteInt16LE(QByteArray& bytes, int offset, int16_t value);
QByteArray PackInt16LE(const std::vector<int16_t>& values);

} // namespace vt
