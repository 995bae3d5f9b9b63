// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// A message for the ear alone, spoken when it is said. It is beside the text that says the same to the eye, which
/// keeps the place and the role of a text. It takes no room.
class Announcement : public QWidget {
    Q_OBJECT

public:
    explicit Announcement(QWidget* parent);

    /// Has another message spoken; with none, there is nothing to be found any more.
    void say(const QString& message);
};
