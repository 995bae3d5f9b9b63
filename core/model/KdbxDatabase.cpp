// SPDX-License-Identifier: MIT
#include "core/model/KdbxDatabase.h"

#include "core/model/GroupWalk.h"

#include <tuple>

namespace {

bool differApartFromSubgroups(const KdbxGroup& a, const KdbxGroup& b) {
    return a.id != b.id || a.modified != b.modified || a.entries != b.entries;
}

void wipeAndReset(std::optional<std::string>& secret) noexcept {
    if (secret)
        wipe(*secret);
    secret.reset();
}

}  // namespace

bool operator==(const KdbxMeta& a, const KdbxMeta& b) {
    return Text::equal(a.databaseName, b.databaseName) && Text::equal(a.databaseDescription, b.databaseDescription) &&
           Text::equal(a.defaultUsername, b.defaultUsername) && a.recycleBinEnabled == b.recycleBinEnabled &&
           a.recycleBinUUID == b.recycleBinUUID && a.historyMaxItems == b.historyMaxItems &&
           a.historyMaxSize == b.historyMaxSize && Text::equal(a.generator, b.generator);
}

bool KdbxEntry::isExpired(Timestamp now) const {
    return expires && expiryTime && *expiryTime < now;
}

bool KdbxEntry::hasSameContent(const KdbxEntry& other) const {
    const auto content = [](const KdbxEntry& entry) {
        return std::tie(entry.title, entry.username, entry.password, entry.url, entry.notes, entry.iconID, entry.tags,
                        entry.expires, entry.expiryTime, entry.autoTypeEnabled, entry.autoTypeSequence,
                        entry.customFields, entry.protectedCustomFields);
    };
    return content(*this) == content(other);
}

std::vector<KdbxEntry> KdbxGroup::allEntries() const {
    std::vector<KdbxEntry> all;
    for (const auto& group : GroupWalk(*this))
        all.insert(all.end(), group.entries.begin(), group.entries.end());
    return all;
}

// Both walks stay abreast, since the groups that they come to have equally many subgroups. What is shared is equal.
bool operator==(const KdbxGroup& a, const KdbxGroup& b) {
    GroupWalk x(a);
    GroupWalk y(b);
    for (; !x.isAtEnd(); x.advance(), y.advance()) {
        const bool isShared = &x.group() == &y.group();
        if (!isShared &&
            (differApartFromSubgroups(x.group(), y.group()) || x.group().groups.size() != y.group().groups.size()))
            return false;
        if (isShared || x.group().groups.sharesStorageWith(y.group().groups)) {
            x.skipSubgroups();
            y.skipSubgroups();
        }
    }
    return true;
}

std::string_view textValue(KdbxCipher cipher) noexcept {
    return cipher == KdbxCipher::aes256 ? "AES-256-CBC" : "ChaCha20";
}

std::optional<KdbxCipher> kdbxCipher(std::string_view text) {
    for (const auto cipher : allKdbxCiphers)
        if (Text::equal(text, textValue(cipher)))
            return cipher;
    return std::nullopt;
}

KdfSettings KdfSettings::recommended() {
    return {Argon2{.variant = Variant::argon2id, .memoryKiB = 262'144, .iterations = 16, .parallelism = 4}};
}

KdbxKey::KdbxKey(std::optional<std::string> password, std::optional<Bytes> keyFileData)
    : password(std::move(password)), keyFileData(std::move(keyFileData)) {
    // A short text is moved by being copied, and stays where it was.
    wipeAndReset(password);
}

KdbxKey& KdbxKey::operator=(const KdbxKey& other) {
    if (this == &other)
        return *this;
    wipeAndReset(password);
    password = other.password;
    keyFileData = other.keyFileData;
    return *this;
}

KdbxKey::~KdbxKey() {
    wipeAndReset(password);
}
