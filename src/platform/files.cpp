#include "platform/files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace vt {

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
    QFile f(Resolve(path));
    if (!f.open(QIODevice::ReadOnly)) return std::nullopt;
    return f.readAll();
}

bool FileStore::WriteAll(const QString& path, const QByteArray& bytes) {
    const QString real = Resolve(path);
    QDir().mkpath(QFileInfo(real).absolutePath());
    QSaveFile f(real);
    if (!f.open(QIODevice::WriteOnly)) return false;
    if (f.write(bytes) != bytes.size()) {
        f.cancelWriting();
        return false;
    }
    return f.commit();
}

QByteArray FileStore::ReadRecord(const QString& path, int recLen, int recNo) {
    QByteArray rec(recLen, '\0');
    const QString real = Resolve(path);
    QFile f(real);
    if (!f.exists()) {
        // Opening a record file creates it; a failure to create is no error for the reader.
        if (f.open(QIODevice::WriteOnly)) f.close();
        return rec;
    }
    if (!f.open(QIODevice::ReadOnly)) return rec;
    const qint64 offset = static_cast<qint64>(recNo - 1) * recLen;
    if (offset < 0 || !f.seek(offset)) return rec;
    const QByteArray got = f.read(recLen);
    std::copy(got.begin(), got.end(), rec.begin());
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

bool FaultyFileStore::WriteAll(const QString& path, const QByteArray& bytes) {
    ++writesAttempted;
    if (failWrites) return false;
    return FileStore::WriteAll(path, bytes);
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
