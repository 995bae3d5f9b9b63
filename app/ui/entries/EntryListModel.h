// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/EntryReferences.h"
#include "app/ui/rows/RowListModel.h"

#include <optional>

/// The entries of the list, one a row, in the order in which they are shown.
/// Rows are known by their entry's identifier; a row whose entry has changed is announced by `dataChanged`.
class EntryListModel : public RowListModel {
    Q_OBJECT

public:
    enum Role : int { subtitleRole = Qt::UserRole + 1, iconRole, isExpiredRole, isTypedRole };

    using RowListModel::RowListModel;

    /// Shows other entries. `owner` is the vault that they are in; it is held for as long as they show.
    void show(const std::optional<KdbxDatabase>& owner, EntryReferences entries);

    [[nodiscard]] const KdbxEntry& entry(int row) const { return *m_entries[static_cast<std::size_t>(row)]; }
    [[nodiscard]] std::optional<int> rowOf(const UUID& id) const;

    /// The identifier of a row's entry, for a walk down the rows: entries lie scattered, and the ones of the next rows
    /// are fetched while this one is looked at.
    [[nodiscard]] const UUID& id(int row) const;

    [[nodiscard]] QString beginningOf(int row, qsizetype length) const override;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    std::optional<KdbxDatabase> m_owner;
    EntryReferences m_entries;
};
