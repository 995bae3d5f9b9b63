// SPDX-License-Identifier: MIT
#include "app/ui/theme/Motion.h"

namespace Motion {
namespace {

bool isCalm = false;

}  // namespace

bool isReduced() {
    return isCalm;
}

void setReduced(bool isReduced) {
    isCalm = isReduced;
}

int milliseconds(std::chrono::milliseconds duration) {
    return isReduced() ? 0 : static_cast<int>(duration.count());
}

}  // namespace Motion
