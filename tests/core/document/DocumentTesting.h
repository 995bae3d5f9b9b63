// SPDX-License-Identifier: MIT
#pragma once

#include "core/document/KdbxXML.h"
#include "core/model/KdbxError.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

/// A stream that adds the number of the byte to each byte, so that a value out of its turn comes out wrong, and that
/// remembers the lengths it was asked for.
class CountingStream final : public InnerStreamCipher {
public:
    void processInPlace(std::span<std::uint8_t> data) override {
        lengths.push_back(data.size());
        for (auto& byte : data)
            byte ^= static_cast<std::uint8_t>(++m_position * 37);
    }

    std::vector<std::size_t> lengths;

private:
    std::size_t m_position = 0;
};

namespace DocumentTesting {

/// Values in the order in which a document holds them, masked by one `CountingStream`.
std::vector<std::string> masked(const std::vector<std::string>& values);

/// A document with these children of `Meta`, of the root group and of `Root` behind it.
struct Parts {
    std::string meta;
    std::string group;
    std::string root;
};
std::string document(const Parts& parts);
/// A document with one entry of these children.
std::string documentOfEntry(std::string_view entryChildren);

KdbxXML::Document parse(std::string_view xml, const std::vector<KdbxXML::Binary>& binaries = {});
KdbxEntry parseEntry(std::string_view entryChildren);
KdbxGroup parseGroup(std::string_view groupChildren);
KdbxMeta parseMeta(std::string_view metaChildren);

/// The message of the failure, or "none".
std::string failureOf(std::string_view xml);

KdbxDatabase database(KdbxMeta meta, KdbxGroup root, std::uint16_t major = 4);
/// What a new writer prints, unmasked: protected values are base64 of the plain text.
std::string written(const KdbxDatabase& database, const std::optional<Bytes>& headerHash = std::nullopt);
/// Reads and writes again without masks.
std::string rewritten(std::string_view xml);

/// The part of `text` from the first `begin` to the `end` behind it, both included.
std::string between(const std::string& text, std::string_view begin, std::string_view end);

std::string repeated(std::string_view text, int times);

}  // namespace DocumentTesting
