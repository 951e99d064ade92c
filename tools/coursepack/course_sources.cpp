#include "course_sources.h"

#include "lesson_checks.h"

#include "core/blank_layout.h"
#include "core/pinyin.h"
#include "core/syllable_table.h"
#include "platform/helpers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <set>

namespace vt::coursepack {

QString SourcePlace::Text() const {
    return line > 0 ? file + u':' + QString::number(line) : file;
}

int Course::LessonWordCount() const {
    int n = 0;
    for (const Lesson& l : lessons)
        n += static_cast<int>(l.words.size());
    return n;
}

QString SentenceSoundName(const QString& english) {
    if (english.isEmpty()) return QString();
    QString name(english[0]);
    for (qsizetype i = 0; i + 1 < english.size() && name.size() < 5; ++i) {
        if (english[i] != u' ') continue;
        const QChar next = english[i + 1];
        if (next == u'.' || next == u' ' || next == u',' || next == u'?' || next == u'!') continue;
        name += next;
    }
    return (name + QStringLiteral(".wav")).toLower();
}

int CountSyllables(const QString& pinyin) {
    int n = 0;
    for (QChar c : pinyin)
        if (c.isDigit()) ++n;
    return n;
}

QString RowToDotted(const QString& numeric, QString* error) {
    static const QRegularExpression gap(QStringLiteral("(\\.{2,}|…+)"));
    QStringList out;
    qsizetype from = 0;
    auto convert = [&](const QString& piece) {
        const QString t = piece.trimmed();
        if (t.isEmpty()) return true;
        QString why;
        const QString dotted = NumericToDotted(t, &why);
        if (dotted.isEmpty()) {
            if (error) *error = why;
            return false;
        }
        out << dotted;
        return true;
    };
    auto it = gap.globalMatch(numeric);
    while (it.hasNext()) {
        const auto m = it.next();
        if (!convert(numeric.mid(from, m.capturedStart() - from))) return QString();
        out << m.captured(0);
        from = m.capturedEnd();
    }
    if (!convert(numeric.mid(from))) return QString();
    if (out.isEmpty() && error) *error = QStringLiteral("the Pinyin is empty");
    return out.join(u' ');
}

namespace {

struct SourceLine {
    int number;
    QString text; // trailing blanks and the line end removed; leading blanks kept
};

class Reader {
public:
    Reader(const QString& courseDir, Course& course, std::vector<SourceError>& errors)
        : dir_(courseDir), course_(course), errors_(errors) {
        shownRoot_ = QDir(courseDir).dirName();
    }

    void Run();

private:
    QString shown(const QString& rel) const { return shownRoot_ + u'/' + rel; }
    void fail(const QString& file, int line, const QString& reason) {
        errors_.push_back({{file, line}, reason});
    }
    void warn(const QString& file, int line, const QString& reason) {
        course_.warnings.push_back(SourcePlace{file, line}.Text() + QStringLiteral(": ") + reason);
    }
    // Lines of a file; blank and comment lines are kept only when keepBlank says so (blank ones).
    bool readLines(const QString& rel, std::vector<SourceLine>& lines, bool keepBlank,
                   bool keepHashLines = false);

    void readTitles();
    void readLessons();
    void readLesson(Lesson& lesson, const QString& rel);
    void readWords(Lesson& lesson, const QString& rel);
    void readText(Lesson& lesson, const QString& rel);
    void readPlay(Lesson& lesson, const QString& rel);
    void readQuestions(Lesson& lesson, const QString& rel);
    void checkLesson(const Lesson& lesson, const QString& rel);
    void checkNewCharacters();
    void readDialogs();
    void readRows();
    bool readRowFile(const QString& rel, std::vector<SentenceRow>& rows);
    void checkLimits();
    bool pinyinField(const QString& file, int line, const QString& numeric, QString& dotted,
                     bool pattern);

    QDir dir_;
    Course& course_;
    std::vector<SourceError>& errors_;
    QString shownRoot_;
};

bool Reader::readLines(const QString& rel, std::vector<SourceLine>& lines, bool keepBlank,
                       bool keepHashLines) {
    QFile f(dir_.filePath(rel));
    if (!f.open(QIODevice::ReadOnly)) return false;
    const QString all = QString::fromUtf8(f.readAll());
    const QStringList raw = all.split(u'\n');
    for (int i = 0; i < raw.size(); ++i) {
        QString t = raw[i];
        if (t.endsWith(u'\r')) t.chop(1);
        if (i == 0 && t.startsWith(QChar(0xFEFF))) t.remove(0, 1);
        t = RTrim(t);
        const QString lead = t.trimmed();
        if (lead.isEmpty()) {
            if (keepBlank) lines.push_back({i + 1, QString()});
            continue;
        }
        if (lead.startsWith(u'#') && !keepHashLines) continue;
        lines.push_back({i + 1, t});
    }
    // A last blank line says nothing.
    while (!lines.empty() && lines.back().text.isEmpty())
        lines.pop_back();
    return true;
}

bool Reader::pinyinField(const QString& file, int line, const QString& numeric, QString& dotted,
                         bool pattern) {
    QString why;
    dotted = pattern ? RowToDotted(numeric, &why) : NumericToDotted(numeric, &why);
    if (dotted.isEmpty()) {
        fail(file, line, QStringLiteral("the Pinyin \"%1\" is wrong: %2").arg(numeric, why));
        return false;
    }
    // A syllable in a tone the table does not list is allowed, but worth a look.
    for (const QString& syl : dotted.split(u' ', Qt::SkipEmptyParts)) {
        if (syl.size() < 2 || !syl.back().isDigit()) continue;
        QString plain = syl.left(syl.size() - 1);
        plain.remove(u'.');
        const int tone = syl.back().digitValue();
        if (!SyllableHasTone(plain, tone))
            warn(file, line, QStringLiteral("\"%1\" is not usual in tone %2").arg(plain).arg(tone));
    }
    return true;
}

void Reader::Run() {
    course_ = Course{};
    course_.lessons.resize(kLessonCount);
    for (int i = 0; i < kLessonCount; ++i)
        course_.lessons[static_cast<size_t>(i)].number = i + 1;
    course_.categories.resize(kSentenceCategoryCount);
    readTitles();
    readLessons();
    checkNewCharacters();
    readDialogs();
    readRows();
    checkLimits();
}

void Reader::readTitles() {
    const QString rel = QStringLiteral("titles.txt");
    std::vector<SourceLine> lines;
    if (!readLines(rel, lines, false)) {
        fail(shown(rel), 0, QStringLiteral("the file of lesson titles is missing"));
        return;
    }
    for (const SourceLine& l : lines)
        course_.titles << Trim(l.text);
    if (course_.titles.size() != kLessonCount) {
        const int at = course_.titles.size() > kLessonCount ? lines[kLessonCount].number : 0;
        fail(shown(rel), at,
             QStringLiteral("there are %1 titles; the course has exactly 140 lessons, one title "
                            "per line")
                 .arg(course_.titles.size()));
    }
}

void Reader::readLessons() {
    QDir lessonsDir(dir_.filePath(QStringLiteral("lessons")));
    if (!lessonsDir.exists()) return;
    static const QRegularExpression threeDigits(QStringLiteral("^\\d{3}$"));
    const QStringList names = lessonsDir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& name : names) {
        const QString rel = QStringLiteral("lessons/") + name;
        if (!threeDigits.match(name).hasMatch()) {
            fail(shown(rel), 0,
                 QStringLiteral("a lesson folder is named by three digits, 001 to 140"));
            continue;
        }
        const int n = name.toInt();
        if (n < 1 || n > kLessonCount) {
            fail(shown(rel), 0,
                 QStringLiteral("lesson number %1 is out of range: lessons are 1 to 140").arg(n));
            continue;
        }
        readLesson(course_.lessons[static_cast<size_t>(n - 1)], rel);
    }
}

void Reader::readLesson(Lesson& lesson, const QString& rel) {
    lesson.present = true;
    const QDir d(dir_.filePath(rel));
    readWords(lesson, rel + QStringLiteral("/words.txt"));
    const bool hasText = d.exists(QStringLiteral("text.txt"));
    const bool hasPlay = d.exists(QStringLiteral("play.txt"));
    if (lesson.IsPlay()) {
        if (hasText)
            fail(shown(rel + QStringLiteral("/text.txt")), 0,
                 QStringLiteral("lesson %1 is a TV play: its lines go in play.txt")
                     .arg(lesson.number));
        if (hasPlay)
            readPlay(lesson, rel + QStringLiteral("/play.txt"));
        else
            warn(shown(rel), 0, QStringLiteral("the TV play has no play.txt"));
    } else {
        if (hasPlay)
            fail(shown(rel + QStringLiteral("/play.txt")), 0,
                 QStringLiteral("lesson %1 is a read text: TV plays are lessons 81 to 140")
                     .arg(lesson.number));
        if (hasText)
            readText(lesson, rel + QStringLiteral("/text.txt"));
        else
            warn(shown(rel), 0, QStringLiteral("the lesson has no text.txt"));
    }
    if (d.exists(QStringLiteral("questions.txt")))
        readQuestions(lesson, rel + QStringLiteral("/questions.txt"));
    checkLesson(lesson, rel);
}

namespace {
// Whether a word stands in one of the lines; a separable word ("见.面") may stand apart, its
// pieces in order on one line ("见了面").
bool occursIn(const QStringList& lines, const QString& chinese) {
    const QString whole = StripPunctuation(chinese);
    const QStringList pieces = chinese.split(u'.', Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        if (line.contains(whole)) return true;
        if (pieces.size() < 2) continue;
        qsizetype at = 0;
        bool all = true;
        for (const QString& piece : pieces) {
            at = line.indexOf(StripPunctuation(piece), at);
            if (at < 0) {
                all = false;
                break;
            }
            at += piece.size();
        }
        if (all) return true;
    }
    return false;
}
} // namespace

// What the tasks draw from: enough words, words that the text shows, lines that can be altered,
// a text in which every blank can be placed.
void Reader::checkLesson(const Lesson& lesson, const QString& rel) {
    const QString wordsFile = shown(rel + QStringLiteral("/words.txt"));
    if (lesson.words.size() < 2)
        fail(wordsFile, lesson.words.empty() ? 0 : lesson.words.front().place.line,
             QStringLiteral("the lesson has %1 new word(s); the vocabulary drill needs at least "
                            "two, it draws the wrong meanings from the other words")
                 .arg(lesson.words.size()));

    // The text as the program holds it: a read text's lines, or a play's title and shown lines.
    QStringList lines;
    std::vector<SourcePlace> places;
    if (lesson.IsPlay()) {
        for (const PlayLine& pl : lesson.playLines) {
            lines << pl.Shown();
            places.push_back(pl.place);
        }
    } else {
        lines = lesson.textLines;
        places = lesson.textPlaces;
    }
    if (lines.isEmpty()) return;
    const QStringList searched = lesson.IsPlay() ? QStringList{lesson.playTitle} + lines : lines;
    for (const Word& w : lesson.words)
        if (!occursIn(searched, w.chinese))
            fail(w.place.file, w.place.line,
                 QStringLiteral("the new word \"%1\" does not occur in the lesson's text")
                     .arg(w.chinese));
    for (int i = 0; i < lines.size(); ++i)
        if (LineIsAsked(lines[i]) && !LineCanBeSwapped(lines[i]))
            fail(places[static_cast<size_t>(i)].file, places[static_cast<size_t>(i)].line,
                 QStringLiteral("the line has four or more Chinese characters but no two "
                                "different ones to swap, so finding the sentence to a sound "
                                "could never make its altered versions"));

    const QString& title = lesson.IsPlay() ? lesson.playTitle : lines[0];
    const SourcePlace& titlePlace = lesson.IsPlay() ? lesson.playPlace : places[0];
    if (title.size() > kBlankTitleWidth) {
        fail(titlePlace.file, titlePlace.line,
             QStringLiteral("the title line has %1 characters; blank filling centres the title "
                            "in %2 places")
                 .arg(title.size())
                 .arg(kBlankTitleWidth));
        return;
    }
    if (const auto stall = BlankCuttingStalls(lines, lesson.IsPlay(), lesson.playTitle)) {
        const SourcePlace& at = !lesson.IsPlay() ? places[static_cast<size_t>(*stall)]
                                : *stall == 0    ? titlePlace
                                                 : places[static_cast<size_t>(*stall - 1)];
        fail(at.file, at.line,
             QStringLiteral("here begin 20 characters in a row without a Chinese one (counting "
                            "the blanks and line breaks of the text as blank filling lays it "
                            "out), so blank filling could never place its next blank"));
    }
}

// The typing task drills the characters that no earlier lesson's words hold.
void Reader::checkNewCharacters() {
    QSet<QChar> known;
    for (const Lesson& lesson : course_.lessons) {
        if (!lesson.present || lesson.words.empty()) continue;
        QSet<QChar> fresh;
        for (const Word& w : lesson.words)
            for (QChar c : StripPunctuation(w.chinese))
                if (!known.contains(c)) fresh.insert(c);
        if (fresh.size() < 4)
            warn(lesson.words.front().place.file, 0,
                 QStringLiteral("the words bring only %1 new character(s), characters that no "
                                "earlier lesson's words hold; the typing task drills these, four "
                                "or more are wanted")
                     .arg(fresh.size()));
        known.unite(fresh);
    }
}

void Reader::readWords(Lesson& lesson, const QString& rel) {
    std::vector<SourceLine> lines;
    if (!readLines(rel, lines, false)) return;
    const QString file = shown(rel);
    for (const SourceLine& l : lines) {
        const QStringList f = l.text.split(u'|');
        if (f.size() != 3) {
            fail(file, l.number,
                 QStringLiteral("a word is written \"pinyin | Chinese | English\""));
            continue;
        }
        Word w{Trim(f[0]), QString(), Trim(f[1]), Trim(f[2]), {file, l.number}};
        if (w.chinese.isEmpty() || w.english.isEmpty()) {
            fail(file, l.number, QStringLiteral("the word needs its Chinese and its English"));
            continue;
        }
        if (!pinyinField(file, l.number, w.numeric, w.dotted, false)) continue;
        if (const int meanings = MeaningCount(w.english); meanings > 7)
            fail(file, l.number,
                 QStringLiteral("the word has %1 meanings (parted by \";\"); the vocabulary drill "
                                "shows at most seven")
                     .arg(meanings));
        const int chars = static_cast<int>(StripPunctuation(w.chinese).size());
        const int syllables = CountSyllables(w.dotted);
        if (chars != syllables) {
            fail(file, l.number,
                 QStringLiteral("\"%1\" has %2 characters but %3 syllables; such a word would be "
                                "left out of the character table")
                     .arg(w.chinese)
                     .arg(chars)
                     .arg(syllables));
            continue;
        }
        lesson.words.push_back(w);
    }
}

void Reader::readText(Lesson& lesson, const QString& rel) {
    std::vector<SourceLine> lines;
    readLines(rel, lines, false);
    const QString file = shown(rel);
    for (const SourceLine& l : lines) {
        if (ChineseOnly(l.text).isEmpty()) {
            fail(file, l.number, QStringLiteral("a sentence of the text has no Chinese in it"));
            continue;
        }
        lesson.textLines << l.text;
        lesson.textPlaces.push_back({file, l.number});
    }
    if (lines.empty()) fail(file, 0, QStringLiteral("the text is empty: line 1 is its title line"));
}

void Reader::readPlay(Lesson& lesson, const QString& rel) {
    static const QStringList voiceNames = {QStringLiteral("male1"), QStringLiteral("male2"),
                                           QStringLiteral("female1"), QStringLiteral("female2"),
                                           QStringLiteral("child1")};
    std::vector<SourceLine> lines;
    readLines(rel, lines, false);
    const QString file = shown(rel);
    lesson.playPlace = {file, 0};
    std::map<QString, QString> voices;
    auto keyword = [](const QString& text, const char* key, QString& value) {
        const QString k = QString::fromLatin1(key);
        const QString t = text.trimmed();
        if (!t.startsWith(k, Qt::CaseInsensitive)) return false;
        const QString rest = t.mid(k.size()).trimmed();
        if (!rest.startsWith(u':') && !rest.startsWith(QChar(0xFF1A))) return false;
        value = rest.mid(1).trimmed();
        return true;
    };
    bool titleSeen = false;
    for (const SourceLine& l : lines) {
        QString value;
        if (!titleSeen) {
            if (!keyword(l.text, "title", value) || value.isEmpty()) {
                fail(file, l.number,
                     QStringLiteral("the play begins with \"title: <the play's title line>\""));
                return;
            }
            lesson.playTitle = value;
            lesson.playPlace.line = l.number;
            titleSeen = true;
            continue;
        }
        if (keyword(l.text, "voices", value)) {
            if (!lesson.playLines.empty()) {
                fail(file, l.number,
                     QStringLiteral("the voices are given before the first spoken line"));
                continue;
            }
            static const QRegularExpression sep(QStringLiteral("[,，]"));
            for (const QString& pair : value.split(sep, Qt::SkipEmptyParts)) {
                const QStringList kv = pair.split(u'=');
                const QString voice = kv.size() == 2 ? kv[1].trimmed().toLower() : QString();
                if (kv.size() != 2 || kv[0].trimmed().isEmpty() || !voiceNames.contains(voice)) {
                    fail(file, l.number,
                         QStringLiteral("\"%1\": a voice is given as Speaker=male1 (male1, male2, "
                                        "female1, female2 or child1)")
                             .arg(pair.trimmed()));
                    continue;
                }
                voices[kv[0].trimmed()] = voice;
            }
            continue;
        }
        if (keyword(l.text, "pictures", value)) {
            bool ok = false;
            const int n = value.toInt(&ok);
            if (!ok || n < 1 || n > 9)
                fail(file, l.number, QStringLiteral("a play has 1 to 9 pictures"));
            else
                lesson.pictureCount = n;
            continue;
        }
        qsizetype colon = -1;
        for (qsizetype i = 0; i < l.text.size(); ++i)
            if (l.text[i] == u':' || l.text[i] == QChar(0xFF1A)) {
                colon = i;
                break;
            }
        const QString speaker = colon > 0 ? l.text.left(colon).trimmed() : QString();
        const QString said = colon > 0 ? l.text.mid(colon + 1).trimmed() : QString();
        if (speaker.isEmpty()) {
            fail(file, l.number,
                 QStringLiteral("a spoken line is written \"Speaker: Chinese text\""));
            continue;
        }
        if (ChineseOnly(said).isEmpty()) {
            fail(file, l.number,
                 QStringLiteral("the line says nothing in Chinese, so the track would have no "
                                "timing for it"));
            continue;
        }
        lesson.playLines.push_back({speaker, said, QString(), {file, l.number}});
    }
    if (!titleSeen) {
        fail(file, 0, QStringLiteral("the play begins with \"title: <the play's title line>\""));
        return;
    }
    if (lesson.playLines.empty())
        fail(file, lesson.playPlace.line, QStringLiteral("the play has no spoken lines"));
    // Speakers without a voice take the free voices in order.
    std::set<QString> used;
    for (const auto& [who, v] : voices)
        used.insert(v);
    int next = 0;
    for (PlayLine& pl : lesson.playLines) {
        auto it = voices.find(pl.speaker);
        if (it == voices.end()) {
            QString v;
            for (int tries = 0; tries < voiceNames.size(); ++tries) {
                v = voiceNames[next % voiceNames.size()];
                ++next;
                if (!used.count(v)) break;
            }
            used.insert(v);
            it = voices.emplace(pl.speaker, v).first;
        }
        pl.voice = it->second;
    }
}

void Reader::readQuestions(Lesson& lesson, const QString& rel) {
    std::vector<SourceLine> lines;
    readLines(rel, lines, true, true);
    const QString file = shown(rel);
    auto finish = [&](Question& q, int rights) {
        if (q.text.isEmpty()) return;
        if (q.options.isEmpty())
            fail(file, q.place.line, QStringLiteral("the question has no options"));
        else if (rights == 0)
            fail(file, q.place.line,
                 QStringLiteral("the question has no right option (mark it with \"#\")"));
        else
            lesson.questions.push_back(q);
        q = Question{};
    };
    Question q;
    int rights = 0;
    for (const SourceLine& l : lines) {
        const QString t = Trim(l.text);
        if (t.isEmpty()) {
            finish(q, rights);
            rights = 0;
            continue;
        }
        if (q.text.isEmpty()) {
            if (t.startsWith(u'#')) continue; // a comment before the question
            if (IsNumeric(t)) {
                fail(file, l.number, QStringLiteral("a question may not be a bare number"));
                continue;
            }
            q.text = t;
            q.place = {file, l.number};
            continue;
        }
        const bool right = t.startsWith(u'#');
        const QString body = right ? Trim(t.mid(1)) : t;
        if (body.isEmpty() || IsNumeric(t)) {
            fail(file, l.number,
                 body.isEmpty() ? QStringLiteral("an option is empty")
                                : QStringLiteral("an option may not be a bare number"));
            continue;
        }
        if (q.options.size() == 4) {
            fail(file, l.number, QStringLiteral("a question has at most four options"));
            continue;
        }
        q.options << (right ? QStringLiteral("#") + body : body);
        if (right) ++rights;
    }
    finish(q, rights);
}

void Reader::readDialogs() {
    const QString rel = QStringLiteral("spoken/dialogs.txt");
    std::vector<SourceLine> lines;
    if (!readLines(rel, lines, true)) return;
    const QString file = shown(rel);
    std::map<QString, DialogLine> names; // sound name -> first sentence with it
    auto parse = [&](const SourceLine& l, DialogLine& out) {
        const qsizetype eq = l.text.indexOf(u'=');
        out.chinese = eq > 0 ? Trim(l.text.left(eq)) : QString();
        out.english = eq > 0 ? Trim(l.text.mid(eq + 1)) : QString();
        out.place = {file, l.number};
        if (out.chinese.isEmpty() || out.english.isEmpty()) {
            fail(file, l.number, QStringLiteral("a dialog line is written \"Chinese = English\""));
            return false;
        }
        out.soundName = SentenceSoundName(out.english);
        if (out.soundName == QStringLiteral("b.wav")) {
            fail(file, l.number,
                 QStringLiteral("\"%1\" would be recorded as b.wav, which is kept for the farewell")
                     .arg(out.english));
            return false;
        }
        auto it = names.find(out.soundName);
        if (it != names.end() &&
            (it->second.english != out.english || it->second.chinese != out.chinese)) {
            fail(file, l.number,
                 QStringLiteral("\"%1\" would be recorded as %2, like \"%3\" on line %4")
                     .arg(out.english, out.soundName, it->second.english)
                     .arg(it->second.place.line));
            return false;
        }
        names.emplace(out.soundName, out);
        return true;
    };
    Dialog d;
    bool open = false;
    auto finish = [&]() {
        if (!open) return;
        const int n = static_cast<int>(d.replies.size());
        if (n < 2 || n > 5)
            fail(file, d.ask.place.line,
                 QStringLiteral("a dialog has two to five replies, this one has %1").arg(n));
        else
            course_.dialogs.push_back(d);
        d = Dialog{};
        open = false;
    };
    for (const SourceLine& l : lines) {
        if (l.text.isEmpty()) {
            finish();
            continue;
        }
        DialogLine dl;
        const bool ok = parse(l, dl);
        if (!open) {
            d.ask = dl;
            open = true;
        } else if (ok) {
            d.replies.push_back(dl);
        }
    }
    finish();
    if (course_.dialogs.size() == 8)
        fail(file, 0,
             QStringLiteral("with exactly eight dialogs the program says that no dialog "
                            "files were found; write one more or one less"));
}

bool Reader::readRowFile(const QString& rel, std::vector<SentenceRow>& rows) {
    std::vector<SourceLine> lines;
    if (!readLines(rel, lines, false)) return false;
    const QString file = shown(rel);
    for (const SourceLine& l : lines) {
        const QStringList f = l.text.split(u'|');
        if (f.size() != 3) {
            fail(file, l.number,
                 QStringLiteral("a sentence is written \"pinyin | Chinese | English\""));
            continue;
        }
        SentenceRow r{Trim(f[0]), QString(), Trim(f[1]), Trim(f[2]), false, {file, l.number}};
        r.structure = r.english.contains(QStringLiteral("<<<"));
        if (r.chinese.isEmpty() || r.english.isEmpty()) {
            fail(file, l.number, QStringLiteral("the sentence needs its Chinese and its English"));
            continue;
        }
        if (!pinyinField(file, l.number, r.numeric, r.dotted, true)) continue;
        if (!r.structure) {
            const int chars = static_cast<int>(ChineseOnly(r.chinese).size());
            const int syllables = CountSyllables(r.dotted);
            if (chars != syllables) {
                fail(file, l.number,
                     QStringLiteral("\"%1\" has %2 characters but %3 syllables")
                         .arg(r.chinese)
                         .arg(chars)
                         .arg(syllables));
                continue;
            }
        }
        rows.push_back(r);
    }
    return true;
}

void Reader::readRows() {
    QDir spoken(dir_.filePath(QStringLiteral("spoken")));
    if (!spoken.exists()) return;
    static const QRegularExpression category(QStringLiteral("^category_(\\d+)\\.txt$"));
    static const QRegularExpression further(QStringLiteral("^sentences_(\\d+)\\.txt$"));
    std::map<int, QString> sentenceFiles;
    for (const QString& name : spoken.entryList(QDir::Files, QDir::Name)) {
        const QString rel = QStringLiteral("spoken/") + name;
        if (auto m = category.match(name); m.hasMatch()) {
            const int k = m.captured(1).toInt();
            if (m.captured(1).size() != 2 || k < 1 || k > kSentenceCategoryCount) {
                fail(shown(rel), 0,
                     QStringLiteral("the categories are category_01.txt to category_20.txt"));
                continue;
            }
            readRowFile(rel, course_.categories[static_cast<size_t>(k - 1)]);
        } else if (auto s = further.match(name); s.hasMatch()) {
            sentenceFiles[s.captured(1).toInt()] = rel;
        }
    }
    int expect = 1;
    for (const auto& [n, rel] : sentenceFiles) {
        if (n != expect) {
            fail(shown(rel), 0,
                 QStringLiteral("sentence files are numbered 1, 2, 3 ... without gaps; "
                                "sentences_%1.txt is missing")
                     .arg(expect));
            break;
        }
        course_.sentenceFiles.emplace_back();
        readRowFile(rel, course_.sentenceFiles.back());
        ++expect;
    }
}

void Reader::checkLimits() {
    const int words = course_.LessonWordCount();
    if (words > kMaxRows)
        fail(shown(QStringLiteral("lessons")), 0,
             QStringLiteral("the lessons hold %1 words, past the table limit of 32,767 rows")
                 .arg(words));
    int sentences = 0;
    for (const Lesson& l : course_.lessons)
        sentences += static_cast<int>(l.IsPlay() ? l.playLines.size() : l.textLines.size());
    if (sentences > kMaxRows)
        fail(shown(QStringLiteral("lessons")), 0,
             QStringLiteral("the texts hold %1 sentences, past the table limit of 32,767 rows")
                 .arg(sentences));
    int rows = 0;
    auto perFile = [&](const std::vector<SentenceRow>& f) {
        rows += static_cast<int>(f.size());
        if (!f.empty() && f.size() * 3 > static_cast<size_t>(kMaxRows))
            fail(f.front().place.file, 0,
                 QStringLiteral("%1 rows make %2 lines, past the limit of 32,767 lines of a file")
                     .arg(f.size())
                     .arg(f.size() * 3));
    };
    for (const auto& f : course_.categories)
        perFile(f);
    for (const auto& f : course_.sentenceFiles)
        perFile(f);
    if (rows > kMaxRows)
        fail(shown(QStringLiteral("spoken")), 0,
             QStringLiteral(
                 "the sentence finder would hold %1 rows, past the table limit of 32,767 rows")
                 .arg(rows));
}

} // namespace

bool ReadCourse(const QString& courseDir, Course& course, std::vector<SourceError>& errors) {
    errors.clear();
    Reader(courseDir, course, errors).Run();
    return errors.empty();
}

} // namespace vt::coursepack
