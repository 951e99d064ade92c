#include "course_build.h"

#include "audio.h"
#include "pictures.h"
#include "script_output.h"
#include "strokes.h"
#include "tone_bend.h"

#include "core/data_paths.h"
#include "core/stroke_offsets.h"
#include "core/syllable_table.h"
#include "platform/files.h"

#include <QFile>
#include <QSet>
#include <cmath>
#include <map>
#include <mutex>

namespace vt::coursepack {

namespace {

// Paths relative to the data folder.
const QString kRelative;

void addSyllables(std::set<QString>& out, const QString& dotted) {
    QString acc;
    for (QChar c : dotted) {
        if (c.isDigit()) {
            QString plain = acc.trimmed();
            plain.remove(u'.');
            acc.clear();
            if (plain.isEmpty() || !FindSyllable(plain)) continue;
            const QChar tone = c == u'0' ? u'1' : c;
            out.insert(plain + tone);
        } else if (c.isLetter()) {
            acc += c;
        } else if (c == u'.') {
            acc += c;
        } else {
            acc.clear();
        }
    }
}

// One piece of speech to make: what to say, with which voice.
struct SpeechJob {
    QString pinyin;
    Voice voice;
    Pcm result;
    QString error;
    SourcePlace place; // the sentence in the sources, when it comes from there
    int tone = 0;      // a single syllable bent onto this tone's contour; 0: none
};

// The tone of a single syllable ("ma3" gives 3); 0 for anything longer.
int singleSyllableTone(const QString& pinyin) {
    const QString p = pinyin.trimmed();
    if (CountSyllables(p) != 1 || p.contains(u' ') || !p.back().isDigit()) return 0;
    return p.back().digitValue();
}

} // namespace

const std::vector<std::pair<QString, QString>>& NumberSymbols() {
    static const std::vector<std::pair<QString, QString>> symbols = {
        {"0", "ling2"},  {"1", "yi1"},   {"a", "yao1"},  {"2", "er4"},  {"n", "liang3"},
        {"l", "liang2"}, {"3", "san1"},  {"4", "si4"},   {"5", "wu3"},  {"v", "wu2"},
        {"6", "liu4"},   {"7", "qi1"},   {"8", "ba1"},   {"9", "jiu3"}, {"i", "jiu2"},
        {"s", "shi2"},   {"b", "bai3"},  {"q", "qian1"}, {"w", "wan4"}, {"y", "yi4"},
        {"z", "zhao4"},  {"d", "dian3"}, {"f", "fu4"},   {"t", "di4"},  {"p", "bai3 fen1 zhi1"}};
    return symbols;
}

std::set<QString> NeededSyllables(const Course& course,
                                  const std::vector<VocabularyEntry>& vocabulary, bool wholeTable) {
    std::set<QString> out;
    for (const SyllableInfo& s : wholeTable ? AllSyllables() : std::vector<SyllableInfo>{})
        for (int t = 1; t <= 4; ++t)
            if (s.tones[static_cast<size_t>(t - 1)]) out.insert(s.plain() + QString::number(t));
    for (const Lesson& l : course.lessons)
        for (const Word& w : l.words)
            addSyllables(out, w.dotted);
    for (const auto& f : course.categories)
        for (const SentenceRow& r : f)
            addSyllables(out, r.dotted);
    for (const auto& f : course.sentenceFiles)
        for (const SentenceRow& r : f)
            addSyllables(out, r.dotted);
    for (const VocabularyEntry& e : vocabulary)
        addSyllables(out, e.dotted);
    return out;
}

namespace {

class Builder {
public:
    Builder(const Course& c, Lexicon& lex, const BuildOptions& o, FileStore& f, BuildReport& r)
        : course_(c), lexicon_(lex), options_(o), files_(f), report_(r) {}

    bool Run() {
        for (const QString& w : course_.warnings)
            report_.warnings << w;
        AddCourseReadings(lexicon_, course_);
        // The word table holds the lessons' words and the vocabulary, at most 32,767 rows;
        // 28,000 leave room for 140 lessons of 20 words.
        report_.lessonWords = course_.LessonWordCount();
        const int room = kMaxRows - report_.lessonWords;
        const std::vector<VocabularyEntry> vocabulary =
            lexicon_.EntryCount() > 0
                ? BuildVocabulary(lexicon_, course_, std::min(28000, room), &report_.vocabulary)
                : std::vector<VocabularyEntry>{};
        if (lexicon_.EntryCount() == 0)
            report_.warnings << QStringLiteral(
                "no dictionary data: the vocabulary files are not made");
        report_.vocabularyEntries = static_cast<int>(vocabulary.size());

        QString error;
        const auto entries = ScriptFiles(course_, vocabulary);
        report_.scriptFiles = WriteScriptFiles(files_, options_.outDir, entries, &error);
        if (!error.isEmpty()) return failed(error);
        if (!writeStrokes()) return false;
        if (!writePictures()) return false;
        for (const Verdict verdict : kVerdicts)
            if (!write(VerdictSoundFile(kRelative, verdict),
                       EncodeWav(VerdictSound(VerdictName(verdict)))))
                return false;
        if (!options_.audio) return report_.errors.isEmpty();
        if (!SpeechAvailable())
            return failed(QStringLiteral("espeak-ng is not installed: no recordings can be made"));
        return writeSpeech(vocabulary) && report_.errors.isEmpty();
    }

private:
    bool failed(const QString& e) {
        report_.errors << e;
        return false;
    }
    // Writes a file given by its path relative to the data folder.
    bool write(const QString& relative, const QByteArray& bytes) {
        const QString path = DataFolderRoot(options_.outDir) + relative;
        if (files_.WriteAll(path, bytes)) return true;
        return failed(QStringLiteral("could not write %1").arg(path));
    }

    bool writeStrokes() {
        if (options_.npmDir.isEmpty()) {
            report_.warnings << QStringLiteral("no stroke data: the writing samples are not made");
            return true;
        }
        const QString& chars = SampleCharacters();
        for (int n = 1; n <= chars.size(); ++n) {
            QFile f(StrokeJsonPath(options_.npmDir, chars[n - 1]));
            if (!f.open(QIODevice::ReadOnly))
                return failed(
                    QStringLiteral(
                        "no stroke data for %1 (sample %2): run scripts/fetch_course_data.sh")
                        .arg(chars[n - 1])
                        .arg(n));
            const auto trace = TraceFromJson(f.readAll());
            if (trace.empty())
                return failed(
                    QStringLiteral("the stroke data of %1 has no strokes").arg(chars[n - 1]));
            if (!write(StrokeFile(kRelative, n), EncodeStrokeRecords(trace))) return false;
            ++report_.strokeFiles;
        }
        return true;
    }

    bool writePictures() {
        for (const Lesson& l : course_.lessons) {
            if (!l.present || !l.IsPlay() || l.playLines.empty()) continue;
            for (int i = 1; i <= l.pictureCount; ++i) {
                if (!write(PlayPictureFile(kRelative, l.number, i),
                           JpegBytes(DrawPlayPicture(l, i, l.pictureCount))))
                    return false;
                ++report_.pictures;
            }
        }
        return true;
    }

    QString spoken(const QString& chinese, const SourcePlace& place) {
        int unknown = 0;
        const QString p = lexicon_.ToSpokenPinyin(chinese, &unknown);
        if (unknown > 0)
            report_.warnings << place.Text() +
                                    QStringLiteral(
                                        ": %1 character(s) without a reading are not spoken")
                                        .arg(unknown);
        return p;
    }

    bool writeSpeech(const std::vector<VocabularyEntry>& vocabulary) {
        // Everything to say, first collected, then spoken two at a time, then written in order.
        std::vector<SpeechJob> jobs;
        std::vector<QString> targets; // file for each job; empty for a line of a play
        const Voice teacher = TeacherVoice();
        // Syllables and numbers of one syllable get their tone's contour.
        for (const QString& s : NeededSyllables(course_, vocabulary, options_.wholeSyllableTable)) {
            jobs.push_back({s, teacher, {}, {}, {}, singleSyllableTone(s)});
            targets.push_back(SyllableSoundFile(kRelative, s));
        }
        for (const auto& [symbol, pinyin] : NumberSymbols()) {
            jobs.push_back({pinyin, teacher, {}, {}, {}, singleSyllableTone(pinyin)});
            targets.push_back(NumberSoundFile(kRelative, symbol));
        }
        const size_t shortJobs = jobs.size();
        for (const Lesson& l : course_.lessons) {
            if (!l.present || l.IsPlay()) continue;
            for (int i = 0; i < l.textLines.size(); ++i) {
                jobs.push_back({spoken(l.textLines[i], l.textPlaces[static_cast<size_t>(i)]),
                                teacher,
                                {},
                                {},
                                l.textPlaces[static_cast<size_t>(i)]});
                targets.push_back(SentenceSoundFile(kRelative, l.number, i + 1));
            }
        }
        QSet<QString> names;
        auto dialogLine = [&](const DialogLine& d) {
            if (names.contains(d.soundName)) return;
            names.insert(d.soundName);
            jobs.push_back({spoken(d.chinese, d.place), teacher, {}, {}, d.place});
            targets.push_back(DialogSoundFile(kRelative, d.soundName));
        };
        for (const Dialog& d : course_.dialogs) {
            dialogLine(d.ask);
            for (const DialogLine& r : d.replies)
                dialogLine(r);
        }
        if (!course_.dialogs.empty()) {
            jobs.push_back({QStringLiteral("zai4 jian4."), teacher, {}, {}, {}});
            targets.push_back(FarewellSoundFile(kRelative));
        }
        struct PlayRange {
            const Lesson* lesson;
            size_t first;
        };
        std::vector<PlayRange> plays;
        for (const Lesson& l : course_.lessons) {
            if (!l.present || !l.IsPlay() || l.playLines.empty()) continue;
            plays.push_back({&l, jobs.size()});
            for (const PlayLine& pl : l.playLines) {
                jobs.push_back({spoken(pl.text, pl.place), VoiceNamed(pl.voice), {}, {}, pl.place});
                targets.push_back(QString());
            }
        }

        // Many pieces go through one run of the speech engine, one voice to a run: syllables
        // forty at a time, sentences ten.
        std::map<QString, std::vector<size_t>> byVoice;
        for (size_t k = 0; k < jobs.size(); ++k) {
            if (jobs[k].pinyin.isEmpty()) {
                jobs[k].error = QStringLiteral("no character of the sentence has a known reading; "
                                               "give its words in a lesson");
                continue;
            }
            const Voice& v = jobs[k].voice;
            byVoice[QStringLiteral("%1 %2 %3 %4")
                        .arg(k < shortJobs ? 0 : 1)
                        .arg(v.variant)
                        .arg(v.pitch)
                        .arg(v.speed)]
                .push_back(k);
        }
        std::vector<std::function<void()>> work;
        for (const auto& [key, members] : byVoice) {
            const size_t batch = members.front() < shortJobs ? 40 : 10;
            for (size_t from = 0; from < members.size(); from += batch) {
                std::vector<size_t> part(
                    members.begin() + static_cast<long>(from),
                    members.begin() + static_cast<long>(std::min(members.size(), from + batch)));
                work.push_back([&jobs, part] {
                    QStringList items;
                    for (size_t i : part)
                        items << jobs[i].pinyin;
                    QString error;
                    std::vector<Pcm> pieces =
                        SpeakPinyinBatch(items, jobs[part.front()].voice, &error);
                    for (size_t n = 0; n < part.size(); ++n) {
                        SpeechJob& job = jobs[part[n]];
                        job.result = std::move(pieces[n]);
                        if (job.result.samples.empty()) {
                            job.error = error;
                        } else if (job.tone > 0 && job.voice.toneReferenceHz > 0) {
                            job.result = BendTone(job.result, job.tone, job.voice.toneReferenceHz);
                            EvenLoudness(job.result);
                        }
                    }
                });
            }
        }
        RunParallel(work, options_.workers);

        for (size_t i = 0; i < jobs.size(); ++i) {
            if (targets[i].isEmpty()) continue;
            if (jobs[i].result.samples.empty())
                return failed((jobs[i].place.file.isEmpty() ? targets[i] : jobs[i].place.Text()) +
                              QStringLiteral(": ") + jobs[i].error);
            if (!write(targets[i], EncodeWav(jobs[i].result))) return false;
            ++report_.recordings;
        }
        for (const PlayRange& p : plays)
            if (!writePlay(*p.lesson, jobs, p.first)) return false;
        return true;
    }

    // The track of a play: its lines one after the other with a pause between speakers, and
    // the start and end of every line as they lie in the track.
    bool writePlay(const Lesson& l, const std::vector<SpeechJob>& jobs, size_t first) {
        Pcm track;
        QByteArray positions;
        AppendSilence(track, 500);
        for (size_t i = 0; i < l.playLines.size(); ++i) {
            const SpeechJob& j = jobs[first + i];
            const PlayLine& pl = l.playLines[i];
            if (j.result.samples.empty()) {
                report_.errors << pl.place.Text() +
                                      QStringLiteral(": the line gives no sound, so it would have "
                                                     "no timing in the track (%1)")
                                          .arg(j.error);
                return false;
            }
            const auto from =
                static_cast<int32_t>(track.samples.size() * 1000 / static_cast<size_t>(track.rate));
            track.samples.insert(track.samples.end(), j.result.samples.begin(),
                                 j.result.samples.end());
            const auto to = static_cast<int32_t>(
                (track.samples.size() * 1000 + static_cast<size_t>(track.rate) - 1) /
                static_cast<size_t>(track.rate));
            for (int32_t v : {from, to})
                for (int b = 0; b < 4; ++b)
                    positions.append(
                        static_cast<char>((static_cast<uint32_t>(v) >> (8 * b)) & 0xFF));
            AppendSilence(
                track,
                i + 1 < l.playLines.size() && l.playLines[i + 1].speaker == pl.speaker ? 350 : 700);
        }
        AppendSilence(track, 300);
        QString error;
        const QByteArray mp3 = EncodeMp3(track, &error);
        if (mp3.isEmpty()) return failed(QStringLiteral("lesson %1: %2").arg(l.number).arg(error));
        // The line positions must agree with the lines and lie inside the track as it decodes.
        const int length = DecodeSoundFile(mp3).Milliseconds();
        const int records = static_cast<int>(positions.size() / 8);
        const int32_t lastTo = ReadInt32(positions, records - 1, 4);
        if (records != static_cast<int>(l.playLines.size()) || lastTo > length)
            return failed(
                l.playPlace.Text() +
                QStringLiteral(
                    ": the track has %1 line timings ending at %2 ms for %3 lines in %4 ms")
                    .arg(records)
                    .arg(lastTo)
                    .arg(l.playLines.size())
                    .arg(length));
        if (!write(PlayTrackFile(kRelative, l.number), mp3)) return false;
        if (!write(PlayLinePositionsFile(kRelative, l.number), positions)) return false;
        ++report_.tracks;
        return true;
    }

    static int32_t ReadInt32(const QByteArray& b, int record, int offset) {
        if (record < 0) return 0;
        uint32_t v = 0;
        for (int i = 0; i < 4; ++i)
            v |= static_cast<uint32_t>(static_cast<uint8_t>(b[record * 8 + offset + i])) << (8 * i);
        return static_cast<int32_t>(v);
    }

    const Course& course_;
    Lexicon& lexicon_;
    const BuildOptions& options_;
    FileStore& files_;
    BuildReport& report_;
};

} // namespace

bool BuildCourse(const Course& course, Lexicon& lexicon, const BuildOptions& options,
                 FileStore& files, BuildReport& report) {
    return Builder(course, lexicon, options, files, report).Run();
}

void AddCourseReadings(Lexicon& lexicon, const Course& course) {
    for (const Lesson& l : course.lessons)
        for (const Word& w : l.words)
            lexicon.AddCourseReading(w.chinese, w.numeric);
}

std::vector<SpokenText> SpokenTexts(const Course& course) {
    std::vector<SpokenText> out;
    for (const Lesson& l : course.lessons)
        if (l.present && !l.IsPlay())
            for (int i = 0; i < l.textLines.size(); ++i)
                out.push_back({l.textLines[i], l.textPlaces[static_cast<size_t>(i)]});
    for (const Dialog& d : course.dialogs) {
        out.push_back({d.ask.chinese, d.ask.place});
        for (const DialogLine& r : d.replies)
            out.push_back({r.chinese, r.place});
    }
    for (const Lesson& l : course.lessons)
        if (l.present && l.IsPlay())
            for (const PlayLine& pl : l.playLines)
                out.push_back({pl.text, pl.place});
    return out;
}

} // namespace vt::coursepack
