// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"
#include "app/state/GroupTree.h"

void AppState::addGroup(KdbxGroup group, UUID parentID) {
    const Step step(*this);
    const auto id = group.id;
    const auto now = m_services.scheduler.now();
    edit("Grup Ekle", [&](KdbxDatabase& database) {
        GroupTree::mutateGroup(database.root, parentID, [&](KdbxGroup& parent) {
            parent.groups.append(std::move(group));
            parent.isExpanded = true;
            parent.modified = now;
        });
    });
    setSelectedGroupID(id);
}

void AppState::updateGroup(const KdbxGroup& group) {
    const auto now = m_services.scheduler.now();
    edit("Grubu Düzenle", [&](KdbxDatabase& database) {
        GroupTree::mutateGroup(database.root, group.id, [&](KdbxGroup& stored) {
            stored.name = group.name;
            stored.notes = group.notes;
            stored.iconID = group.iconID;
            stored.defaultAutoTypeSequence = group.defaultAutoTypeSequence;
            stored.modified = now;
        });
    });
}

void AppState::deleteGroup(UUID id) {
    if (!m_database || id == m_database->root.id)
        return;
    const Step step(*this);
    edit("Grubu Sil", [&](KdbxDatabase& database) { GroupTree::removeGroup(database.root, id); });
    setSelectedGroupID(m_database->root.id);
    pruneSelection();
}

void AppState::setGroupExpanded(UUID id, bool isExpanded) {
    amend([&](KdbxDatabase& database) {
        GroupTree::mutateGroup(database.root, id, [&](KdbxGroup& group) { group.isExpanded = isExpanded; });
    });
}
