// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/ElementHints.h"
#include "core/model/SharedRow.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

/// An array whose copies share what none of them has changed. A copy costs one count. A change copies one element, the
/// chunk of pointers around it and the list of chunks, however long the array is.
///
/// Many threads may read an array and its copies, also while other copies change; one array is changed by one thread
/// at a time. `Element` may be incomplete where an array of it is declared. Elements with a member `id` are found by
/// it.
template <class Element>
class SharedArray {
    struct Node;
    using Hints = ElementHints<Node>;
    using Chunk = SharedRow<Node>;  // the number beside each element is a hint of its id
    using Root = SharedRow<Chunk>;  // the number beside each chunk is the index behind its last element

public:
    using value_type = Element;
    using size_type = std::size_t;
    using const_reference = const Element&;
    class const_iterator;
    using iterator = const_iterator;

    SharedArray() noexcept = default;
    SharedArray(std::initializer_list<Element> elements) {
        for (const auto& element : elements)
            append(element);
    }
    SharedArray(std::vector<Element> elements) {
        for (auto& element : elements)
            append(std::move(element));
    }

    [[nodiscard]] std::size_t size() const noexcept { return m_root ? m_root->numbers().back() : 0; }
    [[nodiscard]] bool empty() const noexcept { return !m_root; }

    /// The index must lie within the array, here and wherever one is asked for.
    [[nodiscard]] const Element& operator[](std::size_t index) const noexcept { return nodeAt(index)->element; }
    [[nodiscard]] const Element& front() const noexcept { return (*this)[0]; }
    [[nodiscard]] const Element& back() const noexcept { return (*this)[size() - 1]; }

    [[nodiscard]] const_iterator begin() const noexcept { return {m_root.get(), 0}; }
    [[nodiscard]] const_iterator end() const noexcept { return {m_root.get(), size()}; }

    /// The element for writing; no other array sees the change. The reference is good for as long as the element stays
    /// in this array and neither the array nor one that holds it is copied: a copy shares the element, and a write
    /// would reach both. So what is copied from the same tree is copied first, not in the expression that writes.
    [[nodiscard]] Element& mutableAt(std::size_t index) { return takeForWriting(index).element; }

    /// Runs `change` on the element in place. To be preferred to `mutableAt` where elements are found by their id:
    /// afterwards the id is known, and the next search need not look into the element.
    template <class Change>
    void mutate(std::size_t index, Change&& change);

    void append(Element element) { insert(size(), std::move(element)); }
    /// Appends all elements of another array, shared with it.
    void appendAll(const SharedArray& other);
    void insert(std::size_t index, Element element) {
        insertNode(index, SharedNode<Node>::adopting(new Node(std::move(element))));
    }
    /// Takes the element out and gives it back; the order of what remains is kept.
    Element removeAt(std::size_t index);
    void clear() noexcept { m_root = nullptr; }

    /// Keeps the elements at these indices, in the order of the indices. What other arrays share of them stays shared,
    /// so this is how an array is sorted or thinned out.
    void rearrange(std::span<const std::size_t> indices);

    /// The index of the first element whose `id` this is.
    template <class ID>
    [[nodiscard]] std::optional<std::size_t> indexOfID(const ID& id) const;

    /// Whether both are copies that nothing has changed since: then they are equal, and nothing lies in memory twice.
    [[nodiscard]] bool sharesStorageWith(const SharedArray& other) const noexcept { return m_root == other.m_root; }

    /// Element by element and in order. What both share is not looked at.
    friend bool operator==(const SharedArray& a, const SharedArray& b) {
        if (a.sharesStorageWith(b))
            return true;
        return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                          [](const Element& x, const Element& y) { return &x == &y || x == y; });
    }

private:
    // A change copies one chunk and the list of chunks; of 100,000 elements, chunks of 316 would copy least.
    static constexpr std::size_t chunkCapacity = 256;

    struct Position {
        std::size_t chunk;
        std::size_t offset;
    };

    static std::size_t startOf(const Root& root, std::size_t chunk) noexcept {
        return chunk == 0 ? 0 : root.numbers()[chunk - 1];
    }
    static Position locate(const Root& root, std::size_t index) noexcept;
    static Position locateForInsert(const Root& root, std::size_t index) noexcept;
    static void joinWithNext(Root& root, std::size_t number);
    static void recount(Root& root, std::size_t number) noexcept;

    [[nodiscard]] const SharedNode<Node>& nodeAt(std::size_t index) const noexcept {
        const auto position = locate(*m_root, index);
        return m_root->children()[position.chunk]->children()[position.offset];
    }
    Node& takeForWriting(std::size_t index);
    void insertNode(std::size_t index, SharedNode<Node> node);
    void appendChunk(SharedNode<Node> node);
    void split(std::size_t number);

    SharedNode<Root> m_root;  // none for the empty array; no chunk of it is empty
};

template <class Element>
struct SharedArray<Element>::Node : SharedCount {
    explicit Node(Element value) : element(std::move(value)) {}
    Element element;

    // In turn: elements hold arrays of their own kind, some thousands of levels deep.
    static void destroy(Node* node) noexcept { deleteInTurn(node); }
};

template <class Element>
class SharedArray<Element>::const_iterator {
public:
    using iterator_category = std::random_access_iterator_tag;
    using value_type = Element;
    using difference_type = std::ptrdiff_t;
    using pointer = const Element*;
    using reference = const Element&;

    const_iterator() noexcept = default;

    reference operator*() const noexcept {
        return m_root->children()[m_position.chunk]->children()[m_position.offset]->element;
    }
    pointer operator->() const noexcept { return &**this; }
    reference operator[](difference_type distance) const noexcept { return *(*this + distance); }

    const_iterator& operator++() noexcept {
        ++m_index;
        if (++m_position.offset == m_root->children()[m_position.chunk]->size())
            m_position = {m_position.chunk + 1, 0};
        return *this;
    }
    const_iterator& operator+=(difference_type distance) noexcept {
        return *this = const_iterator(m_root, m_index + static_cast<std::size_t>(distance));
    }
    const_iterator& operator--() noexcept { return *this += -1; }
    const_iterator& operator-=(difference_type distance) noexcept { return *this += -distance; }
    const_iterator operator++(int) noexcept {
        const auto before = *this;
        ++*this;
        return before;
    }
    const_iterator operator--(int) noexcept {
        const auto before = *this;
        --*this;
        return before;
    }

    friend const_iterator operator+(const_iterator it, difference_type distance) noexcept { return it += distance; }
    friend const_iterator operator+(difference_type distance, const_iterator it) noexcept { return it += distance; }
    friend const_iterator operator-(const_iterator it, difference_type distance) noexcept { return it -= distance; }
    friend difference_type operator-(const const_iterator& a, const const_iterator& b) noexcept {
        return static_cast<difference_type>(a.m_index) - static_cast<difference_type>(b.m_index);
    }
    friend bool operator==(const const_iterator& a, const const_iterator& b) noexcept { return a.m_index == b.m_index; }
    friend auto operator<=>(const const_iterator& a, const const_iterator& b) noexcept {
        return a.m_index <=> b.m_index;
    }

private:
    friend class SharedArray;
    const_iterator(const Root* root, std::size_t index) noexcept : m_root(root), m_index(index) {
        if (root)
            m_position = locate(*root, index);
    }

    const Root* m_root = nullptr;
    std::size_t m_index = 0;
    Position m_position{};
};

template <class Element>
template <class Change>
void SharedArray<Element>::mutate(std::size_t index, Change&& change) {
    const auto position = locate(*m_root, index);
    // A hint that was unknown stays so: an earlier reference may still be written through.
    const auto wasKnown = Hints::isKnown(*m_root->children()[position.chunk], position.offset);
    auto& node = takeForWriting(index);
    std::forward<Change>(change)(node.element);
    if (wasKnown)
        Hints::remember(*m_root->children()[position.chunk], position.offset);
}

template <class Element>
Element SharedArray<Element>::removeAt(std::size_t index) {
    auto& root = Root::own(m_root);
    const auto position = locate(root, index);
    auto& chunk = Hints::own(root.children()[position.chunk]);
    const auto node = chunk.children()[position.offset];
    chunk.erase(position.offset, position.offset + 1);
    if (chunk.size() == 0)
        root.erase(position.chunk, position.chunk + 1);
    recount(root, position.chunk);
    if (root.size() == 0)
        clear();
    else if (position.chunk < root.size())
        joinWithNext(root, position.chunk);
    return node.isUnique() ? std::move(node->element) : node->element;
}

template <class Element>
void SharedArray<Element>::appendAll(const SharedArray& other) {
    if (empty()) {
        *this = other;
        return;
    }
    const auto added = other;  // the other may be this one. NOLINT(performance-unnecessary-copy-initialization)
    for (std::size_t i = 0; i < added.size(); ++i)
        insertNode(size(), added.nodeAt(i));
}

template <class Element>
void SharedArray<Element>::rearrange(std::span<const std::size_t> indices) {
    if (indices.empty())
        return clear();
    struct Held {
        const SharedNode<Node>* node;
        std::uint32_t hint;  // it goes along
    };
    std::vector<Held> held;
    held.reserve(size());
    for (const auto& chunk : m_root->children())
        for (std::size_t i = 0; i < chunk->size(); ++i)
            held.push_back({&chunk->children()[i], chunk->numbers()[i]});

    constexpr std::size_t ahead = 8;  // each element's count lies in a cache line of its own
    auto root = Root::withRoomFor((indices.size() + chunkCapacity - 1) / chunkCapacity);
    for (std::size_t next = 0; next < indices.size();) {
        auto chunk = Chunk::withRoomFor(std::min(chunkCapacity, indices.size() - next));
        for (const auto end = std::min(next + chunkCapacity, indices.size()); next < end; ++next) {
            if (next + ahead < indices.size())
                __builtin_prefetch(held[indices[next + ahead]].node->get(), 1);
            const auto& [node, hint] = held[indices[next]];
            chunk->insert(chunk->size(), *node, hint);
        }
        root->insert(root->size(), std::move(chunk), static_cast<std::uint32_t>(next));
    }
    m_root = std::move(root);
}

template <class Element>
template <class ID>
std::optional<std::size_t> SharedArray<Element>::indexOfID(const ID& id) const {
    if (!m_root)
        return std::nullopt;
    for (std::size_t number = 0; number < m_root->size(); ++number)
        if (const auto offset = Hints::offsetOf(*m_root->children()[number], id))
            return startOf(*m_root, number) + *offset;
    return std::nullopt;
}

template <class Element>
typename SharedArray<Element>::Position SharedArray<Element>::locate(const Root& root, std::size_t index) noexcept {
    const auto ends = root.numbers();
    const auto chunk = static_cast<std::size_t>(std::upper_bound(ends.begin(), ends.end(), index) - ends.begin());
    return {chunk, index - startOf(root, chunk)};
}

/// As `locate`, but the end of the array is the end of its last chunk.
template <class Element>
typename SharedArray<Element>::Position SharedArray<Element>::locateForInsert(const Root& root,
                                                                              std::size_t index) noexcept {
    if (index < root.numbers().back())
        return locate(root, index);
    return {root.size() - 1, root.children().back()->size()};
}

template <class Element>
typename SharedArray<Element>::Node& SharedArray<Element>::takeForWriting(std::size_t index) {
    auto& root = Root::own(m_root);
    const auto position = locate(root, index);
    auto& chunk = Hints::own(root.children()[position.chunk]);
    auto& node = chunk.children()[position.offset];
    if (!node.isUnique())
        node = SharedNode<Node>::adopting(new Node(node->element));
    Hints::forget(chunk, position.offset);
    return *node;
}

template <class Element>
void SharedArray<Element>::insertNode(std::size_t index, SharedNode<Node> node) {
    // Behind a full last chunk comes a new one instead of a split, so that an array that is appended to is packed full.
    if (empty() || (index == size() && m_root->children().back()->size() == chunkCapacity))
        return appendChunk(std::move(node));
    if (m_root->children()[locateForInsert(*m_root, index).chunk]->size() == chunkCapacity)
        split(locate(*m_root, index).chunk);
    auto& root = Root::own(m_root);
    const auto position = locateForInsert(root, index);
    Hints::insert(Hints::own(root.children()[position.chunk], 1), position.offset, std::move(node));
    recount(root, position.chunk);
}

template <class Element>
void SharedArray<Element>::appendChunk(SharedNode<Node> node) {
    const auto end = size() + 1;
    auto chunk = Chunk::withRoomFor(1);
    Hints::insert(*chunk, 0, std::move(node));
    if (!m_root)
        m_root = Root::withRoomFor(1);
    auto& root = Root::own(m_root, 1);
    root.insert(root.size(), std::move(chunk), static_cast<std::uint32_t>(end));
}

template <class Element>
void SharedArray<Element>::split(std::size_t number) {
    auto& root = Root::own(m_root, 1);
    auto& first = Hints::own(root.children()[number]);
    auto second = Chunk::withRoomFor(chunkCapacity);
    second->shareChildren(first);
    second->erase(0, chunkCapacity / 2);
    first.erase(chunkCapacity / 2, chunkCapacity);
    root.insert(number + 1, std::move(second), 0);
    recount(root, number);
}

/// Keeps an array that shrinks from becoming many chunks of few elements.
template <class Element>
void SharedArray<Element>::joinWithNext(Root& root, std::size_t number) {
    if (number + 1 == root.size())
        return;
    const auto& next = *root.children()[number + 1];
    if (root.children()[number]->size() + next.size() > chunkCapacity / 2)
        return;
    Hints::own(root.children()[number], next.size()).shareChildren(next);
    root.erase(number + 1, number + 2);
    recount(root, number);
}

template <class Element>
void SharedArray<Element>::recount(Root& root, std::size_t number) noexcept {
    auto end = startOf(root, number);
    for (; number < root.size(); ++number)
        root.numbers()[number] = static_cast<std::uint32_t>(end += root.children()[number]->size());
}
