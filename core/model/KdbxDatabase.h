// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/SecureString.h"
#include "core/model/SharedArray.h"
#include "core/model/Timestamp.h"
#include "core/model/UUID.h"
#include "core/text/Text.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

/// What a document says of itself.
struct KdbxMeta {
    static constexpr std::int64_t defaultHistoryMaxItems = 10;
    static constexpr std::int64_t defaultHistoryMaxSize = std::int64_t{6} * 1024 * 1024;

    std::string databaseName = "Brenvik Database";
    std::string databaseDescription{};
    std::string defaultUsername{};
    bool recycleBinEnabled = true;
    std::optional<UUID> recycleBinUUID{};
    std::int64_t historyMaxItems = defaultHistoryMaxItems;  // items kept for one entry
    std::int64_t historyMaxSize = defaultHistoryMaxSize;    // bytes; carried along, nothing trims by it
    std::string generator = "Brenvik";

    /// All eight fields, texts by canonical equivalence.
    friend bool operator==(const KdbxMeta& a, const KdbxMeta& b);
};

/// A window title pattern and the sequence to type there; without one, the entry's.
struct AutoTypeWindowAssociation {
    std::string window{};
    std::optional<std::string> sequence{};
};

/// One record of the vault.
struct KdbxEntry {
    static constexpr std::int64_t defaultIconID = 0;  // of the format's icons the key

    UUID id = UUID::random();
    std::string title{};
    std::string username{};
    SecureString password{};
    std::string url{};
    std::string notes{};
    Text::Map<std::string> customFields{};  // name to value, in the order of the names
    Text::Set protectedCustomFields{};      // names that are written protected; may name fields that are not there
    std::vector<std::string> tags{};
    std::optional<std::string> autoTypeSequence{};  // none inherits
    bool autoTypeEnabled = true;
    std::vector<AutoTypeWindowAssociation> autoTypeWindowAssociations{};
    std::int64_t iconID = defaultIconID;
    Timestamp created = Timestamp::now();
    Timestamp modified = created;
    Timestamp accessed = created;
    bool expires = false;
    std::optional<Timestamp> expiryTime{};
    SharedArray<KdbxEntry> historyItems{};  // earlier versions, in stored order
    std::vector<std::string> unknownXML{};  // foreign child elements, each as one XML text

    /// Whether it expires, and did so strictly before `now`.
    [[nodiscard]] bool isExpired(Timestamp now = Timestamp::now()) const;

    /// Whether all is the same in both that a form lets the user type or choose, texts byte by byte.
    [[nodiscard]] bool hasSameContent(const KdbxEntry& other) const;

    /// Shallow on purpose: `id` and `modified` alone. State code depends on it.
    friend bool operator==(const KdbxEntry& a, const KdbxEntry& b) { return a.id == b.id && a.modified == b.modified; }
};

/// One node of the tree.
struct KdbxGroup {
    static constexpr std::int64_t defaultIconID = 48;  // of the format's icons the folder

    UUID id = UUID::random();
    std::string name{};
    std::string notes{};
    std::int64_t iconID = defaultIconID;
    SharedArray<KdbxGroup> groups{};   // in document order
    SharedArray<KdbxEntry> entries{};  // in document order, which is the manual sort order
    bool isExpanded = true;
    std::optional<std::string> defaultAutoTypeSequence{};
    Timestamp created = Timestamp::now();
    Timestamp modified = created;
    std::vector<std::string> unknownXML{};  // foreign child elements; on the root also the preserved wrappers

    /// Own entries, then those of each subgroup, in stored order, as copies. No history items.
    [[nodiscard]] std::vector<KdbxEntry> allEntries() const;

    /// Shallow on purpose: `id`, `modified`, `entries` and `groups`, tested in that order.
    friend bool operator==(const KdbxGroup& a, const KdbxGroup& b);
};

/// The cipher around the payload.
enum class KdbxCipher : std::uint8_t { aes256, chacha20 };

inline constexpr std::array<KdbxCipher, 2> allKdbxCiphers{KdbxCipher::aes256, KdbxCipher::chacha20};

/// "AES-256-CBC" or "ChaCha20".
[[nodiscard]] std::string_view textValue(KdbxCipher cipher) noexcept;

/// The cipher of a text value, which must match to the letter.
[[nodiscard]] std::optional<KdbxCipher> kdbxCipher(std::string_view textValue);

/// How the key is derived.
struct KdfSettings {
    enum class Variant : std::uint8_t { argon2d, argon2id };
    struct Argon2 {
        Variant variant;
        std::uint64_t memoryKiB;
        std::uint64_t iterations;
        std::uint32_t parallelism;
        bool operator==(const Argon2&) const = default;
    };
    struct AesKdf {
        std::uint64_t rounds;
        bool operator==(const AesKdf&) const = default;
    };
    using Case = std::variant<Argon2, AesKdf>;

    Case settings;

    /// Argon2id over 256 MiB, 16 passes, 4 lanes.
    [[nodiscard]] static KdfSettings recommended();

    friend bool operator==(const KdfSettings&, const KdfSettings&) = default;
};

/// The version of a vault file.
struct KdbxFormatVersion {
    std::uint16_t major;
    std::uint16_t minor;
    bool operator==(const KdbxFormatVersion&) const = default;
};

/// The whole decoded vault. A copy is independent and cheap: what does not change stays shared.
struct KdbxDatabase {
    KdbxMeta meta;
    KdbxGroup root;
    KdbxCipher cipher;
    KdfSettings kdf;
    bool compressed;
    KdbxFormatVersion formatVersion;
};

/// The user's credentials for one load or save.
struct KdbxKey {
    std::optional<std::string> password;
    std::optional<Bytes> keyFileData;  // the file's whole content, not interpreted

    KdbxKey() = default;
    KdbxKey(std::optional<std::string> password, std::optional<Bytes> keyFileData);
    KdbxKey(const KdbxKey&) = default;
    /// Wipes the former password.
    KdbxKey& operator=(const KdbxKey& other);
    /// Wipes the password.
    ~KdbxKey();
};
