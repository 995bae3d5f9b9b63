// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/WindowLayout.h"
#include "core/generator/PasswordGenerator.h"
#include "core/platform/SettingsStore.h"

#include <QObject>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

class ClipboardService;

/// What survives between launches and is not in the vault. Read at construction, which writes nothing; each
/// assignment is stored at once. A stored value of the wrong kind counts as absent, and a stored number is brought into
/// its range: the settings file may be damaged, or written by hand. Holds no secret.
class Preferences : public QObject {
    Q_OBJECT

public:
    /// Both outlive it. The clipboard service gets the stored timeout at once, and each later one.
    Preferences(SettingsStore& store, ClipboardService& clipboard, QObject* parent = nullptr);

    /// Seconds until a copied secret is wiped; 12 at first. Stored ones from 0, which wipes at once, to an hour.
    [[nodiscard]] double clipboardTimeout() const noexcept { return m_clipboardTimeout; }
    void setClipboardTimeout(double seconds);

    /// The stored name of a sort column, which may be one that no column has; "title" at first.
    [[nodiscard]] const std::string& sortColumn() const noexcept { return m_sortColumn; }
    void setSortColumn(std::string column);

    [[nodiscard]] bool sortAscending() const noexcept { return m_sortAscending; }
    void setSortAscending(bool ascending);

    /// The sequence of entries that have none of their own and inherit none.
    [[nodiscard]] const std::string& defaultAutoTypeSequence() const noexcept { return m_defaultAutoTypeSequence; }
    void setDefaultAutoTypeSequence(std::string sequence);

    /// The virtual key code of the global hot key; 0 at first.
    [[nodiscard]] std::uint32_t hotKeyCode() const noexcept { return m_hotKeyCode; }
    void setHotKeyCode(std::uint32_t code);

    /// Its modifiers as a bit set; 2304, Option and Command, at first.
    [[nodiscard]] std::uint32_t hotKeyModifiers() const noexcept { return m_hotKeyModifiers; }
    void setHotKeyModifiers(std::uint32_t modifiers);

    /// Whether the vault is locked when the user leaves the session: as that is locked, or given to another user, or as
    /// the computer goes to sleep. So it is at first.
    [[nodiscard]] bool lockWithSession() const noexcept { return m_lockWithSession; }
    void setLockWithSession(bool locks);

    /// After how many minutes without input the vault is locked; 0, as at first, is never. Stored ones up to the
    /// longest that can be chosen.
    [[nodiscard]] std::int64_t lockAfterMinutes() const noexcept { return m_lockAfterMinutes; }
    void setLockAfterMinutes(std::int64_t minutes);
    static constexpr std::int64_t longestLockAfterMinutes = 60;

    /// The token of the last vault.
    [[nodiscard]] const std::optional<Bytes>& recentDatabaseBookmark() const noexcept {
        return m_recentDatabaseBookmark;
    }
    void setRecentDatabaseBookmark(std::optional<Bytes> bookmark);

    /// What the last generated password was made of. Stored lengths from the shortest to the longest that can be
    /// chosen.
    [[nodiscard]] const PasswordGenerator::Options& generatorOptions() const noexcept { return m_generatorOptions; }
    void setGeneratorOptions(PasswordGenerator::Options options);

    /// The size that the user has given the unlocked window; none before, or to go back to the usual one.
    [[nodiscard]] const std::optional<WindowSize>& windowSize() const noexcept { return m_windowSize; }
    void setWindowSize(std::optional<WindowSize> size);

    /// The columns' widths; none before the user drags one, or to go back to the usual ones.
    [[nodiscard]] const std::optional<ColumnWidths>& columnWidths() const noexcept { return m_columnWidths; }
    void setColumnWidths(std::optional<ColumnWidths> widths);

signals:
    void clipboardTimeoutChanged();
    void defaultAutoTypeSequenceChanged();
    void hotKeyCodeChanged();
    void hotKeyModifiersChanged();
    void lockWithSessionChanged();
    void lockAfterMinutesChanged();
    /// An assignment holds until the process ends and no longer. Sent for the first one alone.
    void couldNotBeStored();

private:
    template <class Value>
    void store(std::string_view key, Value& property, Value value, void (Preferences::*changed)() = nullptr);

    SettingsStore& m_store;
    ClipboardService& m_clipboard;
    std::string m_sortColumn;
    bool m_sortAscending;
    double m_clipboardTimeout;
    std::string m_defaultAutoTypeSequence;
    std::uint32_t m_hotKeyCode;
    std::uint32_t m_hotKeyModifiers;
    bool m_lockWithSession;
    std::int64_t m_lockAfterMinutes;
    std::optional<Bytes> m_recentDatabaseBookmark;
    PasswordGenerator::Options m_generatorOptions;
    bool m_isFailureReported = false;
    std::optional<WindowSize> m_windowSize;
    std::optional<ColumnWidths> m_columnWidths;
};
