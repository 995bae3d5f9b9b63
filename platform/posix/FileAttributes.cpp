// SPDX-License-Identifier: MIT
#include "platform/posix/FileAttributes.h"

#include "core/primitives/Bytes.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <string>
#include <vector>

namespace FileAttributes {
namespace {

// The list of POSIX.1e, by the name that Linux has for it.
const std::string accessList = "system.posix_acl_access";

// What grows while it is read is read again; a disk that answers at random is not asked for ever.
constexpr int attempts = 10;

bool isUnsupported(int code) {
    return code == EINVAL || code == ENOTSUP || code == ENOSYS;
}

bool isForbidden(int code) {
    return code == EPERM || code == EACCES;
}

bool isAbsent(int code) {
    return code == ENODATA || isUnsupported(code);
}

/// What a call writes that is first asked for the size. None where it fails, with the reason in errno.
template <class Buffer, class Call>
std::optional<Buffer> filledBy(Call call) {
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const auto size = call(nullptr, 0);
        if (size < 0)
            return std::nullopt;
        Buffer buffer(static_cast<std::size_t>(size) + 1);  // one more, so that it reads and is not asked again
        const auto filled = call(buffer.data(), buffer.size());
        if (filled < 0 && errno == ERANGE)
            continue;  // it grew meanwhile
        if (filled < 0)
            return std::nullopt;
        buffer.resize(static_cast<std::size_t>(filled));
        return buffer;
    }
    return std::nullopt;
}

std::optional<Bytes> valueOf(FileSystemCalls& calls, int file, const std::string& name) {
    return filledBy<Bytes>(
        [&](void* value, std::size_t size) { return calls.getAttribute(file, name.c_str(), value, size); });
}

/// Where they cannot be listed, the one that says who may read the file is asked for all the same.
std::vector<std::string> namesOf(FileSystemCalls& calls, int file) {
    const auto list = filledBy<std::vector<char>>(
        [&](char* names, std::size_t size) { return calls.listAttributes(file, names, size); });
    if (!list)
        return isUnsupported(errno) ? std::vector<std::string>() : std::vector{accessList};
    std::vector<std::string> names;
    for (auto name = list->begin(); name != list->end();) {
        const auto end = std::find(name, list->end(), '\0');
        names.emplace_back(name, end);
        name = end == list->end() ? end : end + 1;
    }
    return names;
}

}  // namespace

Copied copy(FileSystemCalls& calls, int from, int to) {
    Copied copied;
    std::vector<std::string> given;
    const auto names = namesOf(calls, from);
    for (const auto& name : names) {
        const auto value = valueOf(calls, from, name);
        if (!value) {
            copied.isAccessKnown &= name != accessList || isAbsent(errno);
            continue;
        }
        given.push_back(name);
        if (calls.setAttribute(to, name.c_str(), value->data(), value->size()) == 0)
            continue;
        if (!isForbidden(errno) && !isUnsupported(errno)) {
            copied.failure = errno;
            return copied;
        }
        copied.isAccessKnown &= name != accessList;
    }
    // What the folder gave the new file and the old one did not have, such as an access list.
    for (const auto& name : namesOf(calls, to))
        if (std::ranges::find(given, name) == given.end() && calls.removeAttribute(to, name.c_str()) != 0)
            copied.isAccessKnown &= name != accessList || isAbsent(errno);
    return copied;
}

}  // namespace FileAttributes
