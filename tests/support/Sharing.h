// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/SharedArray.h"

/// Whether both arrays hold one and the same element at `index`.
template <class Element>
[[nodiscard]] bool shareElement(const SharedArray<Element>& a, const SharedArray<Element>& b, std::size_t index) {
    return index < a.size() && index < b.size() && &a[index] == &b[index];
}
