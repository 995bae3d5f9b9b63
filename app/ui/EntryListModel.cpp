// SPDX-License-Identifier: MIT
#include "app/ui/EntryListModel.h"

#include "app/ui/Texts.h"
#include "core/autotype/UrlHost.h"

#include <algorithm>

namespace {

QString titleOf(const KdbxEntry& entry) {
    return entry.title.empty() ? EntryListModel::tr("Adsız kayıt") : qtText(entry.title);
}

QString displayURL(const KdbxEntry& entry) {
    const auto host = urlHost(entry.url);
    return qtText(host ? *host : entry.url);
}

QString subtitleOf(const KdbxEntry& entry) {
    QStringList parts;
    if (!entry.username.empty())
        parts += qtText(entry.username);
    if (!entry.url.empty())
        parts += displayURL(entry);
    return parts.isEmpty() ? QStringLiteral("—") : parts.join(QStringLiteral("  ·  "));
}

QString spoken(const KdbxEntry& entry) {
    const auto subtitle = subtitleOf(entry);
    return entry.isExpired() ? subtitle + QStringLiteral(", ") + EntryListModel::tr("Süresi dolmuş") : subtitle;
}

}  // namespace

void EntryListModel::show(const std::optional<KdbxDatabase>& owner, EntryReferences entries) {
    if (hasSameRows(entries)) {
        // Entries that did not change are the very same ones, so what differs is told row by row.
        auto former = std::exchange(m_entries, std::move(entries));
        for (int row = 0; row < rowCount(); ++row)
            if (former[static_cast<std::size_t>(row)] != &entry(row))
                emit dataChanged(index(row), index(row));
        m_owner = owner;
        return;
    }
    beginResetModel();
    m_entries = std::move(entries);
    m_owner = owner;
    endResetModel();
}

bool EntryListModel::hasSameRows(const EntryReferences& entries) const {
    return std::equal(m_entries.begin(), m_entries.end(), entries.begin(), entries.end(),
                      [](const auto* a, const auto* b) { return a->id == b->id; });
}

std::optional<int> EntryListModel::rowOf(const UUID& id) const {
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(), [&](const auto* entry) { return entry->id == id; });
    if (found == m_entries.end())
        return std::nullopt;
    return static_cast<int>(found - m_entries.begin());
}

int EntryListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

QVariant EntryListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const auto& shown = entry(index.row());
    switch (role) {
        case Qt::DisplayRole:
        case Qt::AccessibleTextRole:
            return titleOf(shown);
        case subtitleRole:
            return subtitleOf(shown);
        case Qt::AccessibleDescriptionRole:
            return spoken(shown);
        case iconRole:
            return static_cast<qlonglong>(shown.iconID);
        case isExpiredRole:
            return shown.isExpired();
        default:
            return {};
    }
}
