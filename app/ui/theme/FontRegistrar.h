// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The product's typefaces, registered for this process alone.
namespace FontRegistrar {

/// Registers every font of `Fonts` in the resource folder. Called once, at the start. Without them the program runs on
/// the system's font, and says so on the console.
void registerBundledFonts(const QString& resourceFolder);

/// Whether both families are there.
[[nodiscard]] bool isAvailable();

/// Where the installed program, or the one in its build folder, has its resources.
[[nodiscard]] QString resourceFolder();

}  // namespace FontRegistrar
