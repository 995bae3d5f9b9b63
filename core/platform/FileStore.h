// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"
#include "core/primitives/Failure.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>

/// Why a file could not be read or written, in the platform's words.
class FileError final : public ReadableFailure {
public:
    /// `code` is the system's errno; `description` is for the user, in Turkish.
    FileError(int code, std::string description) : ReadableFailure(std::move(description)), m_code(code) {}

    [[nodiscard]] int code() const noexcept { return m_code; }

private:
    int m_code;
};

/// What the file system knows of a regular file. Two that are equal are most likely of the same content.
struct FileStatus {
    std::uint64_t size = 0;  // bytes
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t modified = 0;  // nanoseconds since 1970, as is the next
    std::int64_t changed = 0;

    friend bool operator==(const FileStatus&, const FileStatus&) = default;
};

/// The files of the user, as far as a vault needs them.
class FileStore {
public:
    /// Called when the new content is on the disk and has only to replace the old one. What it throws ends the writing,
    /// and the old content stays.
    using BeforeReplacing = std::function<void()>;

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
    virtual void writeAtomically(const std::filesystem::path& file, ByteView content,
                                 const BeforeReplacing& beforeReplacing) = 0;
    void writeAtomically(const std::filesystem::path& file, ByteView content) {
        writeAtomically(file, content, [] {});
    }

    /// Puts `content` beside `file`, where `file` is behind all links, as a new file of that name with the mode and
    /// owner of `file`. Its path; nothing where the name is taken, which never harms what has it.
    ///
    /// @throws FileError; nothing is left behind then.
    [[nodiscard]] virtual std::optional<std::filesystem::path> keepBeside(const std::filesystem::path& file,
                                                                          const std::filesystem::path& name,
                                                                          ByteView content) = 0;

    /// Whether anything exists at that path.
    [[nodiscard]] virtual bool exists(const std::filesystem::path& file) = 0;

    /// Of the regular file that a path leads to; nothing where there is none, or where it is out of reach.
    [[nodiscard]] virtual std::optional<FileStatus> status(const std::filesystem::path& file) = 0;
};
