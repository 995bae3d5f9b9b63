// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

/// The stops of the Tab key within a part of a window.
namespace TabStops {

/// Chains the controls of a widget in the order in which its layouts show them, whenever each was made.
void orderAsRead(QWidget& root);

/// The first stop within a widget; null where there is none.
[[nodiscard]] QWidget* first(const QWidget& root);

/// Moves the focus to the next or the former stop within a widget, and round from the last to the first.
/// Whether there was one.
bool move(const QWidget& root, bool isForward);

}  // namespace TabStops
