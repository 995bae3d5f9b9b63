// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/FileStore.h"

#include <filesystem>
#include <string>
#include <string_view>

/// What the user reads when a file could not be read or saved.
namespace FileMessages {

/// The words for a reason that the system gave as errno, such as "diskte yer kalmadı".
[[nodiscard]] std::string reason(int code);

/// `“Kasam.kdbx” okunamadı: diskte okuma ya da yazma hatası oluştu.`
[[nodiscard]] FileError cannotRead(const std::filesystem::path& file, int code);
[[nodiscard]] FileError cannotRead(const std::filesystem::path& file, int code, std::string_view reason);

/// `“Kasam.kdbx” kaydedilemedi: diskte yer kalmadı.`
[[nodiscard]] FileError cannotWrite(const std::filesystem::path& file, int code);
[[nodiscard]] FileError cannotWrite(const std::filesystem::path& file, int code, std::string_view reason);

}  // namespace FileMessages
