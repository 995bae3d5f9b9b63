// SPDX-License-Identifier: MIT
#include "core/model/Timestamp.h"

#include <chrono>

Timestamp Timestamp::now() {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return {std::chrono::duration<double>(sinceEpoch).count()};
}
