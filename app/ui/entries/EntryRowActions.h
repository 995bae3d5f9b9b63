// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/UUID.h"

#include <QWidget>

#include <optional>

class AppState;
struct Command;
class EntryListModel;
class IconButton;
struct KdbxEntry;
class RowListView;
struct RowVerb;

/// The buttons at the end of the row under the pointer: they copy and type without selecting. One set for the whole
/// list, which goes where the pointer goes. The keyboard has the row's menu instead, and a screen reader finds the same
/// verbs at each row.
class EntryRowActions : public QWidget {
    Q_OBJECT

public:
    EntryRowActions(AppState& state, const EntryListModel& model, RowListView& list);

    /// What the buttons take of the row's end, with the gap before them.
    [[nodiscard]] static int widthFor(bool hasAutoType);

private:
    IconButton* add(const Command& command);
    void follow();
    [[nodiscard]] QList<RowVerb> verbsOf(const KdbxEntry& entry);
    void call(const Command& command, const UUID& id);

    AppState& m_state;
    const EntryListModel& m_model;
    RowListView& m_list;
    std::optional<UUID> m_entryID;
    IconButton* m_autoType = nullptr;
};
