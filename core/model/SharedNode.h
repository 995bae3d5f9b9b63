// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <utility>

/// How many hold a node. A copy of a node has a count of its own.
class SharedCount {
public:
    SharedCount() noexcept = default;
    SharedCount(const SharedCount&) noexcept {}
    SharedCount& operator=(const SharedCount&) = delete;

    void retain() noexcept { m_count.fetch_add(1, std::memory_order_relaxed); }
    /// Whether that was the last holder.
    [[nodiscard]] bool release() noexcept {
        // What other holders did with the node comes before its end. A lone holder needs no exchange.
        return isUnique() || m_count.fetch_sub(1, std::memory_order_acq_rel) == 1;
    }
    [[nodiscard]] bool isUnique() const noexcept { return m_count.load(std::memory_order_acquire) == 1; }

    /// Once the node is not held any more, its count serves as the link of the nodes that wait for their end.
    void setLink(SharedCount* next) noexcept {
        m_count.store(reinterpret_cast<std::uintptr_t>(next), std::memory_order_relaxed);
    }
    [[nodiscard]] SharedCount* link() const noexcept {
        return reinterpret_cast<SharedCount*>(  // NOLINT(performance-no-int-to-ptr): it was one
            m_count.load(std::memory_order_relaxed));
    }

private:
    std::atomic<std::uintptr_t> m_count = 1;
};

/// One holder of a node that many may hold. `Node` derives from `SharedCount`, and its `destroy` ends it.
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

    /// The first holder of a node that was just made.
    [[nodiscard]] static SharedNode adopting(Node* node) noexcept {
        SharedNode holder;
        holder.m_node = node;
        return holder;
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

/// Deletes the node, but not inside the deletion of another of its type on this thread, which then goes on with it.
/// So a chain of nodes that hold each other is no deeper on the stack than one.
template <class Node>
void deleteInTurn(Node* node) noexcept {
    static thread_local SharedCount* waiting = nullptr;
    static thread_local bool isDeleting = false;
    node->setLink(waiting);
    waiting = node;
    if (isDeleting)
        return;
    isDeleting = true;
    while (waiting) {
        auto* next = static_cast<Node*>(waiting);
        waiting = next->link();
        delete next;
    }
    isDeleting = false;
}
