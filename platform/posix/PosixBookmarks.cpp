// SPDX-License-Identifier: MIT
#include "platform/posix/PosixBookmarks.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <charconv>
#include <string>
#include <system_error>

namespace {

constexpr std::string_view signature = "brenvik-bookmark-1";

/// The identity of a file, as a text: device, inode and time of birth. Empty where it is unknown.
std::string identityOf(const std::filesystem::path& file) {
    struct statx status;
    if (statx(AT_FDCWD, file.c_str(), AT_SYMLINK_NOFOLLOW, STATX_INO | STATX_BTIME, &status) != 0 ||
        (status.stx_mask & STATX_BTIME) == 0)
        return {};
    std::string text;
    for (const std::uint64_t number :
         {std::uint64_t{status.stx_dev_major}, std::uint64_t{status.stx_dev_minor}, std::uint64_t{status.stx_ino},
          static_cast<std::uint64_t>(status.stx_btime.tv_sec), std::uint64_t{status.stx_btime.tv_nsec}})
        text += std::to_string(number) + ":";
    return text;
}

std::filesystem::path renamed(const std::filesystem::path& file, std::string_view identity) {
    std::error_code error;
    for (std::filesystem::directory_iterator item(file.parent_path(), error), end; !error && item != end;
         item.increment(error))
        if (identityOf(item->path()) == identity)
            return item->path();
    return file;
}

}  // namespace

// Three lines; the path is the last, since a path may hold line breaks.
std::optional<Bytes> PosixBookmarks::bookmark(const std::filesystem::path& file) {
    std::error_code error;
    const auto path = std::filesystem::absolute(file, error);
    if (error || !std::filesystem::exists(path, error))
        return std::nullopt;
    Bytes token;
    for (const auto& line : {std::string(signature), identityOf(path)}) {
        append(token, bytesOf(line));
        token.push_back('\n');
    }
    append(token, bytesOf(path.native()));
    return token;
}

std::optional<std::filesystem::path> PosixBookmarks::resolve(ByteView token) {
    const auto text = textOf(token);
    const auto signatureEnd = text.find('\n');
    const auto identityEnd = signatureEnd == std::string_view::npos ? signatureEnd : text.find('\n', signatureEnd + 1);
    if (identityEnd == std::string_view::npos || text.substr(0, signatureEnd) != signature)
        return std::nullopt;
    const std::filesystem::path path(text.substr(identityEnd + 1));
    if (!path.is_absolute() || path.native().find('\0') != std::string::npos)
        return std::nullopt;
    const auto identity = text.substr(signatureEnd + 1, identityEnd - signatureEnd - 1);
    std::error_code error;
    if (identity.empty() || std::filesystem::exists(path, error))
        return path;
    return renamed(path, identity);
}
