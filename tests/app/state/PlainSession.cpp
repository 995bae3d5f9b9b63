// SPDX-License-Identifier: MIT
#include "tests/app/state/PlainSession.h"

#include <algorithm>
#include <sstream>

namespace Plain {
namespace {

constexpr std::size_t undoLimit = 50;

template <class Visit>
void walk(Group& group, Visit visit) {
    visit(group);
    for (auto& subgroup : group.groups)
        walk(subgroup, visit);
}

template <class Visit>
void walk(const Group& group, Visit visit) {
    visit(group);
    for (const auto& subgroup : group.groups)
        walk(subgroup, visit);
}

Group* find(Group& root, UUID id) {
    Group* found = nullptr;
    walk(root, [&](Group& group) {
        if (!found && group.id == id)
            found = &group;
    });
    return found;
}

Entry* findEntry(Group& root, UUID id) {
    Entry* found = nullptr;
    walk(root, [&](Group& group) {
        for (auto& entry : group.entries)
            if (!found && entry.id == id)
                found = &entry;
    });
    return found;
}

std::vector<Entry> allIn(const Group& root) {
    std::vector<Entry> entries;
    walk(root, [&](const Group& group) { entries.insert(entries.end(), group.entries.begin(), group.entries.end()); });
    return entries;
}

void removeEntries(Group& root, const Session::IDs& ids) {
    walk(root, [&](Group& group) { std::erase_if(group.entries, [&](const Entry& e) { return ids.contains(e.id); }); });
}

void adopt(Group& group, const Group& actual, Session::IDs& adopted) {
    for (std::size_t i = 0; i < group.entries.size(); ++i)
        if (group.entries[i].id.isZero() && i < actual.entries.size())
            adopted.insert(group.entries[i].id = actual.entries[i].id);
    for (std::size_t i = 0; i < group.groups.size() && i < actual.groups.size(); ++i)
        adopt(group.groups[i], actual.groups[i], adopted);
}

std::string lowered(std::string text) {
    for (auto& c : text)
        c = static_cast<char>(std::tolower(c));
    return text;
}

std::string counted(std::size_t count, const char* one, const std::string& several) {
    return count == 1 ? one : several;
}

}  // namespace

Group plain(const KdbxGroup& group) {
    Group result{.id = group.id,
                 .name = group.name,
                 .isExpanded = group.isExpanded,
                 .modified = group.modified.seconds,
                 .entries = {},
                 .groups = {}};
    for (const auto& entry : group.entries) {
        result.entries.push_back({.id = entry.id,
                                  .title = entry.title,
                                  .password = entry.password.value(),
                                  .modified = entry.modified.seconds,
                                  .accessed = entry.accessed.seconds,
                                  .history = {}});
        for (const auto& item : entry.historyItems)
            result.entries.back().history.push_back(item.title);
    }
    for (const auto& subgroup : group.groups)
        result.groups.push_back(plain(subgroup));
    return result;
}

bool Session::isSearching() const {
    return search.find_first_not_of(" \t") != std::string::npos;
}

std::vector<Entry> Session::all() const {
    return root ? allIn(*root) : std::vector<Entry>();
}

std::vector<UUID> Session::groupIDs() const {
    std::vector<UUID> ids;
    if (root)
        walk(*root, [&](const Group& group) { ids.push_back(group.id); });
    return ids;
}

std::vector<Entry> Session::visible() const {
    if (!root)
        return {};
    auto copy = *root;
    auto* const selected = selectedGroup ? find(copy, *selectedGroup) : nullptr;
    auto entries = isSearching() ? all() : (selected ? selected : &copy)->entries;
    if (isSearching()) {
        std::erase_if(entries, [&](const Entry& entry) {
            std::istringstream words(lowered(search));
            for (std::string word; words >> word;)
                if (lowered(entry.title).find(word) == std::string::npos)
                    return true;
            return false;
        });
    }
    const auto sortBy = [&](auto key) {
        std::stable_sort(entries.begin(), entries.end(), [&](const auto& a, const auto& b) { return key(a) < key(b); });
        if (!sort.ascending)
            std::reverse(entries.begin(), entries.end());
    };
    if (sort.column == EntrySort::Column::title)
        sortBy([](const Entry& entry) { return entry.title; });
    if (sort.column == EntrySort::Column::modified)
        sortBy([](const Entry& entry) { return entry.modified; });
    if (sort.column == EntrySort::Column::username || sort.column == EntrySort::Column::url)
        sortBy([](const Entry&) { return 0; });
    return entries;
}

void Session::prepare() {
    root.reset();
    hasError = false;
    selectedGroup.reset();
    selectedEntries.clear();
}

void Session::unlock() {
    root = file;
    isDirty = hasError = false;
    undoSteps.clear();
    redoSteps.clear();
    refreshLabels();
    selectedGroup = root->id;
    selectedEntries.clear();
    search.clear();
}

void Session::lock() {
    if (!root)
        return;
    if (isDirty && !diskIsFull) {
        file = *root;
        isDirty = false;
    }
    root.reset();
    selectedGroup.reset();
    selectedEntries.clear();
    search.clear();
    undoSteps.clear();
    redoSteps.clear();
    refreshLabels();
}

void Session::save() {
    if (root && diskIsFull) {
        hasError = true;
        return;
    }
    if (root) {
        file = *root;
        isDirty = false;
    }
    flash("Kaydedildi");
}

void Session::advance(double seconds) {
    now += seconds;
    if (std::erase_if(statusClears, [&](double due) { return due <= now; }) > 0)
        status.reset();
}

void Session::flash(const std::string& text) {
    status = text;
    statusClears.push_back(now + 2);
}

template <class Body>
void Session::edit(const std::string& label, Body body) {
    if (!root)
        return;
    undoSteps.push_back({*root, label, sort.column});
    if (undoSteps.size() > undoLimit)
        undoSteps.erase(undoSteps.begin());
    redoSteps.clear();
    body(*root);
    isDirty = true;
    refreshLabels();
}

void Session::travel(std::vector<Step>& from, std::vector<Step>& to) {
    if (from.empty())
        return;
    const auto step = from.back();
    from.pop_back();
    if (!root)
        return;
    to.push_back({*root, step.label, sort.column});
    root = step.root;
    sort.column = step.column;
    isDirty = true;
    prune();
    refreshLabels();
}

void Session::refreshLabels() {
    undoLabel = undoSteps.empty() ? std::nullopt : std::optional(undoSteps.back().label);
    redoLabel = redoSteps.empty() ? std::nullopt : std::optional(redoSteps.back().label);
}

void Session::prune() {
    std::erase_if(selectedEntries, [&](UUID id) { return !findEntry(*root, id); });
    if (selectedGroup && !find(*root, *selectedGroup))
        selectedGroup = root->id;
}

void Session::addEntry(const Entry& entry, UUID groupID) {
    edit("Kayıt Ekle", [&](Group& vault) {
        if (auto* group = find(vault, groupID)) {
            group->entries.push_back(entry);
            group->modified = now;
        }
    });
    selectedEntries = {entry.id};
}

void Session::updateEntry(const Entry& entry) {
    edit("Kaydı Düzenle", [&](Group& vault) {
        auto* const stored = findEntry(vault, entry.id);
        if (!stored)
            return;
        auto history = stored->history;
        history.push_back(stored->title);
        while (history.size() > static_cast<std::size_t>(std::max<std::int64_t>(historyMaxItems, 1)))
            history.erase(history.begin());
        *stored = entry;
        stored->history = history;
        stored->modified = now;
    });
}

void Session::deleteEntries(const IDs& ids) {
    if (ids.empty())
        return;
    edit(counted(ids.size(), "Kaydı Sil", std::to_string(ids.size()) + " Kaydı Sil"),
         [&](Group& vault) { removeEntries(vault, ids); });
    selectedEntries.clear();
}

void Session::moveBefore(const IDs& ids, std::optional<UUID> target) {
    if (!root || isSearching() || (target && ids.contains(*target)))
        return;
    std::vector<UUID> moving;
    std::vector<UUID> rest;
    for (const auto& entry : visible())
        (ids.contains(entry.id) ? moving : rest).push_back(entry.id);
    const auto place = target ? std::find(rest.begin(), rest.end(), *target) : rest.end();
    if (moving.empty() || (target && place == rest.end()))
        return;
    rest.insert(place, moving.begin(), moving.end());
    const auto groupID = selectedGroup.value_or(root->id);
    edit("Sırayı Değiştir", [&](Group& vault) {
        if (auto* group = find(vault, groupID)) {
            std::vector<Entry> arranged;
            for (const auto& id : rest)
                arranged.push_back(*findEntry(*group, id));
            group->entries = arranged;
            group->modified = now;
        }
    });
    if (sort.column != EntrySort::Column::manual) {
        sort.column = EntrySort::Column::manual;
        flash("Kendi sıralamana geçildi.");
    }
}

void Session::duplicate(const IDs& ids) {
    if (!root || ids.empty())
        return;
    edit(counted(ids.size(), "Kaydı Çoğalt", "Kayıtları Çoğalt"), [&](Group& vault) {
        walk(vault, [&](Group& group) {
            const auto before = group.entries;
            for (auto entry : before)
                if (ids.contains(entry.id)) {
                    entry.id = UUID();
                    entry.title += " kopya";
                    entry.modified = now;
                    entry.history.clear();
                    group.entries.push_back(entry);
                }
        });
    });
    selectedEntries.clear();
}

void Session::adoptIDs(const Group& actual) {
    if (root)
        adopt(*root, actual, selectedEntries);
}

void Session::moveTo(const IDs& ids, UUID groupID) {
    std::vector<Entry> moving;
    for (const auto& entry : all())
        if (ids.contains(entry.id))
            moving.push_back(entry);
    if (moving.empty())
        return;
    edit("Kayıtları Taşı", [&](Group& vault) {
        removeEntries(vault, ids);
        if (auto* group = find(vault, groupID)) {
            group->entries.insert(group->entries.end(), moving.begin(), moving.end());
            group->modified = now;
        }
    });
}

void Session::addGroup(const Group& group, UUID parentID) {
    edit("Grup Ekle", [&](Group& vault) {
        if (auto* parent = find(vault, parentID)) {
            parent->groups.push_back(group);
            parent->isExpanded = true;
            parent->modified = now;
        }
    });
    selectedGroup = group.id;
}

void Session::updateGroup(const Group& group) {
    edit("Grubu Düzenle", [&](Group& vault) {
        if (auto* stored = find(vault, group.id)) {
            stored->name = group.name;
            stored->modified = now;
        }
    });
}

void Session::deleteGroup(UUID id) {
    if (!root || root->id == id)
        return;
    edit("Grubu Sil", [&](Group& vault) {
        walk(vault, [&](Group& group) { std::erase_if(group.groups, [&](const Group& g) { return g.id == id; }); });
    });
    selectedGroup = root->id;
    prune();
}

void Session::setExpanded(UUID id, bool isExpanded) {
    if (auto* group = root ? find(*root, id) : nullptr)
        group->isExpanded = isExpanded;
}

void Session::copyPassword() {
    if (!root || selectedEntries.size() != 1)
        return;
    if (auto* entry = findEntry(*root, *selectedEntries.begin())) {
        flash("Parola kopyalandı");
        entry->accessed = now;
    }
}

}  // namespace Plain
