// SPDX-License-Identifier: MIT
#include "app/ui/components/ApplicationStyle.h"

#include "app/ui/components/Accessible.h"
#include "app/ui/components/FocusRing.h"
#include "app/ui/components/ToolTip.h"
#include "app/ui/theme/Style.h"
#include "app/ui/theme/Theme.h"

#include <QApplication>
#include <QPalette>

namespace {

QPalette palette() {
    QPalette colours;
    const auto set = [&](QPalette::ColorRole role, const QColor& colour) { colours.setColor(role, colour); };
    set(QPalette::Window, Palette::canvas);
    set(QPalette::WindowText, Palette::text);
    set(QPalette::Base, Palette::canvas);
    set(QPalette::AlternateBase, Palette::surface);
    set(QPalette::Text, Palette::text);
    set(QPalette::PlaceholderText, Palette::textMuted);
    set(QPalette::Button, Palette::hover);
    set(QPalette::ButtonText, Palette::text);
    set(QPalette::BrightText, Palette::danger);
    set(QPalette::Highlight, Palette::withOpacity(Palette::accent, 0.45));
    set(QPalette::HighlightedText, Palette::text);
    set(QPalette::ToolTipBase, Palette::elevated);
    set(QPalette::ToolTipText, Palette::text);
    set(QPalette::Link, Palette::accent);
    set(QPalette::Light, Palette::lineStrong);
    set(QPalette::Midlight, Palette::line);
    set(QPalette::Mid, Palette::line);
    set(QPalette::Dark, Palette::surface);
    set(QPalette::Shadow, Qt::black);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        colours.setColor(QPalette::Disabled, role, Palette::withOpacity(Palette::text, 0.4));
    return colours;
}

// Sizes and colours are written as @name and come from the theme.
constexpr auto sheetTemplate = R"(
QMainWindow, QDialog { background: @canvas; }
QScrollArea, QScrollArea > QWidget > QWidget { background: transparent; }
QMenuBar { background: @canvas; color: @textSoft; border: none; border-bottom: 1px solid @line; padding: 2px 8px; spacing: 0px; }
QMenuBar::item { background: transparent; padding: 4px 8px; border-radius: @smallRadius; }
QMenuBar::item:selected { background: @hover; color: @text; }
QMenuBar::item:disabled { color: @lineStrong; }
QToolTip { background: @elevated; color: @text; border: 1px solid @lineStrong; padding: 4px 6px; }
QScrollBar:vertical { background: transparent; width: 10px; margin: 2px; }
QScrollBar:horizontal { background: transparent; height: 10px; margin: 2px; }
QScrollBar::handle { background: @lineStrong; border-radius: 3px; }
QScrollBar::handle:hover { background: @textMuted; }
QScrollBar::handle:vertical { min-height: 28px; }
QScrollBar::handle:horizontal { min-width: 28px; }
QScrollBar::add-line, QScrollBar::sub-line, QScrollBar::add-page, QScrollBar::sub-page { background: none; border: none; width: 0; height: 0; }
QSplitter::handle { background: @line; }
QLineEdit { background: transparent; }
QDateTimeEdit { background: @canvas; color: @text; border: 1px solid @line; border-radius: @controlRadius; padding: 0 8px; min-height: 28px; }
QDateTimeEdit:focus { border-color: @accent; }
QDateTimeEdit::drop-down { border: none; width: 22px; }
QCalendarWidget QWidget { background: @elevated; color: @text; }
QCalendarWidget QAbstractItemView { background: @elevated; color: @text; selection-background-color: @accent; selection-color: @canvas; outline: none; }
QCalendarWidget QAbstractItemView:disabled { color: @textMuted; }
QCalendarWidget QToolButton { background: transparent; border: none; border-radius: @smallRadius; padding: 4px 8px; font-weight: 600; }
QCalendarWidget QToolButton:hover { background: @hover; }
QComboBox QAbstractItemView { background: @elevated; color: @text; border: 1px solid @lineStrong; selection-background-color: @selection; selection-color: @text; outline: none; padding: 4px; }
QComboBox QAbstractItemView::item { min-height: 26px; }
QDialog QPushButton { background: @hover; color: @text; border: 1px solid @lineStrong; border-radius: @controlRadius; padding: 0 14px; min-height: 28px; font-weight: 600; }
QDialog QPushButton:hover { background: @lineStrong; }
QDialog QPushButton:default { background: @accent; color: @canvas; border: none; }
QDialog QPushButton:disabled { background: @surface; color: @textMuted; border: 1px solid @line; }
QFileDialog QLineEdit { background: @canvas; color: @text; border: 1px solid @line; border-radius: @controlRadius; padding: 0 8px; min-height: 28px; }
QFileDialog QLineEdit:focus { border-color: @accent; }
QFileDialog QAbstractItemView { background: @surface; border: 1px solid @line; border-radius: @controlRadius; outline: none; }
QFileDialog QHeaderView { background: transparent; border: none; }
QFileDialog QHeaderView::section { background: transparent; color: @textSoft; border: none; border-bottom: 1px solid @line; padding: 6px 12px; text-align: left; }
QMessageBox { background: @elevated; }
QFileDialog QToolButton { background: transparent; border: none; border-radius: @smallRadius; padding: 4px; }
QFileDialog QToolButton:hover, QFileDialog QToolButton:focus { background: @hover; }
QFileDialog QToolButton:checked { background: @selection; }
QFileDialog QSplitter::handle { background: transparent; }
)";

QString colourText(const QColor& colour) {
    return QStringLiteral("rgba(%1,%2,%3,%4)")
        .arg(colour.red())
        .arg(colour.green())
        .arg(colour.blue())
        .arg(colour.alpha());
}

QString styleSheet() {
    // Longer names first, so that none is taken for the beginning of another.
    const std::pair<const char*, QString> values[] = {
        {"@smallRadius", QStringLiteral("%1px").arg(Radius::small)},
        {"@controlRadius", QStringLiteral("%1px").arg(Radius::control)},
        {"@lineStrong", colourText(Palette::lineStrong)},
        {"@textMuted", colourText(Palette::textMuted)},
        {"@textSoft", colourText(Palette::textSoft)},
        {"@selection", colourText(Palette::selection())},
        {"@elevated", colourText(Palette::elevated)},
        {"@surface", colourText(Palette::surface)},
        {"@canvas", colourText(Palette::canvas)},
        {"@accent", colourText(Palette::accent)},
        {"@hover", colourText(Palette::hover)},
        {"@line", colourText(Palette::line)},
        {"@text", colourText(Palette::text)},
    };
    QString sheet = QString::fromLatin1(sheetTemplate);
    for (const auto& [name, value] : values)
        sheet.replace(QLatin1String(name), value);
    return sheet;
}

}  // namespace

namespace ApplicationStyle {

void apply(QApplication& application) {
    // Qt would leave out those that the menu bar has, and show the rest: none is calmer than some.
    QApplication::setAttribute(Qt::AA_DontShowShortcutsInContextMenus);
    QApplication::setStyle(new Style);
    QApplication::setPalette(palette());
    QApplication::setFont(BrandFont::bodyText());
    application.setStyleSheet(styleSheet());
    FocusRing::install(&application);
    ToolTip::install(application);
    Accessible::install();
}

}  // namespace ApplicationStyle
