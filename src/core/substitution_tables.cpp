#include "core/substitution_tables.h"

#include "core/seeded_table.h"
#include "platform/files.h"

#include <algorithm>
#include <array>
#include <memory>

namespace vt {

// The built-in tables, written by the build (tools/tablegen) in the order of kBuiltInTableSeeds.
extern const int16_t kBuiltInTableCodes[4][SubstitutionTable::kKeyCount];

namespace {

struct TableSlot {
    const char16_t* name;
    std::unique_ptr<SubstitutionTable> table; // the built-in one at first use, or loaded
};

std::array<TableSlot, 4>& slots() {
    static std::array<TableSlot, 4> s{{
        {kBuiltInTableSeeds[0].name, nullptr},
        {kBuiltInTableSeeds[1].name, nullptr},
        {kBuiltInTableSeeds[2].name, nullptr},
        {kBuiltInTableSeeds[3].name, nullptr},
    }};
    return s;
}

int slotOfFamily(const QString& family) {
    if (family == u"RT" || family == u"RQ") return 0;
    if (family == u"RW") return 1;
    if (family == u"SP") return 2;
    if (family == u"VO") return 3;
    return -1;
}

} // namespace

void SubstitutionTable::buildEncoding() const {
    encode_.assign(kKeyCount, kNoKey);
    // Lowest key first: walk the keys from -32768 upward and keep the first key of each code.
    for (int key = -32768; key <= 32767; ++key) {
        const auto k = static_cast<int16_t>(key);
        int32_t& slot = encode_[index(decode_[index(k)])];
        if (slot == kNoKey) slot = key;
    }
}

SubstitutionTable SubstitutionTable::BuiltIn(int index) {
    return SubstitutionTable(kBuiltInTableCodes[index]);
}

bool SubstitutionTable::operator==(const SubstitutionTable& other) const {
    return std::equal(decode_, decode_ + kKeyCount, other.decode_);
}

std::optional<SubstitutionTable> SubstitutionTable::FromBytes(QByteArrayView bytes,
                                                              QString* error) {
    if (bytes.size() != kFileSize) {
        if (error)
            *error =
                QStringLiteral("a table has %1 bytes, not %2").arg(bytes.size()).arg(kFileSize);
        return std::nullopt;
    }
    auto codes = std::make_shared<std::vector<int16_t>>(kKeyCount);
    const auto* p = reinterpret_cast<const uint8_t*>(bytes.data());
    for (int i = 0; i < kKeyCount; ++i) {
        // File order is by key from -32768, i.e. by unsigned index shifted by half the range.
        const auto key = static_cast<int16_t>(i - 32768);
        const auto code = static_cast<uint16_t>(p[2 * i] | (p[2 * i + 1] << 8));
        (*codes)[index(key)] = static_cast<int16_t>(code);
    }
    return SubstitutionTable(std::move(codes));
}

QByteArray SubstitutionTable::ToBytes() const {
    QByteArray out(kFileSize, '\0');
    for (int i = 0; i < kKeyCount; ++i)
        WriteInt16LE(out, 2 * i, Decode(static_cast<int16_t>(i - 32768)));
    return out;
}

const SubstitutionTable* TableForFamily(const QString& family) {
    const int i = slotOfFamily(family);
    if (i < 0) return nullptr;
    TableSlot& slot = slots()[static_cast<size_t>(i)];
    if (!slot.table)
        slot.table = std::make_unique<SubstitutionTable>(SubstitutionTable::BuiltIn(i));
    return slot.table.get();
}

QStringList SubstitutionTableNames() {
    QStringList names;
    for (const TableSlot& slot : slots())
        names << QString::fromUtf16(slot.name);
    return names;
}

QStringList LoadSubstitutionTables(const FileStore& files, const QString& folder) {
    QStringList problems;
    for (TableSlot& slot : slots()) {
        const QString path = folder + QString::fromUtf16(slot.name) + QStringLiteral(".tbl");
        if (!files.Exists(path)) continue;
        const std::optional<QByteArray> bytes = files.ReadAll(path);
        if (!bytes) {
            problems << QStringLiteral("%1: the file cannot be read").arg(path);
            continue;
        }
        QString why;
        std::optional<SubstitutionTable> table = SubstitutionTable::FromBytes(*bytes, &why);
        if (!table) {
            problems << QStringLiteral("%1: %2").arg(path, why);
            continue;
        }
        slot.table = std::make_unique<SubstitutionTable>(std::move(*table));
    }
    return problems;
}

void ResetSubstitutionTables() {
    for (TableSlot& slot : slots())
        slot.table.reset();
}

} // namespace vt
