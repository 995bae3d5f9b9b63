// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/rows/RowListModel.h"
#include "core/model/KdbxDatabase.h"

#include <memory>
#include <optional>
#include <vector>

/// The groups as the column shows them, one a row: the root, and below each expanded group its subgroups.
class GroupTreeModel : public RowListModel {
    Q_OBJECT

public:
    enum Role : int { depthRole = Qt::UserRole + 1, countRole, iconRole, hasChildrenRole, isExpandedRole, canFoldRole };

    using RowListModel::RowListModel;

    /// Shows a vault's groups, and holds the vault for as long as they show.
    void show(const std::optional<KdbxDatabase>& database);
    /// A group that is about to move.
    struct Moving {
        UUID id;
        std::size_t deepestParentLevel;  // as of `AppState`
    };
    /// Shows all groups, folded up or not, to choose one from, but for a group that is about to move, what it holds,
    /// and where it would go too deep. Here none can be folded.
    void showTargets(const std::optional<KdbxDatabase>& database, const std::optional<Moving>& moving);

    [[nodiscard]] const KdbxGroup& group(int row) const { return *m_rows[static_cast<std::size_t>(row)].group; }
    [[nodiscard]] std::optional<int> rowOf(const UUID& id) const;

    /// The row of the group above; none for the root.
    [[nodiscard]] std::optional<int> parentOf(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    struct Row {
        const KdbxGroup* group;
        int depth;
        std::size_t parent;       // row of the nearest shown group above; its own for the root
        std::int64_t entryCount;  // of the group and all below it
    };

    /// Which of the groups are shown.
    struct Extent {
        bool isUnfolded = false;
        std::optional<Moving> without;
    };

    void show(const std::optional<KdbxDatabase>& database, const Extent& extent);
    static std::vector<Row> rowsOf(const KdbxGroup& root, const Extent& extent);

    std::shared_ptr<const KdbxDatabase> m_owner;  // the root lies in it, so it does not move
    std::vector<Row> m_rows;
    bool m_canFold = true;
};
