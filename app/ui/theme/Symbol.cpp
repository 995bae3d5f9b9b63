// SPDX-License-Identifier: MIT
#include "app/ui/theme/Symbol.h"

#include <QDir>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace Symbol {
namespace {

constexpr double disabledOpacity = 0.4;

QString fileOf(const QString& name) {
    return QStringLiteral(":/symbols/") + name + QStringLiteral(".svg");
}

/// The drawing in one colour, `side` device pixels wide and high.
QPixmap tinted(const QString& name, int side, const QColor& colour) {
    const QString key = QStringLiteral("symbol %1 %2 %3").arg(name).arg(side).arg(colour.rgba(), 8, 16);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    pixmap = QPixmap(side, side);
    pixmap.fill(Qt::transparent);
    QSvgRenderer drawing(fileOf(name));
    Q_ASSERT_X(drawing.isValid(), "Symbol", qUtf8Printable(name));
    QPainter painter(&pixmap);
    drawing.render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), colour);
    painter.end();
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

class Engine final : public QIconEngine {
public:
    Engine(QString name, const QColor& colour) : m_name(std::move(name)), m_colour(colour) {}

    void paint(QPainter* painter, const QRect& area, QIcon::Mode mode, QIcon::State) override {
        QColor colour = m_colour;
        if (mode == QIcon::Disabled)
            colour.setAlphaF(static_cast<float>(colour.alphaF() * disabledOpacity));
        Symbol::paint(*painter, area, m_name, colour);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new Engine(m_name, m_colour); }

private:
    QString m_name;
    QColor m_colour;
};

}  // namespace

void paint(QPainter& painter, const QRectF& area, const QString& name, const QColor& colour) {
    const double ratio = painter.device()->devicePixelRatioF();
    const int side = qRound(qMin(area.width(), area.height()) * ratio);
    QPixmap pixmap = tinted(name, side, colour);
    pixmap.setDevicePixelRatio(ratio);
    // On whole device pixels, or the drawing blurs.
    const QPointF corner((area.center().x() - side / ratio / 2) * ratio,
                         (area.center().y() - side / ratio / 2) * ratio);
    painter.drawPixmap(QPointF(qRound(corner.x()) / ratio, qRound(corner.y()) / ratio), pixmap);
}

QIcon icon(const QString& name, const QColor& colour) {
    return QIcon(new Engine(name, colour));
}

QStringList names() {
    QStringList names = QDir(QStringLiteral(":/symbols")).entryList({QStringLiteral("*.svg")});
    for (auto& name : names)
        name.chop(4);
    return names;
}

}  // namespace Symbol
