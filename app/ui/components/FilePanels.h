// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <filesystem>
#include <optional>

class FileChooser;
class QWidget;

/// The panels in which the user chooses a file: the desktop's own where there are some, else ours. Each blocks until it
/// is answered; nothing when it is cancelled.
/// A panel opens where the user has chosen a file last, before that beside the vault in use, else among their
/// documents.
namespace FilePanels {

using File = std::optional<std::filesystem::path>;

/// The desktop's panels, which outlive their use here; null takes them away again.
void setDesktop(FileChooser* chooser);

[[nodiscard]] File chooseDatabase(QWidget* parent, const File& vault);
[[nodiscard]] File chooseKeyFile(QWidget* parent, const File& vault);
/// Where a new vault is to be.
struct Destination {
    std::filesystem::path file;
    bool replaces;  // there is a file, and the user has agreed to lose it
};
/// A name without the vaults' extension, in whatever case, gets it.
[[nodiscard]] std::optional<Destination> newDatabaseDestination(QWidget* parent, const File& vault);
/// The name is taken as it is.
[[nodiscard]] File saveAsDestination(QWidget* parent, const QString& suggested, const File& vault);

/// With ".kdbx" behind it unless it has that extension.
[[nodiscard]] std::filesystem::path withVaultExtension(std::filesystem::path file);

}  // namespace FilePanels
