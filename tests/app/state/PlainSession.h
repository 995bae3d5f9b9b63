// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/EntrySort.h"
#include "core/model/KdbxDatabase.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

/// The session told a second time, as plainly as it can be: whole copies, walks from the root, no cleverness. What
/// `AppState` does is compared with it.
namespace Plain {

struct Entry {
    UUID id;
    std::string title;
    std::string password;
    double modified;
    double accessed;
    std::vector<std::string> history;  // titles
    bool operator==(const Entry&) const = default;
};

struct Group {
    UUID id;
    std::string name;
    bool isExpanded;
    double modified;
    std::vector<Entry> entries;
    std::vector<Group> groups;
    bool operator==(const Group&) const = default;
};

/// A group of a vault as a plain one.
[[nodiscard]] Group plain(const KdbxGroup& group);

struct Session {
    struct Step {
        Group root;
        std::string label;
        EntrySort::Column column;
    };
    using IDs = std::set<UUID>;

    double now = 0;
    std::int64_t historyMaxItems = 10;
    Group file;  // what the vault's file holds
    bool diskIsFull = false;

    std::optional<Group> root;
    bool isDirty = false;
    bool hasError = false;
    std::optional<std::string> status;
    std::vector<double> statusClears;
    std::optional<UUID> selectedGroup;
    IDs selectedEntries;
    std::string search;
    EntrySort sort{.column = EntrySort::Column::title, .ascending = true};
    std::vector<Step> undoSteps;
    std::vector<Step> redoSteps;
    std::optional<std::string> undoLabel;
    std::optional<std::string> redoLabel;

    [[nodiscard]] std::vector<Entry> visible() const;
    [[nodiscard]] std::vector<Entry> all() const;
    [[nodiscard]] std::vector<UUID> groupIDs() const;

    void prepare();
    void unlock();
    void lock();
    void save();
    void advance(double seconds);
    void undo() { travel(undoSteps, redoSteps); }
    void redo() { travel(redoSteps, undoSteps); }

    void addEntry(const Entry& entry, UUID group);
    void updateEntry(const Entry& entry);
    void deleteEntries(const IDs& ids);
    void moveBefore(const IDs& ids, std::optional<UUID> target);  // without one: to the end
    void duplicate(const IDs& ids);                               // the copies have no id yet
    void moveTo(const IDs& ids, UUID group);
    void addGroup(const Group& group, UUID parent);
    void updateGroup(const Group& group);
    void deleteGroup(UUID id);
    void setExpanded(UUID id, bool isExpanded);
    void copyPassword();

    /// Gives the copies of the last `duplicate` the ids that the same places have in `actual`, and selects them.
    void adoptIDs(const Group& actual);

private:
    template <class Body>
    void edit(const std::string& label, Body body);
    void travel(std::vector<Step>& from, std::vector<Step>& to);
    void refreshLabels();
    void prune();
    void flash(const std::string& text);
    [[nodiscard]] bool isSearching() const;
};

}  // namespace Plain
