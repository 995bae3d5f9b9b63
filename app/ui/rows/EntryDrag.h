// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"

#include <QPixmap>
#include <QString>

#include <set>
#include <vector>

/// What is dragged when entries are: their identifiers as plain text, one a line.
namespace EntryDrag {

[[nodiscard]] QString textOf(const std::vector<UUID>& ids);

/// The identifiers among the lines of a text, which may come from anywhere; what is none is left out.
[[nodiscard]] std::set<UUID> idsIn(const QString& text);

/// What hangs at the pointer: the entry that was taken, and how many go with it. `ratio` is the screen's.
[[nodiscard]] QPixmap picture(const QString& title, std::int64_t iconID, std::size_t count, double ratio);

}  // namespace EntryDrag
