#include "tasks/typing_logic.h"

#include "core/pinyin.h"

#include <QSet>

namespace vt {

QString NewCharactersOfLesson(const AppState& app) {
    QString all;
    for (int row = 1; row <= app.LessonWordRows && row <= app.LessonWords.Count(); ++row)
        all += StripPunctuation(app.LessonWords[row].Chinese);

    // Each character once, where it first appears.
    QString unique;
    QSet<QChar> seen;
    for (QChar c : all)
        if (!seen.contains(c)) {
            seen.insert(c);
            unique += c;
        }
    if (app.OpenLesson == 1) return unique;

    // The word table holds the lessons' words in lesson order, so its rows up to the first one of
    // the open lesson (or a later one) are the words of the earlier lessons.
    QSet<QChar> earlier;
    for (int w = 1; w <= app.WordCount && w <= app.WordTable.Count() && w <= app.WordOrigin.Count();
         ++w) {
        if (app.WordOrigin[w].Number >= app.OpenLesson) break;
        for (QChar c : app.WordTable[w].Chinese)
            earlier.insert(c);
    }
    QString fresh;
    for (QChar c : unique)
        if (!earlier.contains(c)) fresh += c;
    return fresh;
}

QString SyllableOfWord(const QString& pinyin, int place, int wordLength) {
    QString gathered;
    int number = 0;
    for (QChar c : pinyin) {
        gathered += c;
        if (c < u'0' || c > u'9') continue;
        ++number;
        if (number > wordLength) break;
        if (number == place) return Trim(gathered);
        gathered.clear();
    }
    return {};
}

Array1<TargetChar> BuildDrill(const AppState& app) {
    const QString characters = NewCharactersOfLesson(app);
    Array1<TargetChar> drill;
    drill.Reserve(static_cast<int>(characters.size()));
    for (QChar c : characters) {
        TargetChar target{QString(c), {}};
        for (int row = 1; row <= app.LessonWordRows && row <= app.LessonWords.Count(); ++row) {
            const QString word = StripPunctuation(app.LessonWords[row].Chinese);
            const auto at = word.indexOf(c);
            if (at < 0) continue;
            target.Pinyin = SyllableOfWord(app.LessonWords[row].Pinyin, static_cast<int>(at) + 1,
                                           static_cast<int>(word.size()));
            break;
        }
        drill.Append(std::move(target));
    }
    return drill;
}

QString TargetSoundSyllable(const QString& pinyin) {
    const QString p = StripPunctuation(pinyin);
    if (p.isEmpty()) return {};
    const QChar tone = p.back();
    return p.chopped(1) + (tone == u'0' ? QChar(u'1') : tone);
}

int16_t RateOf(int correct, int wrong) {
    const int answered = correct + wrong;
    if (answered <= 0) return 0;
    // Hundredths of the fraction, exactly, rounded half to even.
    const int scaled = 100 * correct;
    int whole = scaled / answered;
    const int rest = scaled % answered;
    if (2 * rest > answered || (2 * rest == answered && whole % 2 != 0)) ++whole;
    return static_cast<int16_t>(whole);
}

bool DrillProgress::Next() {
    ++TargetIndex;
    if (TargetIndex > TargetCount) TargetIndex = 1;
    ++PassProgress;
    return PassProgress > TargetCount;
}

void DrillProgress::StartNewPass() {
    PassProgress = 1;
    CorrectCount = 0;
    WrongCount = 0;
    CorrectnessRate = 0;
}

void DrillProgress::Record(bool right) {
    if (right)
        ++CorrectCount;
    else
        ++WrongCount;
    CorrectnessRate = RateOf(CorrectCount, WrongCount);
}

QString DrillProgress::ScoreLine() const {
    return QStringLiteral("Correct: %1 , Wrong: %2 , Correctness Rate: %3 %")
        .arg(CorrectCount)
        .arg(WrongCount)
        .arg(CorrectnessRate);
}

QString DrillProgress::ProgressLine() const {
    return QStringLiteral("%1 / %2").arg(PassProgress).arg(TargetCount);
}

namespace {

// A reading spelt in something other than up to eight letters a..z: it is compared as text.
constexpr uint64_t kOddKey = ~uint64_t{0};

// Letters a..z, one to a byte from the lowest, the rest zero; kOddKey for anything else.
uint64_t packLetters(QStringView letters) {
    if (letters.size() > 8) return kOddKey;
    uint64_t key = 0;
    for (qsizetype i = 0; i < letters.size(); ++i) {
        const char16_t c = letters[i].unicode();
        if (c < u'a' || c > u'z') return kOddKey;
        key |= uint64_t(c) << (8 * i);
    }
    return key;
}

} // namespace

InputMethod::InputMethod(const Array1<CharEntry>& table) : table_(table) {
    entryStart_.reserve(size_t(table.Count()) + 1);
    entryStart_.push_back(0);
    for (const CharEntry& entry : table) {
        for (const CharReading& reading : entry.Readings) {
            keys_.push_back(packLetters(reading.Plain));
        }
        entryStart_.push_back(static_cast<int>(keys_.size()));
    }
}

bool InputMethod::TypeLetter(QChar letter) {
    if (typed_.size() >= kMaxLetters || letter < u'a' || letter > u'z') return false;
    typed_ += letter;
    return true;
}

bool InputMethod::Backspace() {
    if (typed_.isEmpty()) return false;
    typed_.chop(1);
    return true;
}

void InputMethod::Clear() {
    typed_.clear();
    candidates_.clear();
    page_ = 0;
}

void InputMethod::Search() {
    candidates_.clear();
    longer_.clear();
    page_ = 1;
    if (!typed_.isEmpty()) {
        const uint64_t wanted = packLetters(typed_);
        const uint64_t mask = ~uint64_t{0} >> (64 - 8 * typed_.size());
        const QString blankTyped = u' ' + typed_;
        const int entries = static_cast<int>(entryStart_.size()) - 1;
        for (int e = 1; e <= entries; ++e) {
            const int first = entryStart_[size_t(e - 1)];
            const int end = entryStart_[size_t(e)];
            int exact = 0, prefix = 0;
            for (int k = first; k < end && (exact == 0 || prefix == 0); ++k) {
                const uint64_t key = keys_[size_t(k)];
                if (key == wanted) {
                    if (exact == 0) exact = k - first + 1;
                } else if (key != kOddKey) {
                    if (prefix == 0 && (key & mask) == wanted) prefix = k - first + 1;
                } else if (prefix == 0) {
                    // A spelling the keys cannot hold never equals five letters or fewer; it
                    // fits when the letters start one of its blank-separated parts.
                    const QString& plain = table_[e].Readings[k - first + 1].Plain;
                    if (plain != typed_ && (u' ' + plain).contains(blankTyped))
                        prefix = k - first + 1;
                }
            }
            if (exact) candidates_.push_back({e, exact});
            if (prefix) longer_.push_back({e, prefix});
        }
    }
    candidates_.insert(candidates_.end(), longer_.begin(), longer_.end());
}

bool InputMethod::NextPage() {
    if (page_ >= CandidatePages()) return false;
    ++page_;
    return true;
}

bool InputMethod::PreviousPage() {
    if (page_ <= 1) return false;
    --page_;
    return true;
}

const Candidate* InputMethod::PageItem(int k) const {
    if (k < 1 || k > kPageSize || candidates_.empty()) return nullptr;
    const int index = (page_ - 1) * kPageSize + k;
    return index <= CandidateCount() ? &candidates_[size_t(index - 1)] : nullptr;
}

QString InputMethod::PageLine() const {
    if (candidates_.empty()) return {};
    QString line;
    for (int k = 1; k <= kPageSize; ++k) {
        const Candidate* c = PageItem(k);
        if (!c) break;
        line += u' ' + QString::number(k) + u' ' + EntryOf(*c).Character + u' ';
    }
    if (CandidatePages() > 1) line += QStringLiteral(" +/-");
    return line;
}

QString InputMethod::Prompt(const QString& target) const {
    if (candidates_.empty()) return kNoSuchPinyin;
    if (EntryOf(*PageItem(1)).Character == target) return kPressSpace;
    return CandidatePages() > 1 ? kPressPageOrNumber : kPressNumber;
}

} // namespace vt
