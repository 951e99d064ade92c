#pragma once
// A file store whose writes can be made to fail, as on a full disk.

#include "platform/files.h"

namespace vt::test {

class FaultyFileStore final : public FileStore {
public:
    bool failWrites = false;
    int writesAttempted = 0;
    bool WriteAll(const QString& path, const QByteArray& bytes) override {
        ++writesAttempted;
        if (failWrites) return false;
        return FileStore::WriteAll(path, bytes);
    }
};

} // namespace vt::test
