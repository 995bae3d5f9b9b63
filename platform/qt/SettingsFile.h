// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/FileStore.h"
#include "core/platform/SettingsStore.h"

#include <QJsonObject>

#include <filesystem>
#include <functional>

/// The settings in one JSON file that its user alone can read, written at once and as a whole.
///
/// Bytes are kept as `{"base64": …}`. JSON has one kind of number: one that was stored with no fraction comes back as
/// an integer. Two programs may write at once: each change is merged into what the file holds at that moment, under a
/// lock where the disk has locks. A file that cannot be understood is put aside as "settings.json.damaged" and the
/// defaults hold; one that cannot be read is left alone.
class SettingsFile final : public SettingsStore {
public:
    /// Takes a lock on an open file, without waiting: 0, or else errno says why not.
    using TryLock = std::function<int(int file)>;

    /// Reads the file; without one there is nothing stored.
    SettingsFile(FileStore& files, std::filesystem::path file, TryLock tryLock = systemLock);

    [[nodiscard]] std::optional<SettingsValue> value(std::string_view key) const override;
    bool setValue(std::string_view key, std::optional<SettingsValue> value) override;

    /// $XDG_CONFIG_HOME/brenvik/settings.json, or the same below ~/.config (XDG Base Directory Specification).
    [[nodiscard]] static std::filesystem::path usualPath();

private:
    class Lock;

    static int systemLock(int file);
    [[nodiscard]] std::optional<QJsonObject> readOrPutAside();
    void putAside();
    bool write(const QJsonObject& settings);

    FileStore& m_files;
    std::filesystem::path m_file;
    TryLock m_tryLock;
    bool m_isPatient = true;  // until another program has held the lock for too long
    QJsonObject m_settings;
};
