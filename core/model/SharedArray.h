// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/SharedNode.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <span>
#include <utility>
#include <vector>

/// An array whose copies share what none of them has changed. A copy costs one count; a change copies one element, the
/// chunk of pointers around it and the list of chunks, whatever else the array holds.
///
/// Reading is safe from many threads, also while other copies change; one array is changed by one thread at a time.
/// `Element` may be incomplete where an array of it is declared. Where it has a member `id`, elements are found by it.
template <class Element>
class SharedArray {
    struct Node;
    struct Chunk;
    struct Root;

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

    [[nodiscard]] std::size_t size() const noexcept { return m_root ? m_root->size() : 0; }
    [[nodiscard]] bool empty() const noexcept { return !m_root; }

    [[nodiscard]] const Element& operator[](std::size_t index) const noexcept {
        const auto place = m_root->locate(index);
        return m_root->chunks[place.chunk]->nodes[place.offset]->element;
    }
    [[nodiscard]] const Element& front() const noexcept { return (*this)[0]; }
    [[nodiscard]] const Element& back() const noexcept { return (*this)[size() - 1]; }

    [[nodiscard]] const_iterator begin() const noexcept { return {m_root.get(), 0}; }
    [[nodiscard]] const_iterator end() const noexcept { return {m_root.get(), size()}; }

    /// The element alone, for writing; no other array sees the change.
    /// The reference is good until this array is next changed or copied.
    [[nodiscard]] Element& mutableAt(std::size_t index);

    /// Runs `change` on the element in place; no other array sees the change.
    template <class Change>
    void mutate(std::size_t index, Change&& change);

    void append(Element element) { insert(size(), std::move(element)); }
    void insert(std::size_t index, Element element);
    /// Takes the element out and gives it to the caller; the order of what remains is kept.
    Element removeAt(std::size_t index);
    void clear() noexcept { m_root = nullptr; }
    void replaceAll(std::vector<Element> elements) { *this = SharedArray(std::move(elements)); }

    /// Makes the array that of the elements at these indices, in their order. Each stays shared with other arrays.
    void rearrange(std::span<const std::size_t> indices);

    /// The first element whose `id` this is.
    template <class ID>
    [[nodiscard]] std::optional<std::size_t> indexOfID(const ID& id) const;

    /// Whether both hold the same unchanged storage: then they are equal, and nothing was copied.
    [[nodiscard]] bool sharesStorageWith(const SharedArray& other) const noexcept { return m_root == other.m_root; }

    /// Whether both hold one and the same element at `index`, so that it lies in memory once.
    [[nodiscard]] bool sharesElementWith(const SharedArray& other, std::size_t index) const noexcept {
        return index < size() && index < other.size() && &(*this)[index] == &other[index];
    }

    /// Element by element and in order. What both share is equal to itself and is not looked at.
    friend bool operator==(const SharedArray& a, const SharedArray& b) {
        return a.m_root == b.m_root ||
               (a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                                   [](const auto& x, const auto& y) { return &x == &y || x == y; }));
    }

private:
    // A changed array copies one chunk's pointers and one list of chunks, so chunks of the square root of the largest
    // usual array, 100,000 elements, copy least.
    static constexpr std::size_t chunkCapacity = 256;
    static constexpr std::uint32_t none = UINT32_MAX;

    struct Place {
        std::size_t chunk;
        std::size_t offset;
    };

    static std::uint32_t hintOf(const Element& element) noexcept {
        if constexpr (requires { std::hash<std::remove_cvref_t<decltype(element.id)>>(); })
            return hintOfID(element.id);
        else
            return 0;
    }
    template <class ID>
    static std::uint32_t hintOfID(const ID& id) noexcept {
        return static_cast<std::uint32_t>(std::hash<ID>()(id));
    }

    Root& detachedRoot();
    void insertNode(std::size_t index, SharedNode<Node> node);
    static void makeRoom(Root& root, std::size_t index);
    static void joinWithNext(Root& root, std::size_t number);

    SharedNode<Root> m_root;  // none for the empty array
};

template <class Element>
struct SharedArray<Element>::Node : SharedCount {
    explicit Node(Element value) : element(std::move(value)) {}
    Element element;

    // Deferred: an element may hold an array of its own kind, some thousands of levels deep.
    static void destroy(Node* node) noexcept { destroyLater(node); }
};

/// Some elements in a row. Beside each stands a hint of its `id`, so that a search touches no element in vain.
template <class Element>
struct SharedArray<Element>::Chunk : SharedCount {
    std::vector<SharedNode<Node>> nodes;
    std::vector<std::uint32_t> hints;
    std::uint32_t loose = none;  // the element that was handed out for writing, whose hint may be out of date

    [[nodiscard]] std::size_t size() const noexcept { return nodes.size(); }
    void settle() noexcept {
        if (loose != none)
            hints[loose] = hintOf(nodes[loose]->element);
        loose = none;
    }
    Element& mutableAt(std::size_t offset) {
        settle();
        loose = static_cast<std::uint32_t>(offset);
        return nodes[offset].detached().element;
    }
    template <class ID>
    [[nodiscard]] std::optional<std::size_t> offsetOfID(const ID& id, std::uint32_t hint) const {
        for (std::size_t offset = 0; offset < size(); ++offset)
            if ((hints[offset] == hint || offset == loose) && nodes[offset]->element.id == id)
                return offset;
        return std::nullopt;
    }
    void insert(std::size_t offset, SharedNode<Node> node) {
        settle();
        hints.insert(hints.begin() + static_cast<std::ptrdiff_t>(offset), hintOf(node->element));
        nodes.insert(nodes.begin() + static_cast<std::ptrdiff_t>(offset), std::move(node));
    }
    void erase(std::size_t first, std::size_t last) {
        settle();
        hints.erase(hints.begin() + static_cast<std::ptrdiff_t>(first),
                    hints.begin() + static_cast<std::ptrdiff_t>(last));
        nodes.erase(nodes.begin() + static_cast<std::ptrdiff_t>(first),
                    nodes.begin() + static_cast<std::ptrdiff_t>(last));
    }

    static void destroy(Chunk* chunk) noexcept { delete chunk; }
};

template <class Element>
struct SharedArray<Element>::Root : SharedCount {
    std::vector<SharedNode<Chunk>> chunks;  // none is empty
    std::vector<std::size_t> ends;          // of each chunk, the index behind its last element

    [[nodiscard]] std::size_t size() const noexcept { return ends.back(); }
    [[nodiscard]] Place locate(std::size_t index) const noexcept {
        const auto end = std::upper_bound(ends.begin(), ends.end(), index);
        const auto chunk = static_cast<std::size_t>(end - ends.begin());
        return {chunk, index - (chunk == 0 ? 0 : ends[chunk - 1])};
    }
    [[nodiscard]] Place locateForInsert(std::size_t index) const noexcept {
        return index == size() ? Place{chunks.size() - 1, chunks.back()->size()} : locate(index);
    }
    void recount(std::size_t chunk) {
        ends.resize(chunks.size());
        for (std::size_t end = chunk == 0 ? 0 : ends[chunk - 1]; chunk < chunks.size(); ++chunk)
            ends[chunk] = end += chunks[chunk]->size();
    }

    static void destroy(Root* root) noexcept { delete root; }
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

    reference operator*() const noexcept { return m_root->chunks[m_place.chunk]->nodes[m_place.offset]->element; }
    pointer operator->() const noexcept { return &**this; }
    reference operator[](difference_type distance) const noexcept { return *(*this + distance); }

    const_iterator& operator++() noexcept {
        ++m_index;
        if (++m_place.offset == m_root->chunks[m_place.chunk]->size())
            m_place = {m_place.chunk + 1, 0};
        return *this;
    }
    const_iterator& operator--() noexcept { return *this += -1; }
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
    const_iterator& operator+=(difference_type distance) noexcept {
        return *this = const_iterator(m_root, m_index + static_cast<std::size_t>(distance));
    }
    const_iterator& operator-=(difference_type distance) noexcept { return *this += -distance; }

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
    const_iterator(const Root* root, std::size_t index) noexcept
        : m_root(root), m_index(index), m_place(root ? root->locate(index) : Place{}) {}

    const Root* m_root = nullptr;
    std::size_t m_index = 0;
    Place m_place{};
};

template <class Element>
Element& SharedArray<Element>::mutableAt(std::size_t index) {
    auto& root = detachedRoot();
    const auto place = root.locate(index);
    return root.chunks[place.chunk].detached().mutableAt(place.offset);
}

template <class Element>
template <class Change>
void SharedArray<Element>::mutate(std::size_t index, Change&& change) {
    std::forward<Change>(change)(mutableAt(index));
    m_root->chunks[m_root->locate(index).chunk]->settle();
}

template <class Element>
void SharedArray<Element>::insert(std::size_t index, Element element) {
    auto node = SharedNode<Node>::make(std::move(element));
    insertNode(index, std::move(node));
}

template <class Element>
void SharedArray<Element>::insertNode(std::size_t index, SharedNode<Node> node) {
    auto& root = detachedRoot();
    makeRoom(root, index);
    const auto place = root.locateForInsert(index);
    root.chunks[place.chunk].detached().insert(place.offset, std::move(node));
    root.recount(place.chunk);
}

template <class Element>
Element SharedArray<Element>::removeAt(std::size_t index) {
    auto& root = detachedRoot();
    const auto place = root.locate(index);
    auto& chunk = root.chunks[place.chunk].detached();
    const auto node = chunk.nodes[place.offset];
    chunk.erase(place.offset, place.offset + 1);
    if (chunk.size() == 0)
        root.chunks.erase(root.chunks.begin() + static_cast<std::ptrdiff_t>(place.chunk));
    else
        joinWithNext(root, place.chunk);
    root.recount(0);
    if (root.chunks.empty())
        clear();
    return node.isUnique() ? std::move(node->element) : node->element;
}

template <class Element>
void SharedArray<Element>::rearrange(std::span<const std::size_t> indices) {
    SharedArray arranged;
    for (const auto index : indices) {
        const auto place = m_root->locate(index);
        arranged.insertNode(arranged.size(), m_root->chunks[place.chunk]->nodes[place.offset]);
    }
    *this = std::move(arranged);
}

template <class Element>
template <class ID>
std::optional<std::size_t> SharedArray<Element>::indexOfID(const ID& id) const {
    const auto hint = hintOfID(id);
    for (std::size_t chunk = 0; m_root && chunk < m_root->chunks.size(); ++chunk)
        if (const auto offset = m_root->chunks[chunk]->offsetOfID(id, hint))
            return *offset + (chunk == 0 ? 0 : m_root->ends[chunk - 1]);
    return std::nullopt;
}

template <class Element>
typename SharedArray<Element>::Root& SharedArray<Element>::detachedRoot() {
    if (!m_root)
        m_root = SharedNode<Root>::make();
    return m_root.detached();
}

/// Makes room for one more element at `index`: a full chunk is split, and behind a full last one comes a new one.
template <class Element>
void SharedArray<Element>::makeRoom(Root& root, std::size_t index) {
    if (root.chunks.empty() || (index == root.size() && root.chunks.back()->size() == chunkCapacity)) {
        root.chunks.push_back(SharedNode<Chunk>::make());
        root.ends.push_back(root.ends.empty() ? 0 : root.ends.back());
        return;
    }
    const auto number = root.locateForInsert(index).chunk;
    if (root.chunks[number]->size() < chunkCapacity)
        return;
    auto second = SharedNode<Chunk>::make(*root.chunks[number]);
    second->erase(0, chunkCapacity / 2);
    root.chunks[number].detached().erase(chunkCapacity / 2, chunkCapacity);
    root.chunks.insert(root.chunks.begin() + static_cast<std::ptrdiff_t>(number) + 1, std::move(second));
    root.recount(number);
}

/// Keeps a shrinking array from becoming many chunks of few elements.
template <class Element>
void SharedArray<Element>::joinWithNext(Root& root, std::size_t number) {
    if (number + 1 == root.chunks.size() ||
        root.chunks[number]->size() + root.chunks[number + 1]->size() > chunkCapacity / 2)
        return;
    auto& chunk = root.chunks[number].detached();
    for (const auto& node : root.chunks[number + 1]->nodes)
        chunk.insert(chunk.size(), node);
    root.chunks.erase(root.chunks.begin() + static_cast<std::ptrdiff_t>(number) + 1);
}
