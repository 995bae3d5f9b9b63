// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class AppState;
class FileWatcher;
class Scheduler;

/// Lets the session look at its vault's file whenever something may have happened to it.
class VaultWatch final : public QObject {
public:
    /// All of it outlives this.
    struct Services {
        FileWatcher& watcher;
        Scheduler& scheduler;
        AppState& state;
    };

    explicit VaultWatch(Services services, QObject* parent = nullptr);

    /// In a moment, once for all that is noticed until then.
    void lookSoon();

private:
    void follow();

    Services m_services;
    bool m_isLookingSoon = false;
};
