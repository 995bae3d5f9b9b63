// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"

/// The changes that a form makes of a vault, for the step of the user who confirms it and for the copy that keeps what
/// was typed. Each returns whether it found its target; if not, nothing has changed.
namespace VaultChanges {

/// Appends the entry to the group.
bool addEntry(KdbxDatabase& database, KdbxEntry entry, UUID groupID, Timestamp now);

/// Replaces the entry with that identifier, and appends what it replaces to its history, which keeps the last
/// `historyMaxItems`, one at the least. The history of the given entry is ignored.
bool replaceEntry(KdbxDatabase& database, KdbxEntry entry, Timestamp now);

/// Appends the group to the parent, which opens.
bool addGroup(KdbxDatabase& database, KdbxGroup group, UUID parentID, Timestamp now);

/// Takes over what a form has of a group: name, notes, icon and sequence.
bool replaceGroup(KdbxDatabase& database, const KdbxGroup& group, Timestamp now);

}  // namespace VaultChanges
