// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/FileStore.h"
#include "core/platform/RescueStore.h"

#include <map>

/// The copies in one folder that its user alone can enter. A name has a hash of the vault's path, so that the
/// folder's content names no other folder. A copy that a session writes is locked, so that another one that runs does
/// not offer it; the lock ends with the process, however that ends.
class PosixRescueStore final : public RescueStore {
public:
    /// The folder is made once there is something to keep.
    PosixRescueStore(FileStore& files, std::filesystem::path folder) : m_files(files), m_folder(std::move(folder)) {}
    ~PosixRescueStore() override;

    [[nodiscard]] std::vector<Copy> copiesOf(const std::filesystem::path& vault) override;
    [[nodiscard]] std::string newName(const std::filesystem::path& vault) override;
    [[nodiscard]] Bytes read(const std::string& name) override;
    void write(const std::string& name, ByteView content) override;
    void release(const std::string& name) override;
    void remove(const std::string& name) override;

    /// $XDG_STATE_HOME/brenvik, or the same below ~/.local/state, as the XDG base directories are.
    [[nodiscard]] static std::filesystem::path usualFolder();

private:
    void makeFolder() const;
    void hold(const std::string& name);

    FileStore& m_files;
    std::filesystem::path m_folder;
    std::map<std::string, int> m_held;  // open and locked, by name
};
