#include "script_output.h"

#include "core/data_paths.h"
#include "core/script_file.h"
#include "platform/files.h"

namespace vt::coursepack {

namespace {
// Paths relative to the data folder.
const QString kRelative;
} // namespace

quint64 SeedForPath(const QString& path) {
    quint64 h = 1469598103934665603ULL; // FNV-1a
    for (QChar c : path) {
        h ^= c.unicode();
        h *= 1099511628211ULL;
    }
    return h;
}

QStringList TitleLines(const Course& course) {
    return course.titles;
}

QStringList WordLines(const Lesson& lesson) {
    QStringList out;
    for (const Word& w : lesson.words)
        out << w.dotted << w.chinese << w.english;
    return out;
}

QStringList TextFileLines(const Lesson& lesson) {
    // Line 1 is read by nobody; line 2 is the title line; then the text or the spoken lines.
    QStringList out{QStringLiteral("Lesson %1").arg(lesson.number)};
    if (lesson.IsPlay()) {
        out << lesson.playTitle;
        for (const PlayLine& pl : lesson.playLines)
            out << pl.Shown();
    } else {
        out << lesson.textLines;
    }
    return out;
}

QStringList QuestionLines(const Lesson& lesson) {
    QStringList out;
    int k = 0;
    for (const Question& q : lesson.questions) {
        out << QString::number(++k) << q.text << q.options;
    }
    return out;
}

QStringList DialogLines(const Course& course) {
    QStringList out;
    int k = 0;
    auto line = [](const DialogLine& d) { return d.chinese + QStringLiteral(" = ") + d.english; };
    for (const Dialog& d : course.dialogs) {
        out << QString::number(++k) << line(d.ask);
        for (const DialogLine& r : d.replies)
            out << line(r);
    }
    return out;
}

QStringList RowLines(const std::vector<SentenceRow>& rows) {
    QStringList out;
    for (const SentenceRow& r : rows)
        out << r.dotted << r.chinese << r.english;
    return out;
}

QStringList VocabularyLines(const std::vector<VocabularyEntry>& entries) {
    QStringList out;
    for (const VocabularyEntry& e : entries)
        out << e.dotted << e.chinese << e.english;
    return out;
}

std::vector<ScriptFileEntry> ScriptFiles(const Course& course,
                                         const std::vector<VocabularyEntry>& vocabulary) {
    std::vector<ScriptFileEntry> entries;
    entries.push_back({TitleFile(kRelative), QStringLiteral("RT"), TitleLines(course)});
    for (const Lesson& l : course.lessons) {
        if (!l.present) continue;
        entries.push_back(
            {LessonWordsFile(kRelative, l.number), QStringLiteral("RW"), WordLines(l)});
        entries.push_back(
            {LessonTextFile(kRelative, l.number), QStringLiteral("RT"), TextFileLines(l)});
        entries.push_back(
            {LessonQuestionsFile(kRelative, l.number), QStringLiteral("RQ"), QuestionLines(l)});
    }
    if (!course.dialogs.empty())
        entries.push_back({DialogScriptFile(kRelative), QStringLiteral("SP"), DialogLines(course)});
    for (size_t k = 0; k < course.categories.size(); ++k)
        if (!course.categories[k].empty())
            entries.push_back({SentenceCategoryFile(kRelative, static_cast<int>(k + 1)),
                               QStringLiteral("SP"), RowLines(course.categories[k])});
    for (size_t n = 0; n < course.sentenceFiles.size(); ++n)
        entries.push_back({SpokenSentenceFile(kRelative, static_cast<int>(n + 1)),
                           QStringLiteral("SP"), RowLines(course.sentenceFiles[n])});
    if (!vocabulary.empty()) {
        constexpr auto files = static_cast<size_t>(kVocabularyFileCount);
        const size_t per = (vocabulary.size() + files - 1) / files;
        for (size_t f = 0; f < files; ++f) {
            const size_t from = std::min(vocabulary.size(), f * per);
            const size_t to = std::min(vocabulary.size(), from + per);
            std::vector<VocabularyEntry> part(vocabulary.begin() + static_cast<long>(from),
                                              vocabulary.begin() + static_cast<long>(to));
            entries.push_back({VocabularyFile(kRelative, static_cast<int>(f + 1)),
                               QStringLiteral("VO"), VocabularyLines(part)});
        }
    }
    return entries;
}

int WriteScriptFiles(FileStore& files, const QString& outDir,
                     const std::vector<ScriptFileEntry>& entries, QString* error) {
    int written = 0;
    const QString root = DataFolderRoot(outDir);
    for (const ScriptFileEntry& s : entries) {
        if (!WriteScriptFile(files, root + s.path, s.lines, s.family, SeedForPath(s.path))) {
            if (error) *error = QStringLiteral("could not write %1").arg(root + s.path);
            return written;
        }
        ++written;
    }
    return written;
}

} // namespace vt::coursepack
