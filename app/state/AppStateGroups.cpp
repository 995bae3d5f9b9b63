// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"
#include "app/state/GroupTree.h"
#include "app/state/VaultChanges.h"

void AppState::addGroup(KdbxGroup group, UUID parentID) {
    const Step step(m_signals);
    const auto id = group.id;
    const auto now = m_services.scheduler.now();
    bool isRefused = m_database.has_value();
    edit("Grup Ekle", [&](KdbxDatabase& database) {
        VaultChanges::addGroup(database, std::move(group), parentID, now);
        isRefused = false;
    });
    if (!isRefused)
        setSelectedGroupID(id);
}

void AppState::updateGroup(const KdbxGroup& group) {
    const auto now = m_services.scheduler.now();
    edit("Grubu Düzenle", [&](KdbxDatabase& database) { VaultChanges::replaceGroup(database, group, now); });
}

void AppState::deleteGroup(UUID id) {
    if (!m_database || id == m_database->root.id)
        return;
    const Step step(m_signals);
    edit("Grubu Sil", [&](KdbxDatabase& database) { GroupTree::removeGroup(database.root, id); });
    setSelectedGroupID(m_database->root.id);
    pruneSelection();
}

void AppState::setGroupExpanded(UUID id, bool isExpanded) {
    amend([&](KdbxDatabase& database) {
        GroupTree::mutateGroup(database.root, id, [&](KdbxGroup& group) { group.isExpanded = isExpanded; });
    });
}
