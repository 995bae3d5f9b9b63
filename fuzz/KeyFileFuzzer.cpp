// SPDX-License-Identifier: MIT
// Any file is a key file, but for an XML one whose key is unusable; the same file gives the same key.
#include "core/container/KdbxKeys.h"
#include "core/model/KdbxError.h"
#include "fuzz/Require.h"

#include <variant>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ByteView file(data, size);
    try {
        const auto result = KdbxKeys::keyFileKey(file);
        require(!result.key.empty());
        require(result.kind == KdbxKeys::KeyFileKind::xmlV2 || result.key.size() == 32);
        require(KdbxKeys::keyFileKey(file) == result);
    } catch (const KdbxError& error) {
        require(std::holds_alternative<KdbxError::CorruptedData>(error.failure()));
    }
    if (const auto decoded = KdbxKeys::hexDecode(textOf(file)))
        require(decoded->size() == size / 2);
    return 0;
}
