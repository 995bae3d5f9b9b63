// SPDX-License-Identifier: MIT
#include "app/ui/components/Motion.h"

#include <QApplication>
#include <QStyle>

namespace Motion {

bool isReduced() {
    // The desktop's settings reach Qt as the style's animation time: desktops that ask for calm set it to nothing.
    return QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration) == 0;
}

int milliseconds(std::chrono::milliseconds duration) {
    return isReduced() ? 0 : static_cast<int>(duration.count());
}

}  // namespace Motion
