// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"

#include <QString>

#include <functional>

class AppState;
class QMenu;
class QWidget;

/// The menu of one row of the group column.
namespace GroupRowMenu {

/// A menu that is deleted when it closes, and closes when the vault is locked.
///
/// @param move asks where the group is to be moved to.
[[nodiscard]] QMenu* make(AppState& state, const KdbxGroup& group, QWidget* parent, const std::function<void()>& move);

/// What unfolds a group, or folds it up again.
[[nodiscard]] QString expansionVerb(bool isExpanded);

}  // namespace GroupRowMenu
