#pragma once
// The substitution tables of the enciphered script files. An enciphered record carries a key;
// the table of the file's family turns the key into a character code. Four tables serve five
// families: "RT" and "RQ" share `JIeMiText`, "RW" uses `JIeMiNewWords`, "SP" `JIeMiSpoken` and
// "VO" `JIeMiVocabulary`.
//
// A table is a pure function from a signed 16-bit key to a signed 16-bit code; a key that is
// not in the table gives 0. Lookups are one array index each and never allocate.
//
// Our own tables are seeded permutations of the key space (core/seeded_table.h), written into the
// program by the build: every code from 1 to 65535 (as unsigned code units) has exactly one key,
// and the one key left over gives 0. A deployment with other tables swaps the data, not the code:
// LoadSubstitutionTables replaces any table for which a table file is present.
//
// Table file format (<name>.tbl, e.g. "JIeMiText.tbl"): exactly 131072 bytes, 65536 signed 16-bit
// little-endian codes, the code of key -32768 first and of key 32767 last. A key whose code is
// 0 is a key that is not in the table. ToBytes writes this format.
//
// Not thread-safe: the program reads and replaces tables on its one UI thread.

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace vt {

class FileStore;

class SubstitutionTable {
public:
    static constexpr int kKeyCount = 65536;
    static constexpr qsizetype kFileSize = 2 * kKeyCount;

    // The code of a key; 0 for a key that is not in the table.
    int16_t Decode(int16_t key) const { return decode_[index(key)]; }
    // All codes, kKeyCount of them by key as unsigned 16-bit, for a reader of many keys.
    const int16_t* Codes() const { return decode_; }

    // A key that decodes to code: the lowest such key. Nothing when no key gives the code. The
    // reverse table is made at the first call: reading files never needs it, only writing them.
    std::optional<int16_t> Encode(int16_t code) const {
        if (encode_.empty()) buildEncoding();
        const int32_t key = encode_[index(code)];
        if (key == kNoKey) return std::nullopt;
        return static_cast<int16_t>(key);
    }

    // The built-in table number index, 0 to 3 in the order of SubstitutionTableNames. It reads
    // the program's own data in place; nothing is copied.
    static SubstitutionTable BuiltIn(int index);

    // A table from the bytes of a table file. Nothing, with a reason in *error, when the bytes
    // are not a table.
    static std::optional<SubstitutionTable> FromBytes(QByteArrayView bytes,
                                                      QString* error = nullptr);
    // The table file of this table.
    QByteArray ToBytes() const;

    bool operator==(const SubstitutionTable& other) const;

private:
    static constexpr int32_t kNoKey = INT32_MIN;
    explicit SubstitutionTable(const int16_t* codes) : decode_(codes) {}
    explicit SubstitutionTable(std::shared_ptr<const std::vector<int16_t>> codes)
        : decode_(codes->data()), owned_(std::move(codes)) {}
    static size_t index(int16_t v) { return static_cast<uint16_t>(v); }
    void buildEncoding() const;

    const int16_t* decode_; // kKeyCount codes by key as unsigned 16-bit
    // The codes of a table read from a file (decode_ points into them); none for a built-in
    // table. Never changed, so copies of a table share them.
    std::shared_ptr<const std::vector<int16_t>> owned_;
    mutable std::vector<int32_t> encode_; // by code as unsigned 16-bit; kNoKey when no key
                                          // gives it; empty until the first Encode
};

// The table of a family; nothing for a family other than "RT", "RQ", "RW", "SP" and "VO"
// (compared exactly). The pointer stays valid until tables are loaded or reset.
const SubstitutionTable* TableForFamily(const QString& family);

// The table names, in the order of the files: "JIeMiText", "JIeMiNewWords", "JIeMiSpoken",
// "JIeMiVocabulary".
QStringList SubstitutionTableNames();

// Replaces each table whose file <folder><name>.tbl exists (the folder of a deployment is
// SubstitutionTableFolder of core/data_paths.h) with the table in that file; the
// others stay as they are. A file that is not a table is left out, and its reason is returned
// (one text per bad file); an empty list means every present file was taken.
QStringList LoadSubstitutionTables(const FileStore& files, const QString& folder);

// Back to the built-in tables.
void ResetSubstitutionTables();

} // namespace vt
