// SPDX-License-Identifier: MIT
#pragma once

#include "core/container/KdbxHeader.h"
#include "core/container/KdbxInnerHeader.h"
#include "core/model/KdbxDatabase.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Makes vault files with whatever a test wants to be wrong in them, while every hash and HMAC around it is right: what
/// a reader meets is the one fault that was put in. Keys cost next to nothing.
class VaultBuilder {
public:
    using FieldID = KdbxHeader::FieldID;

    /// A small vault of KDBX 4 (ChaCha20 inner stream) or KDBX 3 (Salsa20), under AES, compressed.
    [[nodiscard]] static VaultBuilder kdbx4();
    [[nodiscard]] static VaultBuilder kdbx3();

    /// The header's field, in the place of the one that was there, or behind the others.
    VaultBuilder& set(FieldID id, ByteView value);
    VaultBuilder& remove(FieldID id);
    /// A field behind the others, whatever is there already.
    VaultBuilder& add(std::uint8_t tag, ByteView value);
    /// A key derivation parameter of KDBX 4; none removes it.
    VaultBuilder& setParameter(std::string_view name, std::optional<VariantValue> value);
    VaultBuilder& setKdf(const KdfSettings& settings);
    VaultBuilder& setCipher(KdbxCipher cipher);
    VaultBuilder& setCompressed(bool compressed);

    [[nodiscard]] Bytes header() const;
    [[nodiscard]] Bytes build() const;

    KdbxFormatVersion version{.major = 4, .minor = 1};
    KdbxKey key{"parola", std::nullopt};
    std::string document;
    KdbxInnerHeader innerHeader;
    std::size_t blockSize = 1024;

    // Each stands in the place of what would be made of the things before it, in this order.
    std::optional<Bytes> payload;     // what is compressed
    std::optional<Bytes> compressed;  // what is put into blocks (KDBX 3) or enciphered (KDBX 4)
    std::optional<Bytes> blocks;      // KDBX 3: what follows the start bytes
    std::optional<Bytes> plaintext;   // KDBX 3: what is enciphered
    std::optional<Bytes> ciphertext;  // what the file holds; in KDBX 4 inside the HMAC blocks

private:
    [[nodiscard]] ByteView field(FieldID id) const;
    [[nodiscard]] Bytes compressedPayload() const;
    [[nodiscard]] Bytes enciphered(ByteView plain, ByteView masterKey) const;
    [[nodiscard]] Bytes behindHeaderKdbx4(ByteView header) const;
    [[nodiscard]] Bytes behindHeaderKdbx3(ByteView header) const;

    std::vector<std::pair<std::uint8_t, Bytes>> m_fields;  // without the end
};

/// A document whose root group holds one entry with a password, unprotected in the text.
[[nodiscard]] std::string smallDocument();

/// A document with `content` in its root group.
[[nodiscard]] std::string documentWith(const std::string& content);
