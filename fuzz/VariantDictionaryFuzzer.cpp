// SPDX-License-Identifier: MIT
// A dictionary that parses is written as one that parses to the same.
#include "core/container/VariantDictionary.h"
#include "core/model/KdbxError.h"
#include "fuzz/Require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    VariantDictionary dictionary;
    try {
        dictionary = VariantDictionary::parse({data, size});
    } catch (const KdbxError&) {
        return 0;
    }
    require(VariantDictionary::parse(dictionary.serialize()) == dictionary);
    for (const auto& key : dictionary.keys()) {
        const auto* value = dictionary[key];
        require(value != nullptr);
        require(!value->asUInt32() || value->asUInt32() == value->asUInt64());
    }
    const auto keys = dictionary.keys();
    for (const auto& key : keys)
        dictionary.set(key, std::nullopt);
    require(dictionary == VariantDictionary());
    return 0;
}
