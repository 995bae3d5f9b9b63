// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/UUID.h"

#include <optional>
#include <string>
#include <variant>

/// A wish to show a sheet over the window.
struct Route {
    struct NewEntry {
        UUID groupID;
        bool operator==(const NewEntry&) const = default;
    };
    struct EditEntry {
        UUID id;
        bool operator==(const EditEntry&) const = default;
    };
    struct NewGroup {
        UUID parentID;
        bool operator==(const NewGroup&) const = default;
    };
    struct EditGroup {
        UUID id;
        bool operator==(const EditGroup&) const = default;
    };
    struct Generator {
        std::optional<UUID> target;  // the entry that takes the password, if any
        bool operator==(const Generator&) const = default;
    };
    using Case = std::variant<NewEntry, EditEntry, NewGroup, EditGroup, Generator>;

    Case sheet;

    static Route newEntry(UUID groupID) { return {NewEntry{groupID}}; }
    static Route editEntry(UUID id) { return {EditEntry{id}}; }
    static Route newGroup(UUID parentID) { return {NewGroup{parentID}}; }
    static Route editGroup(UUID id) { return {EditGroup{id}}; }
    static Route generator(std::optional<UUID> target) { return {Generator{target}}; }

    /// A text that identifies the route, as in "editEntry-" and the identifier's text.
    [[nodiscard]] std::string id() const;

    bool operator==(const Route&) const = default;
};
