// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/FileSystemCalls.h"

#include <fcntl.h>

#include <cerrno>
#include <utility>

/// Runs a system call again as long as a signal interrupts it.
template <class Call>
auto untilNotInterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

/// An open file that is closed with its owner. Negative when opening failed, with the reason in errno.
class FileHandle {
public:
    FileHandle(FileSystemCalls& calls, int folder, const char* path, int flags, mode_t mode = 0)
        : m_calls(&calls),
          m_file(untilNotInterrupted([&] { return calls.openAt(folder, path, flags | O_CLOEXEC, mode); })) {}
    FileHandle(FileHandle&& other) noexcept : m_calls(other.m_calls), m_file(std::exchange(other.m_file, -1)) {}
    FileHandle& operator=(FileHandle&&) = delete;
    ~FileHandle() {
        // Not again when interrupted: Linux has closed it by then. What was written was synced before.
        if (m_file >= 0)
            m_calls->close(m_file);
    }

    [[nodiscard]] bool isOpen() const noexcept { return m_file >= 0; }
    [[nodiscard]] int number() const noexcept { return m_file; }

private:
    FileSystemCalls* m_calls;
    int m_file;
};
