// SPDX-License-Identifier: MIT
#pragma once

#include "core/document/KdbxXML.h"
#include "core/document/KdbxXMLNode.h"

namespace KdbxXML {

/// Prints one document. It cannot fail: foreign text that no longer parses is left out.
class Writer {
public:
    /// `stream` is newly started; `major` is the format's version and selects the form of dates.
    Writer(InnerStreamCipher& stream, std::uint16_t major);

    void writeDocument(const KdbxDatabase& database, const std::optional<Bytes>& headerHash);

    /// The document so far, in UTF-8.
    [[nodiscard]] const Bytes& out() const noexcept { return m_out; }
    [[nodiscard]] Bytes takeOut() noexcept { return std::move(m_out); }

private:
    Bytes m_out;
    InnerStreamCipher& m_stream;
    std::uint16_t m_major;
    bool m_protectTitle = false;
    bool m_protectUsername = false;
    bool m_protectPassword = true;
    bool m_protectURL = false;
    bool m_protectNotes = false;
};

}  // namespace KdbxXML
