// SPDX-License-Identifier: MIT
#include "app/state/VaultFile.h"

#include "core/primitives/Sha2.h"

#include <QDateTime>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace {

constexpr std::size_t longestName = 255;  // bytes, on every usual file system
constexpr int namesTried = 1000;

std::string localTime(Timestamp time) {
    const auto milliseconds = static_cast<qint64>(time.seconds * 1000);
    return QDateTime::fromMSecsSinceEpoch(milliseconds).toString(QStringLiteral("yyyy-MM-dd HH.mm.ss")).toStdString();
}

/// As much of a name as fits before `rest`, in whole characters of UTF-8.
std::string shortened(std::string name, const std::string& rest) {
    const auto most = longestName - std::min(rest.size(), longestName);
    if (name.size() <= most)
        return name;
    auto end = most;
    while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80U)
        --end;
    name.resize(end);
    return name;
}

/// "Ad (ek).kdbx", and "Ad (ek) 2.kdbx" from the second on.
std::filesystem::path nameBeside(const std::filesystem::path& file, const std::string& addition, int number) {
    const auto count = number > 1 ? " " + std::to_string(number) : std::string();
    const auto rest = " (" + addition + ")" + count + file.extension().native();
    return shortened(file.stem().native(), rest) + rest;
}

}  // namespace

void VaultFile::begin(ByteView content, LosesByASave loses) {
    m_own = {Sha2::sha256(content)};
    m_oldFormat = loses == LosesByASave::yes ? std::optional(m_own.front()) : std::nullopt;
    m_kept.reset();
    m_compared.reset();
    m_reported.reset();
}

// The new version is this session's before it is written: a folder that cannot be synced fails a save whose content is
// in place all the same.
void VaultFile::save(const std::filesystem::path& file, ByteView content) {
    const auto hash = Sha2::sha256(content);
    m_own.push_back(hash);
    m_files.writeAtomically(file, content, [&] { keepWhatWouldBeLost(file); });
    m_own = {hash};
    m_oldFormat.reset();
    m_reported.reset();
}

void VaultFile::keepWhatWouldBeLost(const std::filesystem::path& file) {
    Bytes found;
    try {
        found = m_files.read(file);
    } catch (const FileError& error) {
        if (error.code() == ENOENT)
            return;
        throw;
    }
    const auto hash = Sha2::sha256(found);
    if (hash == m_oldFormat) {
        keep(file, found, "KDBX 3", Kept::Reason::oldFormat);
        m_oldFormat.reset();
    } else if (!found.empty() && !isOwn(hash)) {
        keep(file, found, "çakışma " + localTime(m_clock.now()), Kept::Reason::changedElsewhere);
        m_own.push_back(hash);  // should the save fail now, the next one need not keep it again
    }
}

void VaultFile::keep(const std::filesystem::path& file, ByteView content, const std::string& addition,
                     Kept::Reason reason) {
    for (int number = 1; number <= namesTried; ++number)
        if (auto kept = m_files.keepBeside(file, nameBeside(file, addition, number), content)) {
            m_kept = {std::move(*kept), reason};
            return;
        }
    throw FileError(EEXIST, "Diskteki sürümü saklamak için boş bir dosya adı bulunamadı.");
}

std::optional<VaultFile::Kept> VaultFile::takeKept() {
    return std::exchange(m_kept, std::nullopt);
}

VaultFile::Change VaultFile::look(const std::filesystem::path& file) {
    const auto status = m_files.status(file);
    if (status && status == m_compared)
        return Change::none;
    try {
        const auto change = compare(file);
        m_compared = status;
        return change;
    } catch (const FileError&) {
        return Change::none;  // being written, or out of reach: the save looks again
    }
}

VaultFile::Change VaultFile::compare(const std::filesystem::path& file) {
    Bytes seen;
    if (m_files.exists(file))
        seen = Sha2::sha256(m_files.read(file));
    if (isOwn(seen))
        return std::exchange(m_reported, std::nullopt) ? Change::undone : Change::none;
    if (std::exchange(m_reported, seen) == seen)
        return Change::none;
    return seen.empty() ? Change::gone : Change::changed;
}

bool VaultFile::isOwn(const Bytes& hash) const {
    return std::ranges::find(m_own, hash) != m_own.end();
}
