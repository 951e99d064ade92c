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

ScriptText DecodeScript(QByteArrayView bytes, const SubstitutionTable* table, int16_t stopLine,
                        Random& random) {
    ScriptText out;
    const qsizetype records = bytes.size() / kRecordSize;
    if (records < 1) return out;
    const auto* p = reinterpret_cast<const uint8_t*>(bytes.data());
    if (const qsizetype bad = firstOverflow(p, records)) {
        out.corrupted = true;
        out.badRecord = bad;
        return out;
    }

    const int lastLine = stopLine >= 1 ? int{stopLine} : kMostLines;
    // The one buffer that grows; each stored line is an exact-size copy of it. A plain array of
    // code units, so that adding a character is a store and not a string operation.
    std::u16string line;
    line.reserve(static_cast<size_t>(std::min<qsizetype>(records, 256)));
    const auto store = [&out, &line] {
        out.lines.Append(QString(reinterpret_cast<const QChar*>(line.data()),
                                 static_cast<qsizetype>(line.size())));
        line.clear();
    };
    int16_t code = 0; // kept across records: a family without a table repeats it
    const uint8_t* const end = p + records * kRecordSize;
    for (; p != end; p += kRecordSize) {
        const auto sum = static_cast<int16_t>(field(p + 2) + field(p + 4));
        if (field(p) >= 0)
            code = sum;
        else if (table)
            code = table->Decode(sum);

        if (code == 0) {
            random.Randomize();
            const auto blanks = static_cast<qsizetype>(Int(random.Rnd() * 100));
            line.append(static_cast<size_t>(blanks), u' ');
        } else if (code == kLineFeed) {
            store();
            if (out.lines.Count() >= lastLine) break;
        } else if (code != kCarriageReturn) {
            line.push_back(static_cast<char16_t>(static_cast<uint16_t>(code)));
        }
    }
    // A last line without a line feed is kept; a closing line feed adds no empty line. After a
    // stop the buffer has just been stored and is empty.
    if (!line.empty()) store();
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
