#include "core/script_file.h"

#include "core/runtime.h"
#include "core/substitution_tables.h"

#include <algorithm>
#include <optional>
#include <string>

namespace vt {

namespace {

constexpr qsizetype kRecordSize = 6;
constexpr int kMostLines = 32767; // the most a signed 16-bit line count can hold
constexpr int16_t kLineFeed = 10;
constexpr int16_t kCarriageReturn = 13;

inline int16_t field(const uint8_t* p) {
    return static_cast<int16_t>(static_cast<uint16_t>(p[0] | (p[1] << 8)));
}

inline void putField(char* p, int16_t value) {
    const auto u = static_cast<uint16_t>(value);
    p[0] = static_cast<char>(u & 0xFF);
    p[1] = static_cast<char>(u >> 8);
}

// The first record (from 1) whose PartA + PartB leaves the signed 16-bit range; 0 for none.
// Checked before any line is made, so a corrupted file never leaves half its lines behind.
qsizetype firstOverflow(const uint8_t* p, qsizetype records) {
    for (qsizetype r = 0; r < records; ++r, p += kRecordSize) {
        const int sum = int{field(p + 2)} + int{field(p + 4)};
        if (sum < -32768 || sum > 32767) return r + 1;
    }
    return 0;
}

void showCorrupted(Runtime& rt, const QString& path) {
    rt.MsgBox(QStringLiteral("The file ") + path + QStringLiteral(" is corrupted!"),
              Mb::Exclamation, QStringLiteral("Warning"));
}

} // namespace

namespace {

// The records of a script file decoded into out, as DecodeScriptInto tells. codeOf turns a
// record's Flag and sum into its code; it is chosen once per file, so the loop over the records
// has nothing to decide but what the code does.
template <class CodeOf>
void decodeRecords(const uint8_t* const first, const qsizetype records, const int lastLine,
                   Random& random, ScriptBuffer& out, CodeOf codeOf) {
    const uint8_t* p = first;
    const uint8_t* const end = first + records * kRecordSize;
    const auto corrupted = [&](qsizetype bad) {
        out.Clear();
        out.corrupted = true;
        out.badRecord = bad;
    };
    // The rest of the file from p on is checked at once before anything is drawn from random or
    // before the reading stops early: a corrupted file leaves no trace at all.
    bool restChecked = false;
    const auto checkRest = [&]() -> bool {
        if (restChecked) return true;
        restChecked = true;
        const qsizetype at = (p - first) / kRecordSize;
        if (const qsizetype bad = firstOverflow(p, records - at)) {
            corrupted(at + bad);
            return false;
        }
        return true;
    };

    // Room: before each record, w + the records left + 2 fit in the text, since a record gives
    // at most one unit. A line end (three units) and a run of blanks make room for themselves;
    // the last line's closing blank and free unit take the 2. Line ends are about one record in
    // ten, so a quarter more than the records is mostly enough from the start.
    qsizetype capacity = records + records / 4 + 8;
    if (out.text.HasCuts() || out.text.Capacity() < capacity) out.text = SharedText(capacity);
    capacity = out.text.Capacity();
    char16_t* buf = out.text.Data();
    qsizetype w = 0;
    const auto grow = [&](qsizetype needed) {
        SharedText bigger(std::max(needed, capacity + capacity / 2));
        std::copy_n(buf, w, bigger.Data());
        out.text = std::move(bigger);
        capacity = out.text.Capacity();
        buf = out.text.Data();
    };

    buf[w++] = u' '; // the blank before the first line
    for (; p != end; p += kRecordSize) {
        int16_t sum;
        if (__builtin_add_overflow(field(p + 2), field(p + 4), &sum)) {
            corrupted((p - first) / kRecordSize + 1);
            return;
        }
        const auto code = static_cast<uint16_t>(codeOf(field(p), sum));
        if (code > kCarriageReturn) [[likely]] {
            buf[w++] = code;
            continue;
        }
        const qsizetype left = (end - p) / kRecordSize - 1; // records after this one
        if (code == kLineFeed) {
            if (w + ScriptBuffer::kLineGap + left + 2 > capacity)
                grow(w + ScriptBuffer::kLineGap + left + 2);
            buf[w] = u' ';
            buf[w + 1] = u'\0';
            buf[w + 2] = u' ';
            out.lineEnds.push_back(w);
            w += ScriptBuffer::kLineGap;
            if (out.LineCount() >= lastLine) {
                p += kRecordSize;
                if (!checkRest()) return;
                break;
            }
        } else if (code == 0) {
            if (!checkRest()) return;
            random.Randomize();
            const auto blanks = static_cast<qsizetype>(Int(random.Rnd() * 100));
            if (w + blanks + left + 2 > capacity) grow(w + blanks + left + 2);
            std::fill_n(buf + w, blanks, u' ');
            w += blanks;
        } else if (code != kCarriageReturn) {
            buf[w++] = code;
        }
    }
    // A last line without a line feed is kept; a closing line feed adds no empty line. After a
    // stop the last line has just ended.
    const qsizetype lastBegin =
        out.lineEnds.empty() ? 1 : out.lineEnds.back() + ScriptBuffer::kLineGap;
    if (w > lastBegin) {
        buf[w] = u' ';
        out.lineEnds.push_back(w);
    }
}

} // namespace

void DecodeScriptInto(QByteArrayView bytes, const SubstitutionTable* table, int16_t stopLine,
                      Random& random, ScriptBuffer& out) {
    out.Clear();
    const qsizetype records = bytes.size() / kRecordSize;
    if (records < 1) return;
    const auto* first = reinterpret_cast<const uint8_t*>(bytes.data());
    const int lastLine = stopLine >= 1 ? int{stopLine} : kMostLines;
    if (table) {
        const int16_t* const codes = table->Codes();
        decodeRecords(first, records, lastLine, random, out, [codes](int16_t flag, int16_t sum) {
            const int16_t fromTable = codes[static_cast<uint16_t>(sum)];
            return flag >= 0 ? sum : fromTable;
        });
    } else {
        // A family without a table: each enciphered record repeats the code before it.
        int16_t last = 0;
        decodeRecords(first, records, lastLine, random, out, [&last](int16_t flag, int16_t sum) {
            if (flag >= 0) last = sum;
            return last;
        });
    }
}

ScriptText DecodeScript(QByteArrayView bytes, const SubstitutionTable* table, int16_t stopLine,
                        Random& random) {
    ScriptBuffer buffer;
    DecodeScriptInto(bytes, table, stopLine, random, buffer);
    ScriptText out;
    out.corrupted = buffer.corrupted;
    out.badRecord = buffer.badRecord;
    out.lines.Reserve(buffer.LineCount());
    for (int i = 1; i <= buffer.LineCount(); ++i)
        out.lines.Append(buffer.LineText(i));
    return out;
}

ScriptText DecodeScript(QByteArrayView bytes, const QString& family, int16_t stopLine,
                        Random& random) {
    return DecodeScript(bytes, TableForFamily(family), stopLine, random);
}

Array1<QString> ReadScriptLines(Runtime& rt, const QString& path, const QString& family,
                                int16_t stopLine) {
    const std::optional<QByteArray> bytes = rt.files.ReadAll(path);
    if (!bytes) {
        showCorrupted(rt, path);
        return {};
    }
    ScriptText text = DecodeScript(*bytes, family, stopLine, rt.random);
    if (text.corrupted) {
        showCorrupted(rt, path);
        return {};
    }
    return std::move(text.lines);
}

ScriptRead ReadScriptInto(Runtime& rt, const QString& path, const SubstitutionTable* table,
                          int16_t stopLine, ScriptBuffer& out) {
    out.Clear();
    if (!rt.files.ReadAllInto(path, out.bytes)) {
        // Only now is it worth asking whether the file is there at all.
        if (!rt.files.Exists(path)) return ScriptRead::Missing;
        showCorrupted(rt, path);
        return ScriptRead::Unreadable;
    }
    DecodeScriptInto(out.bytes, table, stopLine, rt.random, out);
    if (out.corrupted) {
        showCorrupted(rt, path);
        return ScriptRead::Unreadable;
    }
    return ScriptRead::Read;
}

void ReadScriptFile(Runtime& rt, const QString& path, const QString& family, int16_t stopLine) {
    // Emptied before anything can fail: a failed read never leaves the last file's lines.
    rt.app.ScriptLines.Erase();
    rt.app.ScriptLineCount = 0;
    rt.app.ScriptLines = ReadScriptLines(rt, path, family, stopLine);
    rt.app.ScriptLineCount = static_cast<int16_t>(rt.app.ScriptLines.Count());
}

QByteArray EncodeScriptLines(const QStringList& lines, const QString& family, quint64 seed,
                             bool encipher) {
    const SubstitutionTable* table = encipher ? TableForFamily(family) : nullptr;
    SeededRandom random(seed);
    const auto pick = [&random](int count) { return static_cast<int>(Int(random.Rnd() * count)); };

    qsizetype units = 0;
    for (const QString& l : lines)
        units += l.size() + 1;
    QByteArray out(units * kRecordSize, Qt::Uninitialized);
    char* p = out.data();

    const auto put = [&](int16_t code) {
        int16_t value = code;
        int16_t flag = static_cast<int16_t>(pick(32768)); // 0..32767: plain
        if (table) {
            if (const std::optional<int16_t> key = table->Encode(code)) {
                value = *key;
                flag = static_cast<int16_t>(-1 - pick(32768)); // -1..-32768: enciphered
            }
        }
        // PartA + PartB = value, both inside the signed 16-bit range.
        const int low = value >= 0 ? value - 32767 : -32768;
        const int high = value >= 0 ? 32767 : value + 32767;
        const int partA = low + pick(high - low + 1);
        putField(p, flag);
        putField(p + 2, static_cast<int16_t>(partA));
        putField(p + 4, static_cast<int16_t>(value - partA));
        p += kRecordSize;
    };
    for (const QString& l : lines) {
        for (const QChar c : l)
            put(static_cast<int16_t>(c.unicode()));
        put(kLineFeed);
    }
    return out;
}

bool WriteScriptFile(FileStore& files, const QString& path, const QStringList& lines,
                     const QString& family, quint64 seed) {
    return files.WriteAll(path, EncodeScriptLines(lines, family, seed));
}

} // namespace vt
