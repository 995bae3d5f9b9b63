// SPDX-License-Identifier: MIT
#include "app/state/EntrySearch.h"

#include "app/state/SearchText.h"
#include "app/state/SubstringSearch.h"
#include "core/text/Text.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
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

/// What was remembered before the vault changed, found by what it belongs to.
class EntrySearch::OldTexts {
public:
    explicit OldTexts(std::vector<Part> parts) : m_parts(std::move(parts)) {
        for (auto& part : m_parts)
            m_partsByFirst.emplace(part.remembered.front().entry, &part);
    }

    /// The part of these very entries, which is handed out once.
    Part* take(const SharedArray<KdbxEntry>& entries) {
        const auto found = m_partsByFirst.find(&entries.front());
        if (found == m_partsByFirst.end() || !found->second->entries.sharesStorageWith(entries))
            return nullptr;
        auto* part = found->second;
        m_partsByFirst.erase(found);
        return part;
    }

    /// The text of an entry that is in one of the parts not taken.
    std::optional<ByteView> text(const KdbxEntry* entry) {
        if (m_texts.empty())
            collectTexts();
        const auto found = m_texts.find(entry);
        return found == m_texts.end() ? std::nullopt : std::optional(found->second);
    }

private:
    void collectTexts() {
        for (const auto& [first, part] : m_partsByFirst) {
            std::size_t begin = 0;
            for (const auto& [entry, end] : part->remembered) {
                m_texts.emplace(entry, ByteView(part->texts).subspan(begin, end - begin));
                begin = end;
            }
        }
    }

    std::vector<Part> m_parts;
    std::unordered_map<const KdbxEntry*, Part*> m_partsByFirst;
    std::unordered_map<const KdbxEntry*, ByteView> m_texts;
};

EntryReferences EntrySearch::matching(const KdbxGroup& root, std::string_view query) {
    const auto lowered = Text::lowercased(Text::trimmingWhitespace(query));
    auto words = wordsOf(lowered);
    // The longest word is the rarest: it is looked for everywhere, the others where it was found.
    std::ranges::sort(words, std::greater(), &std::string_view::size);

    remember(root);
    EntryReferences found;
    for (const auto& part : m_parts)
        addMatching(found, part, words);
    return found;
}

void EntrySearch::remember(const KdbxGroup& root) {
    const auto arrays = entryArraysOf(root);
    if (std::ranges::equal(arrays, m_parts, [](const auto* entries, const Part& part) {
            return part.entries.sharesStorageWith(*entries);
        }))
        return;
    OldTexts old(std::exchange(m_parts, {}));
    std::vector<Part> parts(arrays.size());
    std::vector<std::size_t> changed;
    for (std::size_t i = 0; i < arrays.size(); ++i) {
        if (auto* part = old.take(*arrays[i]))
            parts[i] = std::move(*part);
        else
            changed.push_back(i);
    }
    for (const auto i : changed)
        parts[i] = partOf(*arrays[i], old);
    m_parts = std::move(parts);
}

EntrySearch::Part EntrySearch::partOf(const SharedArray<KdbxEntry>& entries, OldTexts& old) {
    Part part{.entries = entries, .remembered = {}, .texts = {}};
    std::size_t size = 0;
    for (const auto& entry : entries)
        size += SearchText::size(entry);
    part.texts.reserve(size);
    part.remembered.reserve(entries.size());
    for (const auto& entry : entries) {
        if (const auto text = old.text(&entry))
            appendTo(part.texts, *text);
        else
            SearchText::appendLowered(part.texts, entry);
        part.remembered.push_back({.entry = &entry, .end = part.texts.size()});
    }
    return part;
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
