// SPDX-License-Identifier: MIT
// Vault files that another program has written, each with an answer that an independent reader has given.
#include "core/container/KdbxCrypto.h"
#include "core/container/KdbxFile.h"
#include "core/container/KdbxInnerHeader.h"
#include "core/container/KdbxKeys.h"
#include "core/document/KdbxXMLNode.h"
#include "core/document/KdbxXMLWriter.h"
#include "core/model/KdbxError.h"
#include "core/primitives/Base64.h"
#include "core/primitives/Gzip.h"
#include "core/primitives/Sha2.h"
#include "tests/support/Hex.h"
#include "tests/support/VaultJSON.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

namespace {

using Answer = nlohmann::json;
namespace fs = std::filesystem;

const fs::path folder = fs::path(BRENVIK_TEST_DATA) / "vaults";

Bytes contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> vaultNames() {
    std::vector<std::string> names;
    for (const auto& file : fs::directory_iterator(folder)) {
        if (file.path().extension() == ".kdbx")
            names.push_back(file.path().stem().string());
    }
    std::ranges::sort(names);
    return names;
}

UUID idOf(const Answer& base64) {
    return UUID::fromKdbxBytes(Base64::decodeStrict(base64.get<std::string>()).value()).value();
}

std::string orEmpty(const std::optional<std::string>& text) {
    return text.value_or("");
}

using Node = std::shared_ptr<const KdbxXMLNode>;

std::vector<Node> nodesOf(const std::vector<std::string>& unknownXML) {
    std::vector<Node> nodes;
    for (const auto& text : unknownXML) {
        nodes.push_back(KdbxXMLNode::parse(bytesOf(text), nullptr));
        EXPECT_TRUE(nodes.back()) << text;
    }
    return nodes;
}

/// The children of a wrapper on the root group.
std::vector<Node> preserved(const KdbxGroup& root, std::string_view name) {
    std::vector<Node> children;
    for (const auto& node : nodesOf(root.unknownXML))
        if (node && node->name == name)
            for (const auto& child : node->children)
                children.emplace_back(node, &child);
    return children;
}

// The answers' shape for a foreign element: name, attributes as pairs, and its children or else its text.
Answer shapeOf(const KdbxXMLNode& node) {
    auto attributes = Answer::array();
    for (const auto& [name, value] : node.attributes)
        attributes.push_back({name, value});
    auto content = Answer(node.text);
    if (!node.children.empty()) {
        content = Answer::array();
        for (const auto& child : node.children)
            content.push_back(shapeOf(child));
    }
    return Answer::array({node.name, attributes, content});
}

void expectMeta(const Answer& answer, const KdbxMeta& meta) {
    EXPECT_EQ(meta.generator, answer["Generator"]);
    EXPECT_EQ(meta.databaseName, answer["DatabaseName"]);
    EXPECT_EQ(meta.databaseDescription, answer["DatabaseDescription"]);
    EXPECT_EQ(meta.defaultUsername, answer["DefaultUserName"]);
    EXPECT_EQ(meta.recycleBinEnabled, answer["RecycleBinEnabled"] == "True");
    EXPECT_EQ(std::to_string(meta.historyMaxItems), answer["HistoryMaxItems"]);
    EXPECT_EQ(std::to_string(meta.historyMaxSize), answer["HistoryMaxSize"]);
}

void expectStrings(const Answer& answer, const KdbxEntry& entry) {
    auto strings = answer["strings"].get<std::map<std::string, std::string>>();
    const auto taken = [&](const char* key) {
        const auto value = strings[key];
        strings.erase(key);
        return value;
    };
    EXPECT_EQ(entry.title, taken("Title"));
    EXPECT_EQ(entry.username, taken("UserName"));
    EXPECT_EQ(entry.password.value(), taken("Password"));
    EXPECT_EQ(entry.url, taken("URL"));
    EXPECT_EQ(entry.notes, taken("Notes"));
    EXPECT_EQ((std::map<std::string, std::string>(entry.customFields.begin(), entry.customFields.end())), strings);

    std::set<std::string> protectedNames;
    for (const std::string name : answer["protected"]) {
        if (strings.contains(name))
            protectedNames.insert(name);
    }
    EXPECT_EQ((std::set<std::string>(entry.protectedCustomFields.begin(), entry.protectedCustomFields.end())),
              protectedNames);
}

void expectAutoType(const Answer& answer, const KdbxEntry& entry) {
    EXPECT_EQ(entry.autoTypeEnabled, answer["enabled"]);
    EXPECT_EQ(orEmpty(entry.autoTypeSequence), answer["sequence"]);
    auto associations = Answer::array();
    for (const auto& association : entry.autoTypeWindowAssociations)
        associations.push_back({association.window, orEmpty(association.sequence)});
    EXPECT_EQ(associations, answer["assoc"]);
}

void expectTimes(const Answer& answer, const KdbxEntry& entry) {
    EXPECT_EQ(entry.created.seconds, answer["CreationTime"]);
    EXPECT_EQ(entry.modified.seconds, answer["LastModificationTime"]);
    EXPECT_EQ(entry.accessed.seconds, answer["LastAccessTime"]);
    EXPECT_EQ(entry.expires, answer["Expires"]);
    ASSERT_TRUE(entry.expiryTime);
    EXPECT_EQ(entry.expiryTime->seconds, answer["ExpiryTime"]);
}

void expectEntry(const Answer& answer, const KdbxEntry& entry) {
    SCOPED_TRACE("entry " + entry.id.text());
    EXPECT_EQ(entry.id, idOf(answer["uuid"]));
    EXPECT_EQ(entry.iconID, answer["iconID"]);
    expectStrings(answer, entry);
    expectAutoType(answer["autotype"], entry);
    expectTimes(answer["times"], entry);

    std::string tags;
    for (const auto& tag : entry.tags)
        tags += (tags.empty() ? "" : ";") + tag;
    EXPECT_EQ(tags, answer["tags"]);

    auto attachments = Answer::array();
    for (const auto& node : nodesOf(entry.unknownXML)) {
        if (node && node->name == "Binary")
            attachments.push_back({node->child("Key")->text, node->child("Value")->attributes.at("Ref")});
    }
    EXPECT_EQ(attachments, answer["binaries"]);

    const auto history = answer.value("history", Answer::array());
    ASSERT_EQ(entry.historyItems.size(), history.size());
    for (std::size_t i = 0; i < history.size(); ++i)
        expectEntry(history[i], entry.historyItems[i]);
}

void expectGroup(const Answer& answer, const KdbxGroup& group) {
    SCOPED_TRACE("group " + group.id.text());
    EXPECT_EQ(group.id, idOf(answer["uuid"]));
    EXPECT_EQ(group.name, answer["name"]);
    EXPECT_EQ(group.notes, answer["notes"]);
    EXPECT_EQ(group.iconID, answer["iconID"]);
    EXPECT_EQ(group.isExpanded, answer["expanded"]);
    EXPECT_EQ(orEmpty(group.defaultAutoTypeSequence), answer["sequence"]);
    ASSERT_EQ(group.entries.size(), answer["entries"].size());
    for (std::size_t i = 0; i < group.entries.size(); ++i)
        expectEntry(answer["entries"][i], group.entries[i]);
    ASSERT_EQ(group.groups.size(), answer["groups"].size());
    for (std::size_t i = 0; i < group.groups.size(); ++i)
        expectGroup(answer["groups"][i], group.groups[i]);
}

/// The foreign elements of Meta by name, of Root in full, and the attachment pool by size and hash.
void expectForeign(const Answer& answer, const KdbxGroup& root) {
    const std::set<std::string> known{"Generator",       "DatabaseName",    "DatabaseDescription",
                                      "DefaultUserName", "HeaderHash",      "RecycleBinEnabled",
                                      "RecycleBinUUID",  "HistoryMaxItems", "HistoryMaxSize"};
    std::vector<std::string> expectedNames;
    for (const std::string name : answer["metaForeign"]) {
        if (!known.contains(name))
            expectedNames.push_back(name);
    }
    std::vector<std::string> names;
    for (const auto& node : preserved(root, "BrenvikPreservedMeta"))
        names.emplace_back(node->name);
    std::ranges::sort(names);
    EXPECT_EQ(names, expectedNames);

    auto foreign = Answer::array();
    for (const auto& node : preserved(root, "BrenvikPreservedRoot"))
        foreign.push_back(shapeOf(*node));
    EXPECT_EQ(foreign, answer["rootForeign"]);

    auto pool = Answer::array();
    for (const auto& binary : KdbxXML::preservedBinaries(root))
        pool.push_back({binary.flags, toHex(Sha2::sha256(binary.data)), binary.data.size()});
    EXPECT_EQ(pool, answer["binaries"]);
}

void expectHeader(const Answer& answer, const KdbxHeader& header) {
    EXPECT_EQ(header.major, answer["major"]);
    EXPECT_EQ(header.minor, answer["minor"]);
    const auto& kdf = answer["kdf"];
    if (header.major == 3) {
        EXPECT_EQ(header.transformRounds, kdf["R"]);
        EXPECT_EQ(header.innerRandomStreamID, answer["streamID"]);
        return;
    }
    const auto& parameters = *header.kdfParameters;
    EXPECT_EQ(toHex(KdbxKeyDerivation::identifier(*header.kdfParameters).kdbxBytes()), kdf["$UUID"]);
    for (const auto& [name, value] : kdf.items()) {
        if (name != "$UUID") {
            EXPECT_EQ(parameters[name]->asUInt64(), value) << name;
        }
    }
}

void expectSettings(const Answer& answer, const KdbxDatabase& database) {
    EXPECT_EQ(database.formatVersion.major, answer["major"]);
    EXPECT_EQ(database.formatVersion.minor, answer["minor"]);
    EXPECT_EQ(database.cipher, answer["cipher"] == "aes256" ? KdbxCipher::aes256 : KdbxCipher::chacha20);
    EXPECT_EQ(database.compressed, answer["compressed"]);
    const auto& kdf = answer["kdf"];
    if (!kdf.contains("M")) {
        EXPECT_EQ(database.kdf, KdfSettings{KdfSettings::AesKdf{kdf["R"]}});
        return;
    }
    const std::uint64_t memoryKiB = kdf["M"].get<std::uint64_t>() / 1024;
    if (kdf["$UUID"] == toHex(KdbxUUIDs::kdfArgon2d().kdbxBytes()))
        EXPECT_EQ(database.kdf,
                  (KdfSettings{KdfSettings::Argon2{KdfSettings::Variant::argon2d, memoryKiB, kdf["I"], kdf["P"]}}));
    else
        EXPECT_EQ(database.kdf,
                  (KdfSettings{KdfSettings::Argon2{KdfSettings::Variant::argon2id, memoryKiB, kdf["I"], kdf["P"]}}));
}

/// The document as it would stand in the clear.
std::string plainDocument(const KdbxDatabase& database) {
    NullStreamCipher stream;
    KdbxXML::Writer writer(stream, 4);
    writer.writeDocument(database, std::nullopt);
    return std::string(textOf(writer.out()));
}

/// XML's own line ends: a carriage return that stands bare in a document is read as a line feed.
std::string withXMLLineEnds(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r')
            result += text[i];
        else if (i + 1 == text.size() || text[i + 1] != '\n')
            result += '\n';
    }
    return result;
}

/// The standard strings that a vault's own memory protection has masked on writing.
std::set<std::string> maskedStandardStrings(const KdbxGroup& root) {
    std::set<std::string> masked;
    for (const auto& node : preserved(root, "BrenvikPreservedMeta")) {
        for (const auto& flag : node->children) {
            if (node->name == "MemoryProtection" && flag.text == "True")
                masked.emplace(flag.name.substr(std::string_view("Protect").size()));
        }
    }
    return masked;
}

/// An answer as it reads once the vault has been saved: only masked values keep their carriage returns.
Answer afterASave(Answer answer, const std::set<std::string>& maskedStrings) {
    auto masked = maskedStrings;
    if (answer.is_object() && answer.contains("protected"))
        masked.merge(answer["protected"].get<std::set<std::string>>());
    for (auto& [name, value] : answer.items()) {
        if (name == "strings") {
            for (auto& [key, text] : value.items()) {
                if (!masked.contains(key))
                    text = withXMLLineEnds(text);
            }
        } else if (value.is_string()) {
            value = withXMLLineEnds(value);
        } else if (value.is_structured()) {
            value = afterASave(value, maskedStrings);
        }
    }
    return answer;
}

/// What a load makes of a document that a save has written: the three empty elements that the writer puts into each
/// entry come back as foreign ones, and stand behind the entry's auto-type.
std::string documentAfterASave(const std::string& before) {
    auto document = withXMLLineEnds(before);
    const std::string end = "</AutoType>";
    const std::string elements = "<ForegroundColor/><BackgroundColor/><OverrideURL/>";
    for (auto place = document.find(end); place != document.npos; place = document.find(end, place)) {
        place += end.size();
        document.insert(place, elements);
        place += elements.size();
    }
    return document;
}

/// Documents are long: only the place where they part is worth printing.
testing::AssertionResult areSameText(std::string_view a, std::string_view b) {
    if (a == b)
        return testing::AssertionSuccess();
    const auto place = static_cast<std::size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
    const auto start = place < 40 ? 0 : place - 40;
    return testing::AssertionFailure() << "they part at " << place << ": " << a.substr(start, 80) << "\nand\n"
                                       << b.substr(start, 80);
}

struct SavedPayload {
    KdbxInnerHeader innerHeader;
    std::string document;
};

SavedPayload payloadOf(ByteView file, const KdbxHeader& header, const KdbxKey& key) {
    const auto keys = KdbxKeys::derive(KdbxKeys::compositeKey(key), header);
    KdbxReader reader(file);
    (void)reader.read(header.endOffset + 64);
    const auto ciphertext = KdbxCrypto::readHMACBlocks(reader, {.key = *keys.hmac});
    auto payload = KdbxCrypto::decryptPayload(
        ciphertext, {.cipher = header.cipher(), .key = keys.master, .iv = header.encryptionIV});
    if (header.compressed())
        payload = Gzip::decompress(payload);
    KdbxReader inner(payload);
    auto innerHeader = KdbxInnerHeader::parse(inner);
    const auto document = textOf(payload).substr(static_cast<std::size_t>(inner.offset()));
    return {std::move(innerHeader), std::string(document)};
}

class VaultFilesTest : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        m_file = contentOf(folder / (GetParam() + ".kdbx"));
        const auto json = Answer::parse(std::ifstream(folder / (GetParam() + ".json")));
        m_answer = json["dump"];
        if (!json["password"].is_null())
            m_key.password = json["password"];
        if (json["keyfile"])
            m_key.keyFileData = contentOf(folder / (GetParam() + ".key"));
        m_database = KdbxFile::load(m_file, m_key);
    }

    Bytes m_file;
    KdbxKey m_key;
    Answer m_answer;
    KdbxDatabase m_database;
};

TEST_P(VaultFilesTest, loadsToExactlyItsAnswer) {
    expectHeader(m_answer, KdbxHeader::parse(m_file));
    expectSettings(m_answer, m_database);
    expectMeta(m_answer["meta"], m_database.meta);
    expectGroup(m_answer["root"], m_database.root);
    expectForeign(m_answer, m_database.root);
}

TEST_P(VaultFilesTest, savesTheDocumentOfItsModelUnderFreshKeys) {
    const auto file = KdbxFile::save(m_database, m_key);
    const auto header = KdbxHeader::parse(file);
    const auto before = KdbxHeader::parse(m_file);
    const auto saved = payloadOf(file, header, m_key);

    const auto stream = KdbxCrypto::makeInnerStream(KdbxCrypto::InnerStreamID::chaCha20, saved.innerHeader.streamKey);
    KdbxXML::Writer writer(*stream, 4);
    writer.writeDocument(m_database, std::nullopt);
    EXPECT_TRUE(areSameText(saved.document, textOf(writer.out())));
    EXPECT_EQ(saved.innerHeader.streamID, 3u);
    EXPECT_EQ(saved.innerHeader.binaries, KdbxXML::preservedBinaries(m_database.root));

    EXPECT_EQ(header.major, 4);
    EXPECT_EQ(header.minor, before.major == 4 ? before.minor : 1);
    EXPECT_EQ(header.cipherUUID, before.cipherUUID);
    EXPECT_EQ(header.compressionFlags, before.compressionFlags);
    EXPECT_EQ(header.kdfSettings(), before.kdfSettings());
    EXPECT_NE(header.masterSeed, before.masterSeed);
    EXPECT_NE(header.encryptionIV, before.encryptionIV);
    EXPECT_FALSE(header.comment || header.publicCustomData || header.transformSeed || header.innerRandomStreamKey);
}

TEST_P(VaultFilesTest, loadsAgainToTheSameAfterASave) {
    const auto again = KdbxFile::load(KdbxFile::save(m_database, m_key), m_key);

    expectMeta(m_answer["meta"], again.meta);
    expectGroup(afterASave(m_answer["root"], maskedStandardStrings(m_database.root)), again.root);
    EXPECT_TRUE(areSameText(plainDocument(again), documentAfterASave(plainDocument(m_database))));
    EXPECT_EQ(again.cipher, m_database.cipher);
    EXPECT_EQ(again.kdf, m_database.kdf);
    EXPECT_EQ(again.compressed, m_database.compressed);
    EXPECT_EQ(again.meta, m_database.meta);
    EXPECT_EQ(KdbxXML::preservedBinaries(again.root), KdbxXML::preservedBinaries(m_database.root));
}

TEST_P(VaultFilesTest, isRefusedUnderAnyOtherCredentials) {
    auto otherPassword = m_key;
    otherPassword.password = m_key.password.value_or("") + "x";
    EXPECT_THROW((void)KdbxFile::load(m_file, otherPassword), KdbxError);
    auto otherKeyFile = m_key;
    otherKeyFile.keyFileData = Bytes(32, 1);
    EXPECT_THROW((void)KdbxFile::load(m_file, otherKeyFile), KdbxError);
}

INSTANTIATE_TEST_SUITE_P(, VaultFilesTest, testing::ValuesIn(vaultNames()), [](const auto& info) {
    auto name = info.param;
    std::ranges::replace_if(
        name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
});

TEST(VaultFilesFolderTest, holdsEveryVault) {
    EXPECT_EQ(vaultNames().size(), 44u);
}

}  // namespace
