// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QWidget>

/// A small pill with a word in it, and perhaps a symbol.
class Badge : public QWidget {
    Q_OBJECT

public:
    explicit Badge(const QString& text, const QColor& tint, const QString& symbol = {}, QWidget* parent = nullptr);

    /// Without its ground: symbol and word alone, as in the lock card's footer.
    void setBare(bool isBare);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    /// Paints a badge for a delegate; `area` is as wide as `widthFor` says.
    static void paint(QPainter& painter, const QRectF& area, const QString& text, const QColor& tint,
                      const QString& symbol = {});
    [[nodiscard]] static int widthFor(const QString& text, bool hasSymbol);
    static constexpr int height = 20;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QString m_text;
    QColor m_tint;
    QString m_symbol;
    bool m_isBare = false;
};
