// SPDX-License-Identifier: MIT
#include "app/ui/theme/Style.h"

#include "app/ui/theme/Motion.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Symbol.h"
#include "app/ui/theme/Theme.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace {

constexpr int rowHeight = 28;
constexpr int sectionHeight = 26;
constexpr int separatorHeight = 9;
constexpr int rowPadding = 10;
constexpr int shortcutGap = 28;
constexpr int markSide = 12;  // of check marks, arrows and icons
constexpr int markRoom = 20;
constexpr int comboPadding = 10;
constexpr int comboArrowRoom = 26;
constexpr double disabledOpacity = 0.4;

bool areMnemonicsShown = false;

bool isSection(const QStyleOptionMenuItem& item) {
    return item.menuItemType == QStyleOptionMenuItem::Separator && !item.text.isEmpty();
}

/// The room before the texts, which all rows of a menu have when one of them needs it.
int leadingRoom(const QStyleOptionMenuItem& item) {
    return item.menuHasCheckableItems || item.maxIconWidth > 0 ? markRoom : 0;
}

QRectF mark(const QRect& row, int left) {
    return QRectF(left, row.center().y() + 1 - markSide / 2.0, markSide, markSide);
}

void drawSeparator(QPainter& painter, const QStyleOptionMenuItem& item) {
    if (!isSection(item))
        return Painting::hairline(painter, QPointF(item.rect.left() + 6, item.rect.center().y()),
                                  item.rect.width() - 12, Qt::Horizontal, Palette::line);
    painter.setFont(BrandFont::label());
    painter.setPen(Palette::textSoft);
    painter.drawText(item.rect.adjusted(rowPadding, 0, -rowPadding, 0), Qt::AlignVCenter | Qt::AlignLeft, item.text);
}

void drawMarks(QPainter& painter, const QStyleOptionMenuItem& item) {
    const int left = item.rect.left() + rowPadding - 2;
    if (item.checkType != QStyleOptionMenuItem::NotCheckable && item.checked)
        Symbol::paint(painter, mark(item.rect, left), QStringLiteral("checkmark"), Palette::accent);
    else if (!item.icon.isNull())
        item.icon.paint(&painter, mark(item.rect, left).toRect());
    if (item.menuItemType == QStyleOptionMenuItem::SubMenu)
        Symbol::paint(painter, mark(item.rect, item.rect.right() - rowPadding - markSide + 4),
                      QStringLiteral("chevron.right"), Palette::textSoft);
}

void drawMenuItem(QPainter& painter, const QStyleOptionMenuItem& item) {
    if (item.menuItemType == QStyleOptionMenuItem::Separator)
        return drawSeparator(painter, item);
    const bool isEnabled = item.state.testFlag(QStyle::State_Enabled);
    if (isEnabled && item.state.testFlag(QStyle::State_Selected))
        Painting::roundedBox(painter, item.rect, Radius::small, Palette::selection());
    if (!isEnabled)
        painter.setOpacity(disabledOpacity);
    drawMarks(painter, item);

    const auto parts = item.text.split(QLatin1Char('\t'));
    const QRect area = item.rect.adjusted(rowPadding + leadingRoom(item), 0, -rowPadding, 0);
    painter.setFont(item.font);
    painter.setPen(Palette::text);
    painter.drawText(area, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine | Qt::TextHideMnemonic, parts[0]);
    if (parts.size() > 1) {
        painter.setPen(Palette::textSoft);
        painter.drawText(area, Qt::AlignVCenter | Qt::AlignRight | Qt::TextSingleLine, parts[1]);
    }
}

QSize menuItemSize(const QStyleOptionMenuItem& item, const QSize& content) {
    if (item.menuItemType == QStyleOptionMenuItem::Separator)
        return isSection(item) ? QSize(content.width() + 2 * rowPadding, sectionHeight) : QSize(10, separatorHeight);
    const int trailing = item.text.contains(QLatin1Char('\t')) || item.reservedShortcutWidth > 0 ? shortcutGap : 0;
    const int arrow = item.menuItemType == QStyleOptionMenuItem::SubMenu ? markRoom : 0;
    return {content.width() + leadingRoom(item) + trailing + arrow + 2 * rowPadding, rowHeight};
}

void drawComboBox(QPainter& painter, const QStyleOptionComboBox& box) {
    if (!box.state.testFlag(QStyle::State_Enabled))
        painter.setOpacity(disabledOpacity);
    const bool isHovered = box.state.testFlag(QStyle::State_MouseOver) || box.state.testFlag(QStyle::State_On);
    Painting::roundedBox(painter, box.rect, Radius::control, isHovered ? Palette::hover.lighter(118) : Palette::hover,
                         Palette::lineStrong);
    Symbol::paint(painter, mark(box.rect, box.rect.right() - comboArrowRoom + 8), QStringLiteral("chevron.down"),
                  Palette::textSoft);
}

}  // namespace

Style::Style() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void Style::setMnemonicsShown(bool areShown) {
    areMnemonicsShown = areShown;
}

void Style::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (qobject_cast<QMenu*>(widget))
        widget->setAttribute(Qt::WA_TranslucentBackground);  // for its round corners
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
    switch (element) {
        case PE_FrameFocusRect:
        case PE_FrameMenu:  // the panel has its outline
            return;
        case PE_PanelMenu:
            return Painting::roundedBox(*painter, option->rect, Radius::control, Palette::elevated,
                                        Palette::lineStrong);
        default:
            QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void Style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                        const QWidget* widget) const {
    const auto* const item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element != CE_MenuItem || !item)
        return QProxyStyle::drawControl(element, option, painter, widget);
    painter->save();
    drawMenuItem(*painter, *item);
    painter->restore();
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                               const QWidget* widget) const {
    const auto* const box = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (control != CC_ComboBox || !box)
        return QProxyStyle::drawComplexControl(control, option, painter, widget);
    painter->save();
    drawComboBox(*painter, *box);
    painter->restore();
}

QRect Style::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                            const QWidget* widget) const {
    if (control == CC_ComboBox && part == SC_ComboBoxEditField)
        return visualRect(option->direction, option->rect, option->rect.adjusted(comboPadding, 0, -comboArrowRoom, 0));
    return QProxyStyle::subControlRect(control, option, part, widget);
}

QSize Style::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                              const QWidget* widget) const {
    if (const auto* const item = qstyleoption_cast<const QStyleOptionMenuItem*>(option); type == CT_MenuItem && item)
        return menuItemSize(*item, size);
    if (type == CT_ComboBox)
        return {size.width() + comboPadding + comboArrowRoom, Metric::controlHeight};
    return QProxyStyle::sizeFromContents(type, option, size, widget);
}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* result) const {
    switch (hint) {
        case SH_LineEdit_PasswordCharacter:
            return 0x2022;  // the bullet, as wherever secrets are masked
        case SH_LineEdit_PasswordMaskDelay:
            return 0;
        case SH_Menu_SubMenuPopupDelay:
            return 120;
        case SH_Menu_SupportsSections:
            return 1;
        case SH_Menu_Mask:
            if (auto* const mask = qstyleoption_cast<QStyleHintReturnMask*>(result))
                mask->region = Painting::withoutCorners(option->rect, Radius::control);
            return 1;
        case SH_ToolTip_WakeUpDelay:
            return 600;
        case SH_Widget_Animation_Duration:
            return Motion::milliseconds();
        case SH_DialogButtonBox_ButtonsHaveIcons:
            return 0;
        case SH_ComboBox_Popup:
            return 0;  // a list below the box
        case SH_UnderlineShortcut:
            return areMnemonicsShown || qobject_cast<const QMenuBar*>(QApplication::focusWidget()) ? 1 : 0;
        default:
            return QProxyStyle::styleHint(hint, option, widget, result);
    }
}

QIcon Style::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    switch (icon) {
        case SP_MessageBoxWarning:
        case SP_MessageBoxQuestion:
            return Symbol::icon(QStringLiteral("exclamationmark.triangle.fill"), Palette::warn);
        case SP_MessageBoxCritical:
            return Symbol::icon(QStringLiteral("exclamationmark.triangle.fill"), Palette::danger);
        default:
            return QProxyStyle::standardIcon(icon, option, widget);
    }
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
        case PM_TextCursorWidth:
            return 2;
        case PM_MessageBoxIconSize:
            return Metric::xl;
        case PM_MenuPanelWidth:
            return 0;
        case PM_MenuHMargin:
        case PM_MenuVMargin:
            return Metric::xs + Metric::hairline;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}
