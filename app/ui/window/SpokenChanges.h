// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/Environment.h"
#include "core/clipboard/Observers.h"

#include <QObject>
#include <QTimer>

class Announcement;

/// Announces to a screen reader what the eye sees at a glance and nothing else says: that something was deleted or
/// moved, that a step was taken back or made again, that the clipboard was wiped.
class SpokenChanges : public QObject {
    Q_OBJECT

public:
    SpokenChanges(const Environment& environment, QWidget& window);

private:
    void sayChange();
    void sayWipe();
    void say(const QString& message);

    Environment m_environment;
    Announcement* m_spoken;
    QTimer m_end;  // after which a message is not to be come upon any more
    std::int64_t m_wipes;
    Observers::Subscription m_clipboard;
};
