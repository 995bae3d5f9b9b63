// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <memory>

struct FreeXAnswer {
    void operator()(void* answer) const noexcept { std::free(answer); }
};

/// A reply, an event or an error of the X server; null where there was none.
template <class Type>
using XAnswer = std::unique_ptr<Type, FreeXAnswer>;
