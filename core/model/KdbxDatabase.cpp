// SPDX-License-Identifier: MIT
#include "core/model/KdbxDatabase.h"

namespace {

/// The groups of a walk that are still to be visited, the next one last.
using Waiting = std::vector<const KdbxGroup*>;

void addSubgroups(Waiting& waiting, const KdbxGroup& group) {
    for (auto i = group.groups.size(); i > 0; --i)
        waiting.push_back(&group.groups[i - 1]);
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

std::vector<KdbxEntry> KdbxGroup::allEntries() const {
    std::vector<KdbxEntry> all;
    Waiting waiting{this};
    while (!waiting.empty()) {
        const auto& group = *waiting.back();
        waiting.pop_back();
        all.insert(all.end(), group.entries.begin(), group.entries.end());
        addSubgroups(waiting, group);
    }
    return all;
}

bool operator==(const KdbxGroup& a, const KdbxGroup& b) {
    // Not by recursion: a tree may be deeper than the stack.
    std::vector<std::pair<const KdbxGroup*, const KdbxGroup*>> waiting{{&a, &b}};
    while (!waiting.empty()) {
        const auto [x, y] = waiting.back();
        waiting.pop_back();
        if (x->id != y->id || x->modified != y->modified || x->entries != y->entries ||
            x->groups.size() != y->groups.size())
            return false;
        if (x->groups.sharesStorageWith(y->groups))
            continue;
        for (std::size_t i = 0; i < x->groups.size(); ++i)
            if (!x->groups.sharesElementWith(y->groups, i))
                waiting.emplace_back(&x->groups[i], &y->groups[i]);
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
