// SPDX-License-Identifier: MIT
#include "platform/posix/PrivateFolder.h"

#include <sys/stat.h>

#include <cerrno>

bool PrivateFolder::make(const std::filesystem::path& folder) {
    if (::mkdir(folder.c_str(), S_IRWXU) == 0)
        return true;
    if (errno != ENOENT || !folder.has_relative_path())
        return false;
    make(folder.parent_path());
    return ::mkdir(folder.c_str(), S_IRWXU) == 0;
}
