// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <filesystem>
#include <optional>

class QWidget;

/// The panels in which the user chooses a file. Each blocks until it is answered; nothing when it is cancelled.
namespace FilePanels {

[[nodiscard]] std::optional<std::filesystem::path> chooseDatabase(QWidget* parent);
[[nodiscard]] std::optional<std::filesystem::path> chooseKeyFile(QWidget* parent);
/// A name without the vaults' extension, in whatever case, gets it.
[[nodiscard]] std::optional<std::filesystem::path> newDatabaseDestination(QWidget* parent);
[[nodiscard]] std::optional<std::filesystem::path> saveAsDestination(QWidget* parent, const QString& suggested);

/// With ".kdbx" behind it unless it has that extension.
[[nodiscard]] std::filesystem::path withVaultExtension(std::filesystem::path file);

}  // namespace FilePanels
