#pragma once
// File access as the course data expects it. Paths are written with "\" as in the data layout
// ("Lessons\Script\Lesson_3\icwp.zvk") and looked up without regard to case, so "1.WAV" and
// "1.wav" are one file. Fixed-record files are little-endian.
//
// Every file the program writes is written whole to a temporary file beside it
// ("Study.zvk.vtsave-Ab12Cd") and renamed over the old one only when every byte reached the disk:
// a crash, a kill or a full disk leaves the old file or the new one, never half a file and never
// an empty one. A temporary file that a kill left behind is removed at the next start.
//
// Reading never waits: anything that is not a regular file (a FIFO, a device, a folder) where a
// file is expected is treated as missing.

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
    // The same into bytes, whose memory is reused: a reader of many files allocates once. False,
    // with bytes empty, when it cannot be opened.
    bool ReadAllInto(const QString& path, QByteArray& bytes) const;

    // Replaces the whole file atomically. False when it could not be written (full disk, size
    // limit, write-protected folder); the old file, if any, is then untouched and no temporary
    // file is left. A link is followed: the file it names is replaced and the link stays.
    virtual bool WriteAll(const QString& path, const QByteArray& bytes);

    // Removes the temporary files of interrupted saves directly in folder (not below it), and
    // only those: names that end in ".vtsave-" and six letters or digits. Returns how many.
    static int RemoveLeftoverSaves(const QString& folder);

    // Whether a save waits until the disk holds the new file before it takes the old one's place.
    // On for the learner's records; a writer of files that can be made again may turn it off.
    bool SyncToDisk = true;

    // Record recNo (from 1) of a file of fixed records of recLen bytes. A missing file is
    // created empty, as opening it for records does; missing bytes read as zeros.
    QByteArray ReadRecord(const QString& path, int recLen, int recNo = 1);
    // Writes record recNo and keeps the rest of the file; atomically as WriteAll.
    bool WriteRecord(const QString& path, int recLen, const QByteArray& record, int recNo = 1);
};

// At most maxBytes bytes (all when negative) of the regular file at diskPath, a path on disk as
// Resolve gives it. Nothing when the path is missing, is not a regular file or cannot be read;
// a FIFO never blocks the call.
std::optional<QByteArray> ReadRegularFile(const QString& diskPath, qint64 maxBytes = -1);
// The same into bytes, reusing its memory; false, with bytes empty, when there is nothing.
bool ReadRegularFileInto(const QString& diskPath, QByteArray& bytes, qint64 maxBytes = -1);

// Little-endian 16-bit fields of fixed records.
int16_t ReadInt16LE(const QByteArray& bytes, int offset);
void WriteInt16LE(QByteArray& bytes, int offset, int16_t value);
QByteArray PackInt16LE(const std::vector<int16_t>& values);

} // namespace vt
