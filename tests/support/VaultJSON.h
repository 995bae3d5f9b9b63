// SPDX-License-Identifier: MIT
#pragma once

#include "core/container/KdbxHeader.h"
#include "core/model/KdbxDatabase.h"

#include <nlohmann/json.hpp>

/// A vault as JSON with every field of the model, for the probe's answers and for tests that compare whole vaults.
/// Objects keep the model's own order. Bytes are lower-case hexadecimal text, identifiers canonical text, an absent
/// optional is null, a tagged union an object with its case and its payload by name.
namespace VaultJSON {

using Json = nlohmann::ordered_json;

[[nodiscard]] Json of(const KdbxDatabase& database);
[[nodiscard]] Json of(const KdbxMeta& meta);
[[nodiscard]] Json of(const KdbxGroup& group);
[[nodiscard]] Json of(const KdbxEntry& entry);
[[nodiscard]] Json of(const AutoTypeWindowAssociation& association);
[[nodiscard]] Json of(const KdfSettings& settings);
[[nodiscard]] Json of(const KdbxHeader& header);
[[nodiscard]] Json of(const VariantValue& value);
/// An array of [key, value] pairs in the dictionary's order.
[[nodiscard]] Json of(const VariantDictionary& dictionary);

}  // namespace VaultJSON
