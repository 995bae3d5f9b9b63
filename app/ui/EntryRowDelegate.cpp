// SPDX-License-Identifier: MIT
#include "app/ui/EntryRowDelegate.h"

#include "app/ui/EntryListModel.h"
#include "app/ui/EntryRowActions.h"
#include "app/ui/RowListView.h"
#include "app/ui/RowText.h"
#include "app/ui/Symbol.h"
#include "app/ui/Theme.h"
#include "app/ui/components/Badge.h"
#include "app/ui/components/IconTile.h"
#include "app/ui/components/Painting.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr int rowHeight = 52;
constexpr int tileSide = 32;
constexpr int symbolSide = 12;
constexpr int lineGap = 2;
constexpr int narrowestTitle = 56;  // what a badge leaves of a longer one

/// Paints one row, in the logical direction; `placed` mirrors where the writing runs from right to left.
class Row {
public:
    Row(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index)
        : m_painter(painter), m_option(option), m_index(index) {
        const QRect content = option.rect.adjusted(Metric::l, 0, -Metric::l, 0);
        m_tile = {content.left(), content.top() + (rowHeight - tileSide) / 2, tileSide, tileSide};
        const bool hasActions = option.state.testFlag(QStyle::State_MouseOver);
        const int end = hasActions ? EntryRowActions::widthFor(index.data(EntryListModel::isTypedRole).toBool()) : 0;
        const int left = m_tile.right() + 1 + Metric::m;
        const int lines = m_titleMetrics.height() + lineGap + m_subtitleMetrics.height();
        m_title = {left, content.top() + (rowHeight - lines) / 2, content.right() + 1 - end - left,
                   m_titleMetrics.height()};
        m_subtitle = {left, m_title.bottom() + 1 + lineGap, m_title.width(), m_subtitleMetrics.height()};
    }

    void paint() {
        paintGround();
        IconTile::paint(m_painter, placed(m_tile), m_index.data(EntryListModel::iconRole).toLongLong());
        if (m_index.data(EntryListModel::isExpiredRole).toBool())
            paintExpiry();
        paintLine(m_title, titleText(), BrandFont::rowTitle(), Palette::text);
        const QString subtitle = m_index.data(EntryListModel::subtitleRole).toString();
        paintLine(m_subtitle, RowText::elided(subtitle, m_subtitleMetrics, m_subtitle.width()), BrandFont::secondary(),
                  Palette::textSoft);
    }

private:
    [[nodiscard]] QRect placed(const QRect& area) const {
        return QStyle::visualRect(m_option.direction, m_option.rect, area);
    }
    [[nodiscard]] QString titleText() const {
        return RowText::elided(m_index.data().toString(), m_titleMetrics, m_title.width());
    }

    void paintGround() {
        const QRectF ground = m_option.rect.adjusted(Metric::s, 0, -Metric::s, 0);
        QColor colour;
        if (m_option.state.testFlag(QStyle::State_Selected))
            colour = Palette::selection();
        else if (m_option.state.testFlag(QStyle::State_MouseOver))
            colour = Palette::hover;
        Painting::roundedBox(m_painter, ground, Radius::control, colour,
                             RowListView::showsFocus(m_option) ? Palette::accent : QColor());
    }

    /// The symbol behind the title, and the badge where there is room for it; the title gets what is left.
    void paintExpiry() {
        const QString badge = EntryRowDelegate::tr("Süresi dolmuş");
        const int badgeWidth = Badge::widthFor(badge, false);
        const int natural = m_titleMetrics.horizontalAdvance(RowText::line(m_index.data().toString()));
        const int symbolRoom = Metric::s + symbolSide;
        const int badgeRoom = symbolRoom + Metric::s - 2 + badgeWidth;
        const bool hasBadge = m_title.width() - badgeRoom >= std::min(natural, narrowestTitle);
        m_title.setWidth(std::max(0, m_title.width() - (hasBadge ? badgeRoom : symbolRoom)));

        const int middle = m_title.top() + m_title.height() / 2;
        const int left = m_title.left() + m_titleMetrics.horizontalAdvance(titleText()) + Metric::s;
        Symbol::paint(m_painter, placed({left, middle - symbolSide / 2, symbolSide, symbolSide}),
                      QStringLiteral("clock.badge.exclamationmark.fill"), Palette::warn);
        if (hasBadge)
            Badge::paint(
                m_painter,
                placed({left + symbolSide + Metric::s - 2, middle - Badge::height / 2, badgeWidth, Badge::height}),
                badge, Palette::warn);
    }

    void paintLine(const QRect& area, const QString& text, const QFont& font, const QColor& colour) {
        m_painter.setFont(font);
        m_painter.setPen(colour);
        const auto side = m_option.direction == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft;
        m_painter.drawText(placed(area), static_cast<int>(side | Qt::AlignAbsolute) | Qt::TextSingleLine, text);
    }

    QPainter& m_painter;
    const QStyleOptionViewItem& m_option;
    const QModelIndex& m_index;
    QFontMetrics m_titleMetrics{BrandFont::rowTitle()};
    QFontMetrics m_subtitleMetrics{BrandFont::secondary()};
    QRect m_tile;
    QRect m_title;
    QRect m_subtitle;
};

}  // namespace

void EntryRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    painter->save();
    Row(*painter, option, index).paint();
    painter->restore();
}

QSize EntryRowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {0, rowHeight};
}
