// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/FileStore.h"
#include "platform/posix/FileHandle.h"

#include <filesystem>
#include <optional>
#include <string>

/// One save of one file: a temporary file beside the target, written, synced, made like the target and renamed over it,
/// and the folder synced. A process that is killed between any two of these leaves the old file or the new one.
///
/// Of two saves at one moment each sees what the other has written: from the last look at the target to its replacement
/// a save holds a lock on the folder, where the file system has such locks.
class FileReplacement {
public:
    /// Finds the target, through symbolic links, and makes sure that it may be replaced.
    ///
    /// @throws FileError.
    FileReplacement(FileSystemCalls& calls, std::filesystem::path file);

    /// @throws FileError; the temporary file is gone then. The old content is there, unless the folder alone could not
    /// be synced: then the new one is there, and whether it would outlive a loss of power is unknown.
    void write(ByteView content, const FileStore::BeforeReplacing& beforeReplacing);

    /// Puts `content` into a new file in the target's folder, made like the target. Its path; nothing where the name is
    /// taken.
    [[nodiscard]] std::optional<std::filesystem::path> keepBeside(const std::filesystem::path& name, ByteView content);

private:
    class TemporaryFile;
    class FolderLock;

    [[noreturn]] void fail(int code) const;
    void check(int result) const;
    [[nodiscard]] std::filesystem::path followLinks() const;
    void lookAtTarget();
    void writeAll(int file, ByteView content) const;
    void sync(int file) const;
    void makeLikeTarget(int file) const;
    [[nodiscard]] mode_t giveOwner(int file) const;
    [[nodiscard]] mode_t giveAttributes(int file, mode_t mode) const;

    FileSystemCalls& m_calls;
    std::filesystem::path m_file;    // as the user chose it
    std::filesystem::path m_target;  // behind all links
    std::string m_name;              // the target's, in its folder
    FileHandle m_folder;
    std::optional<struct stat> m_targetStatus;  // none when there is no file yet
};
