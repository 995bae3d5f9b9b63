// SPDX-License-Identifier: MIT
#include "core/container/KdbxFile.h"

#include "core/container/KdbxFileSteps.h"

namespace KdbxFile {

KdbxDatabase load(ByteView file, const KdbxKey& key, const KdbxKeys::Transformation& transformation) {
    const auto header = KdbxHeader::parse(file);
    return header.isKdbx4() ? loadKdbx4(file, header, key, transformation)
                            : loadKdbx3(file, header, key, transformation);
}

Bytes save(const KdbxDatabase& database, const KdbxKey& key, const KdbxKeys::Transformation& transformation) {
    return saveBehind(freshHeader(database), database, key, transformation);
}

}  // namespace KdbxFile
