// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/FileSystemCalls.h"

#include <algorithm>
#include <cerrno>
#include <functional>
#include <map>
#include <string>
#include <vector>

/// The system's calls, each of which a test can make fail: `trouble` is asked before each of them, by its name and how
/// many calls came before it, and answers the errno to fail with, or 0. `record` holds the names of all that were made.
class TroubledCalls final : public PosixFileSystemCalls {
public:
    std::function<int(const std::string& call, int number)> trouble = [](const auto&, int) { return 0; };
    std::vector<std::string> record;
    std::size_t mostWritten = SIZE_MAX;  // bytes that one write or read takes

    int openAt(int folder, const char* path, int flags, mode_t mode) override {
        return guarded("open", [&] { return PosixFileSystemCalls::openAt(folder, path, flags, mode); });
    }
    ssize_t read(int file, void* buffer, std::size_t size) override {
        return guarded("read", [&] { return PosixFileSystemCalls::read(file, buffer, std::min(size, mostWritten)); });
    }
    ssize_t write(int file, const void* buffer, std::size_t size) override {
        return guarded("write", [&] { return PosixFileSystemCalls::write(file, buffer, std::min(size, mostWritten)); });
    }
    int fsync(int file) override {
        return guarded("fsync", [&] { return PosixFileSystemCalls::fsync(file); });
    }
    int tryLock(int file) override {
        return guarded("lock", [&] { return PosixFileSystemCalls::tryLock(file); });
    }
    int fstat(int file, struct stat& status) override {
        return guarded("fstat", [&] { return PosixFileSystemCalls::fstat(file, status); });
    }
    int statAt(int folder, const char* path, struct stat& status, int flags) override {
        return guarded("stat", [&] { return PosixFileSystemCalls::statAt(folder, path, status, flags); });
    }
    int accessAt(int folder, const char* path, int mode) override {
        return guarded("access", [&] { return PosixFileSystemCalls::accessAt(folder, path, mode); });
    }
    ssize_t readLinkAt(int folder, const char* path, char* buffer, std::size_t size) override {
        return guarded("readLink", [&] { return PosixFileSystemCalls::readLinkAt(folder, path, buffer, size); });
    }
    ssize_t readFolder(int folder, void* buffer, std::size_t size) override {
        return guarded("readFolder", [&] { return PosixFileSystemCalls::readFolder(folder, buffer, size); });
    }
    int fchown(int file, uid_t owner, gid_t group) override {
        return guarded("chown", [&] { return PosixFileSystemCalls::fchown(file, owner, group); });
    }
    int fchmod(int file, mode_t mode) override {
        return guarded("chmod", [&] { return PosixFileSystemCalls::fchmod(file, mode); });
    }
    ssize_t listAttributes(int file, char* names, std::size_t size) override {
        return guarded("listAttributes", [&] { return PosixFileSystemCalls::listAttributes(file, names, size); });
    }
    ssize_t getAttribute(int file, const char* name, void* value, std::size_t size) override {
        return guarded("getAttribute", [&] { return PosixFileSystemCalls::getAttribute(file, name, value, size); });
    }
    int setAttribute(int file, const char* name, const void* value, std::size_t size) override {
        return guarded("setAttribute", [&] { return PosixFileSystemCalls::setAttribute(file, name, value, size); });
    }
    int removeAttribute(int file, const char* name) override {
        return guarded("removeAttribute", [&] { return PosixFileSystemCalls::removeAttribute(file, name); });
    }
    int renameAt(int folder, const char* from, const char* to) override {
        return guarded("rename", [&] { return PosixFileSystemCalls::renameAt(folder, from, to); });
    }
    int renameToFreeName(int folder, const char* from, const char* to) override {
        return guarded("renameToFreeName", [&] { return PosixFileSystemCalls::renameToFreeName(folder, from, to); });
    }
    int unlinkAt(int folder, const char* name) override {
        return guarded("unlink", [&] { return PosixFileSystemCalls::unlinkAt(folder, name); });
    }

private:
    template <class Call>
    auto guarded(const std::string& name, Call call) -> decltype(call()) {
        const auto number = static_cast<int>(record.size());
        record.push_back(name);
        if (const int code = trouble(name, number); code != 0) {
            errno = code;
            return -1;
        }
        return call();
    }
};
