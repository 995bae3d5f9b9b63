// SPDX-License-Identifier: MIT
#pragma once

/// One visitor made of a lambda for each case of a variant.
template <class... Functions>
struct Overloaded : Functions... {
    using Functions::operator()...;
};
// The standard makes this out itself, and clang 14, which builds the fuzzers, does not yet.
template <class... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;
