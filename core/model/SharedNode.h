// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <utility>

/// The count of those who hold a node. A copy of a node starts with a count of its own.
class SharedCount {
public:
    SharedCount() noexcept = default;
    SharedCount(const SharedCount&) noexcept {}
    SharedCount& operator=(const SharedCount&) = delete;

    void retain() noexcept { m_count.fetch_add(1, std::memory_order_relaxed); }
    /// Whether that was the last holder.
    [[nodiscard]] bool release() noexcept {
        // What other holders did to the node comes before its end.
        return isUnique() || m_count.fetch_sub(1, std::memory_order_acq_rel) == 1;
    }
    [[nodiscard]] bool isUnique() const noexcept { return m_count.load(std::memory_order_acquire) == 1; }

    /// Once nobody holds the node, its count serves as the link of a list of nodes to destroy.
    void setLink(SharedCount* next) noexcept {
        m_count.store(reinterpret_cast<std::uintptr_t>(next), std::memory_order_relaxed);
    }
    [[nodiscard]] SharedCount* link() const noexcept {
        return reinterpret_cast<SharedCount*>(m_count.load(std::memory_order_relaxed));
    }

private:
    std::atomic<std::uintptr_t> m_count = 1;
};

/// A holder of a node that many may hold. `Node` derives from `SharedCount` and tells by `destroy` how it ends.
template <class Node>
class SharedNode {
public:
    SharedNode() noexcept = default;
    SharedNode(std::nullptr_t) noexcept {}
    SharedNode(const SharedNode& other) noexcept : m_node(other.m_node) {
        if (m_node)
            m_node->retain();
    }
    SharedNode(SharedNode&& other) noexcept : m_node(std::exchange(other.m_node, nullptr)) {}
    SharedNode& operator=(SharedNode other) noexcept {
        std::swap(m_node, other.m_node);
        return *this;
    }
    ~SharedNode() {
        if (m_node && m_node->release())
            Node::destroy(m_node);
    }

    template <class... Arguments>
    [[nodiscard]] static SharedNode make(Arguments&&... arguments) {
        SharedNode made;
        made.m_node = new Node(std::forward<Arguments>(arguments)...);
        return made;
    }

    /// The node, made this holder's own by a copy where others hold it too.
    Node& detached() {
        if (!m_node->isUnique())
            *this = make(std::as_const(*m_node));
        return *m_node;
    }

    [[nodiscard]] bool isUnique() const noexcept { return m_node->isUnique(); }
    [[nodiscard]] Node* get() const noexcept { return m_node; }
    Node* operator->() const noexcept { return m_node; }
    Node& operator*() const noexcept { return *m_node; }
    explicit operator bool() const noexcept { return m_node != nullptr; }
    friend bool operator==(const SharedNode& a, const SharedNode& b) noexcept { return a.m_node == b.m_node; }

private:
    Node* m_node = nullptr;
};

/// Destroys the node, unless another of its type is being destroyed on this thread: then that one's destruction goes on
/// with it. So a chain of nodes that hold each other is no deeper on the stack than one node.
template <class Node>
void destroyLater(Node* node) noexcept {
    static thread_local SharedCount* waiting = nullptr;
    static thread_local bool isDestroying = false;
    node->setLink(waiting);
    waiting = node;
    if (isDestroying)
        return;
    isDestroying = true;
    while (waiting) {
        auto* next = static_cast<Node*>(std::exchange(waiting, waiting->link()));
        delete next;
    }
    isDestroying = false;
}
