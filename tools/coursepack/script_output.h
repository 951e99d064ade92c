#pragma once
// The enciphered script files of a course: which file holds which lines, in the layout the
// program's readers expect. Building the lines is kept apart from writing them, so each file's
// content can be checked on its own.

#include "course_sources.h"

#include <QString>
#include <QStringList>
#include <vector>

namespace vt {
class FileStore;
}

namespace vt::coursepack {

struct ScriptFileEntry {
    QString path;   // relative to the data folder (core/data_paths.h): "Lessons/Title.zvk"
    QString family; // "RT", "RW", "RQ", "SP", "VO"
    QStringList lines;
};

// One vocabulary entry for Vocabulary\ci<n>.zvk.
struct VocabularyEntry {
    QString dotted;
    QString chinese;
    QString english;
};

QStringList TitleLines(const Course& course);
QStringList WordLines(const Lesson& lesson);     // icwp: Pinyin, Chinese, English per word
QStringList TextFileLines(const Lesson& lesson); // lifr
QStringList QuestionLines(const Lesson& lesson); // ogae
QStringList DialogLines(const Course& course);   // Spoken\Script.zvk
QStringList RowLines(const std::vector<SentenceRow>& rows);
QStringList VocabularyLines(const std::vector<VocabularyEntry>& entries);

// Every script file of the course; vocabulary is split evenly over ci1 .. ci20.
std::vector<ScriptFileEntry> ScriptFiles(const Course& course,
                                         const std::vector<VocabularyEntry>& vocabulary);

// A fixed seed for a file, from its path: the same file gets the same bytes on every run.
quint64 SeedForPath(const QString& path);

// Writes the files below outDir. Returns the number written; a failure names the file in error.
int WriteScriptFiles(FileStore& files, const QString& outDir,
                     const std::vector<ScriptFileEntry>& entries, QString* error);

} // namespace vt::coursepack
