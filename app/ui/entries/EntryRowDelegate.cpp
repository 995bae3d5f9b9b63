// SPDX-License-Identifier: MIT
#include "app/ui/entries/EntryRowDelegate.h"

#include "app/ui/components/Badge.h"
#include "app/ui/components/IconTile.h"
#include "app/ui/components/RowText.h"
#include "app/ui/components/ToolTip.h"
#include "app/ui/entries/EntryListModel.h"
#include "app/ui/entries/EntryRowActions.h"
#include "app/ui/rows/RowListView.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Symbol.h"
#include "app/ui/theme/Theme.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int rowHeight = 52;
constexpr int tileSide = 32;
constexpr int symbolSide = 14;
constexpr int badgeGap = 6;
constexpr int lineGap = 2;
constexpr int narrowestTitle = 56;  // what a badge leaves of a longer one

QString expiredText() {
    return QStringLiteral("Süresi dolmuş");
}

/// Where the parts of a row are, in the logical direction, and what they have room for.
struct Plan {
    Plan(const QStyleOptionViewItem& option, const QModelIndex& index)
        : title(index.data().toString()), subtitle(index.data(EntryListModel::subtitleRole).toString()) {
        const QRect content = option.rect.adjusted(Metric::l, 0, -Metric::l, 0);
        tile = {content.left(), content.top() + (rowHeight - tileSide) / 2, tileSide, tileSide};
        const bool hasActions = option.state.testFlag(QStyle::State_MouseOver);
        const int end = hasActions ? EntryRowActions::widthFor(index.data(EntryListModel::isTypedRole).toBool()) : 0;
        const int left = tile.right() + 1 + Metric::m;
        const int lines = titleMetrics.height() + lineGap + subtitleMetrics.height();
        titleArea = {left, content.top() + (rowHeight - lines) / 2, content.right() + 1 - end - left,
                     titleMetrics.height()};
        subtitleArea = {left, titleArea.bottom() + 1 + lineGap, titleArea.width(), subtitleMetrics.height()};
        isExpired = index.data(EntryListModel::isExpiredRole).toBool();
        if (isExpired)
            makeRoomForExpiry();
    }

    [[nodiscard]] QString cutTexts() const {
        return RowText::cutOnes(
            {{title, titleMetrics, titleArea.width()}, {subtitle, subtitleMetrics, subtitleArea.width()}});
    }

    QString title;
    QString subtitle;
    QFontMetrics titleMetrics{BrandFont::rowTitle()};
    QFontMetrics subtitleMetrics{BrandFont::secondary()};
    QRect tile;
    QRect titleArea;
    QRect subtitleArea;
    bool isExpired;
    bool hasBadge = false;
    int badgeWidth = 0;

private:
    /// The symbol comes behind the title, and the badge where there is room for it; the title gets what is left.
    void makeRoomForExpiry() {
        badgeWidth = Badge::widthFor(expiredText(), false);
        const int natural = titleMetrics.horizontalAdvance(RowText::line(title));
        const int symbolRoom = Metric::s + symbolSide;
        const int badgeRoom = symbolRoom + badgeGap + badgeWidth;
        hasBadge = titleArea.width() - badgeRoom >= std::min(natural, narrowestTitle);
        titleArea.setWidth(std::max(0, titleArea.width() - (hasBadge ? badgeRoom : symbolRoom)));
    }
};

/// Paints one row; `placed` mirrors where the writing runs from right to left.
class Row {
public:
    Row(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index)
        : m_painter(painter), m_option(option), m_index(index), m_plan(option, index) {}

    void paint() {
        paintGround();
        IconTile::paint(m_painter, placed(m_plan.tile), m_index.data(EntryListModel::iconRole).toLongLong());
        if (m_plan.isExpired)
            paintExpiry();
        paintLine(m_plan.titleArea, titleText(), BrandFont::rowTitle(), Palette::text);
        paintLine(m_plan.subtitleArea,
                  RowText::elided(m_plan.subtitle, m_plan.subtitleMetrics, m_plan.subtitleArea.width()),
                  BrandFont::secondary(), Palette::textSoft);
    }

private:
    [[nodiscard]] QRect placed(const QRect& area) const {
        return QStyle::visualRect(m_option.direction, m_option.rect, area);
    }
    [[nodiscard]] QString titleText() const {
        return RowText::elided(m_plan.title, m_plan.titleMetrics, m_plan.titleArea.width());
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

    void paintExpiry() {
        const QRect& title = m_plan.titleArea;
        const int middle = title.top() + title.height() / 2;
        const int left = title.left() + m_plan.titleMetrics.horizontalAdvance(titleText()) + Metric::s;
        Symbol::paint(m_painter, placed({left, middle - symbolSide / 2, symbolSide, symbolSide}),
                      QStringLiteral("clock.badge.exclamationmark.fill"), Palette::warn);
        if (m_plan.hasBadge)
            Badge::paint(
                m_painter,
                placed({left + symbolSide + badgeGap, middle - Badge::height / 2, m_plan.badgeWidth, Badge::height}),
                expiredText(), Palette::warn);
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
    const Plan m_plan;
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

bool EntryRowDelegate::helpEvent(QHelpEvent*, QAbstractItemView* view, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) {
    auto underPointer = option;
    underPointer.state |= QStyle::State_MouseOver;
    const auto cut = index.isValid() ? Plan(underPointer, index).cutTexts() : QString();
    ToolTip::show(cut, *view->viewport(), option.rect);
    return !cut.isEmpty();
}
