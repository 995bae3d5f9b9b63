// SPDX-License-Identifier: MIT
#include "app/ui/window/Columns.h"

#include "app/ui/components/Divider.h"
#include "app/ui/theme/Theme.h"

#include <QApplication>

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

struct ColumnLimits {
    int narrowest;
    int ideal;
    int widest;

    [[nodiscard]] int bound(double width) const { return std::clamp(static_cast<int>(width), narrowest, widest); }
};

constexpr ColumnLimits groupLimits{168, 210, 320};
constexpr ColumnLimits entryLimits{250, 340, 560};
constexpr int narrowestDetail = 260;
constexpr int usualWidth = 1020;  // of the window, in which the columns have their ideal widths
// What the first two have of a wider window; the third has the rest.
constexpr double groupShare = 0.06;
constexpr double entryShare = 0.16;
constexpr std::chrono::milliseconds settlingTime{500};

void limit(QWidget& column, const ColumnLimits& limits) {
    column.setMinimumWidth(limits.narrowest);
    column.setMaximumWidth(limits.widest);
}

ColumnWidths idealWidths(int width) {
    const double spare = std::max(0, width - usualWidth);
    return {.groups = groupLimits.bound(groupLimits.ideal + groupShare * spare),
            .entries = entryLimits.bound(entryLimits.ideal + entryShare * spare)};
}

}  // namespace

Columns::Columns(Preferences& preferences, QWidget* groups, QWidget* entries, QWidget* detail, QWidget* parent)
    : QSplitter(Qt::Horizontal, parent), m_preferences(preferences), m_groups(groups), m_entries(entries) {
    setHandleWidth(Metric::hairline);
    setChildrenCollapsible(false);
    limit(*groups, groupLimits);
    limit(*entries, entryLimits);
    detail->setMinimumWidth(narrowestDetail);
    for (auto* const column : {groups, entries, detail})
        addWidget(column);
    setStretchFactor(2, 1);
    for (const auto& [divider, name] : {std::pair{1, QStringLiteral("Grup sütununun genişliği")},
                                        std::pair{2, QStringLiteral("Kayıt sütununun genişliği")}}) {
        handle(divider)->setAccessibleName(name);
        handle(divider)->setAccessibleDescription(
            QStringLiteral("Sol ve sağ oklarla değiştir; Enter bitirir, Esc vazgeçer."));
    }
    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingTime);
    connect(&m_settling, &QTimer::timeout, this, &Columns::storeDragged);
    connect(this, &QSplitter::splitterMoved, &m_settling, qOverload<>(&QTimer::start));
}

QSplitterHandle* Columns::createHandle() {
    auto* const divider = new Divider(this);
    connect(divider, &Divider::resetWanted, this, &Columns::forgetDragged);
    connect(divider, &Divider::finished, this, &Columns::leaveDividers);
    connect(divider, &Divider::cancelled, this, &Columns::takeBack);
    return divider;
}

void Columns::resizeEvent(QResizeEvent* event) {
    if (m_settling.isActive())
        storeDragged();
    QSplitter::resizeEvent(event);
    showGroups();
    place();
}

void Columns::setGroupsWanted(bool areWanted) {
    m_areGroupsWanted = areWanted;
    showGroups();
    place();
}

void Columns::showGroups() {
    const bool isRoom = width() >= groupLimits.narrowest + entryLimits.narrowest + narrowestDetail + 2 * handleWidth();
    m_groups->setVisible(m_areGroupsWanted && isRoom);
}

/// In a window that is too narrow for all, first the third column gives way, then the second, then the first.
void Columns::place() {
    auto widths = m_preferences.columnWidths().value_or(idealWidths(width()));
    widths.groups = groupLimits.bound(widths.groups);
    const int taken = m_groups->isHidden() ? 0 : widths.groups + handleWidth();
    const int room = width() - taken - handleWidth() - narrowestDetail;
    widths.entries = entryLimits.bound(std::min(widths.entries, room));
    if (taken > 0)
        widths.groups =
            groupLimits.bound(std::min(widths.groups, width() - widths.entries - narrowestDetail - 2 * handleWidth()));
    setSizes({widths.groups, widths.entries, std::max(1, width() - widths.groups - widths.entries)});
}

void Columns::storeDragged() {
    m_settling.stop();
    const int groups =
        m_groups->isHidden() ? m_preferences.columnWidths().value_or(idealWidths(width())).groups : m_groups->width();
    m_preferences.setColumnWidths(ColumnWidths{.groups = groups, .entries = m_entries->width()});
}

void Columns::forgetDragged() {
    m_settling.stop();
    m_preferences.setColumnWidths(std::nullopt);
    place();
}

void Columns::goToNextDivider() {
    auto* const focus = QApplication::focusWidget();
    int next = 1;
    for (int i = 1; i < count(); ++i)
        if (handle(i) == focus)
            next = i + 1;
    if (next == 1) {
        m_focusBefore = focus;
        m_widthsBefore = m_preferences.columnWidths();
    }
    while (next < count() && (handle(next)->isHidden() || widget(next - 1)->isHidden()))
        ++next;
    if (next < count())
        handle(next)->setFocus(Qt::ShortcutFocusReason);
    else
        leaveDividers();
}

void Columns::takeBack() {
    m_settling.stop();
    m_preferences.setColumnWidths(m_widthsBefore);
    place();
    leaveDividers();
}

void Columns::leaveDividers() {
    if (m_focusBefore && m_focusBefore->isVisible() && m_focusBefore->isEnabled())
        m_focusBefore->setFocus(Qt::ShortcutFocusReason);
    else
        emit focusLost();
}
