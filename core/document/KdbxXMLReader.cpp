// SPDX-License-Identifier: MIT
#include "core/document/KdbxDate.h"
#include "core/document/KdbxPreserve.h"
#include "core/document/KdbxXML.h"
#include "core/document/KdbxXMLValues.h"
#include "core/document/Nesting.h"
#include "core/document/XMLParser.h"
#include "core/document/XMLPrinting.h"
#include "core/document/XMLTreeBuilder.h"
#include "core/model/KdbxError.h"
#include "core/primitives/Base64.h"

#include <algorithm>
#include <deque>

namespace KdbxXML {
namespace {

// --- Values ---

std::int64_t integerOr(std::int64_t fallback, const KdbxXMLNode& element) {
    return parseInteger(element.trimmedText()).value_or(fallback);
}

bool boolOr(bool fallback, const KdbxXMLNode& element) {
    return parseBool(element.trimmedText()).value_or(fallback);
}

/// None for the empty text, which is how "inherited" is written.
std::optional<std::string> textOrNone(std::string_view text) {
    return text.empty() ? std::nullopt : std::optional<std::string>(text);
}

std::string_view textOfChild(const KdbxXMLNode& element, XMLName name) {
    const auto* const child = element.child(name);
    return child == nullptr ? std::string_view() : child->text;
}

/// The identifier of a group or an entry: of its `UUID` elements the last that can be read, or else a random one.
UUID idOf(const KdbxXMLNode& element) {
    std::optional<UUID> id;
    for (const auto& child : element.children)
        if (child.known == XMLName::uuid)
            if (const auto read = parseUUID(child.trimmedText()))
                id = read;
    return id ? *id : UUID::random();
}

KdbxError notParsed() {
    return KdbxError::xmlParseFailure("belge çözümlenemedi");
}

/// What is read must not be too deep once it is written.
void checkDepth(int depth) {
    if (depth + Nesting::depthWrittenBelow > Nesting::deepestElement)
        throw notParsed();
}

// --- Times ---

struct Times {
    std::optional<Timestamp> created;
    std::optional<Timestamp> modified;
    std::optional<Timestamp> accessed;
    std::optional<bool> expires;
    std::optional<Timestamp> expiry;
};

/// A repeated element overwrites, also with nothing. How often and where something was used is not kept.
Times timesOf(const KdbxXMLNode& element) {
    Times times;
    for (const auto& child : element.children) {
        switch (child.known) {
            case XMLName::creationTime:
                times.created = KdbxDate::parse(child.text);
                break;
            case XMLName::lastModificationTime:
                times.modified = KdbxDate::parse(child.text);
                break;
            case XMLName::lastAccessTime:
                times.accessed = KdbxDate::parse(child.text);
                break;
            case XMLName::expiryTime:
                times.expiry = KdbxDate::parse(child.text);
                break;
            case XMLName::expires:
                times.expires = parseBool(child.trimmedText());
                break;
            default:
                break;
        }
    }
    return times;
}

void readGroupTimes(const KdbxXMLNode& element, KdbxGroup& group) {
    const auto times = timesOf(element);
    group.created = times.created.value_or(group.created);
    group.modified = times.modified.value_or(group.modified);
}

void readEntryTimes(const KdbxXMLNode& element, KdbxEntry& entry) {
    const auto times = timesOf(element);
    entry.created = times.created.value_or(entry.created);
    entry.modified = times.modified.value_or(entry.modified);
    entry.accessed = times.accessed.value_or(entry.modified);
    entry.expires = times.expires.value_or(false);
    entry.expiryTime = times.expiry;
}

// --- Entries ---

void readString(const KdbxXMLNode& element, KdbxEntry& entry) {
    const auto key = textOfChild(element, XMLName::key);
    const auto* const valueElement = element.child(XMLName::value);
    const auto value = valueElement == nullptr ? std::string_view() : valueElement->text;
    if (Text::equal(key, "Title"))
        entry.title = value;
    else if (Text::equal(key, "UserName"))
        entry.username = value;
    else if (Text::equal(key, "Password"))
        entry.password = SecureString(value);
    else if (Text::equal(key, "URL"))
        entry.url = value;
    else if (Text::equal(key, "Notes"))
        entry.notes = value;
    else {
        entry.customFields.insert_or_assign(std::string(key), std::string(value));
        if (valueElement != nullptr && valueElement->isProtected)
            entry.protectedCustomFields.emplace(key);
    }
}

AutoTypeWindowAssociation associationOf(const KdbxXMLNode& element) {
    return {.window = std::string(textOfChild(element, XMLName::window)),
            .sequence = textOrNone(textOfChild(element, XMLName::keystrokeSequence))};
}

void readAutoType(const KdbxXMLNode& element, KdbxEntry& entry) {
    for (const auto& child : element.children) {
        switch (child.known) {
            case XMLName::enabled:
                entry.autoTypeEnabled = boolOr(true, child);
                break;
            case XMLName::defaultSequence:
                entry.autoTypeSequence = textOrNone(child.text);
                break;
            case XMLName::association:
                entry.autoTypeWindowAssociations.push_back(associationOf(child));
                break;
            default:
                break;
        }
    }
}

// --- The document ---

/// The reading of one document. It follows the nesting of history by recursion, which the parser bounds.
class Reader {
public:
    explicit Reader(const std::vector<Binary>& binaries) : m_binaries(binaries) {}

    /// Reads an entry of a group, in the order of the document.
    void takeEntry(const KdbxXMLNode& element, int depth);

    /// Reads the document after its entries.
    Document readDocument(const KdbxXMLNode& documentElement);

private:
    struct OpenGroup {
        KdbxGroup group;
        KdbxXMLChildren::Iterator nextChild;
    };

    void readMeta(const KdbxXMLNode& meta);
    void readMetaChild(const KdbxXMLNode& child);
    void readRecycleBinUUID(const KdbxXMLNode& element);
    KdbxGroup readGroups(const KdbxXMLNode& root);
    void readGroupChild(const KdbxXMLNode& child, KdbxGroup& group);
    void readEntry(const KdbxXMLNode& element, int depth, KdbxEntry& entry);
    void readEntryChild(const KdbxXMLNode& child, KdbxEntry& entry);
    void readHistory(const KdbxXMLNode& history, int depth, KdbxEntry& entry);
    void addWrappers(const KdbxXMLNode& root);
    void addWrapper(std::string_view name, std::string_view content);
    void preserve(const KdbxXMLNode& element, std::vector<std::string>& texts);

    const std::vector<Binary>& m_binaries;
    // In the order of the document, in which the groups take them: the first group of the first `Root` comes first.
    std::deque<KdbxEntry> m_entries;
    std::size_t m_nextEntry = 0;
    Document m_document;
    WipingText m_preservedMeta;
    WipingText m_printed;  // where foreign elements are printed, protected values in the clear: wiped in the end
};

void Reader::takeEntry(const KdbxXMLNode& element, int depth) {
    m_entries.push_back({.id = idOf(element)});
    readEntry(element, depth, m_entries.back());
}

Document Reader::readDocument(const KdbxXMLNode& documentElement) {
    if (documentElement.known != XMLName::document)
        throw KdbxError::xmlParseFailure("kök öğe <KeePassFile> değil (<" + std::string(documentElement.name) + ">)");
    const auto* const root = documentElement.child(XMLName::root);
    if (root == nullptr)
        throw KdbxError::xmlParseFailure("<Root> yok");
    const auto* const group = root->child(XMLName::group);
    if (group == nullptr)
        throw KdbxError::xmlParseFailure("<Root> altında <Group> yok");
    if (const auto* const meta = documentElement.child(XMLName::meta))
        readMeta(*meta);
    m_document.root = readGroups(*group);
    addWrappers(*root);
    return std::move(m_document);
}

void Reader::readMeta(const KdbxXMLNode& meta) {
    for (const auto& child : meta.children)
        readMetaChild(child);
}

void Reader::readMetaChild(const KdbxXMLNode& child) {
    auto& meta = m_document.meta;
    switch (child.known) {
        case XMLName::generator:
            meta.generator = child.trimmedText();
            break;
        case XMLName::databaseName:
            meta.databaseName = child.trimmedText();
            break;
        case XMLName::databaseDescription:
            meta.databaseDescription = child.trimmedText();
            break;
        case XMLName::defaultUserName:
            meta.defaultUsername = child.trimmedText();
            break;
        case XMLName::recycleBinEnabled:
            meta.recycleBinEnabled = boolOr(true, child);
            break;
        case XMLName::recycleBinUUID:
            readRecycleBinUUID(child);
            break;
        case XMLName::historyMaxItems:
            meta.historyMaxItems = integerOr(KdbxMeta::defaultHistoryMaxItems, child);
            break;
        case XMLName::historyMaxSize:
            meta.historyMaxSize = integerOr(KdbxMeta::defaultHistoryMaxSize, child);
            break;
        case XMLName::headerHash:
            m_document.headerHash = Base64::decodeStrict(child.trimmedText());
            break;
        default:
            XMLPrinting::appendElement(m_preservedMeta, child);
    }
}

/// Sixteen zero bytes are how "no recycle bin" is written.
void Reader::readRecycleBinUUID(const KdbxXMLNode& element) {
    const auto id = parseUUID(element.trimmedText());
    if (id && !id->isZero())
        m_document.meta.recycleBinUUID = id;
}

/// The tree of groups, by a list of the open ones and not by recursion, which would hold a group on the stack at each
/// level.
KdbxGroup Reader::readGroups(const KdbxXMLNode& root) {
    std::vector<OpenGroup> open;
    open.push_back({.group = {.id = idOf(root)}, .nextChild = root.children.begin()});
    for (;;) {
        const auto depth = Nesting::depthOfRootGroup + static_cast<int>(open.size()) - 1;
        auto& innermost = open.back();
        if (innermost.nextChild == KdbxXMLChildren::Iterator()) {
            auto finished = std::move(innermost.group);
            open.pop_back();
            if (open.empty())
                return finished;
            open.back().group.groups.append(std::move(finished));
            continue;
        }
        const auto& child = *innermost.nextChild++;
        if (child.known != XMLName::group) {
            readGroupChild(child, innermost.group);
            continue;
        }
        checkDepth(depth + 1);
        open.push_back({.group = {.id = idOf(child)}, .nextChild = child.children.begin()});
    }
}

void Reader::readGroupChild(const KdbxXMLNode& child, KdbxGroup& group) {
    switch (child.known) {
        case XMLName::uuid:
            break;  // `idOf` has it
        case XMLName::name:
            group.name = child.text;
            break;
        case XMLName::notes:
            group.notes = child.text;
            break;
        case XMLName::iconID:
            group.iconID = integerOr(KdbxGroup::defaultIconID, child);
            break;
        case XMLName::isExpanded:
            group.isExpanded = boolOr(true, child);
            break;
        case XMLName::defaultAutoTypeSequence:
            group.defaultAutoTypeSequence = textOrNone(child.text);
            break;
        case XMLName::times:
            readGroupTimes(child, group);
            break;
        case XMLName::entry:
            group.entries.append(std::move(m_entries[m_nextEntry++]));
            break;
        default:
            preserve(child, group.unknownXML);
    }
}

void Reader::readEntry(const KdbxXMLNode& element, int depth, KdbxEntry& entry) {
    checkDepth(depth);
    for (const auto& child : element.children) {
        if (child.known == XMLName::history)
            readHistory(child, depth + 1, entry);
        else
            readEntryChild(child, entry);
    }
}

void Reader::readEntryChild(const KdbxXMLNode& child, KdbxEntry& entry) {
    switch (child.known) {
        case XMLName::uuid:
            break;  // `idOf` has it
        case XMLName::iconID:
            entry.iconID = integerOr(KdbxEntry::defaultIconID, child);
            break;
        case XMLName::tags:
            entry.tags = splitTags(child.text);
            break;
        case XMLName::times:
            readEntryTimes(child, entry);
            break;
        case XMLName::string:
            readString(child, entry);
            break;
        case XMLName::autoType:
            readAutoType(child, entry);
            break;
        default:
            preserve(child, entry.unknownXML);
    }
}

void Reader::readHistory(const KdbxXMLNode& history, int depth, KdbxEntry& entry) {
    for (const auto& child : history.children) {
        if (child.known != XMLName::entry)
            continue;
        KdbxEntry item{.id = idOf(child)};
        readEntry(child, depth + 1, item);
        entry.historyItems.append(std::move(item));
    }
}

void Reader::addWrappers(const KdbxXMLNode& root) {
    addWrapper(KdbxPreserve::meta, m_preservedMeta.view());
    WipingText content;
    for (const auto& child : root.children)
        if (child.known != XMLName::group)
            XMLPrinting::appendElement(content, child);
    addWrapper(KdbxPreserve::root, content.view());
    content.clear();
    for (const auto& binary : m_binaries) {
        content.append("<Binary Flags=\"" + std::to_string(binary.flags) + "\">");
        content.append(Base64::encode(binary.data));
        content.append("</Binary>");
    }
    addWrapper(KdbxPreserve::binaries, content.view());
}

/// A wrapper is there only if it has something to carry.
void Reader::addWrapper(std::string_view name, std::string_view content) {
    if (content.empty())
        return;
    std::string wrapper;
    wrapper.reserve(content.size() + 2 * name.size() + std::string_view("<></>").size());
    wrapper.append("<").append(name).append(">").append(content).append("</").append(name).append(">");
    m_document.root.unknownXML.push_back(std::move(wrapper));
}

void Reader::preserve(const KdbxXMLNode& element, std::vector<std::string>& texts) {
    m_printed.clear();
    XMLPrinting::appendElement(m_printed, element);
    texts.emplace_back(m_printed.view());
}

/// Builds the tree of a document, except for the entries in groups, however deep, under `Root`: each is read as it
/// ends, and its content dropped. A vault is all entries, and this way the few elements of one are read while they are
/// still in the processor's cache.
class DocumentBuilder final : public XMLParser::Listener {
public:
    DocumentBuilder(Reader& reader, InnerStreamCipher& stream) : m_reader(reader), m_tree(KeptText::whatIsRead) {
        m_tree.begin(&stream);
    }

    void startElement(std::string_view name, const char* const* attributes) override {
        const auto known = m_tree.open(name, attributes).known;
        if (known == XMLName::entry && isInGroup())
            m_entryOpened = m_tree.extent();
        if (m_onPath == m_depth && known == nameOnPath())
            ++m_onPath;
        ++m_depth;
    }

    void characters(std::string_view piece, XMLParser::Lifetime lifetime) override {
        m_tree.characters(piece, lifetime);
    }

    void endElement() override {
        const auto& element = m_tree.close();
        m_onPath = std::min(m_onPath, --m_depth);
        if (element.known != XMLName::entry || !isInGroup())
            return;
        m_reader.takeEntry(element, m_depth + 1);
        m_tree.dropContent(m_entryOpened);
    }

    [[nodiscard]] const KdbxXMLNode* root() const noexcept { return m_tree.root(); }

private:
    /// The name that leads one element further on the path of the groups: the document element, its `Root`, a group.
    [[nodiscard]] XMLName nameOnPath() const noexcept {
        return m_depth == 0 ? XMLName::document : m_depth == 1 ? XMLName::root : XMLName::group;
    }

    [[nodiscard]] bool isInGroup() const noexcept {
        return m_depth >= Nesting::depthOfRootGroup && m_onPath == m_depth;
    }

    Reader& m_reader;
    XMLTreeBuilder m_tree;
    XMLTreeBuilder::Extent m_entryOpened{};  // when the entry in a group began that is open now
    int m_depth = 0;                         // of open elements
    int m_onPath = 0;                        // how many of them, from the root on, are on the path
};

}  // namespace

Document parse(ByteView data, InnerStreamCipher& stream, KdbxFormatVersion /*version*/,
               const std::vector<Binary>& binaries) {
    Reader reader(binaries);
    DocumentBuilder builder(reader, stream);
    if (!XMLParser().parse(data, builder))
        throw notParsed();
    return reader.readDocument(*builder.root());
}

}  // namespace KdbxXML
