// SPDX-License-Identifier: MIT
#include "app/ui/EntryRowDelegate.h"

#include "app/ui/EntryListModel.h"
#include "app/ui/Symbol.h"
#include "app/ui/Theme.h"
#include "app/ui/components/Badge.h"
#include "app/ui/components/IconTile.h"
#include "app/ui/components/Painting.h"

#include <QPainter>

namespace {

constexpr int rowHeight = 52;
constexpr int tileSide = 32;
constexpr int symbolSide = 12;
constexpr int lineGap = 2;

void paintGround(QPainter& painter, const QStyleOptionViewItem& option) {
    const QRectF ground = option.rect.adjusted(Metric::s, 0, -Metric::s, 0);
    const bool hasFocusRing = option.state.testFlag(QStyle::State_HasFocus);
    QColor colour;
    if (option.state.testFlag(QStyle::State_Selected))
        colour = Palette::selection();
    else if (option.state.testFlag(QStyle::State_MouseOver))
        colour = Palette::hover;
    Painting::roundedBox(painter, ground, Radius::control, colour,
                         hasFocusRing ? Palette::withOpacity(Palette::accent, 0.6) : QColor());
}

}  // namespace

void EntryRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    painter->save();
    paintGround(*painter, option);
    const auto placed = [&](const QRect& area) { return QStyle::visualRect(option.direction, option.rect, area); };
    const QRect content = option.rect.adjusted(Metric::l, 0, -Metric::l, 0);
    const QRect tile(content.left(), content.top() + (rowHeight - tileSide) / 2, tileSide, tileSide);
    IconTile::paint(*painter, placed(tile), index.data(EntryListModel::iconRole).toLongLong());

    const QFontMetrics titleMetrics(BrandFont::rowTitle());
    const QFontMetrics subtitleMetrics(BrandFont::secondary());
    const int left = tile.right() + 1 + Metric::m;
    const int lines = titleMetrics.height() + lineGap + subtitleMetrics.height();
    const int top = content.top() + (rowHeight - lines) / 2;

    const QString badge = tr("Süresi dolmuş");
    const bool isExpired = index.data(EntryListModel::isExpiredRole).toBool();
    const int badgeRoom = isExpired ? symbolSide + Badge::widthFor(badge, false) + 2 * Metric::s : 0;
    const QString title = titleMetrics.elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight,
                                                  content.right() - left - badgeRoom);
    const int titleWidth = titleMetrics.horizontalAdvance(title);
    painter->setFont(BrandFont::rowTitle());
    painter->setPen(Palette::text);
    painter->drawText(placed({left, top, titleWidth + 2, titleMetrics.height()}), Qt::TextSingleLine, title);
    if (isExpired) {
        const int middle = top + titleMetrics.height() / 2;
        const int symbolLeft = left + titleWidth + Metric::s;
        Symbol::paint(*painter, placed({symbolLeft, middle - symbolSide / 2, symbolSide, symbolSide}),
                      QStringLiteral("clock.badge.exclamationmark.fill"), Palette::warn);
        Badge::paint(*painter,
                     placed({symbolLeft + symbolSide + Metric::s - 2, middle - Badge::height / 2,
                             Badge::widthFor(badge, false), Badge::height}),
                     badge, Palette::warn);
    }

    painter->setFont(BrandFont::secondary());
    painter->setPen(Palette::textSoft);
    const QRect subtitle(left, top + titleMetrics.height() + lineGap, content.right() - left, subtitleMetrics.height());
    painter->drawText(placed(subtitle), Qt::TextSingleLine,
                      subtitleMetrics.elidedText(index.data(EntryListModel::subtitleRole).toString(), Qt::ElideRight,
                                                 subtitle.width()));
    painter->restore();
}

QSize EntryRowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {0, rowHeight};
}
