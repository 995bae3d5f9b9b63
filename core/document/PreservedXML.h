// SPDX-License-Identifier: MIT
#pragma once

#include "core/document/XMLTree.h"
#include "core/model/KdbxDatabase.h"

#include <string_view>

/// The content of a wrapper on the root group, borrowed from the group.
class PreservedXML {
public:
    /// Looks for the first foreign text that begins as the wrapper does and parses.
    PreservedXML(std::string_view wrapperName, const KdbxGroup& root) : m_tree(KeptText::whatIsRead) {
        for (const auto& text : root.unknownXML)
            if (text.starts_with('<') && std::string_view(text).substr(1).starts_with(wrapperName))
                if (const auto* const wrapper = m_tree.parse(bytesOf(text), nullptr)) {
                    m_children = wrapper->children;
                    return;
                }
    }

    /// Empty where there is no wrapper.
    [[nodiscard]] const KdbxXMLChildren& children() const noexcept { return m_children; }

private:
    XMLTree m_tree;
    KdbxXMLChildren m_children;
};
