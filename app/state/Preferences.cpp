// SPDX-License-Identifier: MIT
#include "app/state/Preferences.h"

#include "core/autotype/AutoTypeSequence.h"
#include "core/clipboard/ClipboardService.h"
#include "core/platform/HotKeys.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr double longestClipboardTimeout = 3600;  // a secret that nothing takes away again is no longer one

template <class Kind>
std::optional<Kind> stored(const SettingsStore& store, std::string_view key) {
    const auto value = store.value(key);
    if (!value)
        return std::nullopt;
    const auto* kind = std::get_if<Kind>(&*value);
    return kind ? std::optional<Kind>(*kind) : std::nullopt;
}

/// A number is a number, whether the store kept it with a fraction or without.
std::optional<double> storedNumber(const SettingsStore& store, std::string_view key) {
    if (const auto integer = stored<std::int64_t>(store, key))
        return static_cast<double>(*integer);
    return stored<double>(store, key);
}

/// What is no number at all is in no range.
double clipboardTimeoutFrom(std::optional<double> stored) {
    if (!stored || std::isnan(*stored))
        return ClipboardService::defaultClearAfter;
    return std::clamp(*stored, 0.0, longestClipboardTimeout);
}

std::int64_t lockAfterMinutesFrom(std::optional<std::int64_t> stored) {
    return std::clamp<std::int64_t>(stored.value_or(0), 0, Preferences::longestLockAfterMinutes);
}

/// A number that no hot key has counts as absent: a damaged settings file must not keep the vault's owner out.
std::optional<std::uint32_t> storedUInt32(const SettingsStore& store, std::string_view key) {
    const auto integer = stored<std::int64_t>(store, key);
    if (!integer || *integer < 0 || *integer > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    return static_cast<std::uint32_t>(*integer);
}

/// Without a length nothing else counts. A choice that is missing or no boolean is as it was before it existed: an
/// older version's settings keep what they have.
PasswordGenerator::Options decode(const std::optional<SettingsDictionary>& stored) {
    if (!stored)
        return {};
    const auto item = [&]<class Kind>(const char* key, Kind otherwise) {
        const auto found = stored->find(key);
        const auto* kind = found == stored->end() ? nullptr : std::get_if<Kind>(&found->second);
        return kind ? *kind : otherwise;
    };
    const auto length = stored->find("length");
    if (length == stored->end() || !std::holds_alternative<std::int64_t>(length->second))
        return {};
    return {.length = std::clamp(std::get<std::int64_t>(length->second), PasswordGenerator::shortestChoice,
                                 PasswordGenerator::longestChoice),
            .upper = item("upper", true),
            .lower = item("lower", true),
            .digits = item("digits", true),
            .symbols = item("symbols", true),
            .excludeAmbiguous = item("excludeAmbiguous", false)};
}

SettingsDictionary encode(const PasswordGenerator::Options& options) {
    return {{"length", options.length}, {"upper", options.upper},     {"lower", options.lower},
            {"digits", options.digits}, {"symbols", options.symbols}, {"excludeAmbiguous", options.excludeAmbiguous}};
}

template <class Value>
std::optional<SettingsValue> settingsValue(const Value& value) {
    return std::optional<SettingsValue>(std::in_place, value);
}

std::optional<SettingsValue> settingsValue(std::uint32_t value) {
    return std::optional<SettingsValue>(std::in_place, std::int64_t{value});
}

std::optional<SettingsValue> settingsValue(const std::optional<Bytes>& value) {
    return value ? std::optional<SettingsValue>(*value) : std::nullopt;
}

std::optional<SettingsValue> settingsValue(const PasswordGenerator::Options& value) {
    return std::optional<SettingsValue>(std::in_place, encode(value));
}

template <class Layout>
std::optional<SettingsValue> settingsValue(const std::optional<Layout>& layout) {
    return layout ? std::optional<SettingsValue>(std::in_place, layout->dictionary()) : std::nullopt;
}

}  // namespace

Preferences::Preferences(SettingsStore& store, ClipboardService& clipboard, QObject* parent)
    : QObject(parent),
      m_store(store),
      m_clipboard(clipboard),
      m_sortColumn(stored<std::string>(store, "sortColumn").value_or("title")),
      m_sortAscending(stored<bool>(store, "sortAscending").value_or(true)),
      m_clipboardTimeout(clipboardTimeoutFrom(storedNumber(store, "clipboardTimeout"))),
      m_defaultAutoTypeSequence(stored<std::string>(store, "defaultAutoTypeSequence")
                                    .value_or(std::string(AutoTypeSequence::defaultSequence))),
      m_hotKeyCode(storedUInt32(store, "hotKeyCode").value_or(HotKey().keyCode)),
      m_hotKeyModifiers(storedUInt32(store, "hotKeyModifiers").value_or(HotKey().modifiers)),
      m_lockWithSession(stored<bool>(store, "lockWithSession").value_or(true)),
      m_lockAfterMinutes(lockAfterMinutesFrom(stored<std::int64_t>(store, "lockAfterMinutes"))),
      m_recentDatabaseBookmark(stored<Bytes>(store, "recentDatabaseBookmark")),
      m_generatorOptions(decode(stored<SettingsDictionary>(store, "generatorOptions"))),
      m_windowSize(WindowSize::of(stored<SettingsDictionary>(store, "windowSize"))),
      m_columnWidths(ColumnWidths::of(stored<SettingsDictionary>(store, "columnWidths"))) {
    m_clipboard.setClearAfter(m_clipboardTimeout);
}

template <class Value>
void Preferences::store(std::string_view key, Value& property, Value value, void (Preferences::*changed)()) {
    const bool differs = property != value;
    property = std::move(value);
    const bool isStored = m_store.setValue(key, settingsValue(property));
    if (differs && changed)
        emit(this->*changed)();
    if (!isStored && !std::exchange(m_isFailureReported, true))
        emit couldNotBeStored();
}

void Preferences::setClipboardTimeout(double seconds) {
    m_clipboard.setClearAfter(seconds);
    store("clipboardTimeout", m_clipboardTimeout, seconds, &Preferences::clipboardTimeoutChanged);
}

void Preferences::setSortColumn(std::string column) {
    store("sortColumn", m_sortColumn, std::move(column));
}

void Preferences::setSortAscending(bool ascending) {
    store("sortAscending", m_sortAscending, ascending);
}

void Preferences::setDefaultAutoTypeSequence(std::string sequence) {
    store("defaultAutoTypeSequence", m_defaultAutoTypeSequence, std::move(sequence),
          &Preferences::defaultAutoTypeSequenceChanged);
}

void Preferences::setHotKeyCode(std::uint32_t code) {
    store("hotKeyCode", m_hotKeyCode, code, &Preferences::hotKeyCodeChanged);
}

void Preferences::setHotKeyModifiers(std::uint32_t modifiers) {
    store("hotKeyModifiers", m_hotKeyModifiers, modifiers, &Preferences::hotKeyModifiersChanged);
}

void Preferences::setLockWithSession(bool locks) {
    store("lockWithSession", m_lockWithSession, locks, &Preferences::lockWithSessionChanged);
}

void Preferences::setLockAfterMinutes(std::int64_t minutes) {
    store("lockAfterMinutes", m_lockAfterMinutes, lockAfterMinutesFrom(minutes), &Preferences::lockAfterMinutesChanged);
}

void Preferences::setRecentDatabaseBookmark(std::optional<Bytes> bookmark) {
    store("recentDatabaseBookmark", m_recentDatabaseBookmark, std::move(bookmark));
}

void Preferences::setGeneratorOptions(PasswordGenerator::Options options) {
    store("generatorOptions", m_generatorOptions, options);
}

void Preferences::setWindowSize(std::optional<WindowSize> size) {
    store("windowSize", m_windowSize, size);
}

void Preferences::setColumnWidths(std::optional<ColumnWidths> widths) {
    store("columnWidths", m_columnWidths, widths);
}
