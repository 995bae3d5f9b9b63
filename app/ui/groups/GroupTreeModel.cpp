// SPDX-License-Identifier: MIT
#include "app/ui/groups/GroupTreeModel.h"

#include "app/ui/components/LongText.h"
#include "app/ui/components/Numbers.h"
#include "app/ui/components/Texts.h"
#include "core/model/GroupWalk.h"

#include <algorithm>

namespace {

QString nameOf(const KdbxGroup& group) {
    constexpr std::size_t mostBytes = 4096;  // more than a row shows or a voice would speak
    return group.name.empty() ? QStringLiteral("Adsız grup") : qtText(LongText::prefix(group.name, mostBytes));
}

}  // namespace

void GroupTreeModel::show(const std::optional<KdbxDatabase>& database) {
    show(database, {});
}

void GroupTreeModel::showTargets(const std::optional<KdbxDatabase>& database, const std::optional<Moving>& moving) {
    m_canFold = false;
    show(database, {.isUnfolded = true, .without = moving});
}

void GroupTreeModel::show(const std::optional<KdbxDatabase>& database, const Extent& extent) {
    auto owner = database ? std::make_shared<const KdbxDatabase>(*database) : nullptr;
    auto rows = owner ? rowsOf(owner->root, extent) : std::vector<Row>();
    const auto formerOwner =
        std::exchange(m_owner, std::move(owner));  // whose groups are shown until the view knows all changes
    become(
        m_rows, std::move(rows),
        [](const Row& a, const Row& b) { return a.group->id == b.group->id && a.depth == b.depth; },
        [](const Row& a, const Row& b) { return a.group == b.group && a.entryCount == b.entryCount; });
}

std::optional<int> GroupTreeModel::parentOf(int row) const {
    if (row <= 0)
        return std::nullopt;
    return static_cast<int>(m_rows[static_cast<std::size_t>(row)].parent);
}

// Hidden groups are walked too, since their entries count.
std::vector<GroupTreeModel::Row> GroupTreeModel::rowsOf(const KdbxGroup& root, const Extent& extent) {
    /// What a group on the path has to say of its subgroups.
    struct Above {
        std::size_t row;  // of the group, or of the nearest one above it that is shown
        bool showsSubgroups;
    };
    std::vector<Row> rows;
    std::vector<Above> path{{.row = 0, .showsSubgroups = true}};
    GroupWalk walk(root);
    for (const auto& group : walk) {
        if (extent.without && group.id == extent.without->id) {
            walk.skipSubgroups();
            continue;
        }
        path.resize(walk.level(), path.front());
        const auto [parent, isShown] = path.back();
        const auto row = isShown ? rows.size() : parent;
        if (isShown)
            rows.push_back({&group, static_cast<int>(walk.level()) - 1, parent, 0});
        rows[row].entryCount += static_cast<std::int64_t>(group.entries.size());
        const bool isUnfolded = extent.isUnfolded || group.isExpanded;
        const bool canBeShown = !extent.without || walk.level() < extent.without->deepestParentLevel;
        path.push_back({.row = row, .showsSubgroups = isShown && isUnfolded && canBeShown});
    }
    for (auto row = rows.size(); row > 1; --row)
        rows[rows[row - 1].parent].entryCount += rows[row - 1].entryCount;
    return rows;
}

std::optional<int> GroupTreeModel::rowOf(const UUID& id) const {
    const auto found = std::find_if(m_rows.begin(), m_rows.end(), [&](const Row& row) { return row.group->id == id; });
    if (found == m_rows.end())
        return std::nullopt;
    return static_cast<int>(found - m_rows.begin());
}

int GroupTreeModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant GroupTreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const auto& row = m_rows[static_cast<std::size_t>(index.row())];
    switch (role) {
        case Qt::DisplayRole:
        case Qt::AccessibleTextRole:
            return nameOf(*row.group);
        case Qt::AccessibleDescriptionRole:
            return QStringLiteral("%1 kayıt, düzey %2").arg(Numbers::grouped(row.entryCount)).arg(row.depth + 1);
        case depthRole:
            return row.depth;
        case countRole:
            return static_cast<qlonglong>(row.entryCount);
        case iconRole:
            return static_cast<qlonglong>(row.group->iconID);
        case hasChildrenRole:
            return m_canFold && !row.group->groups.empty();
        case isExpandedRole:
            return row.group->isExpanded;
        case canFoldRole:
            return m_canFold;
        default:
            return {};
    }
}

// The root stays where it is.
Qt::ItemFlags GroupTreeModel::flags(const QModelIndex& index) const {
    const auto flags = RowListModel::flags(index);
    return index.row() > 0 && m_canFold ? flags | Qt::ItemIsDragEnabled : flags;
}
