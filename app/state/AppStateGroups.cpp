// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"
#include "app/state/FailureText.h"
#include "app/state/GroupTree.h"

void AppState::setGroupExpanded(UUID id, bool isExpanded) {
    if (!m_database)
        return;
    const Step step(*this);
    try {
        auto database = *m_database;
        GroupTree::mutateGroup(database.root, id, [&](KdbxGroup& group) { group.isExpanded = isExpanded; });
        assignDatabase(std::move(database));
    } catch (...) {
        setLastError(failureText());
    }
}
