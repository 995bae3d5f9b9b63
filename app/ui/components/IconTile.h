// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QWidget>

#include <cstdint>
#include <optional>

/// An entry's or group's symbol on a tile of its tint: this is where colour lives, the rest is quiet.
class IconTile : public QWidget {
    Q_OBJECT

public:
    /// `side` in points: 20 in the tree, 32 in the list, 44 in the detail.
    IconTile(std::int64_t iconID, int side, QWidget* parent = nullptr);

    void setIconID(std::int64_t iconID);

    /// Paints a tile for a delegate.
    static void paint(QPainter& painter, const QRectF& area, std::int64_t iconID);
    static void paint(QPainter& painter, const QRectF& area, const QString& symbol, const QColor& tint);

    [[nodiscard]] QSize sizeHint() const override { return {m_side, m_side}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::int64_t m_iconID;
    int m_side;
};

/// A tile for a symbol that belongs to no entry, as in empty states.
class SymbolTile : public QWidget {
    Q_OBJECT

public:
    SymbolTile(const QString& symbol, const QColor& tint, int side, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_symbol;
    QColor m_tint;
};

/// The program's own mark.
class BrandMark : public QWidget {
    Q_OBJECT

public:
    explicit BrandMark(int side, QWidget* parent = nullptr);

    static void paint(QPainter& painter, const QRectF& area);
    /// The mark as the window's icon, in every usual size.
    [[nodiscard]] static QIcon windowIcon();

protected:
    void paintEvent(QPaintEvent* event) override;
};
