// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/EntryReferences.h"

#include <QAbstractListModel>

#include <optional>

/// The entries of the list, one a row, in the order in which they are shown.
class EntryListModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role : int { subtitleRole = Qt::UserRole + 1, iconRole, isExpiredRole };

    using QAbstractListModel::QAbstractListModel;

    /// Shows other entries. `owner` is the vault that they are in; it is held for as long as they show.
    void show(const std::optional<KdbxDatabase>& owner, EntryReferences entries);

    [[nodiscard]] const KdbxEntry& entry(int row) const { return *m_entries[static_cast<std::size_t>(row)]; }
    [[nodiscard]] std::optional<int> rowOf(const UUID& id) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    [[nodiscard]] bool hasSameRows(const EntryReferences& entries) const;

    std::optional<KdbxDatabase> m_owner;
    EntryReferences m_entries;
};
