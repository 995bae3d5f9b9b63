// SPDX-License-Identifier: MIT
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>

/// The system calls that reading and saving are made of, each as in its manual page: a negative result is a failure
/// and its reason is in errno. They are behind an interface so that tests can make any one of them fail.
class FileSystemCalls {
public:
    virtual ~FileSystemCalls() = default;

    virtual int openAt(int folder, const char* path, int flags, mode_t mode) = 0;
    virtual int close(int file) = 0;
    virtual ssize_t read(int file, void* buffer, std::size_t size) = 0;
    virtual ssize_t write(int file, const void* buffer, std::size_t size) = 0;
    virtual int fsync(int file) = 0;
    /// flock(2) for writing, without waiting.
    virtual int tryLock(int file) = 0;

    virtual int fstat(int file, struct stat& status) = 0;
    virtual int statAt(int folder, const char* path, struct stat& status, int flags) = 0;
    virtual int accessAt(int folder, const char* path, int mode) = 0;
    virtual ssize_t readLinkAt(int folder, const char* path, char* buffer, std::size_t size) = 0;
    /// getdents64(2): the next names of a folder.
    virtual ssize_t readFolder(int folder, void* buffer, std::size_t size) = 0;

    virtual int fchown(int file, uid_t owner, gid_t group) = 0;
    virtual int fchmod(int file, mode_t mode) = 0;
    virtual ssize_t listAttributes(int file, char* names, std::size_t size) = 0;
    virtual ssize_t getAttribute(int file, const char* name, void* value, std::size_t size) = 0;
    virtual int setAttribute(int file, const char* name, const void* value, std::size_t size) = 0;
    virtual int removeAttribute(int file, const char* name) = 0;

    virtual int renameAt(int folder, const char* from, const char* to) = 0;
    /// renameat2(2) that fails with EEXIST rather than replacing anything.
    virtual int renameToFreeName(int folder, const char* from, const char* to) = 0;
    virtual int unlinkAt(int folder, const char* name) = 0;
};

/// The system's own.
class PosixFileSystemCalls : public FileSystemCalls {
public:
    int openAt(int folder, const char* path, int flags, mode_t mode) override;
    int close(int file) override;
    ssize_t read(int file, void* buffer, std::size_t size) override;
    ssize_t write(int file, const void* buffer, std::size_t size) override;
    int fsync(int file) override;
    int tryLock(int file) override;
    int fstat(int file, struct stat& status) override;
    int statAt(int folder, const char* path, struct stat& status, int flags) override;
    int accessAt(int folder, const char* path, int mode) override;
    ssize_t readLinkAt(int folder, const char* path, char* buffer, std::size_t size) override;
    ssize_t readFolder(int folder, void* buffer, std::size_t size) override;
    int fchown(int file, uid_t owner, gid_t group) override;
    int fchmod(int file, mode_t mode) override;
    ssize_t listAttributes(int file, char* names, std::size_t size) override;
    ssize_t getAttribute(int file, const char* name, void* value, std::size_t size) override;
    int setAttribute(int file, const char* name, const void* value, std::size_t size) override;
    int removeAttribute(int file, const char* name) override;
    int renameAt(int folder, const char* from, const char* to) override;
    int renameToFreeName(int folder, const char* from, const char* to) override;
    int unlinkAt(int folder, const char* name) override;
};
