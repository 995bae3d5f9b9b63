// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/InnerStreamCipher.h"
#include "core/text/Text.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

struct XMLElement;

/// The child elements of an element, in document order.
class XMLChildren {
public:
    class Iterator {
    public:
        using value_type = XMLElement;
        using difference_type = std::ptrdiff_t;

        Iterator() = default;
        explicit Iterator(const XMLElement* element) : m_element(element) {}
        const XMLElement& operator*() const { return *m_element; }
        const XMLElement* operator->() const { return m_element; }
        inline Iterator& operator++();
        Iterator operator++(int) {
            auto before = *this;
            ++*this;
            return before;
        }
        bool operator==(const Iterator&) const = default;

    private:
        const XMLElement* m_element = nullptr;
    };

    [[nodiscard]] bool empty() const { return m_first == nullptr; }
    [[nodiscard]] Iterator begin() const { return Iterator(m_first); }
    [[nodiscard]] Iterator end() const { return {}; }

private:
    friend class XMLTree;
    const XMLElement* m_first = nullptr;
};

/// The element names that the document's schema gives a meaning to.
enum class XMLName : std::uint8_t {
    foreign,
    document,
    association,
    autoType,
    binaries,
    binary,
    creationTime,
    databaseDescription,
    databaseName,
    defaultAutoTypeSequence,
    defaultSequence,
    defaultUserName,
    enabled,
    entry,
    expires,
    expiryTime,
    generator,
    group,
    headerHash,
    history,
    historyMaxItems,
    historyMaxSize,
    iconID,
    isExpanded,
    key,
    keystrokeSequence,
    lastAccessTime,
    lastModificationTime,
    memoryProtection,
    meta,
    name,
    notes,
    protectNotes,
    protectPassword,
    protectTitle,
    protectURL,
    protectUserName,
    recycleBinEnabled,
    recycleBinUUID,
    root,
    string,
    tags,
    times,
    uuid,
    value,
    window,
};

/// An XML element as the parser met it, borrowed from its tree and from the bytes that were parsed.
struct XMLElement {
    std::string_view name{};  // as written, prefix included
    std::string_view text{};  // as in `KdbxXMLNode`
    const Text::Map<std::string>& attributes;
    XMLChildren children{};
    const XMLElement* nextSibling = nullptr;
    XMLName known = XMLName::foreign;
    bool isProtected = false;
    std::uint32_t taken = 0;  // of an entry that was taken, what its taker answered

    /// The first child of that name, or none.
    [[nodiscard]] const XMLElement* child(XMLName childName) const;
    /// `text` without white space and line ends around it.
    [[nodiscard]] std::string_view trimmedText() const;
};

XMLChildren::Iterator& XMLChildren::Iterator::operator++() {
    m_element = m_element->nextSibling;
    return *this;
}

/// A parsed document in few large pieces of memory: a vault has more elements than it pays to allocate one by one.
/// A tree can be used again, which spares setting up the parser. What it copied of the text is wiped.
class XMLTree {
public:
    /// Which text of an element is worth keeping: all, or what is left out where it stands beside child elements and
    /// no one will ask for it.
    enum class KeptText : std::uint8_t { all, whatIsRead };

    /// Takes an entry of the tree of groups when it ends, before its child elements go. `depth` is 1 for the root
    /// element. The answer stays with the element.
    using EntryTaker = std::function<std::uint32_t(const XMLElement& entry, int depth)>;

    explicit XMLTree(KeptText keptText);
    ~XMLTree();
    XMLTree(const XMLTree&) = delete;
    XMLTree& operator=(const XMLTree&) = delete;

    /// The root element, valid as long as `data` and until the next call; as `KdbxXMLNode::parse` otherwise.
    ///
    /// With a `taker`, the tree keeps no children of the entries in groups, however deep, under `Root`. A vault is all
    /// entries, and this way the few elements of one are read while they are still in the processor's cache.
    [[nodiscard]] const XMLElement* parse(ByteView data, InnerStreamCipher* stream, const EntryTaker& taker = {});

private:
    class Builder;
    std::unique_ptr<Builder> m_builder;
};
