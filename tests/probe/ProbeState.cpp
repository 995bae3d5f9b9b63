// SPDX-License-Identifier: MIT
#include "tests/probe/Probe.h"
#include "tests/probe/ProbeEntry.h"
#include "tests/probe/ProbeProgram.h"
#include "tests/support/Hex.h"
#include "tests/support/VaultJSON.h"

#include <chrono>
#include <cmath>
#include <limits>

namespace Probe {
namespace {

constexpr double longestAdvance = 1e9;  // seconds, far less than the clock can count

[[noreturn]] void refuseArgument(const std::string& what) {
    throw Refusal(what);
}

const Json nothing;

/// One value of a request, borrowed, which has to be of the kind that is asked for. A value that is missing is null.
class Value {
public:
    explicit Value(const Json& json) : m_json(json) {}

    [[nodiscard]] bool isNull() const { return m_json.is_null(); }

    [[nodiscard]] std::string text() const {
        expect(m_json.is_string(), "a text");
        return m_json.get<std::string>();
    }
    [[nodiscard]] bool boolean() const {
        expect(m_json.is_boolean(), "a boolean");
        return m_json.get<bool>();
    }
    [[nodiscard]] double number() const {
        expect(m_json.is_number(), "a number");
        return m_json.get<double>();
    }
    [[nodiscard]] std::uint32_t number32() const {
        expect(m_json.is_number_unsigned() && m_json.get<std::uint64_t>() <= std::numeric_limits<std::uint32_t>::max(),
               "a number of 32 bits");
        return m_json.get<std::uint32_t>();
    }
    [[nodiscard]] std::int64_t integer() const {
        expect(m_json.is_number_integer(), "an integer");
        return m_json.get<std::int64_t>();
    }
    [[nodiscard]] UUID id() const {
        const auto id = UUID::fromText(text());
        expect(id.has_value(), "an identifier");
        return *id;
    }
    [[nodiscard]] std::set<UUID> ids() const {
        expect(m_json.is_array(), "an array of identifiers");
        std::set<UUID> ids;
        for (const auto& element : m_json)
            ids.insert(Value(element).id());
        return ids;
    }
    [[nodiscard]] std::filesystem::path path() const { return text(); }
    [[nodiscard]] Bytes bytes() const { return bytesOfText(m_json, "value"); }
    [[nodiscard]] KdbxEntry entry() const { return entryOf(m_json); }
    [[nodiscard]] KdbxGroup group() const { return groupOf(m_json); }

    /// A member of an object; null where there is none.
    [[nodiscard]] Value member(const char* name) const {
        expect(m_json.is_object(), "an object");
        const auto found = m_json.find(name);
        return Value(found == m_json.end() ? nothing : *found);
    }

    /// What `read` makes of the value, or nothing for null.
    template <class Read>
    [[nodiscard]] auto orNone(Read read) const -> std::optional<decltype((this->*read)())> {
        if (isNull())
            return std::nullopt;
        return (this->*read)();
    }

private:
    static void expect(bool isOfThatKind, const char* kind) {
        if (!isOfThatKind)
            refuseArgument(std::string("not ") + kind);
    }

    const Json& m_json;
};

EntrySort sortOf(const Value& value) {
    const auto column = EntrySort::columnFromText(value.member("column").text());
    require(column.has_value(), "column: unknown");
    return {.column = *column, .ascending = value.member("ascending").boolean()};
}

AppState::Route routeOf(const Value& value) {
    using Route = AppState::Route;
    const auto name = value.member("case").text();
    if (name == "newEntry")
        return Route::newEntry(value.member("groupID").id());
    if (name == "editEntry")
        return Route::editEntry(value.member("id").id());
    if (name == "newGroup")
        return Route::newGroup(value.member("parentID").id());
    if (name == "editGroup")
        return Route::editGroup(value.member("id").id());
    if (name == "generator")
        return Route::generator(value.member("target").orNone(&Value::id));
    refuseArgument("route: unknown");
}

PasswordGenerator::Options optionsOf(const Value& value) {
    return {.length = value.member("length").integer(),
            .upper = value.member("upper").boolean(),
            .lower = value.member("lower").boolean(),
            .digits = value.member("digits").boolean(),
            .symbols = value.member("symbols").boolean(),
            .excludeAmbiguous = value.member("excludeAmbiguous").boolean()};
}

/// The arguments of a call; those that are left out at the end are null.
class Arguments {
public:
    explicit Arguments(const Json& request) : m_list(request.contains("args") ? request["args"] : nothing) {
        require(m_list.is_array() || m_list.is_null(), "args: not an array");
    }

    [[nodiscard]] Value operator[](std::size_t index) const {
        return Value(index < m_list.size() ? m_list[index] : nothing);
    }

private:
    const Json& m_list;
};

using Call = std::function<void(Program&, const Arguments&)>;
using Setter = std::function<void(Program&, const Value&)>;

/// A command on an entry, the given or the focused one.
Call onEntry(void (AppState::*command)(const KdbxEntry*)) {
    return [command](Program& program, const Arguments& arguments) {
        const auto entry = arguments[0].orNone(&Value::entry);
        (program.state().*command)(entry ? &*entry : nullptr);
    };
}

Call plain(void (AppState::*operation)()) {
    return [operation](Program& program, const Arguments&) { (program.state().*operation)(); };
}

const std::map<std::string, Call>& calls() {
    using Extending = AppState::Extending;
    using Toggling = AppState::Toggling;
    static const std::map<std::string, Call> all{
        {"prepare", [](Program& p, const Arguments& a) { p.state().prepare(a[0].path()); }},
        {"unlock", [](Program& p, const Arguments& a) { p.state().unlock(a[0].text(), a[1].orNone(&Value::path)); }},
        {"createDatabase",
         [](Program& p, const Arguments& a) {
             p.state().createDatabase(a[0].path(), a[1].text(), a[2].orNone(&Value::bytes));
         }},
        {"lock", plain(&AppState::lock)},
        {"closeDatabase", plain(&AppState::closeDatabase)},
        {"restoreRecentDatabase", plain(&AppState::restoreRecentDatabase)},
        {"save", plain(&AppState::save)},
        {"saveAs", [](Program& p, const Arguments& a) { p.state().saveAs(a[0].path()); }},
        {"undo", plain(&AppState::undo)},
        {"redo", plain(&AppState::redo)},
        {"selectEntry",
         [](Program& p, const Arguments& a) {
             p.state().selectEntry(a[0].id(), Extending(a[1].boolean()), Toggling(a[2].boolean()));
         }},
        {"focusSearch", plain(&AppState::focusSearch)},
        {"clearSearch", plain(&AppState::clearSearch)},
        {"addEntry", [](Program& p, const Arguments& a) { p.state().addEntry(a[0].entry(), a[1].id()); }},
        {"updateEntry", [](Program& p, const Arguments& a) { p.state().updateEntry(a[0].entry()); }},
        {"deleteEntries", [](Program& p, const Arguments& a) { p.state().deleteEntries(a[0].ids()); }},
        {"moveEntriesBefore",
         [](Program& p, const Arguments& a) { p.state().moveEntriesBefore(a[0].ids(), a[1].id()); }},
        {"moveEntriesToEnd", [](Program& p, const Arguments& a) { p.state().moveEntriesToEnd(a[0].ids()); }},
        {"duplicateEntries", [](Program& p, const Arguments& a) { p.state().duplicateEntries(a[0].ids()); }},
        {"moveEntriesTo", [](Program& p, const Arguments& a) { p.state().moveEntriesTo(a[0].ids(), a[1].id()); }},
        {"addGroup", [](Program& p, const Arguments& a) { p.state().addGroup(a[0].group(), a[1].id()); }},
        {"updateGroup", [](Program& p, const Arguments& a) { p.state().updateGroup(a[0].group()); }},
        {"deleteGroup", [](Program& p, const Arguments& a) { p.state().deleteGroup(a[0].id()); }},
        {"setGroupExpanded",
         [](Program& p, const Arguments& a) { p.state().setGroupExpanded(a[0].id(), a[1].boolean()); }},
        {"copyUsername", onEntry(&AppState::copyUsername)},
        {"copyPassword", onEntry(&AppState::copyPassword)},
        {"copyURL", onEntry(&AppState::copyURL)},
        {"openURL", onEntry(&AppState::openURL)},
        {"performAutoType", onEntry(&AppState::performAutoType)},
        {"copySecret", [](Program& p, const Arguments& a) { p.clipboard().copySecret(a[0].text()); }},
        {"copyPlain", [](Program& p, const Arguments& a) { p.clipboard().copyPlain(a[0].text()); }},
        {"clearNow", [](Program& p, const Arguments&) { p.clipboard().clearNow(); }},
    };
    return all;
}

const std::map<std::string, Setter>& setters() {
    static const std::map<std::string, Setter> all{
        {"lastError", [](Program& p, const Value& v) { p.state().setLastError(v.orNone(&Value::text)); }},
        {"statusMessage", [](Program& p, const Value& v) { p.state().setStatusMessage(v.orNone(&Value::text)); }},
        {"selectedGroupID", [](Program& p, const Value& v) { p.state().setSelectedGroupID(v.orNone(&Value::id)); }},
        {"selectedEntryIDs", [](Program& p, const Value& v) { p.state().setSelectedEntryIDs(v.ids()); }},
        {"searchText", [](Program& p, const Value& v) { p.state().setSearchText(v.text()); }},
        {"sort", [](Program& p, const Value& v) { p.state().setSort(sortOf(v)); }},
        {"route",
         [](Program& p, const Value& v) { p.state().setRoute(v.isNull() ? std::nullopt : std::optional(routeOf(v))); }},
        {"clipboardTimeout", [](Program& p, const Value& v) { p.preferences().setClipboardTimeout(v.number()); }},
        {"sortColumn", [](Program& p, const Value& v) { p.preferences().setSortColumn(v.text()); }},
        {"sortAscending", [](Program& p, const Value& v) { p.preferences().setSortAscending(v.boolean()); }},
        {"defaultAutoTypeSequence",
         [](Program& p, const Value& v) { p.preferences().setDefaultAutoTypeSequence(v.text()); }},
        {"hotKeyCode", [](Program& p, const Value& v) { p.preferences().setHotKeyCode(v.number32()); }},
        {"hotKeyModifiers", [](Program& p, const Value& v) { p.preferences().setHotKeyModifiers(v.number32()); }},
        {"recentDatabaseBookmark",
         [](Program& p, const Value& v) { p.preferences().setRecentDatabaseBookmark(v.orNone(&Value::bytes)); }},
        {"generatorOptions", [](Program& p, const Value& v) { p.preferences().setGeneratorOptions(optionsOf(v)); }},
        {"clearAfter", [](Program& p, const Value& v) { p.clipboard().setClearAfter(v.number()); }},
    };
    return all;
}

Json orNull(const std::optional<std::string>& text) {
    return text ? Json(*text) : Json(nullptr);
}

Json orNull(const std::optional<UUID>& id) {
    return id ? Json(id->text()) : Json(nullptr);
}

template <class Entries>
Json idsOf(const Entries& entries) {
    auto ids = Json::array();
    for (const auto* entry : entries)
        ids.push_back(entry->id.text());
    return ids;
}

Json sortedIDs(const std::set<UUID>& ids) {
    auto texts = Json::array();
    for (const auto& id : ids)
        texts.push_back(id.text());
    return texts;
}

Json typedBy(const FakeKeyboard& keyboard) {
    auto events = Json::array();
    for (const auto& typed : keyboard.typed) {
        Json event{{"code", typed.code}, {"down", typed.down}, {"flags", typed.flags}};
        if (!typed.text.empty())
            event["text"] = typed.text;
        events.push_back(std::move(event));
    }
    return events;
}

Json stored(const Bytes& bytes) {
    return toHex(bytes);
}
Json stored(const SettingsDictionary& dictionary) {
    auto object = Json::object();
    for (const auto& [key, value] : dictionary)
        object[key] = std::visit(
            [](const auto& scalar) {
                if constexpr (std::is_same_v<std::decay_t<decltype(scalar)>, Bytes>)
                    return stored(scalar);
                else
                    return Json(scalar);
            },
            value);
    return object;
}
template <class Scalar>
Json stored(const Scalar& scalar) {
    return scalar;
}

Json preferencesIn(const FakeSettings& settings) {
    auto preferences = Json::object();
    for (const auto& [key, value] : settings.values)
        preferences[key] = std::visit([](const auto& v) { return stored(v); }, value);
    return preferences;
}

Json clipboardOf(World& world, const ClipboardService& service) {
    return {{"text", world.pasteboard.text()},
            {"types", world.pasteboard.types()},
            {"secondsRemaining", service.secondsRemaining()}};
}

Json answer(World& world, Program& program, bool isFull) {
    const auto& state = program.state();
    const auto* const focused = state.focusedEntry();
    Json result{{"databaseURL", state.databaseURL() ? Json(state.databaseURL()->native()) : Json(nullptr)},
                {"databaseName", state.databaseName()},
                {"isLocked", state.isLocked()},
                {"isDirty", state.isDirty()},
                {"canSave", state.canSave()},
                {"lastError", orNull(state.lastError())},
                {"statusMessage", orNull(state.statusMessage())},
                {"selectedGroupID", orNull(state.selectedGroupID())},
                {"selectedEntryIDs", sortedIDs(state.selectedEntryIDs())},
                {"searchText", state.searchText()},
                {"searchFocusToken", state.searchFocusToken()},
                {"sort", {{"column", EntrySort::rawValue(state.sort().column)}, {"ascending", state.sort().ascending}}},
                {"route", state.route() ? Json(state.route()->id()) : Json(nullptr)},
                {"undoLabel", orNull(state.undoLabel())},
                {"redoLabel", orNull(state.redoLabel())},
                {"visibleEntries", idsOf(state.visibleEntries())},
                {"focusedEntry", focused ? Json(focused->id.text()) : Json(nullptr)},
                {"clipboard", clipboardOf(world, program.clipboard())},
                {"typed", typedBy(world.desktop.keyboard)},
                {"preferences", preferencesIn(world.settings)}};
    if (isFull)
        result["database"] = state.database() ? VaultJSON::of(*state.database()) : Json(nullptr);
    return result;
}

/// The world, and the one program that runs in it.
class Stage {
public:
    Stage() : m_program(std::make_unique<Program>(m_world)) {}

    Json app(const Json& request) {
        // A shape that is no request changes nothing.
        const auto isFull = request.contains("full") && Value(request["full"]).boolean();
        act(request);
        return answer(m_world, *m_program, isFull);
    }

private:
    void act(const Json& request) {
        if (request.contains("call"))
            return call(text(request, "call"), Arguments(request));
        if (request.contains("set"))
            return set(text(request, "set"), Value(argument(request, "value")));
        if (request.contains("advance"))
            return advance(Value(request["advance"]).number());
        if (request.contains("clipboardWrite"))
            return m_world.pasteboard.writeAsAnotherProgram(text(request, "clipboardWrite"));
        if (request.contains("front"))
            return bringToFront(Value(request["front"]));
        if (request.contains("hotKey"))
            return pressHotKey(Value(request["hotKey"]).boolean());
        if (request.contains("restart"))
            return restart(Value(request["restart"]).boolean());
        refuseArgument("nothing to do");
    }

    void call(const std::string& name, const Arguments& arguments) {
        const auto found = calls().find(name);
        require(found != calls().end(), "call: unknown");
        found->second(*m_program, arguments);
    }

    void set(const std::string& name, const Value& value) {
        const auto found = setters().find(name);
        require(found != setters().end(), "set: unknown");
        found->second(*m_program, value);
    }

    void advance(double seconds) {
        require(seconds >= 0 && seconds <= longestAdvance, "advance: out of range");
        m_world.clock.advance(std::chrono::nanoseconds(std::llround(seconds * 1e9)));
    }

    void bringToFront(const Value& window) {
        auto& applications = m_world.desktop.applications;
        if (window.isNull())
            return applications.bringOurselvesToFront();
        applications.bringToFront(applications.start(window.member("pid").integer(),
                                                     window.member("title").orNone(&Value::text),
                                                     window.member("name").orNone(&Value::text)));
    }

    void pressHotKey(bool isPressed) {
        if (isPressed)
            m_world.desktop.hotKeys.press();
    }

    void restart(bool isWanted) {
        if (!isWanted)
            return;
        m_program.reset();
        m_program = std::make_unique<Program>(m_world);
    }

    World m_world;
    std::unique_ptr<Program> m_program;
};

}  // namespace

void addState(Operations& operations) {
    operations["app"] = [stage = std::make_shared<Stage>()](const Json& request) { return stage->app(request); };
}

}  // namespace Probe
