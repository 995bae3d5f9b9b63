// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/rows/RowListView.h"
#include "core/model/UUID.h"

#include <QObject>
#include <QPoint>
#include <QTimer>

#include <functional>
#include <optional>
#include <set>

/// Lets entries, and groups where there are rules for them, be dropped on a list. It marks the place, scrolls near the
/// edges, and reports a row that the drag rests on.
class RowDropTarget : public QObject {
    Q_OBJECT

public:
    struct Rules {
        /// Where a drag over this point of the viewport would be let go; none where it cannot be.
        std::function<std::optional<RowMark>(const QPoint&)> placeAt;
        std::function<void(const std::set<UUID>&, const RowMark&)> drop;
        /// The same for a group; by default none can be let go anywhere.
        std::function<std::optional<RowMark>(const QPoint&, const UUID&)> groupPlaceAt =
            [](const QPoint&, const UUID&) { return std::nullopt; };
        std::function<void(const UUID&, const RowMark&)> dropGroup = [](const UUID&, const RowMark&) {};
        /// The drag has rested on this place for a while.
        std::function<void(const RowMark&)> rest = [](const RowMark&) {};
    };

    RowDropTarget(RowListView& list, Rules rules);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void begin(QDragEnterEvent& event);
    [[nodiscard]] std::optional<RowMark> placeAt(const QPoint& position) const;
    void follow(QDragMoveEvent& event);
    void takeDrop(QDropEvent& event);
    void end();
    void show(std::optional<RowMark> place);
    void scroll();
    [[nodiscard]] int scrollStep() const;

    RowListView& m_list;
    Rules m_rules;
    QPoint m_position;
    std::optional<UUID> m_group;  // that is dragged; none while entries are
    QTimer m_scrolling;
    QTimer m_resting;
};
