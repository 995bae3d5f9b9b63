// SPDX-License-Identifier: MIT
#include "app/ui/entries/EntryListModel.h"

#include "app/ui/components/Bidi.h"
#include "app/ui/components/LongText.h"
#include "app/ui/components/Texts.h"
#include "core/autotype/UrlHost.h"

#include <algorithm>
#include <functional>

namespace {

// More than a row shows or a voice would speak; a text of megabytes would take its time at each paint.
constexpr std::size_t mostBytes = 4096;

constexpr std::size_t rowsAhead = 16;

QString shownText(std::string_view text) {
    return qtText(LongText::prefix(text, mostBytes));
}

QString titleOf(const KdbxEntry& entry) {
    return entry.title.empty() ? QStringLiteral("Adsız kayıt") : shownText(entry.title);
}

QString displayURL(const KdbxEntry& entry) {
    const auto url = LongText::prefix(entry.url, mostBytes);  // a host is far shorter
    return qtText(urlHost(url).value_or(url));
}

QStringList subtitleParts(const KdbxEntry& entry) {
    QStringList parts;
    if (!entry.username.empty())
        parts += shownText(entry.username);
    if (!entry.url.empty())
        parts += displayURL(entry);
    return parts;
}

QString joined(const QStringList& parts) {
    return parts.isEmpty() ? QStringLiteral("—") : parts.join(QStringLiteral("  ·  "));
}

/// As it is painted: each part in its own direction.
QString subtitleOf(const KdbxEntry& entry) {
    auto parts = subtitleParts(entry);
    std::ranges::transform(parts, parts.begin(), Bidi::isolated);
    return joined(parts);
}

QString spoken(const KdbxEntry& entry) {
    const auto subtitle = joined(subtitleParts(entry));
    return entry.isExpired() ? subtitle + QStringLiteral(", ") + QStringLiteral("Süresi dolmuş") : subtitle;
}

}  // namespace

// Entries that did not change are the very same ones, in the former vault as in this: both are held until the view
// knows all changes.
void EntryListModel::show(const std::optional<KdbxDatabase>& owner, EntryReferences entries) {
    const auto formerOwner = std::exchange(m_owner, owner);
    become(
        m_entries, std::move(entries), [](const auto* a, const auto* b) { return a == b || a->id == b->id; },
        std::equal_to());
}

std::optional<int> EntryListModel::rowOf(const UUID& wanted) const {
    for (int row = 0; row < rowCount(); ++row)
        if (id(row) == wanted)
            return row;
    return std::nullopt;
}

const UUID& EntryListModel::id(int row) const {
    if (const auto later = static_cast<std::size_t>(row) + rowsAhead; later < m_entries.size())
        __builtin_prefetch(m_entries[later]);
    return entry(row).id;
}

QString EntryListModel::beginningOf(int row, qsizetype length) const {
    const auto later = static_cast<std::size_t>(row) + rowsAhead;
    if (later + rowsAhead < m_entries.size()) {
        __builtin_prefetch(m_entries[later + rowsAhead]);
        __builtin_prefetch(m_entries[later]->title.data());
    }
    const auto& shown = entry(row);
    if (shown.title.empty())
        return titleOf(shown);
    // A letter has three bytes at most, or four where it counts as two; the last one may be cut off.
    const auto bytes = 3 * static_cast<std::size_t>(length) + 4;
    return qtText(std::string_view(shown.title).substr(0, std::min(bytes, mostBytes)));
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
        case isTypedRole:
            return shown.autoTypeEnabled;
        default:
            return {};
    }
}

Qt::ItemFlags EntryListModel::flags(const QModelIndex& index) const {
    const auto flags = RowListModel::flags(index);
    return index.isValid() ? flags | Qt::ItemIsDragEnabled : flags;
}
