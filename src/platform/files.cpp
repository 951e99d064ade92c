#include "platform/files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace vt {

namespace {

// The temporary file of a save is named after its target, so that a leftover says whose it was.
constexpr char kSaveMark[] = ".vtsave-";
constexpr int kSaveSuffixLength = 6;

QByteArray saveSuffix() {
    static constexpr char kLetters[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    QByteArray s(kSaveSuffixLength, '\0');
    for (char& c : s)
        c = kLetters[QRandomGenerator::global()->bounded(int(sizeof(kLetters) - 1))];
    return s;
}

// Writes every byte or reports failure; a signal or a short write only makes it go on.
bool writeFully(int fd, const QByteArray& bytes) {
    const char* p = bytes.constData();
    qsizetype left = bytes.size();
    while (left > 0) {
        const ssize_t n = ::write(fd, p, size_t(left));
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        p += n;
        left -= n;
    }
    return true;
}

// After a rename the folder itself must reach the disk for the new name to survive a power cut.
// Some file systems cannot sync a folder; the file is then as safe as they allow.
void syncFolder(const QByteArray& folder) {
    const int fd = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    ::fsync(fd);
    ::close(fd);
}

} // namespace

bool ReadRegularFileInto(const QString& diskPath, QByteArray& bytes, qint64 maxBytes) {
    bytes.resize(0);
    const QByteArray name = QFile::encodeName(diskPath);
    struct stat st {};
    if (::stat(name.constData(), &st) != 0 || !S_ISREG(st.st_mode)) return false;
    // Without O_NONBLOCK a FIFO put in place after the test above would hold the open until a
    // writer came; with it the open returns and the second test turns the FIFO away.
    const int fd = ::open(name.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) return false;
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        ::close(fd);
        return false;
    }
    const qint64 limit = maxBytes < 0 ? std::numeric_limits<qsizetype>::max() : maxBytes;
    // Read straight into the result, sized as the file stands; a file that grew meanwhile is
    // read on up to the limit.
    const auto size = qsizetype(std::min<qint64>(st.st_size, limit));
    if (bytes.capacity() < size) bytes.reserve(size);
    bytes.resize(size);
    qsizetype have = 0;
    bool failed = false;
    char more[4096];
    while (have < limit) {
        const bool inPlace = have < bytes.size();
        char* to = inPlace ? bytes.data() + have : more;
        const qint64 want =
            inPlace ? bytes.size() - have : std::min<qint64>(qint64(sizeof more), limit - have);
        const ssize_t n = ::read(fd, to, size_t(want));
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) failed = true;
        if (n <= 0) break;
        if (!inPlace) bytes.append(more, qsizetype(n));
        have += qsizetype(n);
    }
    ::close(fd);
    bytes.resize(failed ? 0 : have);
    return !failed;
}

std::optional<QByteArray> ReadRegularFile(const QString& diskPath, qint64 maxBytes) {
    QByteArray bytes;
    if (!ReadRegularFileInto(diskPath, bytes, maxBytes)) return std::nullopt;
    return bytes;
}

QString FileStore::Resolve(const QString& path) {
    QString p = path;
    p.replace(u'\\', u'/');
    if (QFileInfo::exists(p)) return p;

    const bool absolute = p.startsWith(u'/');
    const QStringList parts = p.split(u'/', Qt::SkipEmptyParts);
    QString current = absolute ? QStringLiteral("/") : QStringLiteral(".");
    QString built = absolute ? QStringLiteral("/") : QString();
    bool lost = false;
    for (int i = 0; i < parts.size(); ++i) {
        const QString& part = parts[i];
        QString match = part;
        if (!lost) {
            QDir dir(current);
            if (!QFileInfo::exists(dir.filePath(part))) {
                const QStringList entries = dir.entryList(QDir::AllEntries | QDir::Hidden |
                                                          QDir::System | QDir::NoDotAndDotDot);
                bool found = false;
                for (const QString& e : entries) {
                    if (e.compare(part, Qt::CaseInsensitive) == 0) {
                        match = e;
                        found = true;
                        break;
                    }
                }
                if (!found) lost = true;
            }
            current = dir.filePath(match);
        }
        if (!built.isEmpty() && !built.endsWith(u'/')) built += u'/';
        built += match;
    }
    return built;
}

bool FileStore::Exists(const QString& path) const {
    QFileInfo info(Resolve(path));
    return info.exists() && info.isFile();
}

std::optional<QByteArray> FileStore::ReadAll(const QString& path) const {
    return ReadRegularFile(Resolve(path));
}

bool FileStore::ReadAllInto(const QString& path, QByteArray& bytes) const {
    return ReadRegularFileInto(Resolve(path), bytes);
}

bool FileStore::WriteAll(const QString& path, const QByteArray& bytes) {
    QString real = Resolve(path);
    const QFileInfo link(real);
    if (link.isSymLink() && !link.canonicalFilePath().isEmpty()) real = link.canonicalFilePath();
    const QString folder = QFileInfo(real).absolutePath();
    if (!QDir().mkpath(folder)) return false;

    const QByteArray target = QFile::encodeName(real);
    QByteArray temp;
    int fd = -1;
    for (int attempt = 0; attempt < 100 && fd < 0; ++attempt) {
        temp = target + kSaveMark + saveSuffix();
        fd = ::open(temp.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd < 0 && errno != EEXIST) return false;
    }
    if (fd < 0) return false;

    // The new file keeps the permissions of the one it replaces.
    struct stat old {};
    if (::stat(target.constData(), &old) == 0 && S_ISREG(old.st_mode))
        ::fchmod(fd, old.st_mode & 07777);
    // Every step is checked: a full disk or a size limit may show first in the write, in the
    // sync or only in the close. Linux closes the file even when close reports an interrupt.
    bool ok = writeFully(fd, bytes) && (!SyncToDisk || ::fsync(fd) == 0);
    if (::close(fd) != 0 && errno != EINTR) ok = false;
    if (ok && ::rename(temp.constData(), target.constData()) != 0) ok = false;
    if (!ok) {
        ::unlink(temp.constData());
        return false;
    }
    if (SyncToDisk) syncFolder(QFile::encodeName(folder));
    return true;
}

int FileStore::RemoveLeftoverSaves(const QString& folder) {
    static const QRegularExpression ours(
        QStringLiteral("^.+%1[A-Za-z0-9]{%2}$")
            .arg(QRegularExpression::escape(QString::fromLatin1(kSaveMark)))
            .arg(kSaveSuffixLength));
    const QDir dir(Resolve(folder));
    int removed = 0;
    const QStringList names = dir.entryList(QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QString& name : names) {
        if (!ours.match(name).hasMatch()) continue;
        if (QFile::remove(dir.filePath(name))) ++removed;
    }
    return removed;
}

QByteArray FileStore::ReadRecord(const QString& path, int recLen, int recNo) {
    QByteArray rec(recLen, '\0');
    const QString real = Resolve(path);
    const QByteArray name = QFile::encodeName(real);
    struct stat st {};
    if (::lstat(name.constData(), &st) != 0) {
        // Opening a record file creates it; a failure to create is no error for the reader.
        const int fd = ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0) ::close(fd);
        return rec;
    }
    const qint64 offset = static_cast<qint64>(recNo - 1) * recLen;
    if (offset < 0) return rec;
    const std::optional<QByteArray> got = ReadRegularFile(real, offset + recLen);
    if (!got || got->size() <= offset) return rec;
    std::copy(got->begin() + offset, got->end(), rec.begin());
    return rec;
}

bool FileStore::WriteRecord(const QString& path, int recLen, const QByteArray& record, int recNo) {
    QByteArray whole = ReadAll(path).value_or(QByteArray());
    const qsizetype offset = static_cast<qsizetype>(recNo - 1) * recLen;
    if (whole.size() < offset + recLen) whole.resize(offset + recLen, '\0');
    QByteArray rec = record.left(recLen);
    rec.resize(recLen, '\0');
    std::copy(rec.begin(), rec.end(), whole.begin() + offset);
    return WriteAll(path, whole);
}

int16_t ReadInt16LE(const QByteArray& bytes, int offset) {
    if (offset < 0 || offset + 2 > bytes.size()) return 0;
    const auto lo = static_cast<uint8_t>(bytes[offset]);
    const auto hi = static_cast<uint8_t>(bytes[offset + 1]);
    return static_cast<int16_t>(static_cast<uint16_t>(lo | (hi << 8)));
}

void WriteInt16LE(QByteArray& bytes, int offset, int16_t value) {
    if (bytes.size() < offset + 2) bytes.resize(offset + 2, '\0');
    const auto u = static_cast<uint16_t>(value);
    bytes[offset] = static_cast<char>(u & 0xFF);
    bytes[offset + 1] = static_cast<char>(u >> 8);
}

QByteArray PackInt16LE(const std::vector<int16_t>& values) {
    QByteArray out;
    out.reserve(static_cast<qsizetype>(values.size() * 2));
    for (size_t i = 0; i < values.size(); ++i)
        WriteInt16LE(out, static_cast<int>(i * 2), values[i]);
    return out;
}

} // namespace vt
