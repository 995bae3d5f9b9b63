// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dbus/ApplicationService.h"

#include <QObject>

#include <chrono>
#include <string>

class AppState;
class GlobalHotKey;
class MainWindow;
class Scheduler;

/// Does what is asked of the program from outside its window. To open and to generate bring the window to the front;
/// to lock, to save and to type leave it where it is.
class Activation final : public QObject {
public:
    /// All of it outlives this.
    struct Services {
        ApplicationService& service;
        AppState& state;
        GlobalHotKey& hotKey;
        Scheduler& scheduler;
        MainWindow& window;
    };

    explicit Activation(Services services);

    /// What this start itself is for: its window is new, and the toolkit names the launcher.
    void begin(const ApplicationWish& ownWish);

private:
    void fulfil(const ApplicationWish& wish);
    void act(ApplicationWish::Action action, const std::string& startupID);
    void open(const ApplicationWish::Open& open);
    void bringToFront(const std::string& startupID);
    void activate(const std::string& startupID);
    void endUnlessShown(std::chrono::seconds wait);

    Services m_services;
};
