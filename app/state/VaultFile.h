// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/FileStore.h"
#include "core/platform/Scheduler.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// The file of the open vault as this session left it, so that a save never loses what it did not write itself: what
/// another program has put there since, and what the format of today does not carry over.
///
/// A version is known by its content. Times and sizes are only a hint that there is nothing to read.
class VaultFile {
public:
    /// A version that a save has put beside the vault instead of losing it.
    struct Kept {
        enum class Reason : std::uint8_t { changedElsewhere, oldFormat };
        std::filesystem::path file;
        Reason reason;
    };
    enum class LosesByASave : bool { no, yes };
    enum class Change : std::uint8_t { none, changed, gone, undone };

    VaultFile(FileStore& files, Scheduler& clock) : m_files(files), m_clock(clock) {}

    /// A session begins with what it has read or written. A content that `loses` something by its first save is kept
    /// before that.
    void begin(ByteView content, LosesByASave loses);

    /// Writes the vault. What would be lost is on the disk under a name of its own before; where that fails, the file
    /// stays as it is.
    ///
    /// @throws FileError.
    void save(const std::filesystem::path& file, ByteView content);

    /// What saves have kept since the last call.
    [[nodiscard]] std::optional<Kept> takeKept();

    /// Whether another version is there than this session's, or again its own. Each change is reported once.
    [[nodiscard]] Change look(const std::filesystem::path& file);

private:
    void keepWhatWouldBeLost(const std::filesystem::path& file);
    void keep(const std::filesystem::path& file, ByteView content, const std::string& addition, Kept::Reason reason);
    [[nodiscard]] Change compare(const std::filesystem::path& file);
    [[nodiscard]] bool isOwn(const Bytes& hash) const;

    FileStore& m_files;
    Scheduler& m_clock;
    std::vector<Bytes> m_own;          // SHA-256 of each version that is this session's, or kept by it already
    std::optional<Bytes> m_oldFormat;  // of the one whose first save loses something
    std::optional<Kept> m_kept;
    std::optional<FileStatus> m_compared;  // of the version that was looked at last
    std::optional<Bytes> m_reported;       // the last change: its hash, empty where the file was gone
};
