// SPDX-License-Identifier: MIT
#include "tests/probe/ProbeEntry.h"

#include <string_view>

namespace Probe {
namespace {

using std::string_literals::operator""s;

/// Reads the fields that are there into their places.
class FieldReader {
public:
    explicit FieldReader(const Json& fields) : m_fields(fields) { require(fields.is_object(), "not an object"); }

    template <class Value>
    void read(const char* name, Value& value) const {
        if (m_fields.contains(name))
            assign(value, m_fields.at(name), name);
    }

private:
    static void expect(bool isOfThatKind, const char* name) {
        if (!isOfThatKind)
            throw Refusal(name + ": of another kind"s);
    }

    static void assign(std::string& value, const Json& json, const char* name) {
        expect(json.is_string(), name);
        value = json.get<std::string>();
    }
    static void assign(SecureString& value, const Json& json, const char* name) {
        std::string text;
        assign(text, json, name);
        value = SecureString(text);
    }
    static void assign(UUID& value, const Json& json, const char* name) {
        std::string text;
        assign(text, json, name);
        const auto id = UUID::fromText(text);
        expect(id.has_value(), name);
        value = *id;
    }
    static void assign(bool& value, const Json& json, const char* name) {
        expect(json.is_boolean(), name);
        value = json.get<bool>();
    }
    static void assign(std::int64_t& value, const Json& json, const char* name) {
        expect(json.is_number_integer(), name);
        value = json.get<std::int64_t>();
    }
    static void assign(Timestamp& value, const Json& json, const char* name) {
        expect(json.is_number(), name);
        value = Timestamp{json.get<double>()};
    }
    static void assign(AutoTypeWindowAssociation& value, const Json& json, const char* name) {
        expect(json.is_object() && json.contains("window"), name);
        const FieldReader association(json);
        association.read("window", value.window);
        association.read("sequence", value.sequence);
    }
    static void assign(KdbxEntry& value, const Json& json, const char*) { value = entryOf(json); }

    template <class Value>
    static void assign(std::optional<Value>& value, const Json& json, const char* name) {
        value.reset();
        if (!json.is_null())
            assign(value.emplace(), json, name);
    }
    template <class Value>
    static void assign(std::vector<Value>& values, const Json& json, const char* name) {
        expect(json.is_array(), name);
        for (const auto& element : json)
            assign(values.emplace_back(), element, name);
    }
    static void assign(SharedArray<KdbxEntry>& values, const Json& json, const char* name) {
        std::vector<KdbxEntry> entries;
        assign(entries, json, name);
        values = SharedArray(std::move(entries));
    }
    static void assign(Text::Set& values, const Json& json, const char* name) {
        std::vector<std::string> texts;
        assign(texts, json, name);
        values.insert(texts.begin(), texts.end());
    }
    static void assign(Text::Map<std::string>& values, const Json& json, const char* name) {
        expect(json.is_object(), name);
        for (const auto& [key, value] : json.items())
            assign(values[key], value, name);
    }

    const Json& m_fields;
};

// Deeper than any group that a caller has a use for, and far from the end of the stack.
constexpr int deepestGroup = 1000;

KdbxGroup groupAt(const Json& fields, int depth) {
    require(depth < deepestGroup, "group: too deep");
    const FieldReader reader(fields);
    KdbxGroup group;
    reader.read("id", group.id);
    reader.read("name", group.name);
    reader.read("notes", group.notes);
    reader.read("iconID", group.iconID);
    reader.read("entries", group.entries);
    reader.read("isExpanded", group.isExpanded);
    reader.read("defaultAutoTypeSequence", group.defaultAutoTypeSequence);
    reader.read("created", group.created);
    reader.read("modified", group.modified);
    reader.read("unknownXML", group.unknownXML);
    if (fields.contains("groups"))
        for (const auto& subgroup : fields["groups"])
            group.groups.append(groupAt(subgroup, depth + 1));
    return group;
}

}  // namespace

KdbxEntry entryOf(const Json& fields) {
    const FieldReader reader(fields);
    KdbxEntry entry;
    reader.read("id", entry.id);
    reader.read("title", entry.title);
    reader.read("username", entry.username);
    reader.read("password", entry.password);
    reader.read("url", entry.url);
    reader.read("notes", entry.notes);
    reader.read("customFields", entry.customFields);
    reader.read("protectedCustomFields", entry.protectedCustomFields);
    reader.read("tags", entry.tags);
    reader.read("autoTypeSequence", entry.autoTypeSequence);
    reader.read("autoTypeEnabled", entry.autoTypeEnabled);
    reader.read("autoTypeWindowAssociations", entry.autoTypeWindowAssociations);
    reader.read("iconID", entry.iconID);
    reader.read("created", entry.created);
    reader.read("modified", entry.modified);
    reader.read("accessed", entry.accessed);
    reader.read("expires", entry.expires);
    reader.read("expiryTime", entry.expiryTime);
    reader.read("historyItems", entry.historyItems);
    reader.read("unknownXML", entry.unknownXML);
    return entry;
}

KdbxGroup groupOf(const Json& fields) {
    return groupAt(fields, 0);
}

KdbxEntry entry(const Json& request, const char* name) {
    return entryOf(argument(request, name));
}

}  // namespace Probe
