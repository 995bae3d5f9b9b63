// SPDX-License-Identifier: MIT
#include "platform/posix/PosixRescueStore.h"

#include "core/primitives/Hexadecimal.h"
#include "core/primitives/Random.h"
#include "core/primitives/Sha2.h"
#include "platform/posix/PrivateFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <optional>
#include <system_error>
#include <utility>

namespace {

constexpr std::size_t secretSize = 8;
constexpr std::string_view extension = ".kdbx";          // so that a copy can be opened like any vault
constexpr std::string_view temporaryName = ".brenvik-";  // how a save names its temporary file

/// The same for a file by whatever links it is reached.
std::string prefixFor(const std::filesystem::path& vault) {
    std::error_code error;
    auto path = std::filesystem::weakly_canonical(std::filesystem::absolute(vault, error), error);
    if (error)
        path = vault;
    return hexadecimal(Sha2::sha256(bytesOf(path.native()))) + "-";
}

/// A file that no other process has locked; none otherwise.
class Unheld {
public:
    explicit Unheld(const std::filesystem::path& file)
        : m_file(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK)) {
        if (m_file >= 0 && ::flock(m_file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
            ::close(std::exchange(m_file, -1));
    }
    ~Unheld() {
        if (m_file >= 0)
            ::close(m_file);
    }
    Unheld(const Unheld&) = delete;
    Unheld& operator=(const Unheld&) = delete;

    [[nodiscard]] bool isThere() const noexcept { return m_file >= 0; }
    [[nodiscard]] std::optional<Timestamp> written() const {
        struct stat status;
        if (m_file < 0 || ::fstat(m_file, &status) != 0 || !S_ISREG(status.st_mode))
            return std::nullopt;
        return Timestamp{static_cast<double>(status.st_mtim.tv_sec) +
                         static_cast<double>(status.st_mtim.tv_nsec) / 1e9};
    }

private:
    int m_file;
};

}  // namespace

PosixRescueStore::~PosixRescueStore() {
    for (const auto& [name, file] : m_held)
        ::close(file);
}

std::vector<RescueStore::Copy> PosixRescueStore::copiesOf(const std::filesystem::path& vault) {
    const auto prefix = prefixFor(vault);
    std::vector<Copy> copies;
    std::error_code error;
    for (std::filesystem::directory_iterator item(m_folder, error), end; !error && item != end; item.increment(error)) {
        const std::string name = item->path().filename();
        if (name.starts_with(temporaryName) && Unheld(item->path()).isThere())
            ::unlink(item->path().c_str());  // of a write that was killed
        if (!name.starts_with(prefix) || !name.ends_with(extension))
            continue;
        if (const auto written = Unheld(item->path()).written())
            copies.push_back({name, *written});
    }
    std::ranges::sort(copies, [](const Copy& a, const Copy& b) { return a.kept.seconds < b.kept.seconds; });
    return copies;
}

std::string PosixRescueStore::newName(const std::filesystem::path& vault) {
    std::array<std::uint8_t, secretSize> secret;
    fillRandom(secret);
    return prefixFor(vault).append(hexadecimal(secret)).append(extension);
}

Bytes PosixRescueStore::read(const std::string& name) {
    return m_files.read(m_folder / name);
}

void PosixRescueStore::write(const std::string& name, ByteView content) {
    makeFolder();
    m_files.writeAtomically(m_folder / name, content);
    hold(name);
}

// What is written over is another file than the one that was locked.
void PosixRescueStore::hold(const std::string& name) {
    release(name);
    const int file = ::open((m_folder / name).c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (file < 0)
        return;
    ::flock(file, LOCK_EX | LOCK_NB);  // a file system without locks goes without
    m_held[name] = file;
}

void PosixRescueStore::release(const std::string& name) {
    if (const auto held = m_held.extract(name))
        ::close(held.mapped());
}

void PosixRescueStore::remove(const std::string& name) {
    ::unlink((m_folder / name).c_str());
    release(name);
}

void PosixRescueStore::makeFolder() const {
    if (!PrivateFolder::make(m_folder))
        ::chmod(m_folder.c_str(), S_IRWXU);
}

std::filesystem::path PosixRescueStore::usualFolder() {
    const auto folder = [](const char* name) {
        const char* value = std::getenv(name);
        return value ? std::filesystem::path(value) : std::filesystem::path();
    };
    auto base = folder("XDG_STATE_HOME");
    if (!base.is_absolute())
        base = folder("HOME") / ".local" / "state";
    return base / "brenvik";
}
