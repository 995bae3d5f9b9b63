// SPDX-License-Identifier: MIT
#pragma once

#include "core/document/KdbxXML.h"
#include "core/document/WipingText.h"
#include "core/document/XMLTree.h"

#include <concepts>

namespace KdbxXML {

/// Prints one document. Foreign text that no longer parses is left out.
class Writer {
public:
    /// `stream` is newly started; `major` is the format's version and selects the form of dates.
    Writer(InnerStreamCipher& stream, std::uint16_t major);

    /// @throws KdbxError nestedTooDeep for what could not be read again, before anything is written.
    void writeDocument(const KdbxDatabase& database, const std::optional<Bytes>& headerHash);

    /// One simple element each. The empty text is a self-closing element.
    void element(std::string_view name, std::string_view text);
    void element(std::string_view name, std::same_as<bool> auto value) { boolElement(name, value); }
    void element(std::string_view name, Timestamp date);

    /// The document so far, in UTF-8.
    [[nodiscard]] ByteView out() const noexcept { return m_out.bytes(); }
    [[nodiscard]] Bytes takeOut() { return std::move(m_out).take(); }

private:
    void writeMeta(const KdbxDatabase& database, const std::optional<Bytes>& headerHash,
                   const KdbxXMLChildren& preserved);
    void writeMemoryProtection(const KdbxXMLChildren& preserved);
    void writeGroup(const KdbxGroup& root);
    void writeGroupBeginning(const KdbxGroup& group);
    void writeGroupFields(const KdbxGroup& group);
    void writeEntry(const KdbxEntry& entry, bool isHistory);
    void writeEntryTimes(const KdbxEntry& entry);
    void writeStrings(const KdbxEntry& entry);
    void writeAutoType(const KdbxEntry& entry);
    void writeString(std::string_view key, std::string_view value, bool isProtected);
    void writeForeign(const std::vector<std::string>& texts);
    void writeForeign(std::string_view text);
    void writeNode(const KdbxXMLNode& root);
    void protectedElementNode(const KdbxXMLNode& node);
    void applyMemoryProtection(const KdbxXMLChildren& nodes);

    void put(std::string_view text) { m_out.append(text); }
    void putBase64(ByteView data);
    void boolElement(std::string_view name, bool value);
    void integerElement(std::string_view name, std::int64_t value);
    void base64Element(std::string_view name, ByteView data);
    void putMasked(std::string_view value);

    WipingText m_out;
    InnerStreamCipher& m_stream;
    std::uint16_t m_major;
    bool m_protectTitle = false;
    bool m_protectUsername = false;
    bool m_protectPassword = true;
    bool m_protectURL = false;
    bool m_protectNotes = false;
    XMLTree m_foreign;  // used for one foreign text after the other
    WipingText m_masked;
    Bytes m_base64;
};

}  // namespace KdbxXML
