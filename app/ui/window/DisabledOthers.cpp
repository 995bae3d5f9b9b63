// SPDX-License-Identifier: MIT
#include "app/ui/window/DisabledOthers.h"

#include <QMenuBar>

#include <utility>

void DisabledOthers::begin(const QWidget& window, const QWidget& sheets) {
    for (auto* const child : window.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        const bool isOther = child != &sheets && !child->isWindow() && qobject_cast<QMenuBar*>(child) == nullptr;
        if (!isOther || !child->isEnabled())
            continue;
        child->setEnabled(false);
        m_disabled.append(child);
    }
}

void DisabledOthers::end() {
    for (const auto& widget : std::exchange(m_disabled, {}))
        if (widget)
            widget->setEnabled(true);
}
