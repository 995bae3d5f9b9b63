// SPDX-License-Identifier: MIT
#include "platform/posix/SaveLeftovers.h"

#include "core/primitives/Hexadecimal.h"
#include "core/primitives/Random.h"
#include "core/primitives/Sha2.h"

#include <dirent.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace {

constexpr std::size_t fingerprintSize = 8;
constexpr std::size_t secretSize = 16;
constexpr std::size_t hexDigitsPerByte = 2;

std::string prefixFor(const std::string& file) {
    const auto fingerprint = Sha2::sha256(bytesOf(file));
    return ".brenvik-" + hexadecimal(ByteView(fingerprint).first(fingerprintSize)) + "-";
}

bool isLeftover(std::string_view name, std::string_view prefix) {
    if (!name.starts_with(prefix) || name.size() != prefix.size() + hexDigitsPerByte * secretSize)
        return false;
    const auto secret = name.substr(prefix.size());
    return std::all_of(secret.begin(), secret.end(),
                       [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); });
}

std::vector<std::string> leftoversIn(FileSystemCalls& calls, const FileHandle& folder, std::string_view prefix) {
    std::vector<std::string> names;
    std::array<char, 32768> records;
    for (;;) {
        const auto size = calls.readFolder(folder.number(), records.data(), records.size());
        if (size <= 0)
            return names;
        for (ssize_t at = 0; at < size;) {
            const char* record = records.data() + at;
            std::uint16_t recordSize = 0;
            std::memcpy(&recordSize, record + offsetof(dirent64, d_reclen), sizeof(recordSize));
            const char* name = record + offsetof(dirent64, d_name);
            if (isLeftover(name, prefix))
                names.emplace_back(name);
            at += recordSize;
        }
    }
}

}  // namespace

std::string SaveLeftovers::temporaryName(const std::string& file) {
    return prefixFor(file) + hexadecimal(randomBytes(secretSize));
}

void SaveLeftovers::remove(FileSystemCalls& calls, const FileHandle& folder, const std::string& file) {
    for (const auto& name : leftoversIn(calls, folder, prefixFor(file))) {
        const FileHandle leftover(calls, folder.number(), name.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK);
        if (leftover.isOpen() && calls.tryLock(leftover.number()) == 0)
            calls.unlinkAt(folder.number(), name.c_str());
    }
}
