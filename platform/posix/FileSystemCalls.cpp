// SPDX-License-Identifier: MIT
#include "platform/posix/FileSystemCalls.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cstdio>

int PosixFileSystemCalls::openAt(int folder, const char* path, int flags, mode_t mode) {
    return ::openat(folder, path, flags, mode);
}

int PosixFileSystemCalls::close(int file) {
    return ::close(file);
}

ssize_t PosixFileSystemCalls::read(int file, void* buffer, std::size_t size) {
    return ::read(file, buffer, size);
}

ssize_t PosixFileSystemCalls::write(int file, const void* buffer, std::size_t size) {
    return ::write(file, buffer, size);
}

int PosixFileSystemCalls::fsync(int file) {
    return ::fsync(file);
}

int PosixFileSystemCalls::tryLock(int file) {
    return ::flock(file, LOCK_EX | LOCK_NB);
}

int PosixFileSystemCalls::fstat(int file, struct stat& status) {
    return ::fstat(file, &status);
}

int PosixFileSystemCalls::statAt(int folder, const char* path, struct stat& status, int flags) {
    return ::fstatat(folder, path, &status, flags);
}

int PosixFileSystemCalls::accessAt(int folder, const char* path, int mode) {
    return ::faccessat(folder, path, mode, AT_EACCESS);
}

ssize_t PosixFileSystemCalls::readLinkAt(int folder, const char* path, char* buffer, std::size_t size) {
    return ::readlinkat(folder, path, buffer, size);
}

ssize_t PosixFileSystemCalls::readFolder(int folder, void* buffer, std::size_t size) {
    return ::syscall(SYS_getdents64, folder, buffer, size);
}

int PosixFileSystemCalls::fchown(int file, uid_t owner, gid_t group) {
    return ::fchown(file, owner, group);
}

int PosixFileSystemCalls::fchmod(int file, mode_t mode) {
    return ::fchmod(file, mode);
}

ssize_t PosixFileSystemCalls::listAttributes(int file, char* names, std::size_t size) {
    return ::flistxattr(file, names, size);
}

ssize_t PosixFileSystemCalls::getAttribute(int file, const char* name, void* value, std::size_t size) {
    return ::fgetxattr(file, name, value, size);
}

int PosixFileSystemCalls::setAttribute(int file, const char* name, const void* value, std::size_t size) {
    return ::fsetxattr(file, name, value, size, 0);
}

int PosixFileSystemCalls::removeAttribute(int file, const char* name) {
    return ::fremovexattr(file, name);
}

int PosixFileSystemCalls::renameAt(int folder, const char* from, const char* to) {
    return ::renameat(folder, from, folder, to);
}

int PosixFileSystemCalls::renameToFreeName(int folder, const char* from, const char* to) {
    return ::renameat2(folder, from, folder, to, RENAME_NOREPLACE);
}

int PosixFileSystemCalls::unlinkAt(int folder, const char* name) {
    return ::unlinkat(folder, name, 0);
}
