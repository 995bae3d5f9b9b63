// SPDX-License-Identifier: MIT
#include "platform/posix/PosixFileStore.h"

#include "platform/posix/FileMessages.h"
#include "platform/posix/FileReplacement.h"

#include <unistd.h>

#include <new>

namespace {

constexpr int readsTried = 3;
constexpr std::size_t firstRead = 64 * 1024;

/// Reading one regular file to its end.
class FileReading {
public:
    FileReading(FileSystemCalls& calls, const std::filesystem::path& file, std::uint64_t largestFile)
        : m_calls(calls), m_path(file), m_largestFile(largestFile) {}

    Bytes read() {
        for (int attempt = 0; attempt < readsTried; ++attempt) {
            const auto file = open();
            const auto before = status(file);
            auto content = readToEnd(file, static_cast<std::size_t>(before.st_size));
            const auto after = status(file);
            const bool isWhole = before.st_size == 0 || content.size() == static_cast<std::size_t>(before.st_size);
            if (isWhole && isUnchanged(before, after))
                return content;
        }
        throw FileMessages::cannotRead(m_path, EAGAIN, "dosya okunurken değişti");
    }

private:
    [[noreturn]] void fail(int code) const { throw FileMessages::cannotRead(m_path, code); }

    // Looked at before it is opened: opening a device can do things, and opening a pipe can wait for ever.
    FileHandle open() {
        struct stat status;
        if (m_calls.statAt(AT_FDCWD, m_path.c_str(), status, 0) != 0)
            fail(errno);
        checkKind(status);
        FileHandle file(m_calls, AT_FDCWD, m_path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY);
        if (!file.isOpen())
            fail(errno);
        return file;
    }

    struct stat status(const FileHandle& file) const {
        struct stat status;
        if (m_calls.fstat(file.number(), status) != 0)
            fail(errno);
        checkKind(status);
        if (static_cast<std::uint64_t>(status.st_size) > m_largestFile)
            fail(EFBIG);
        return status;
    }

    void checkKind(const struct stat& status) const {
        if (S_ISDIR(status.st_mode))
            fail(EISDIR);
        if (S_ISFIFO(status.st_mode))
            throw FileMessages::cannotRead(m_path, EINVAL, "bu bir dosya değil, adlandırılmış boru");
        if (S_ISSOCK(status.st_mode))
            throw FileMessages::cannotRead(m_path, EINVAL, "bu bir dosya değil, soket");
        if (!S_ISREG(status.st_mode))
            throw FileMessages::cannotRead(m_path, EINVAL, "bu bir dosya değil, aygıt");
    }

    /// Up to one byte past the expected size, which is how a growing file shows itself; to the end where none is known,
    /// as of the files below /proc.
    Bytes readToEnd(const FileHandle& file, std::size_t expectedSize) const try {
        Bytes content(expectedSize + 1);
        std::size_t filled = 0;
        for (;;) {
            const auto size = untilNotInterrupted(
                [&] { return m_calls.read(file.number(), content.data() + filled, content.size() - filled); });
            if (size < 0)
                fail(errno);
            filled += static_cast<std::size_t>(size);
            if (filled > m_largestFile)
                fail(EFBIG);
            const bool isGrowing = expectedSize > 0 && filled > expectedSize;
            if (size == 0 || isGrowing)
                break;
            if (filled == content.size())
                content.resize(content.size() + std::max(content.size(), firstRead));
        }
        content.resize(filled);
        return content;
    } catch (const std::bad_alloc&) {
        fail(ENOMEM);
    }

    static bool isUnchanged(const struct stat& a, const struct stat& b) {
        const auto equal = [](const timespec& x, const timespec& y) {
            return x.tv_sec == y.tv_sec && x.tv_nsec == y.tv_nsec;
        };
        return a.st_size == b.st_size && equal(a.st_mtim, b.st_mtim) && equal(a.st_ctim, b.st_ctim);
    }

    FileSystemCalls& m_calls;
    const std::filesystem::path& m_path;
    std::uint64_t m_largestFile;
};

}  // namespace

Bytes PosixFileStore::read(const std::filesystem::path& file) {
    return FileReading(m_calls, file, m_largestFile).read();
}

void PosixFileStore::writeAtomically(const std::filesystem::path& file, ByteView content,
                                     const BeforeReplacing& beforeReplacing) {
    FileReplacement(m_calls, file).write(content, beforeReplacing);
}

std::optional<std::filesystem::path> PosixFileStore::keepBeside(const std::filesystem::path& file,
                                                                const std::filesystem::path& name, ByteView content) {
    try {
        return FileReplacement(m_calls, file).keepBeside(name, content);
    } catch (const FileError& error) {
        throw FileMessages::cannotWrite(name, error.code());  // the file itself was not what failed
    }
}

bool PosixFileStore::exists(const std::filesystem::path& file) {
    struct stat status;
    return m_calls.statAt(AT_FDCWD, file.c_str(), status, 0) == 0;
}

std::optional<FileStatus> PosixFileStore::status(const std::filesystem::path& file) {
    struct stat status;
    if (m_calls.statAt(AT_FDCWD, file.c_str(), status, 0) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    const auto nanoseconds = [](const timespec& time) {
        return time.tv_sec * std::int64_t{1'000'000'000} + time.tv_nsec;
    };
    return FileStatus{.size = static_cast<std::uint64_t>(status.st_size),
                      .device = status.st_dev,
                      .inode = status.st_ino,
                      .modified = nanoseconds(status.st_mtim),
                      .changed = nanoseconds(status.st_ctim)};
}

std::uint64_t PosixFileStore::halfOfMemory() noexcept {
    const auto pages = sysconf(_SC_PHYS_PAGES);
    const auto pageSize = sysconf(_SC_PAGESIZE);
    return static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(pageSize) / 2;
}
