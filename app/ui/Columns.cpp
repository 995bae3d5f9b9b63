// SPDX-License-Identifier: MIT
#include "app/ui/Columns.h"

#include "app/state/Preferences.h"
#include "app/ui/Theme.h"

#include <QMouseEvent>
#include <QSplitterHandle>

#include <algorithm>
#include <chrono>
#include <functional>

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

/// A divider: a hairline that takes the pointer some points to either side.
class Divider final : public QSplitterHandle {
public:
    Divider(QSplitter* columns, std::function<void()> doubleClicked)
        : QSplitterHandle(Qt::Horizontal, columns), m_doubleClicked(std::move(doubleClicked)) {}

protected:
    void mouseDoubleClickEvent(QMouseEvent*) override { m_doubleClicked(); }

private:
    std::function<void()> m_doubleClicked;
};

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
    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingTime);
    connect(&m_settling, &QTimer::timeout, this, &Columns::storeDragged);
    connect(this, &QSplitter::splitterMoved, &m_settling, qOverload<>(&QTimer::start));
}

QSplitterHandle* Columns::createHandle() {
    return new Divider(this, [this] { forgetDragged(); });
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
