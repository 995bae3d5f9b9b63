// SPDX-License-Identifier: MIT
#include "app/state/EntrySearch.h"

#include "app/state/ListDifference.h"
#include "app/state/SearchText.h"
#include "app/state/SubstringSearch.h"
#include "core/model/GroupWalk.h"
#include "core/text/Text.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <limits>
#include <ranges>
#include <span>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace {

constexpr auto none = std::string_view::npos;

// A change of one entry builds its part anew, which must not be felt; each part is searched on its own.
constexpr std::size_t entriesPerPart = 1024;

std::vector<std::string_view> wordsOf(std::string_view loweredQuery) {
    std::vector<std::string_view> words;
    while (!loweredQuery.empty()) {
        const auto end = std::min(loweredQuery.find(' '), loweredQuery.size());
        if (end > 0)
            words.push_back(loweredQuery.substr(0, end));
        loweredQuery.remove_prefix(std::min(end + 1, loweredQuery.size()));
    }
    return words;
}

bool hasAll(std::string_view loweredText, std::span<const std::string_view> words) {
    return std::ranges::all_of(words,
                               [&](std::string_view word) { return SubstringSearch::find(loweredText, word) != none; });
}

/// The arrays of entries of the groups that have some, in the order of the search.
std::vector<const SharedArray<KdbxEntry>*> entryArraysOf(const KdbxGroup& root) {
    std::vector<const SharedArray<KdbxEntry>*> arrays;
    for (const auto& group : GroupWalk(root))
        if (!group.entries.empty())
            arrays.push_back(&group.entries);
    return arrays;
}

}  // namespace

bool isSearch(std::string_view searchText) {
    return !Text::trimmingWhitespace(searchText).empty();
}

bool matches(const KdbxEntry& entry, std::string_view query) {
    const auto lowered = Text::lowercased(Text::trimmingWhitespace(query));
    const auto words = wordsOf(lowered);
    return words.empty() || hasAll(SearchText::lowered(entry), words);
}

void EntrySearch::Part::remember(const KdbxEntry& entry) {
    SearchText::appendLowered(texts, entry);
    remembered.push_back({.entry = &entry, .end = texts.size()});
}

void EntrySearch::Part::remember(const Part& other, std::size_t first, std::size_t end) {
    for (auto i = first; i < end; ++i) {
        const auto begin = i == 0 ? 0 : other.remembered[i - 1].end;
        append(texts, ByteView(other.texts).subspan(begin, other.remembered[i].end - begin));
        remembered.push_back({.entry = other.remembered[i].entry, .end = texts.size()});
    }
}

void EntrySearch::Group::add(Part part) {
    if (part.remembered.empty())
        return;
    ready += part.remembered.size();
    parts.push_back(std::move(part));
}

/// What was remembered before the vault changed.
class EntrySearch::OldGroups {
public:
    explicit OldGroups(std::vector<Group> groups) : m_groups(std::move(groups)) {
        for (auto& group : m_groups)
            m_groupsByFirst.emplace(&group.entries.front(), &group);
    }

    /// The group of these very entries, which is handed out once.
    Group* take(const SharedArray<KdbxEntry>& entries) {
        const auto found = m_groupsByFirst.find(&entries.front());
        if (found == m_groupsByFirst.end() || !found->second->entries.sharesStorageWith(entries))
            return nullptr;
        auto* group = found->second;
        m_groupsByFirst.erase(found);
        m_isTaken.insert(group);
        return group;
    }

    /// The groups not taken, one after the other; none after the last. Groups keep their order when one changes.
    Group* next() {
        while (m_next < m_groups.size() && m_isTaken.contains(&m_groups[m_next]))
            ++m_next;
        return m_next < m_groups.size() ? &m_groups[m_next++] : nullptr;
    }

private:
    std::vector<Group> m_groups;
    std::unordered_map<const KdbxEntry*, Group*> m_groupsByFirst;
    std::unordered_set<const Group*> m_isTaken;
    std::size_t m_next = 0;
};

EntryReferences EntrySearch::matching(const KdbxGroup& root, std::string_view query) {
    const auto lowered = Text::lowercased(Text::trimmingWhitespace(query));
    auto words = wordsOf(lowered);
    // The longest word is the rarest: it is looked for everywhere, the others where it was found.
    std::ranges::sort(words, std::greater(), &std::string_view::size);

    prepare(root, std::numeric_limits<std::size_t>::max());
    EntryReferences found;
    for (const auto& group : m_groups)
        for (const auto& part : group.parts)
            addMatching(found, part, words);
    return found;
}

bool EntrySearch::prepare(const KdbxGroup& root, std::size_t most) {
    follow(root);
    for (auto& group : m_groups) {
        most -= extend(group, most);
        if (group.ready < group.entries.size())
            return false;
    }
    return true;
}

/// Makes the groups those of the vault as it is now, with the texts that are known.
void EntrySearch::follow(const KdbxGroup& root) {
    const auto arrays = entryArraysOf(root);
    if (std::ranges::equal(arrays, m_groups, [](const auto* entries, const Group& group) {
            return group.entries.sharesStorageWith(*entries);
        }))
        return;
    OldGroups old(std::exchange(m_groups, {}));
    std::vector<Group> groups(arrays.size());
    std::vector<std::size_t> changed;
    for (std::size_t i = 0; i < arrays.size(); ++i) {
        if (auto* group = old.take(*arrays[i]))
            groups[i] = std::move(*group);
        else
            changed.push_back(i);
    }
    for (const auto i : changed) {
        groups[i].entries = *arrays[i];
        if (auto* group = old.next())
            takeOver(groups[i], *group);
    }
    m_groups = std::move(groups);
}

/// Moves the texts of the entries that both have. A part in which nothing has changed is moved as it is, so that a
/// change of one entry costs what is around it. Where too many are new, the rest waits.
void EntrySearch::takeOver(Group& group, Group& old) {
    constexpr std::size_t mostNew = 64;
    auto newLeft = mostNew;
    const auto firstOld = old.entries.begin();
    const std::ranges::subrange ready(firstOld, firstOld + static_cast<std::ptrdiff_t>(old.ready));
    ListDifference difference(ready, group.entries, [](const auto& a, const auto& b) { return &a == &b; });
    auto change = difference.next();
    std::size_t taken = 0;  // of the old entries
    std::size_t first = 0;  // of the part, among the old entries
    for (auto& part : old.parts) {
        const auto end = first + part.remembered.size();
        if (taken == first && (!change || change->before >= end)) {
            group.add(std::move(part));
            taken = end;
        } else {
            Part rebuilt;
            rebuilt.texts.reserve(part.texts.capacity());
            for (; change && change->before < end; change = difference.next()) {
                rebuilt.remember(part, taken - first, change->before - first);
                if (change->added > newLeft)
                    return group.add(std::move(rebuilt));
                newLeft -= change->added;
                for (std::size_t i = 0; i < change->added; ++i)
                    rebuilt.remember(group.entries[change->after + i]);
                taken = change->before + change->removed;
            }
            rebuilt.remember(part, taken - first, part.remembered.size());
            taken = std::max(taken, end);
            group.add(std::move(rebuilt));
        }
        first = end;
    }
}

/// Adds the texts of the next entries, at most so many. Returns how many there were.
std::size_t EntrySearch::extend(Group& group, std::size_t most) {
    const auto count = std::min(most, group.entries.size() - group.ready);
    auto next = group.entries.begin() + static_cast<std::ptrdiff_t>(group.ready);
    for (std::size_t i = 0; i < count; ++i, ++next) {
        if (group.parts.empty() || group.parts.back().remembered.size() >= entriesPerPart)
            beginPart(group);
        group.parts.back().remember(*next);
        ++group.ready;
    }
    return count;
}

/// Adds an empty part with room for what comes next, so that it need not grow: what a buffer has outgrown is wiped,
/// also where nothing was ever written.
void EntrySearch::beginPart(Group& group) {
    const auto count = std::min(entriesPerPart, group.entries.size() - group.ready);
    auto next = group.entries.begin() + static_cast<std::ptrdiff_t>(group.ready);
    std::size_t size = 0;
    std::size_t largest = 0;  // a text has room for twice its size before it is lowered
    for (std::size_t i = 0; i < count; ++i, ++next) {
        const auto textSize = SearchText::size(*next);
        size += textSize;
        largest = std::max(largest, textSize);
    }
    auto& part = group.parts.emplace_back();
    part.texts.reserve(size + largest);
    part.remembered.reserve(count);
}

void EntrySearch::addMatching(EntryReferences& found, const Part& part, const std::vector<std::string_view>& words) {
    if (words.empty()) {
        std::ranges::transform(part.remembered, std::back_inserter(found), &RememberedText::entry);
        return;
    }
    const auto texts = textOf(part.texts);
    const auto others = std::span(words).subspan(1);
    std::size_t index = 0;
    std::size_t begin = 0;
    for (auto hit = SubstringSearch::find(texts, words.front()); hit != none;
         hit = SubstringSearch::find(texts, words.front(), begin)) {
        for (; part.remembered[index].end <= hit; ++index)
            begin = part.remembered[index].end;
        const auto end = part.remembered[index].end;
        if (hasAll(texts.substr(begin, end - begin), others))
            found.push_back(part.remembered[index].entry);
        begin = end;
        ++index;
    }
}
