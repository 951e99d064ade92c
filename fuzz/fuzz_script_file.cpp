// Script file decoder against arbitrary bytes. The first byte picks the family (the five and one
// without a table), the second the stop line (-128..127); the rest is the file. Beside the
// sanitizers it checks what the reader promises: a corrupted file has no lines; no line holds a
// line feed or a carriage return; the stop line and the line cap hold; and lines that were read
// come back the same after writing them again, enciphered, with the same family.
#include "core/script_file.h"
#include "platform/random.h"

#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <cstddef>
#include <cstdint>

namespace {

void check(bool ok) {
    if (!ok) __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 2) return 0;
    static const QString families[] = {
        QStringLiteral("RT"), QStringLiteral("RW"), QStringLiteral("RQ"),
        QStringLiteral("SP"), QStringLiteral("VO"), QStringLiteral("ZZ"),
    };
    const QString& family = families[data[0] % 6];
    const auto stopLine = static_cast<int16_t>(static_cast<int8_t>(data[1]));
    const QByteArrayView bytes(reinterpret_cast<const char*>(data + 2),
                               static_cast<qsizetype>(size - 2));

    vt::SeededRandom random(data[0]);
    const vt::ScriptText text = vt::DecodeScript(bytes, family, stopLine, random);
    if (text.corrupted) {
        check(text.lines.Empty());
        check(text.badRecord >= 1 && text.badRecord <= bytes.size() / 6);
        return 0;
    }
    check(text.lines.Count() <= 32767);
    if (stopLine >= 1) check(text.lines.Count() <= stopLine);

    QStringList lines;
    for (const QString& line : text.lines) {
        check(!line.contains(QChar(10)) && !line.contains(QChar(13)) && !line.contains(QChar(0)));
        lines << line;
    }
    const QByteArray again = vt::EncodeScriptLines(lines, family, size);
    const vt::ScriptText back = vt::DecodeScript(again, family, 0, random);
    check(!back.corrupted && back.lines.Count() == text.lines.Count());
    for (int i = 1; i <= back.lines.Count(); ++i)
        check(back.lines[i] == text.lines[i]);
    return 0;
}
