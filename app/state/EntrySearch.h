// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/EntryReferences.h"
#include "core/primitives/Bytes.h"

#include <cstddef>
#include <string_view>
#include <vector>

/// Whether the content of the search field asks for anything: spaces and tabs alone do not, a line break does.
[[nodiscard]] bool isSearch(std::string_view searchText);

/// Whether an entry has every word of the query somewhere in its title, user name, address, notes, tags, and names and
/// values of unprotected custom fields. Letter case makes no difference, by Unicode's mapping for all languages ("I" is
/// "i", also for Turkish users); accents do. Neither the password nor a protected field is looked at. A query without
/// words matches every entry.
[[nodiscard]] bool matches(const KdbxEntry& entry, std::string_view query);

/// Search over a whole vault, at every keystroke: it remembers the lowered text of each entry for as long as the vault
/// shares that entry with the one searched before. What is found is what `matches` says.
///
/// What is remembered is as private as the vault: `forget` it when the vault is locked.
class EntrySearch {
public:
    EntrySearch() = default;
    EntrySearch(const EntrySearch&) = delete;
    EntrySearch& operator=(const EntrySearch&) = delete;

    /// The matching entries of the tree, a group's own before those of its subgroups, in stored order.
    [[nodiscard]] EntryReferences matching(const KdbxGroup& root, std::string_view query);

    /// Lowers the texts of at most so many more entries, so that the first letter need not wait for all of them.
    /// Whether all are ready now.
    bool prepare(const KdbxGroup& root, std::size_t most);

    /// Wipes the texts and lets go of the entries.
    void forget() noexcept { m_groups.clear(); }

private:
    struct RememberedText {
        const KdbxEntry* entry;
        std::size_t end;  // in the part's texts, behind the space that closes it
    };

    /// Some entries of a group that follow each other, and their texts.
    struct Part {
        std::vector<RememberedText> remembered;
        Bytes texts;

        void remember(const KdbxEntry& entry);
        /// What another part knows of its entries from `first` to before `end`; none where that is no later.
        void remember(const Part& other, std::size_t first, std::size_t end);
    };

    /// The entries of one group, of which the first so many are ready. The entries are held, not only pointed at:
    /// so none is changed in place, and none gets the address of another.
    struct Group {
        SharedArray<KdbxEntry> entries;
        std::size_t ready = 0;
        std::vector<Part> parts;

        void add(Part part);
    };

    class OldGroups;

    void follow(const KdbxGroup& root);
    static void takeOver(Group& group, Group& old);
    static std::size_t extend(Group& group, std::size_t most);
    static void beginPart(Group& group);
    static void addMatching(EntryReferences& found, const Part& part, const std::vector<std::string_view>& words);

    std::vector<Group> m_groups;  // those that have entries, in the order of the search
};
