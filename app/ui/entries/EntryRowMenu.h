// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"

#include <functional>
#include <set>

class AppState;
class QMenu;
class QWidget;

/// The menu of one row of the entry list.
namespace EntryRowMenu {

/// What duplicates and deletes, and what is dragged: the whole selection where the entry is part of it, else the entry
/// alone.
[[nodiscard]] std::set<UUID> targetIDs(const AppState& state, const UUID& entryID);

/// A menu that is deleted when it closes, and closes when the vault is locked.
///
/// @param move asks where entries are to be moved to.
[[nodiscard]] QMenu* make(AppState& state, const KdbxEntry& entry, QWidget* parent,
                          const std::function<void(const std::set<UUID>&)>& move);

}  // namespace EntryRowMenu
