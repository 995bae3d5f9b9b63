// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <exception>
#include <filesystem>
#include <string>
#include <utility>

/// Why a file could not be read or written, in the platform's words.
class FileError final : public std::exception {
public:
    /// `code` is the system's errno; `description` is for the user, in Turkish.
    FileError(int code, std::string description) : m_code(code), m_description(std::move(description)) {}

    [[nodiscard]] int code() const noexcept { return m_code; }
    [[nodiscard]] const std::string& errorDescription() const noexcept { return m_description; }
    [[nodiscard]] const char* what() const noexcept override { return m_description.c_str(); }

private:
    int m_code;
    std::string m_description;
};

/// The files of the user, as far as a vault needs them.
class FileStore {
public:
    virtual ~FileStore() = default;

    /// The whole content of a regular file.
    ///
    /// @throws FileError.
    [[nodiscard]] virtual Bytes read(const std::filesystem::path& file) = 0;

    /// Replaces the content of `file`, or makes it. Whatever happens on the way, the killed process and the full disk
    /// included, the old content or the new one is there, whole. A symbolic link is followed to its target, whose
    /// mode, owner and extended attributes stay.
    ///
    /// @throws FileError; the old content is there then, and nothing else is left behind. The one exception: where
    /// the folder could not be synced the new content is there, and a loss of power may bring the old one back.
    virtual void writeAtomically(const std::filesystem::path& file, ByteView content) = 0;

    /// Whether something stands at that path.
    [[nodiscard]] virtual bool exists(const std::filesystem::path& file) = 0;
};
