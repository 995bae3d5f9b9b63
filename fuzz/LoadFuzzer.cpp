// SPDX-License-Identifier: MIT
// Whatever file is opened, only typed failures come out; what loads can be saved, and what is saved loads to the same.
// An input is a vault file, or else a payload that is sealed into one here, since no mutation finds its way through a
// cipher. It goes through the fuzzers' gate: no hash stops it, and no key costs anything.
#include "core/container/KdbxFile.h"
#include "core/document/KdbxXMLWriter.h"
#include "core/model/KdbxError.h"
#include "core/primitives/AESCipher.h"
#include "core/primitives/Argon2.h"
#include "core/primitives/Gzip.h"
#include "fuzz/Growth.h"
#include "fuzz/Require.h"
#include "tests/core/container/VaultBuilder.h"

namespace {

const KdbxKey key{"parola", std::nullopt};

std::optional<KdbxDatabase> loaded(ByteView file) {
    try {
        return KdbxFile::load(file, key);
    } catch (const KdbxError&) {
    } catch (const AESCipher::Error&) {
    } catch (const Argon2::Error&) {
    } catch (const Gzip::Error&) {
    }
    return std::nullopt;
}

Bytes documentOf(KdbxDatabase database) {
    removeGrowth(database.root);
    NullStreamCipher stream;
    KdbxXML::Writer writer(stream, 4);
    writer.writeDocument(database, std::nullopt);
    return writer.takeOut();
}

/// A save that cannot fail, since a load has just taken the same settings.
KdbxDatabase savedAndLoaded(const KdbxDatabase& database) {
    return KdbxFile::load(KdbxFile::save(database, key), key);
}

void checkRounds(const KdbxDatabase& database) {
    const auto once = savedAndLoaded(database);
    require(once.cipher == database.cipher && once.compressed == database.compressed);
    require(once.formatVersion.major == 4);
    const auto twice = savedAndLoaded(once);
    require(documentOf(twice) == documentOf(once));
    require(KdbxXML::preservedBinaries(twice.root) == KdbxXML::preservedBinaries(database.root));
}

/// A vault around a payload, of the kind that the payload's first byte tells.
Bytes sealed(ByteView input) {
    const std::uint8_t kind = input.empty() ? 0 : input[0];
    const auto content = input.empty() ? input : input.subspan(1);
    auto builder = kind & 1 ? VaultBuilder::kdbx3() : VaultBuilder::kdbx4();
    builder.setCipher(kind & 2 ? KdbxCipher::chacha20 : KdbxCipher::aes256).setCompressed((kind & 4) != 0);
    if (kind & 8)
        builder.compressed = copyOf(content);
    else if (kind & 16)
        builder.document = textOf(content);
    else
        builder.payload = copyOf(content);
    return builder.build();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ByteView input(data, size);
    const bool isFile = size >= 4 && data[0] == 0x03 && data[1] == 0xD9 && data[2] == 0xA2 && data[3] == 0x9A;
    const auto database = isFile ? loaded(input) : loaded(sealed(input));
    if (database)
        checkRounds(*database);
    return 0;
}
