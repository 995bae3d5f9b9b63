// SPDX-License-Identifier: MIT
#include "core/container/KdbxCrypto.h"
#include "core/container/KdbxFile.h"
#include "core/container/KdbxKeys.h"
#include "core/document/KdbxXML.h"
#include "tests/probe/Probe.h"
#include "tests/support/Hex.h"
#include "tests/support/VaultJSON.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace Probe {
namespace {

Bytes contentOf(const std::string& path) {
    // A folder opens as a file does, and tells a size that no memory holds.
    require(std::filesystem::is_regular_file(path), "file: cannot be read");
    std::ifstream file(path, std::ios::binary);
    require(file.is_open(), "file: cannot be read");
    return {std::istreambuf_iterator<char>(file), {}};
}

KdbxKey keyOf(const Json& request) {
    const auto keyFile = textOrNull(request, "keyFile");
    return {textOrNull(request, "password"), keyFile ? std::optional(contentOf(*keyFile)) : std::nullopt};
}

KdbxDatabase loaded(const Json& request) {
    const auto key = keyOf(request);
    return KdbxFile::load(contentOf(text(request, "file")), key);
}

Json load(const Json& request) {
    return VaultJSON::of(loaded(request));
}

Json save(const Json& request) {
    const auto path = text(request, "to");
    const auto file = KdbxFile::save(loaded(request), keyOf(request));
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(file.data()), static_cast<std::streamsize>(file.size()));
    out.close();
    require(out.good(), "to: cannot be written");
    return {{"bytes", file.size()}};
}

Json header(const Json& request) {
    return VaultJSON::of(KdbxHeader::parse(contentOf(text(request, "file"))));
}

const char* nameOf(KdbxKeys::KeyFileKind kind) {
    constexpr std::array names{"xmlV1", "xmlV2", "rawBinary32", "hex64", "hashed"};
    return names.at(static_cast<std::size_t>(kind));
}

Json keyFile(const Json& request) {
    const auto result = KdbxKeys::keyFileKey(bytes(request, "data"));
    return {{"key", toHex(result.key)}, {"kind", nameOf(result.kind)}};
}

/// Reads a document with the stream of a vault and writes it again without one. A header hash goes with it, as it
/// does for whoever writes a document of that version.
Json document(const Json& request) {
    const auto data = bytes(request, "data");
    const auto streamKey = bytes(request, "streamKey");
    const KdbxFormatVersion version{.major = number16(request, "major"), .minor = 0};
    const auto id = KdbxCrypto::innerStreamID(number32(request, "streamID"));
    require(id.has_value(), "streamID: unknown");

    const auto stream = KdbxCrypto::makeInnerStream(*id, streamKey);
    auto parsed = KdbxXML::parse(data, *stream, version, {});
    const KdbxDatabase database{.meta = std::move(parsed.meta),
                                .root = std::move(parsed.root),
                                .cipher = KdbxCipher::aes256,
                                .kdf = KdfSettings::recommended(),
                                .compressed = false,
                                .formatVersion = version};
    NullStreamCipher nullStream;
    const auto xml = KdbxXML::serialize(database, nullStream, parsed.headerHash);
    return {{"xml", textOf(xml)}, {"headerHash", parsed.headerHash ? Json(toHex(*parsed.headerHash)) : Json(nullptr)}};
}

}  // namespace

void addVault(Operations& operations) {
    operations["load"] = load;
    operations["save"] = save;
    operations["header"] = header;
    operations["keyFile"] = keyFile;
    operations["document"] = document;
}

}  // namespace Probe
