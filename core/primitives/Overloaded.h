// SPDX-License-Identifier: MIT
#pragma once

/// One visitor made of a lambda for each case of a variant.
template <class... Functions>
struct Overloaded : Functions... {
    using Functions::operator()...;
};
