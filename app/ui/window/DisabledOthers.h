// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QPointer>
#include <QWidget>

/// What a window shows beneath a sheet that stands over all else: the screens, and sheets that were open before.
/// The menu bar stays as it is.
class DisabledOthers {
public:
    void begin(const QWidget& window, const QWidget& sheets);
    void end();

private:
    QList<QPointer<QWidget>> m_disabled;
};
