// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/Timestamp.h"
#include "core/primitives/Bytes.h"

#include <filesystem>
#include <string>
#include <vector>

/// Where encrypted copies of unsaved work are kept, apart from the vaults: of one vault there can be several, each
/// under a name of its own. One thread uses it at a time.
class RescueStore {
public:
    struct Copy {
        std::string name;
        Timestamp kept;  // when it was written
    };

    virtual ~RescueStore() = default;

    /// The copies that earlier sessions left of the vault in this file, oldest first. One that a session still writes,
    /// in this program or in another that runs, is not among them.
    [[nodiscard]] virtual std::vector<Copy> copiesOf(const std::filesystem::path& vault) = 0;

    /// A name that no copy has, for one of the vault in this file.
    [[nodiscard]] virtual std::string newName(const std::filesystem::path& vault) = 0;

    /// @throws FileError.
    [[nodiscard]] virtual Bytes read(const std::string& name) = 0;

    /// Makes the copy of that name, or replaces it: whatever happens, the old content or the new one is there, whole.
    /// Until it is released or removed it belongs to the session that wrote it.
    ///
    /// @throws FileError.
    virtual void write(const std::string& name, ByteView content) = 0;

    /// Leaves a copy to later sessions.
    virtual void release(const std::string& name) = 0;

    /// Removes a copy; one that is not there is no fault.
    virtual void remove(const std::string& name) = 0;
};
