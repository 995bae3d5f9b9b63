// SPDX-License-Identifier: MIT
#include "core/document/KdbxXMLWriter.h"

#include "core/document/KdbxDate.h"
#include "core/document/KdbxPreserve.h"
#include "core/document/Nesting.h"
#include "core/document/PreservedXML.h"
#include "core/document/PrintedForm.h"
#include "core/document/XMLPrinting.h"
#include "core/primitives/Base64.h"

namespace KdbxXML {
namespace {

constexpr std::string_view declaration = R"(<?xml version="1.0" encoding="utf-8" standalone="yes"?>)";

/// The last major version whose documents carry the hash of the outer header.
constexpr std::uint16_t lastMajorWithHeaderHash = 3;

std::string joined(const std::vector<std::string>& tags) {
    std::string text;
    for (const auto& tag : tags) {
        if (&tag != &tags.front())
            text += ';';
        text += tag;
    }
    return text;
}

}  // namespace

Writer::Writer(InnerStreamCipher& stream, std::uint16_t major)
    : m_stream(stream), m_major(major), m_foreign(KeptText::whatIsRead) {}

void Writer::writeDocument(const KdbxDatabase& database, const std::optional<Bytes>& headerHash) {
    Nesting::require(database.root, 1);
    const PreservedXML preservedMeta(KdbxPreserve::meta, database.root);
    const PreservedXML preservedRoot(KdbxPreserve::root, database.root);
    applyMemoryProtection(preservedMeta.children());
    put(declaration);
    put("<KeePassFile>");
    writeMeta(database, headerHash, preservedMeta.children());
    put("<Root>");
    writeGroup(database.root);
    for (const auto& node : preservedRoot.children())
        writeNode(node);
    put("</Root></KeePassFile>");
}

// --- Simple elements ---

void Writer::element(std::string_view name, std::string_view text) {
    put("<");
    put(name);
    if (text.empty())
        return put("/>");
    put(">");
    XMLText::appendContent(m_out, text);
    XMLPrinting::appendEndTag(m_out, name);
}

void Writer::element(std::string_view name, Timestamp date) {
    element(name, KdbxDate::encode(date, m_major));
}

void Writer::boolElement(std::string_view name, bool value) {
    element(name, value ? "True" : "False");
}

void Writer::integerElement(std::string_view name, std::int64_t value) {
    element(name, std::to_string(value));
}

/// Never self-closing.
void Writer::base64Element(std::string_view name, ByteView data) {
    put("<");
    put(name);
    put(">");
    putBase64(data);
    XMLPrinting::appendEndTag(m_out, name);
}

void Writer::putBase64(ByteView data) {
    m_base64.clear();
    Base64::appendEncoded(m_base64, data);
    put(textOf(m_base64));
}

/// The value as the stream masks it here. It is not escaped: the reader will not see it as text but as bytes.
void Writer::putMasked(std::string_view value) {
    m_masked.clear();
    XMLText::appendSanitised(m_masked, value);
    m_stream.processInPlace(m_masked.mutableBytes());
    put(" Protected=\"True\">");
    putBase64(m_masked.bytes());
}

// --- Meta ---

void Writer::applyMemoryProtection(const KdbxXMLChildren& nodes) {
    const auto block = std::ranges::find(nodes, XMLName::memoryProtection, &KdbxXMLNode::known);
    if (block == nodes.end())
        return;
    const auto flag = [&](XMLName name, bool fallback) {
        const auto* const child = block->child(name);
        return child == nullptr ? fallback : parseBool(child->trimmedText()).value_or(fallback);
    };
    m_protectTitle = flag(XMLName::protectTitle, false);
    m_protectUsername = flag(XMLName::protectUserName, false);
    m_protectPassword = flag(XMLName::protectPassword, true);
    m_protectURL = flag(XMLName::protectURL, false);
    m_protectNotes = flag(XMLName::protectNotes, false);
}

void Writer::writeMeta(const KdbxDatabase& database, const std::optional<Bytes>& headerHash,
                       const KdbxXMLChildren& preserved) {
    const auto& meta = database.meta;
    put("<Meta>");
    element("Generator", meta.generator);
    if (headerHash && m_major <= lastMajorWithHeaderHash)
        base64Element("HeaderHash", *headerHash);
    element("DatabaseName", meta.databaseName);
    element("DatabaseDescription", meta.databaseDescription);
    element("DefaultUserName", meta.defaultUsername);
    writeMemoryProtection(preserved);
    element("RecycleBinEnabled", meta.recycleBinEnabled);
    base64Element("RecycleBinUUID", meta.recycleBinUUID.value_or(UUID()).kdbxBytes());
    integerElement("HistoryMaxItems", meta.historyMaxItems);
    integerElement("HistoryMaxSize", meta.historyMaxSize);
    // The attachments of an old document go into the inner header now.
    for (const auto& node : preserved)
        if (node.known != XMLName::memoryProtection && node.known != XMLName::binaries)
            writeNode(node);
    put("</Meta>");
}

void Writer::writeMemoryProtection(const KdbxXMLChildren& preserved) {
    bool isPreserved = false;
    for (const auto& node : preserved) {
        if (node.known != XMLName::memoryProtection)
            continue;
        writeNode(node);
        isPreserved = true;
    }
    if (isPreserved)
        return;
    put("<MemoryProtection>");
    element("ProtectTitle", false);
    element("ProtectUserName", false);
    element("ProtectPassword", true);
    element("ProtectURL", false);
    element("ProtectNotes", false);
    put("</MemoryProtection>");
}

// --- Groups ---

/// A group and all in it, by a list of the open ones: groups may be nested deep.
void Writer::writeGroup(const KdbxGroup& root) {
    struct Open {
        const KdbxGroup* group;
        SharedArray<KdbxGroup>::const_iterator nextSubgroup;
    };
    std::vector<Open> open;
    const auto begin = [&](const KdbxGroup& group) {
        writeGroupBeginning(group);
        open.push_back({&group, group.groups.begin()});
    };
    begin(root);
    while (!open.empty()) {
        auto& [group, nextSubgroup] = open.back();
        if (nextSubgroup != group->groups.end()) {
            begin(*nextSubgroup++);
        } else {
            put("</Group>");
            open.pop_back();
        }
    }
}

/// A group as far as its first subgroup.
void Writer::writeGroupBeginning(const KdbxGroup& group) {
    put("<Group>");
    writeGroupFields(group);
    writeForeign(group.unknownXML);
    for (const auto& entry : group.entries)
        writeEntry(entry, false);
}

void Writer::writeGroupFields(const KdbxGroup& group) {
    base64Element("UUID", group.id.kdbxBytes());
    element("Name", group.name);
    element("Notes", group.notes);
    integerElement("IconID", group.iconID);
    put("<Times>");
    element("CreationTime", group.created);
    element("LastModificationTime", group.modified);
    element("LastAccessTime", group.modified);
    element("ExpiryTime", group.modified);
    put("<Expires>False</Expires><UsageCount>0</UsageCount>");
    element("LocationChanged", group.created);
    put("</Times>");
    element("IsExpanded", group.isExpanded);
    element("DefaultAutoTypeSequence", group.defaultAutoTypeSequence.value_or(""));
}

// --- Entries ---

void Writer::writeEntry(const KdbxEntry& entry, bool isHistory) {
    put("<Entry>");
    base64Element("UUID", entry.id.kdbxBytes());
    integerElement("IconID", entry.iconID);
    put("<ForegroundColor/><BackgroundColor/><OverrideURL/>");
    element("Tags", joined(entry.tags));
    writeEntryTimes(entry);
    writeStrings(entry);
    writeAutoType(entry);
    writeForeign(entry.unknownXML);
    if (!isHistory && !entry.historyItems.empty()) {
        put("<History>");
        for (const auto& item : entry.historyItems)
            writeEntry(item, true);
        put("</History>");
    }
    put("</Entry>");
}

void Writer::writeEntryTimes(const KdbxEntry& entry) {
    put("<Times>");
    element("CreationTime", entry.created);
    element("LastModificationTime", entry.modified);
    element("LastAccessTime", entry.accessed);
    element("ExpiryTime", entry.expiryTime.value_or(entry.modified));
    element("Expires", entry.expires);
    put("<UsageCount>0</UsageCount>");
    element("LocationChanged", entry.created);
    put("</Times>");
}

void Writer::writeStrings(const KdbxEntry& entry) {
    writeString("Title", entry.title, m_protectTitle);
    writeString("UserName", entry.username, m_protectUsername);
    auto password = entry.password.value();
    writeString("Password", password, m_protectPassword);
    wipe(password);
    writeString("URL", entry.url, m_protectURL);
    writeString("Notes", entry.notes, m_protectNotes);
    for (const auto& [key, value] : entry.customFields)
        writeString(key, value, entry.protectedCustomFields.contains(key));
}

void Writer::writeString(std::string_view key, std::string_view value, bool isProtected) {
    put("<String>");
    element("Key", key);
    if (isProtected) {
        put("<Value");
        putMasked(value);
        put("</Value>");
    } else {
        element("Value", value);
    }
    put("</String>");
}

void Writer::writeAutoType(const KdbxEntry& entry) {
    put("<AutoType>");
    element("Enabled", entry.autoTypeEnabled);
    put("<DataTransferObfuscation>0</DataTransferObfuscation>");
    element("DefaultSequence", entry.autoTypeSequence.value_or(""));
    for (const auto& association : entry.autoTypeWindowAssociations) {
        put("<Association>");
        element("Window", association.window);
        element("KeystrokeSequence", association.sequence.value_or(""));
        put("</Association>");
    }
    put("</AutoType>");
}

// --- Foreign elements ---

void Writer::writeForeign(const std::vector<std::string>& texts) {
    for (const auto& text : texts)
        writeForeign(text);
}

void Writer::writeForeign(std::string_view text) {
    if (const auto name = PrintedForm::nameOf(text)) {
        if (!KdbxPreserve::isWrapper(*name))
            put(text);
        return;
    }
    const auto* const node = m_foreign.parse(bytesOf(text), nullptr);
    if (node != nullptr && !KdbxPreserve::isWrapper(node->name))
        writeNode(*node);
}

void Writer::writeNode(const KdbxXMLNode& root) {
    XMLPrinting::appendTree(m_out, root, [this](const KdbxXMLNode& node) {
        put("<");
        put(node.name);
        XMLPrinting::appendAttributes(m_out, node.attributes);
        if (!node.isProtected)
            return XMLPrinting::appendFromAttributes(m_out, node);
        protectedElementNode(node);
        return false;
    });
}

/// What follows the attributes of a protected node. Its child elements are not written.
void Writer::protectedElementNode(const KdbxXMLNode& node) {
    putMasked(node.text);
    XMLPrinting::appendEndTag(m_out, node.name);
}

}  // namespace KdbxXML
