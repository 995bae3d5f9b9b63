// SPDX-License-Identifier: MIT
// A header that parses is written as one that parses to the same.
#include "core/container/KdbxHeader.h"
#include "core/model/KdbxError.h"
#include "fuzz/Require.h"

namespace {

/// What a header tells of its cipher and key derivation, or the refusal, in one text.
std::string settingsOf(const KdbxHeader& header) {
    try {
        const auto settings = header.kdfSettings();
        return std::string(textValue(header.cipher())) + std::to_string(settings.settings.index());
    } catch (const KdbxError& error) {
        return error.errorDescription();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ByteView file(data, size);
    KdbxHeader header;
    try {
        header = KdbxHeader::parse(file);
    } catch (const KdbxError&) {
        return 0;
    }
    require(header.endOffset == std::ssize(header.rawData) && header.rawData.size() <= size);
    const auto written = header.serialize();
    const auto again = KdbxHeader::parse(written);
    require(again.serialize() == written);
    require(again.endOffset == std::ssize(written));
    require(again.masterSeed == header.masterSeed && again.encryptionIV == header.encryptionIV);
    require(settingsOf(again) == settingsOf(header));
    return 0;
}
