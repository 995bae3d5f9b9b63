// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

/// The question before a file is replaced by another.
namespace ReplaceQuestion {

/// Whether the user lets the file of that name be replaced. `title` is that of the panel which asks.
[[nodiscard]] bool isAllowed(QWidget* parent, const QString& title, const QString& fileName);

}  // namespace ReplaceQuestion
