#pragma once
// The translation notes of a lesson on disk, without a widget: a plain text file with CR LF
// between lines. A save writes a line end behind the text and a read drops one, so notes read
// and saved again come out as they went in.

#include <QByteArray>
#include <QString>
#include <optional>

namespace vt {

class FileStore;

// The file's bytes for the notes: each line followed by CR LF.
QByteArray NotesFileBytes(const QString& text);
// The notes a file holds, lines joined by "\n"; the line end behind the last line is dropped.
QString NotesFromFileBytes(const QByteArray& bytes);

// The notes of the file, or nothing when there is none.
std::optional<QString> ReadNotes(const FileStore& files, const QString& path);
// Replaces the file whole; false when it could not be written (the old notes then stay).
bool WriteNotes(FileStore& files, const QString& path, const QString& text);

} // namespace vt
