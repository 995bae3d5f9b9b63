// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <concepts>

/// Numbers as a Turkish reader expects them, whatever the desktop's language.
namespace Numbers {

/// A count, its thousands apart: "1.234".
[[nodiscard]] QString grouped(qlonglong count);

[[nodiscard]] QString grouped(std::unsigned_integral auto count) {
    return grouped(static_cast<qlonglong>(count));
}

}  // namespace Numbers
