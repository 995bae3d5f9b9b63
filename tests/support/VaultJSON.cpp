// SPDX-License-Identifier: MIT
#include "tests/support/VaultJSON.h"

#include "core/primitives/Overloaded.h"
#include "tests/support/Hex.h"

#include <array>

namespace VaultJSON {
namespace {

// In the order of VariantValue::Case.
constexpr std::array<const char*, std::variant_size_v<VariantValue::Case>> variantCases{
    "uint32", "uint64", "bool", "int32", "int64", "string", "bytes"};

Json valueOf(const std::string& text) {
    return text;
}
Json valueOf(std::uint32_t number) {
    return number;
}
Json valueOf(std::uint64_t number) {
    return number;
}
Json valueOf(const Bytes& bytes) {
    return toHex(bytes);
}
Json valueOf(const UUID& id) {
    return id.text();
}
Json valueOf(const Timestamp& timestamp) {
    return timestamp.seconds;
}
Json valueOf(const VariantDictionary& dictionary) {
    return of(dictionary);
}

template <class Value>
Json orNull(const std::optional<Value>& value) {
    return value ? valueOf(*value) : Json(nullptr);
}

template <class Array>
Json listOf(const Array& elements) {
    auto list = Json::array();
    for (const auto& element : elements)
        list.push_back(of(element));
    return list;
}

Json customFieldsOf(const KdbxEntry& entry) {
    auto fields = Json::object();
    for (const auto& [name, value] : entry.customFields)
        fields[name] = value;
    return fields;
}

Json argon2(const KdfSettings::Argon2& settings) {
    return {{"case", settings.variant == KdfSettings::Variant::argon2d ? "argon2d" : "argon2id"},
            {"memoryKiB", settings.memoryKiB},
            {"iterations", settings.iterations},
            {"parallelism", settings.parallelism}};
}

}  // namespace

Json of(const KdbxDatabase& database) {
    return {{"formatVersion", {database.formatVersion.major, database.formatVersion.minor}},
            {"cipher", textValue(database.cipher)},
            {"compressed", database.compressed},
            {"kdf", of(database.kdf)},
            {"meta", of(database.meta)},
            {"root", of(database.root)}};
}

Json of(const KdbxMeta& meta) {
    return {{"databaseName", meta.databaseName},
            {"databaseDescription", meta.databaseDescription},
            {"defaultUsername", meta.defaultUsername},
            {"recycleBinEnabled", meta.recycleBinEnabled},
            {"recycleBinUUID", orNull(meta.recycleBinUUID)},
            {"historyMaxItems", meta.historyMaxItems},
            {"historyMaxSize", meta.historyMaxSize},
            {"generator", meta.generator}};
}

Json of(const KdbxGroup& group) {
    return {{"id", group.id.text()},
            {"name", group.name},
            {"notes", group.notes},
            {"iconID", group.iconID},
            {"groups", listOf(group.groups)},
            {"entries", listOf(group.entries)},
            {"isExpanded", group.isExpanded},
            {"defaultAutoTypeSequence", orNull(group.defaultAutoTypeSequence)},
            {"created", group.created.seconds},
            {"modified", group.modified.seconds},
            {"unknownXML", group.unknownXML}};
}

Json of(const KdbxEntry& entry) {
    return {{"id", entry.id.text()},
            {"title", entry.title},
            {"username", entry.username},
            {"password", entry.password.value()},
            {"url", entry.url},
            {"notes", entry.notes},
            {"customFields", customFieldsOf(entry)},
            {"protectedCustomFields", entry.protectedCustomFields},
            {"tags", entry.tags},
            {"autoTypeSequence", orNull(entry.autoTypeSequence)},
            {"autoTypeEnabled", entry.autoTypeEnabled},
            {"autoTypeWindowAssociations", listOf(entry.autoTypeWindowAssociations)},
            {"iconID", entry.iconID},
            {"created", entry.created.seconds},
            {"modified", entry.modified.seconds},
            {"accessed", entry.accessed.seconds},
            {"expires", entry.expires},
            {"expiryTime", orNull(entry.expiryTime)},
            {"historyItems", listOf(entry.historyItems)},
            {"unknownXML", entry.unknownXML}};
}

Json of(const AutoTypeWindowAssociation& association) {
    return {{"window", association.window}, {"sequence", orNull(association.sequence)}};
}

Json of(const KdfSettings& settings) {
    return std::visit(Overloaded{
                          [](const KdfSettings::Argon2& kdf) { return argon2(kdf); },
                          [](const KdfSettings::AesKdf& kdf) {
                              return Json{{"case", "aesKdf"}, {"rounds", kdf.rounds}};
                          },
                      },
                      settings.settings);
}

Json of(const KdbxHeader& header) {
    return {{"major", header.major},
            {"minor", header.minor},
            {"cipherUUID", header.cipherUUID.text()},
            {"compressionFlags", header.compressionFlags},
            {"masterSeed", toHex(header.masterSeed)},
            {"encryptionIV", toHex(header.encryptionIV)},
            {"kdfParameters", orNull(header.kdfParameters)},
            {"publicCustomData", orNull(header.publicCustomData)},
            {"transformSeed", orNull(header.transformSeed)},
            {"transformRounds", orNull(header.transformRounds)},
            {"streamStartBytes", orNull(header.streamStartBytes)},
            {"innerRandomStreamKey", orNull(header.innerRandomStreamKey)},
            {"innerRandomStreamID", orNull(header.innerRandomStreamID)},
            {"comment", orNull(header.comment)},
            {"rawData", toHex(header.rawData)},
            {"endOffset", header.endOffset}};
}

Json of(const VariantValue& value) {
    const auto payload = std::visit(Overloaded{
                                        [](const Bytes& bytes) { return Json(toHex(bytes)); },
                                        [](const auto& plain) { return Json(plain); },
                                    },
                                    value.value);
    return {{"case", variantCases[value.value.index()]}, {"value", payload}};
}

Json of(const VariantDictionary& dictionary) {
    auto items = Json::array();
    for (const auto& key : dictionary.keys())
        items.push_back(Json::array({key, of(*dictionary[key])}));
    return items;
}

}  // namespace VaultJSON
