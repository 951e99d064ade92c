#include "script_output.h"

#include "core/script_file.h"
#include "platform/files.h"

namespace vt::coursepack {

namespace {
QString lessonFolder(int n) {
    return QStringLiteral("Lessons\\Script\\Lesson_%1\\").arg(n);
}
} // namespace

QString DataPath(const QString& outDir, const QString& relative) {
    QString rel = relative;
    rel.replace(u'\\', u'/');
    return outDir.endsWith(u'/') ? outDir + rel : outDir + u'/' + rel;
}

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
    entries.push_back(
        {QStringLiteral("Lessons\\Title.zvk"), QStringLiteral("RT"), TitleLines(course)});
    for (const Lesson& l : course.lessons) {
        if (!l.present) continue;
        const QString dir = lessonFolder(l.number);
        entries.push_back({dir + QStringLiteral("icwp.zvk"), QStringLiteral("RW"), WordLines(l)});
        entries.push_back(
            {dir + QStringLiteral("lifr.zvk"), QStringLiteral("RT"), TextFileLines(l)});
        entries.push_back(
            {dir + QStringLiteral("ogae.zvk"), QStringLiteral("RQ"), QuestionLines(l)});
    }
    if (!course.dialogs.empty())
        entries.push_back(
            {QStringLiteral("Spoken\\Script.zvk"), QStringLiteral("SP"), DialogLines(course)});
    for (size_t k = 0; k < course.categories.size(); ++k)
        if (!course.categories[k].empty())
            entries.push_back({QStringLiteral("Spoken\\Script_%1.zvk").arg(k + 1),
                               QStringLiteral("SP"), RowLines(course.categories[k])});
    for (size_t n = 0; n < course.sentenceFiles.size(); ++n)
        entries.push_back({QStringLiteral("Spoken\\Script%1.zvk").arg(n + 1), QStringLiteral("SP"),
                           RowLines(course.sentenceFiles[n])});
    if (!vocabulary.empty()) {
        constexpr auto files = static_cast<size_t>(kVocabularyFileCount);
        const size_t per = (vocabulary.size() + files - 1) / files;
        for (size_t f = 0; f < files; ++f) {
            const size_t from = std::min(vocabulary.size(), f * per);
            const size_t to = std::min(vocabulary.size(), from + per);
            std::vector<VocabularyEntry> part(vocabulary.begin() + static_cast<long>(from),
                                              vocabulary.begin() + static_cast<long>(to));
            entries.push_back({QStringLiteral("Vocabulary\\ci%1.zvk").arg(f + 1),
                               QStringLiteral("VO"), VocabularyLines(part)});
        }
    }
    return entries;
}

int WriteScriptFiles(FileStore& files, const QString& outDir,
                     const std::vector<ScriptFileEntry>& entries, QString* error) {
    int written = 0;
    for (const ScriptFileEntry& s : entries) {
        if (!WriteScriptFile(files, DataPath(outDir, s.path), s.lines, s.family,
                             SeedForPath(s.path))) {
            if (error) *error = QStringLiteral("could not write %1").arg(DataPath(outDir, s.path));
            return written;
        }
        ++written;
    }
    return written;
}

} // namespace vt::coursepack
