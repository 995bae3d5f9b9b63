// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QColor>

class QMenu;

/// A square button of one symbol, without ground until the pointer is over it. Its tooltip is its accessible name;
/// where the tooltip names keys by signs, the keys' own names are beside them and are what screen readers hear.
class IconButton : public QAbstractButton {
    Q_OBJECT

public:
    IconButton(const QString& symbol, const QString& tip, QWidget* parent = nullptr);

    void setSymbol(const QString& name);
    /// The tooltip, and with it the accessible name.
    void setTip(const QString& tip);
    /// Of the keys that the tooltip writes in signs: "Ctrl+I" for "Yeni kayıt (⌘I)". Empty where it writes none.
    [[nodiscard]] const QString& keyNames() const noexcept { return m_keyNames; }
    void setTint(const QColor& colour);
    /// Side of the button and of the symbol in it, in points.
    void setSides(int button, int symbol);
    /// With a ground and an outline of its own, as beside the lock card's action.
    void setFramed(bool isFramed);
    /// For one on ground in the hover colour, where the usual answer to the pointer would not be seen.
    void setOnHoverGround(bool isOnHoverGround);
    /// Opens this menu under the button when pressed.
    void setMenu(QMenu* menu);

    [[nodiscard]] QSize sizeHint() const override { return {m_side, m_side}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_symbol;
    QString m_keyNames;
    QColor m_tint;
    int m_side;
    int m_symbolSide = 16;
    bool m_isFramed = false;
    bool m_isOnHoverGround = false;
};
