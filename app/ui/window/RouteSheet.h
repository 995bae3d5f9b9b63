// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/Environment.h"
#include "app/state/Route.h"

#include <QObject>

#include <optional>

class SheetHost;
class QWidget;

/// The sheet over the window that the session's route asks for: each route has its view, and a route whose entry or
/// group is gone says so.
class RouteSheet : public QObject {
    Q_OBJECT

public:
    /// `below` is the window's content, which is disabled while a sheet shows.
    RouteSheet(const Environment& environment, QWidget* below, QWidget* window);

signals:
    /// A sheet has gone, and with it what had the focus before it came.
    void focusLost();

private:
    /// What shows: a route, and whether there is something to show of it.
    struct Content {
        std::string routeID;
        bool isMissing;
        bool operator==(const Content&) const = default;
    };

    void show();
    void refresh();
    [[nodiscard]] bool isMissing(const Route& route) const;
    [[nodiscard]] QWidget* makeView(const Route& route) const;
    [[nodiscard]] QWidget* makeMissingView() const;

    Environment m_environment;
    SheetHost* m_host;
    std::optional<Content> m_content;  // none while no sheet shows
};
