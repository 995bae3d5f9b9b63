// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/FileStore.h"
#include "platform/posix/FileSystemCalls.h"

#include <cstdint>

/// The machine's own files.
class PosixFileStore final : public FileStore {
public:
    /// `largestFile`, in bytes, is what `read` still holds in memory.
    explicit PosixFileStore(FileSystemCalls& calls, std::uint64_t largestFile = halfOfMemory())
        : m_calls(calls), m_largestFile(largestFile) {}

    /// Only regular files are read. A file that is being written is read again, and refused when it does not rest.
    [[nodiscard]] Bytes read(const std::filesystem::path& file) override;

    /// As `FileReplacement` does. A target that is write-protected, a folder or no regular file is refused.
    void writeAtomically(const std::filesystem::path& file, ByteView content,
                         const BeforeReplacing& beforeReplacing) override;
    using FileStore::writeAtomically;

    /// A temporary file first, as when saving, so that no half of a copy ever has the name.
    [[nodiscard]] std::optional<std::filesystem::path> keepBeside(const std::filesystem::path& file,
                                                                  const std::filesystem::path& name,
                                                                  ByteView content) override;

    [[nodiscard]] bool exists(const std::filesystem::path& file) override;

    [[nodiscard]] std::optional<FileStatus> status(const std::filesystem::path& file) override;

    /// Half of the machine's memory, in bytes.
    [[nodiscard]] static std::uint64_t halfOfMemory() noexcept;

private:
    FileSystemCalls& m_calls;
    std::uint64_t m_largestFile;
};
