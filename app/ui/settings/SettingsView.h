// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/Environment.h"

#include <QWidget>

/// The settings window: clipboard, auto-type, the global hot key and the lock, one card each. What is set here is
/// stored at once.
class SettingsView : public QWidget {
    Q_OBJECT

public:
    /// Shows the settings of a window, or brings them to the front where they are open. They go with that window. The
    /// keys of the given commands work in them too.
    static void open(const Environment& environment, QWidget& owner, const QList<QAction*>& commands);

    explicit SettingsView(const Environment& environment, QWidget* owner = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void arrange(const Environment& environment);
    void standOver(const QWidget& owner);
    void goWith(QWidget& owner);
};
