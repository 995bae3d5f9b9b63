// SPDX-License-Identifier: MIT
#include "platform/posix/FileReplacement.h"

#include "platform/posix/FileAttributes.h"
#include "platform/posix/FileMessages.h"
#include "platform/posix/SaveLeftovers.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <climits>
#include <thread>

namespace {

using namespace std::chrono_literals;

constexpr int linksFollowed = 40;  // as the kernel does
constexpr int namesTried = 8;
constexpr auto lockPatience = 2s;
constexpr auto lockPause = 5ms;
constexpr mode_t ownerAlone = 0600;
constexpr mode_t anyoneWrites = 0222;
constexpr mode_t allModeBits = 07777;
constexpr mode_t withoutGroup = 0707;

std::filesystem::path folderOf(const std::filesystem::path& file) {
    const auto folder = file.parent_path();
    return folder.empty() ? "." : folder;
}

bool isUnsupported(int code) {
    return code == EINVAL || code == ENOTSUP || code == ENOSYS;
}

}  // namespace

/// Made under a lock, so that no other save takes it for a leftover; removed unless it was renamed.
class FileReplacement::TemporaryFile {
public:
    TemporaryFile(const FileReplacement& replacement)
        : m_replacement(replacement), m_name(SaveLeftovers::temporaryName(replacement.m_name)), m_file(create()) {}
    ~TemporaryFile() {
        if (m_file.isOpen() && !m_isRenamed)
            m_replacement.m_calls.unlinkAt(m_replacement.m_folder.number(), m_name.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    [[nodiscard]] int number() const noexcept { return m_file.number(); }

    void renameToTarget() {
        m_isRenamed = rename(&FileSystemCalls::renameAt, m_replacement.m_name);
        if (!m_isRenamed)
            m_replacement.fail(errno);
    }

    /// Whether the name was free: nothing is ever replaced. Where the file system has no such renaming, the name is
    /// taken with an empty file first.
    [[nodiscard]] bool renameTo(const std::filesystem::path& name) {
        m_isRenamed = rename(&FileSystemCalls::renameToFreeName, name);
        if (!m_isRenamed && isUnsupported(errno))
            m_isRenamed = takeName(name) && renameOver(name);
        if (!m_isRenamed && errno != EEXIST)
            m_replacement.fail(errno);
        return m_isRenamed;
    }

private:
    FileHandle create() {
        auto& calls = m_replacement.m_calls;
        for (int attempt = 0; attempt < namesTried; ++attempt) {
            FileHandle file(calls, m_replacement.m_folder.number(), m_name.c_str(),
                            O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, ownerAlone);
            if (!file.isOpen() && errno != EEXIST)
                m_replacement.fail(errno);
            if (file.isOpen() && isKept(file))
                return file;
            m_name = SaveLeftovers::temporaryName(m_replacement.m_name);
        }
        m_replacement.fail(EEXIST);
    }

    /// Whether it still has its name once it is locked: before, another save may have removed it. A file system
    /// without locks goes without.
    [[nodiscard]] bool isKept(const FileHandle& file) const {
        m_replacement.m_calls.tryLock(file.number());
        struct stat status;
        return m_replacement.m_calls.fstat(file.number(), status) != 0 || status.st_nlink > 0;
    }

    using Renaming = int (FileSystemCalls::*)(int folder, const char* from, const char* to);

    [[nodiscard]] bool rename(Renaming call, const std::filesystem::path& name) const {
        const int folder = m_replacement.m_folder.number();
        return untilNotInterrupted(
                   [&] { return (m_replacement.m_calls.*call)(folder, m_name.c_str(), name.c_str()); }) == 0;
    }
    [[nodiscard]] bool takeName(const std::filesystem::path& name) const {
        return FileHandle(m_replacement.m_calls, m_replacement.m_folder.number(), name.c_str(),
                          O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, ownerAlone)
            .isOpen();
    }
    [[nodiscard]] bool renameOver(const std::filesystem::path& ownName) const {
        if (rename(&FileSystemCalls::renameAt, ownName))
            return true;
        const int code = errno;
        m_replacement.m_calls.unlinkAt(m_replacement.m_folder.number(), ownName.c_str());
        errno = code;
        return false;
    }

    const FileReplacement& m_replacement;
    std::string m_name;
    FileHandle m_file;
    bool m_isRenamed = false;
};

/// Waited for as long as another's save takes at most; who holds it longer holds up no save.
class FileReplacement::FolderLock {
public:
    explicit FolderLock(const FileReplacement& replacement)
        : m_calls(replacement.m_calls), m_folder(m_calls, replacement.m_folder.number(), ".", O_RDONLY | O_DIRECTORY) {
        const auto deadline = std::chrono::steady_clock::now() + lockPatience;
        while (m_folder.isOpen() && m_calls.tryLock(m_folder.number()) != 0 &&
               (errno == EWOULDBLOCK || errno == EINTR) && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(lockPause);
    }

private:
    FileSystemCalls& m_calls;
    FileHandle m_folder;  // closed with its lock
};

FileReplacement::FileReplacement(FileSystemCalls& calls, std::filesystem::path file)
    : m_calls(calls),
      m_file(std::move(file)),
      m_target(followLinks()),
      m_name(m_target.filename().native()),
      m_folder(calls, AT_FDCWD, folderOf(m_target).c_str(), O_RDONLY | O_DIRECTORY) {
    if (!m_folder.isOpen())
        fail(errno);
    lookAtTarget();
}

void FileReplacement::write(ByteView content, const FileStore::BeforeReplacing& beforeReplacing) {
    SaveLeftovers::remove(m_calls, m_folder, m_name);
    {
        TemporaryFile temporary(*this);
        writeAll(temporary.number(), content);
        sync(temporary.number());
        makeLikeTarget(temporary.number());
        const FolderLock lock(*this);
        beforeReplacing();
        temporary.renameToTarget();
    }
    sync(m_folder.number());
}

std::optional<std::filesystem::path> FileReplacement::keepBeside(const std::filesystem::path& name, ByteView content) {
    {
        TemporaryFile temporary(*this);
        writeAll(temporary.number(), content);
        sync(temporary.number());
        makeLikeTarget(temporary.number());
        if (!temporary.renameTo(name))
            return std::nullopt;
    }
    sync(m_folder.number());
    return m_target.parent_path() / name;
}

void FileReplacement::fail(int code) const {
    throw FileMessages::cannotWrite(m_file, code);
}

void FileReplacement::check(int result) const {
    if (result < 0)
        fail(errno);
}

std::filesystem::path FileReplacement::followLinks() const {
    auto path = m_file;
    for (int link = 0; link < linksFollowed; ++link) {
        std::array<char, PATH_MAX> next;
        const auto size = m_calls.readLinkAt(AT_FDCWD, path.c_str(), next.data(), next.size());
        if (size < 0)
            return path;  // no link, or nothing there yet; what else may be wrong shows when the folder is opened
        if (size == static_cast<ssize_t>(next.size()))
            fail(ENAMETOOLONG);
        path = path.parent_path() / std::string_view(next.data(), static_cast<std::size_t>(size));
    }
    fail(ELOOP);
}

// A file that is not writable was protected on purpose, and a rename would ignore that: so it is refused, also for
// root.
void FileReplacement::lookAtTarget() {
    if (m_name.empty() || m_name == "." || m_name == "..")
        fail(EISDIR);
    struct stat status;
    if (m_calls.statAt(m_folder.number(), m_name.c_str(), status, AT_SYMLINK_NOFOLLOW) != 0) {
        if (errno != ENOENT)
            fail(errno);
        return;
    }
    if (S_ISDIR(status.st_mode))
        fail(EISDIR);
    if (!S_ISREG(status.st_mode))
        throw FileMessages::cannotWrite(m_file, EINVAL, "bu sıradan bir dosya değil");
    if ((status.st_mode & anyoneWrites) == 0 || m_calls.accessAt(m_folder.number(), m_name.c_str(), W_OK) != 0)
        throw FileMessages::cannotWrite(m_file, EACCES, "dosya yazmaya karşı korunuyor");
    m_targetStatus = status;
}

void FileReplacement::writeAll(int file, ByteView content) const {
    while (!content.empty()) {
        const auto written = untilNotInterrupted([&] { return m_calls.write(file, content.data(), content.size()); });
        if (written < 0)
            fail(errno);
        if (written == 0)
            fail(ENOSPC);  // no progress and no reason: the device takes no more
        content = content.subspan(static_cast<std::size_t>(written));
    }
}

void FileReplacement::sync(int file) const {
    if (untilNotInterrupted([&] { return m_calls.fsync(file); }) != 0 && !isUnsupported(errno))
        fail(errno);
}

// The owner first: a change of owner drops attributes and mode bits.
void FileReplacement::makeLikeTarget(int file) const {
    if (!m_targetStatus)
        return;  // a new file stays its owner's alone
    const auto mode = giveAttributes(file, giveOwner(file));
    check(untilNotInterrupted([&] { return m_calls.fchmod(file, mode); }));
}

/// The mode that goes with the owner and group that the file now has.
///
/// Only root may give a file away, and a save must not be lost for that: a file that several people write belongs to
/// the one who wrote it last. What the old group was granted, another group is not.
mode_t FileReplacement::giveOwner(int file) const {
    constexpr auto sameOwner = static_cast<uid_t>(-1);
    const auto mode = m_targetStatus->st_mode & allModeBits;
    if (m_calls.fchown(file, m_targetStatus->st_uid, m_targetStatus->st_gid) == 0)
        return mode;
    if (m_calls.fchown(file, sameOwner, m_targetStatus->st_gid) == 0)
        return mode & 0777U;
    return mode & withoutGroup;
}

/// The mode that remains beside the attributes that could be given on. A target that may be written and not be read
/// keeps them to itself.
mode_t FileReplacement::giveAttributes(int file, mode_t mode) const {
    const FileHandle target(m_calls, m_folder.number(), m_name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
    const auto copied = target.isOpen() ? FileAttributes::copy(m_calls, target.number(), file)
                                        : FileAttributes::Copied{.isAccessKnown = false};
    if (copied.failure != 0)
        fail(copied.failure);
    return copied.isAccessKnown ? mode : mode & withoutGroup;
}
