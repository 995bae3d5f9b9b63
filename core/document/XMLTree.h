// SPDX-License-Identifier: MIT
#pragma once

#include "core/document/XMLParser.h"
#include "core/document/XMLTreeBuilder.h"

/// A parsed document. It can be used again, which spares setting up the parser.
class XMLTree {
public:
    explicit XMLTree(KeptText keptText) : m_builder(keptText) {}

    /// The root element, valid as long as `data` and until the next call; as `KdbxXMLNode::parse` otherwise.
    [[nodiscard]] const KdbxXMLNode* parse(ByteView data, InnerStreamCipher* stream) {
        m_builder.begin(stream);
        return m_parser.parse(data, m_builder) ? m_builder.root() : nullptr;
    }

private:
    XMLParser m_parser;
    XMLTreeBuilder m_builder;
};
