// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QSocketNotifier;

/// Turns SIGTERM, SIGINT and SIGHUP, as at logout, into a normal quit of the application: the clipboard is wiped then.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(QObject* parent = nullptr);

private:
    void quit();

    QSocketNotifier* m_notifier;
};
