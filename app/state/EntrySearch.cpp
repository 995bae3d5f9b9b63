// SPDX-License-Identifier: MIT
#include "app/state/EntrySearch.h"

#include "app/state/SearchText.h"
#include "app/state/SubstringSearch.h"
#include "core/text/Text.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <limits>
#include <span>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace {

constexpr auto none = std::string_view::npos;

void appendTo(Bytes& texts, ByteView text) {
    const auto end = texts.size();
    texts.resize(end + text.size());
    std::ranges::copy(text, texts.data() + end);
}

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

/// The groups' arrays of entries, each group before its subgroups. Not by recursion: a tree may be deeper than the
/// stack.
std::vector<const SharedArray<KdbxEntry>*> entryArraysOf(const KdbxGroup& root) {
    std::vector<const SharedArray<KdbxEntry>*> arrays;
    std::vector<const KdbxGroup*> waiting{&root};
    while (!waiting.empty()) {
        const auto& group = *waiting.back();
        waiting.pop_back();
        if (!group.entries.empty())
            arrays.push_back(&group.entries);
        for (auto i = group.groups.size(); i > 0; --i)
            waiting.push_back(&group.groups[i - 1]);
    }
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

/// What was remembered before the vault changed.
class EntrySearch::OldParts {
public:
    explicit OldParts(std::vector<Part> parts) : m_parts(std::move(parts)) {
        for (auto& part : m_parts)
            m_partsByFirst.emplace(&part.entries.front(), &part);
    }

    /// The part of these very entries, which is handed out once.
    Part* take(const SharedArray<KdbxEntry>& entries) {
        const auto found = m_partsByFirst.find(&entries.front());
        if (found == m_partsByFirst.end() || !found->second->entries.sharesStorageWith(entries))
            return nullptr;
        auto* part = found->second;
        m_partsByFirst.erase(found);
        m_isTaken.insert(part);
        return part;
    }

    /// The parts not taken, one after the other; none after the last. Groups keep their order when one changes.
    const Part* next() {
        while (m_next < m_parts.size() && m_isTaken.contains(&m_parts[m_next]))
            ++m_next;
        return m_next < m_parts.size() ? &m_parts[m_next++] : nullptr;
    }

private:
    std::vector<Part> m_parts;
    std::unordered_map<const KdbxEntry*, Part*> m_partsByFirst;
    std::unordered_set<const Part*> m_isTaken;
    std::size_t m_next = 0;
};

EntryReferences EntrySearch::matching(const KdbxGroup& root, std::string_view query) {
    const auto lowered = Text::lowercased(Text::trimmingWhitespace(query));
    auto words = wordsOf(lowered);
    // The longest word is the rarest: it is looked for everywhere, the others where it was found.
    std::ranges::sort(words, std::greater(), &std::string_view::size);

    prepare(root, std::numeric_limits<std::size_t>::max());
    EntryReferences found;
    for (const auto& part : m_parts)
        addMatching(found, part, words);
    return found;
}

bool EntrySearch::prepare(const KdbxGroup& root, std::size_t most) {
    follow(root);
    for (auto& part : m_parts) {
        most -= extend(part, most);
        if (part.remembered.size() < part.entries.size())
            return false;
    }
    return true;
}

/// Makes the parts those of the vault as it is now, with the texts that are known.
void EntrySearch::follow(const KdbxGroup& root) {
    const auto arrays = entryArraysOf(root);
    if (std::ranges::equal(arrays, m_parts, [](const auto* entries, const Part& part) {
            return part.entries.sharesStorageWith(*entries);
        }))
        return;
    OldParts old(std::exchange(m_parts, {}));
    std::vector<Part> parts(arrays.size());
    std::vector<std::size_t> changed;
    for (std::size_t i = 0; i < arrays.size(); ++i) {
        if (auto* part = old.take(*arrays[i]))
            parts[i] = std::move(*part);
        else
            changed.push_back(i);
    }
    for (const auto i : changed) {
        parts[i].entries = *arrays[i];
        if (const auto* part = old.next())
            takeOver(parts[i], *part);
    }
    m_parts = std::move(parts);
}

/// The texts of entries that both have, which mostly stand in the same order. Where too many are new, the rest waits.
void EntrySearch::takeOver(Part& part, const Part& old) {
    constexpr std::size_t mostNew = 64;
    constexpr std::ptrdiff_t mostGone = 64;  // in a row
    part.texts.reserve(old.texts.size());
    part.remembered.reserve(part.entries.size());
    std::size_t newCount = 0;
    auto known = old.remembered.begin();
    for (const auto& entry : part.entries) {
        const auto last = known + std::min(mostGone, old.remembered.end() - known);
        const auto found = std::find_if(known, last, [&](const auto& text) { return text.entry == &entry; });
        if (found != last) {
            const auto begin = found == old.remembered.begin() ? 0 : std::prev(found)->end;
            appendTo(part.texts, ByteView(old.texts).subspan(begin, found->end - begin));
            known = std::next(found);
        } else if (newCount++ < mostNew) {
            SearchText::appendLowered(part.texts, entry);
        } else {
            return;
        }
        part.remembered.push_back({.entry = &entry, .end = part.texts.size()});
    }
}

/// Adds the texts of the next entries, at most so many. How many it were.
std::size_t EntrySearch::extend(Part& part, std::size_t most) {
    const auto first = part.remembered.size();
    const auto count = std::min(most, part.entries.size() - first);
    if (count == 0)
        return 0;
    if (first == 0) {
        std::size_t size = 0;
        for (const auto& entry : part.entries)
            size += SearchText::size(entry);
        part.texts.reserve(size);
        part.remembered.reserve(part.entries.size());
    }
    auto next = part.entries.begin() + static_cast<std::ptrdiff_t>(first);
    for (std::size_t i = 0; i < count; ++i, ++next) {
        SearchText::appendLowered(part.texts, *next);
        part.remembered.push_back({.entry = &*next, .end = part.texts.size()});
    }
    return count;
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
