// SPDX-License-Identifier: MIT
#include "app/ui/components/Button.h"

#include "app/ui/components/KeyNames.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Symbol.h"
#include "app/ui/theme/Theme.h"

#include <QPainter>
#include <QStyle>

namespace {

constexpr int largeHeight = 38;
constexpr int symbolSide = 14;
constexpr int symbolGap = 6;
constexpr double disabledOpacity = 0.4;

}  // namespace

Button::Button(const QString& text, Variant variant, QWidget* parent)
    : QPushButton(text, parent), m_variant(variant), m_tint(Palette::accent) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    setAutoDefault(false);
}

void Button::setSmall(bool isSmall) {
    m_isSmall = isSmall;
    updateGeometry();
}

void Button::setLarge(bool isLarge) {
    m_isLarge = isLarge;
    updateGeometry();
}

void Button::setSymbol(const QString& name) {
    m_symbol = name;
    updateGeometry();
}

void Button::setTint(const QColor& colour) {
    m_tint = colour;
    update();
}

void Button::setKeyNames(const QString& names) {
    m_keyNames = names;
    setAccessibleName(QString::fromStdString(KeyNames::withoutSigns(text().toStdString(), names.toStdString())));
    updateGeometry();
    update();
}

void Button::setConfirmed(bool isConfirmed) {
    m_isConfirmed = isConfirmed;
    update();
}

QFont Button::textFont() const {
    return BrandFont::body(m_isSmall ? 12 : (m_isLarge ? 14 : 13), QFont::DemiBold);
}

QFont Button::keyNamesFont() const {
    return BrandFont::body(m_isSmall ? 11 : 12);
}

/// With the gap before them.
int Button::keyNamesWidth() const {
    return m_keyNames.isEmpty() ? 0 : Metric::s + QFontMetrics(keyNamesFont()).horizontalAdvance(m_keyNames);
}

QSize Button::sizeHint() const {
    const int height = m_isLarge ? largeHeight : (m_isSmall ? Metric::controlHeightSmall : Metric::controlHeight);
    const int padding = m_isSmall ? Metric::s : Metric::m;
    const int symbolWidth = m_symbol.isEmpty() ? 0 : symbolSide + (text().isEmpty() ? 0 : symbolGap);
    return {QFontMetrics(textFont()).horizontalAdvance(text()) + keyNamesWidth() + 2 + symbolWidth + 2 * padding,
            height};
}

Button::Look Button::look() const {
    const bool isHovered = underMouse() && isEnabled();
    const Look filled{isDown() ? Palette::accent.darker(112) : (isHovered ? Palette::accentHover : Palette::accent),
                      {},
                      Palette::canvas};
    switch (m_variant) {
        case Variant::primary:
            return filled;
        case Variant::secondary:
            if (isChecked())
                return filled;
            return {isDown() ? Palette::line : (isHovered ? Palette::hover.lighter(118) : Palette::hover),
                    Palette::lineStrong, Palette::text};
        case Variant::ghost:
            return {isDown() ? Palette::line : (isHovered ? Palette::hover : QColor()),
                    {},
                    isHovered ? Palette::text : Palette::textSoft};
        case Variant::danger:
            return {Palette::withOpacity(Palette::danger, isDown() ? 0.26 : (isHovered ? 0.19 : 0.12)),
                    Palette::withOpacity(Palette::danger, 0.35), Palette::danger};
        case Variant::tinted:
            return {Palette::withOpacity(m_tint, isDown() ? 0.28 : (isHovered ? 0.2 : 0.13)), {}, m_tint};
    }
    Q_UNREACHABLE();
}

void Button::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(disabledOpacity);
    const auto [ground, outline, textColour] = look();
    Painting::roundedBox(painter, rect(), m_isSmall ? Radius::small : Radius::control, ground, outline);

    if (m_isConfirmed && m_symbol.isEmpty()) {
        Symbol::paint(painter,
                      QRectF((width() - symbolSide) / 2.0, (height() - symbolSide) / 2.0, symbolSide, symbolSide),
                      QStringLiteral("checkmark"), Palette::success);
        return;
    }
    if (m_variant == Variant::primary)
        painter.setOpacity(1);  // dark text that faded as well could not be read on the faded ground
    painter.setFont(textFont());
    const QFontMetrics metrics(textFont());
    const int symbolWidth = m_symbol.isEmpty() ? 0 : symbolSide + (text().isEmpty() ? 0 : symbolGap);
    const int room = width() - symbolWidth - keyNamesWidth() - 2 * Metric::s;
    const QString shown = metrics.elidedText(text(), Qt::ElideRight, room);
    const int textWidth = metrics.horizontalAdvance(shown);
    const int content = symbolWidth + textWidth + keyNamesWidth();
    int left = (width() - content) / 2;
    const auto placed = [&](int from, int wide) {
        return QStyle::visualRect(layoutDirection(), rect(), QRect(from, 0, wide, height()));
    };
    if (!m_symbol.isEmpty()) {
        const QRect area = placed(left, symbolSide);
        Symbol::paint(painter, QRectF(area.left(), (height() - symbolSide) / 2.0, symbolSide, symbolSide),
                      m_isConfirmed ? QStringLiteral("checkmark") : m_symbol,
                      m_isConfirmed ? Palette::success : textColour);
        left += symbolWidth;
    }
    painter.setPen(textColour);
    constexpr auto line = Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine;
    painter.drawText(placed(left, textWidth + 1), line, shown);
    if (m_keyNames.isEmpty())
        return;
    painter.setFont(keyNamesFont());
    painter.setPen(Palette::textSoft);
    painter.drawText(placed(left + textWidth + Metric::s, keyNamesWidth()), line, m_keyNames);
}
