// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QList>
#include <QString>

#include <cstdint>

/// The drawing and the tint of an entry's or group's icon number.
namespace EntryIcon {

/// The symbol's name; "key.fill" for every number that has none of its own.
[[nodiscard]] QString symbol(std::int64_t iconID);

/// What the drawing shows, in a word or two.
[[nodiscard]] QString name(std::int64_t iconID);

[[nodiscard]] QColor tint(std::int64_t iconID);

/// The numbers to choose from: 0, then those with a symbol of their own, ascending.
[[nodiscard]] QList<std::int64_t> choices();

}  // namespace EntryIcon
