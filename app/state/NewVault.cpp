// SPDX-License-Identifier: MIT
#include "app/state/NewVault.h"

namespace {

KdbxGroup newGroup(const std::string& name, Timestamp now) {
    KdbxGroup group;
    group.name = name;
    group.created = now;
    group.modified = now;
    return group;
}

}  // namespace

KdbxDatabase newVault(const std::string& name, Timestamp now) {
    KdbxMeta meta;
    meta.databaseName = name;
    auto root = newGroup(name, now);
    for (const auto* child : {"İnternet", "E-posta", "Bankacılık"})
        root.groups.append(newGroup(child, now));
    return {.meta = std::move(meta),
            .root = std::move(root),
            .cipher = KdbxCipher::aes256,
            .kdf = KdfSettings::recommended(),
            .compressed = true,
            .formatVersion = {.major = 4, .minor = 1}};
}
