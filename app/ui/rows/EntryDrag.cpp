// SPDX-License-Identifier: MIT
#include "app/ui/rows/EntryDrag.h"

#include "app/ui/components/IconTile.h"
#include "app/ui/components/RowText.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int cardHeight = 40;
constexpr int tileSide = 24;
constexpr int widestTitle = 180;
constexpr int stackOffset = 4;  // of the card behind, which shows that there are several

}  // namespace

QString EntryDrag::textOf(const std::vector<UUID>& ids) {
    std::string text;
    for (const auto& id : ids)
        text += (text.empty() ? "" : "\n") + id.text();
    return QString::fromStdString(text);
}

std::set<UUID> EntryDrag::idsIn(const QString& text) {
    std::set<UUID> ids;
    for (const auto& line : QStringView(text).split(QLatin1Char('\n')))
        // Other systems end a line with two characters.
        if (const auto id =
                UUID::fromText((line.endsWith(QLatin1Char('\r')) ? line.chopped(1) : line).toUtf8().toStdString()))
            ids.insert(*id);
    return ids;
}

QPixmap EntryDrag::picture(const QString& title, std::int64_t iconID, std::size_t count, double ratio) {
    const QFontMetrics metrics(BrandFont::rowTitle());
    const QString shown = RowText::elided(title, metrics, widestTitle);
    const QString number = count > 1 ? QString::number(count) : QString();
    const QFontMetrics numberMetrics(BrandFont::label());
    const int numberWidth = number.isEmpty() ? 0 : numberMetrics.horizontalAdvance(number) + 2 * Metric::s;
    const int titleWidth = metrics.horizontalAdvance(shown) + 2;
    const QSize card(
        Metric::s + tileSide + Metric::s + titleWidth + Metric::m + (numberWidth ? numberWidth + Metric::s : 0),
        cardHeight);

    QPixmap picture((card + QSize(stackOffset, stackOffset)) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    if (count > 1)
        Painting::roundedBox(painter, QRectF(QPointF(stackOffset, stackOffset), card), Radius::control,
                             Palette::elevated, Palette::lineStrong);
    Painting::roundedBox(painter, QRectF({}, card), Radius::control, Palette::elevated, Palette::lineStrong);
    IconTile::paint(painter, QRectF(Metric::s, (cardHeight - tileSide) / 2.0, tileSide, tileSide), iconID);
    painter.setFont(BrandFont::rowTitle());
    painter.setPen(Palette::text);
    const int left = Metric::s + tileSide + Metric::s;
    painter.drawText(QRect(left, 0, titleWidth, cardHeight), Qt::AlignVCenter | Qt::TextSingleLine, shown);
    if (numberWidth > 0) {
        const QRectF pill(card.width() - Metric::s - numberWidth, (cardHeight - 18) / 2.0, numberWidth, 18);
        Painting::roundedBox(painter, pill, Radius::pill, Palette::accent);
        painter.setFont(BrandFont::label());
        painter.setPen(Palette::canvas);
        painter.drawText(pill, Qt::AlignCenter, number);
    }
    return picture;
}
