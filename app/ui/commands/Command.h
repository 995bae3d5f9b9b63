// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/UUID.h"

#include <QAction>
#include <QKeySequence>
#include <QList>
#include <QString>

#include <cstdint>
#include <set>
#include <span>
#include <variant>

class AppState;
class Commands;
struct KdbxEntry;

/// One thing that the user can ask for: a row of the table that the menu bar, the rows' menus, their buttons, the
/// toolbar and the detail are made from.
struct Command {
    /// The commands that something refers to; `other` is what the menu bar alone offers.
    enum class ID : std::uint8_t {
        other,
        save,
        lock,
        quit,
        undo,
        redo,
        copyUsername,
        copyPassword,
        copyURL,
        autoType,
        openURL,
        newEntry,
        newGroup,
        edit,
        duplicate,
        remove,
        moveEntries,
        moveGroup,
        newEntryInGroup,
        newSubgroup,
        editGroup,
        deleteGroup,
        generate,
        clearClipboard,
        groupColumn,
    };

    /// Where it is in the menu bar. A line goes between two blocks of one menu.
    struct Place {
        enum class Menu : std::uint8_t { none, file, edit, entry, tools, view, help };
        Menu menu = Menu::none;
        int block = 0;
    };

    using OnSession = void (*)(AppState&);
    /// Asks the session for it, for one entry; without one, for the focused entry.
    using OnEntry = void (*)(AppState&, const KdbxEntry*);
    /// The same for entries, which are the selected ones in the menu bar.
    using OnEntries = void (*)(AppState&, const std::set<UUID>&);
    using OnGroup = void (*)(AppState&, const UUID&);
    /// What the commands do by themselves, with panels and sheets.
    using OnWindow = void (*)(Commands&);

    ID id = ID::other;
    Place place{};
    QString title;  // in the menu bar, where each word has a capital
    QList<QKeySequence> keys{};
    bool (Commands::*isEnabled)() const = nullptr;  // in the menu bar
    std::variant<OnWindow, OnSession, OnEntry, OnEntries, OnGroup> act;
    QString symbol{};                 // of its buttons
    bool repeats = false;             // a key that is held down goes on step by step
    bool worksWhileDeriving = false;  // also while the session waits for a key
    QAction::MenuRole role = QAction::NoRole;

    /// All of them, in the order of the menu bar.
    [[nodiscard]] static std::span<const Command> table();
    [[nodiscard]] static const Command& of(ID id);

    /// What it is called everywhere else: as part of a sentence.
    [[nodiscard]] QString text() const;
    /// What its button's tooltip says: "Kaydet (⌘S)".
    [[nodiscard]] QString tip() const;

    void operator()(AppState& state) const { std::get<OnSession>(act)(state); }
    void operator()(AppState& state, const KdbxEntry* entry) const { std::get<OnEntry>(act)(state, entry); }
    void operator()(AppState& state, const std::set<UUID>& entryIDs) const {
        std::get<OnEntries>(act)(state, entryIDs);
    }
    void operator()(AppState& state, const UUID& groupID) const { std::get<OnGroup>(act)(state, groupID); }
};
