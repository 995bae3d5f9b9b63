// SPDX-License-Identifier: MIT
#include "core/container/KdbxFile.h"

#include "core/container/KdbxFileSteps.h"

namespace KdbxFile {

KdbxDatabase load(ByteView file, const KdbxKey& key) {
    const auto header = KdbxHeader::parse(file);
    return header.isKdbx4() ? loadKdbx4(file, header, key) : loadKdbx3(file, header, key);
}

Bytes save(const KdbxDatabase& database, const KdbxKey& key) {
    return saveBehind(freshHeader(database), database, key);
}

}  // namespace KdbxFile
