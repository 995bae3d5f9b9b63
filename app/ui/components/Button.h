// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPushButton>

#include <cstdint>

/// A push button of the theme. Its accessible name is its text. Checked, it is filled: of several quick choices the one
/// that holds.
class Button : public QPushButton {
    Q_OBJECT

public:
    enum class Variant : std::uint8_t { primary, secondary, ghost, danger, tinted };

    explicit Button(const QString& text, Variant variant = Variant::secondary, QWidget* parent = nullptr);

    /// 24 high instead of 30.
    void setSmall(bool isSmall);
    /// 38 high, for the one action of the lock card.
    void setLarge(bool isLarge);
    /// A symbol left of the text.
    void setSymbol(const QString& name);
    /// The colour of the variant `tinted`.
    void setTint(const QColor& colour);
    /// The keys that the signs of its text stand for, in soft ink behind it; screen readers hear them in place of the
    /// signs.
    void setKeyNames(const QString& names);
    /// With a tick in place of its symbol, or of its text where it has none: what it does has just been done.
    void setConfirmed(bool isConfirmed);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Look {
        QColor ground;
        QColor outline;
        QColor text;
    };
    [[nodiscard]] Look look() const;
    [[nodiscard]] QFont textFont() const;
    [[nodiscard]] QFont keyNamesFont() const;
    [[nodiscard]] int keyNamesWidth() const;

    Variant m_variant;
    bool m_isSmall = false;
    bool m_isLarge = false;
    bool m_isConfirmed = false;
    QString m_symbol;
    QString m_keyNames;
    QColor m_tint;
};
