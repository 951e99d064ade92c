#include "tasks/notes_file.h"

#include "platform/files.h"

namespace vt {

namespace {

// Every kind of line end as "\n".
QString unifiedLineEnds(QString text) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(u'\r', u'\n');
    return text;
}

} // namespace

QByteArray NotesFileBytes(const QString& text) {
    QString out = unifiedLineEnds(text);
    out.replace(u'\n', QStringLiteral("\r\n"));
    out += QStringLiteral("\r\n");
    return out.toUtf8();
}

QString NotesFromFileBytes(const QByteArray& bytes) {
    QString text = unifiedLineEnds(QString::fromUtf8(bytes));
    if (text.endsWith(u'\n')) text.chop(1);
    return text;
}

std::optional<QString> ReadNotes(const FileStore& files, const QString& path) {
    const std::optional<QByteArray> bytes = files.ReadAll(path);
    if (!bytes) return std::nullopt;
    return NotesFromFileBytes(*bytes);
}

bool WriteNotes(FileStore& files, const QString& path, const QString& text) {
    return files.WriteAll(path, NotesFileBytes(text));
}

} // namespace vt
