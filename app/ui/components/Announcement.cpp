// SPDX-License-Identifier: MIT
#include "app/ui/components/Announcement.h"

#include "app/ui/components/Accessible.h"

Announcement::Announcement(QWidget* parent) : QWidget(parent) {
    Accessible::setRole(*this, QAccessible::Notification);
    setFixedSize(0, 0);
    hide();
}

void Announcement::say(const QString& message) {
    if (message == accessibleName())
        return;
    if (message.isEmpty())
        hide();
    setAccessibleName(message);
    Accessible::announce(*this);
    setVisible(!message.isEmpty());  // Qt announces what shows from now on
}
