#include "core/substitution_tables.h"

#include "platform/files.h"

#include <array>
#include <memory>

namespace vt {

namespace {

// splitmix64: a small generator whose output is fixed by its definition, so a seed gives the
// same table with every compiler and standard library (the standard distributions do not).
class SplitMix64 {
public:
    explicit SplitMix64(uint64_t seed) : state_(seed) {}
    uint64_t Next() {
        uint64_t z = (state_ += 0x9E3779B97F4A7C15ULL);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }
    // A value in 0..bound-1 (bound at most 2^32), from the high 32 bits of the next value.
    uint32_t Below(uint32_t bound) { return static_cast<uint32_t>(((Next() >> 32) * bound) >> 32); }

private:
    uint64_t state_;
};

struct TableSlot {
    const char16_t* name;
    uint64_t seed;
    std::unique_ptr<SubstitutionTable> table; // built at first use, or loaded
};

std::array<TableSlot, 4>& slots() {
    static std::array<TableSlot, 4> s{{
        {u"JIeMiText", 0x5D1A7E3C0B9F2468ULL, nullptr},
        {u"JIeMiNewWords", 0x0F3E2D1C4B5A6978ULL, nullptr},
        {u"JIeMiSpoken", 0x7A6B5C4D3E2F1029ULL, nullptr},
        {u"JIeMiVocabulary", 0x13579BDF2468ACE0ULL, nullptr},
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

SubstitutionTable::SubstitutionTable() : decode_(kKeyCount, 0) {}

void SubstitutionTable::buildEncoding() const {
    encode_.assign(kKeyCount, kNoKey);
    // Lowest key first: walk the keys from -32768 upward and keep the first key of each code.
    for (int key = -32768; key <= 32767; ++key) {
        const auto k = static_cast<int16_t>(key);
        int32_t& slot = encode_[index(decode_[index(k)])];
        if (slot == kNoKey) slot = key;
    }
}

SubstitutionTable SubstitutionTable::Seeded(uint64_t seed) {
    // Shuffle the whole key space (Fisher-Yates); the code units 1..65535 take the first 65535
    // keys in turn, and the last key is left out of the table.
    std::vector<uint16_t> keys(kKeyCount);
    for (int i = 0; i < kKeyCount; ++i)
        keys[static_cast<size_t>(i)] = static_cast<uint16_t>(i);
    SplitMix64 rng(seed);
    for (uint32_t i = kKeyCount - 1; i > 0; --i)
        std::swap(keys[i], keys[rng.Below(i + 1)]);

    SubstitutionTable t;
    for (int code = 1; code < kKeyCount; ++code)
        t.decode_[keys[static_cast<size_t>(code - 1)]] =
            static_cast<int16_t>(static_cast<uint16_t>(code));
    return t;
}

std::optional<SubstitutionTable> SubstitutionTable::FromBytes(QByteArrayView bytes,
                                                              QString* error) {
    if (bytes.size() != kFileSize) {
        if (error)
            *error =
                QStringLiteral("a table has %1 bytes, not %2").arg(bytes.size()).arg(kFileSize);
        return std::nullopt;
    }
    SubstitutionTable t;
    const auto* p = reinterpret_cast<const uint8_t*>(bytes.data());
    for (int i = 0; i < kKeyCount; ++i) {
        // File order is by key from -32768, i.e. by unsigned index shifted by half the range.
        const auto key = static_cast<int16_t>(i - 32768);
        const auto code = static_cast<uint16_t>(p[2 * i] | (p[2 * i + 1] << 8));
        t.decode_[index(key)] = static_cast<int16_t>(code);
    }
    return t;
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
        slot.table = std::make_unique<SubstitutionTable>(SubstitutionTable::Seeded(slot.seed));
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
