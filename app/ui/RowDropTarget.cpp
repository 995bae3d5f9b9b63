// SPDX-License-Identifier: MIT
#include "app/ui/RowDropTarget.h"

#include "app/ui/EntryDrag.h"

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
            // Taken as a whole, so that the drag is told of every move; which places take it, the moves say.
            event->setAccepted(static_cast<QDragEnterEvent*>(event)->mimeData()->hasText());
            m_list.forgetPointer();
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

void RowDropTarget::follow(QDragMoveEvent& event) {
    m_position = event.position().toPoint();
    show(m_rules.placeAt(m_position));
    if (scrollStep() == 0)
        m_scrolling.stop();
    else if (!m_scrolling.isActive())
        m_scrolling.start();
    event.setAccepted(m_list.mark().has_value());
}

void RowDropTarget::takeDrop(QDropEvent& event) {
    const auto place = m_rules.placeAt(event.position().toPoint());
    end();
    const auto ids = EntryDrag::idsIn(event.mimeData()->text());
    event.setAccepted(place && !ids.empty());
    if (event.isAccepted())
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
    show(m_rules.placeAt(m_position));
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
