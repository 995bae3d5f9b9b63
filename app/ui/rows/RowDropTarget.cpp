// SPDX-License-Identifier: MIT
#include "app/ui/rows/RowDropTarget.h"

#include "app/ui/rows/EntryDrag.h"
#include "app/ui/rows/GroupDrag.h"

#include <QDropEvent>
#include <QMimeData>
#include <QScrollBar>

#include <algorithm>
#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr auto frame = 16ms;
constexpr auto restTime = 700ms;
constexpr int scrollMargin = 36;  // from an edge
constexpr int deepestStep = 14;   // points a frame, at the edge itself

}  // namespace

RowDropTarget::RowDropTarget(RowListView& list, Rules rules) : QObject(&list), m_list(list), m_rules(std::move(rules)) {
    list.viewport()->setAcceptDrops(true);
    list.viewport()->installEventFilter(this);
    m_scrolling.setInterval(frame);
    connect(&m_scrolling, &QTimer::timeout, this, &RowDropTarget::scroll);
    m_resting.setInterval(restTime);
    m_resting.setSingleShot(true);
    connect(&m_resting, &QTimer::timeout, this, [this] {
        if (const auto& place = m_list.mark())
            m_rules.rest(*place);
    });
}

bool RowDropTarget::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
        case QEvent::DragEnter:
            begin(static_cast<QDragEnterEvent&>(*event));
            return true;
        case QEvent::DragMove:
            follow(static_cast<QDragMoveEvent&>(*event));
            return true;
        case QEvent::DragLeave:
            end();
            return true;
        case QEvent::Drop:
            takeDrop(static_cast<QDropEvent&>(*event));
            return true;
        default:
            return false;
    }
}

/// Accepts the drag as a whole, so that every move arrives here; whether a row takes it is decided move by move.
void RowDropTarget::begin(QDragEnterEvent& event) {
    m_group = GroupDrag::groupIn(*event.mimeData());
    event.setAccepted(m_group || event.mimeData()->hasText());
    m_list.forgetPointer();
}

std::optional<RowMark> RowDropTarget::placeAt(const QPoint& position) const {
    return m_group ? m_rules.groupPlaceAt(position, *m_group) : m_rules.placeAt(position);
}

void RowDropTarget::follow(QDragMoveEvent& event) {
    m_position = event.position().toPoint();
    show(placeAt(m_position));
    if (scrollStep() == 0)
        m_scrolling.stop();
    else if (!m_scrolling.isActive())
        m_scrolling.start();
    event.setAccepted(m_list.mark().has_value());
}

void RowDropTarget::takeDrop(QDropEvent& event) {
    const auto place = placeAt(event.position().toPoint());
    end();
    const auto ids = m_group ? std::set<UUID>() : EntryDrag::idsIn(event.mimeData()->text());
    event.setAccepted(place && (m_group || !ids.empty()));
    if (!event.isAccepted())
        return;
    if (m_group)
        m_rules.dropGroup(*m_group, *place);
    else
        m_rules.drop(ids, *place);
}

void RowDropTarget::end() {
    m_scrolling.stop();
    show(std::nullopt);
}

void RowDropTarget::show(std::optional<RowMark> place) {
    if (place == m_list.mark())
        return;
    m_list.setMark(place);
    if (place)
        m_resting.start();
    else
        m_resting.stop();
}

void RowDropTarget::scroll() {
    auto* const bar = m_list.verticalScrollBar();
    bar->setValue(bar->value() + scrollStep());
    show(placeAt(m_position));
}

/// Slowly at first, faster the nearer the edge.
int RowDropTarget::scrollStep() const {
    const int fromTop = m_position.y();
    const int fromBottom = m_list.viewport()->height() - 1 - m_position.y();
    const auto step = [](int distance) {
        return deepestStep * (scrollMargin - std::clamp(distance, 0, scrollMargin)) / scrollMargin;
    };
    return fromTop < fromBottom ? -step(fromTop) : step(fromBottom);
}
