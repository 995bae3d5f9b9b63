// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QSocketNotifier;

/// While it lives, turns SIGTERM, SIGINT and SIGHUP, as at logout, into a normal quit of the application: the clipboard
/// is wiped then. There is one at a time.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(QObject* parent = nullptr);
    ~TerminationSignals() override;

private:
    void quit();

    QSocketNotifier* m_notifier;
};
