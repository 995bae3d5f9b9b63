// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"
#include "core/primitives/Implementation.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

/// A source of test material that gives the same in every run.
class Material {
public:
    explicit Material(std::uint64_t seed) : m_engine(seed) {}

    std::uint32_t number(std::uint32_t from, std::uint32_t to) {
        return std::uniform_int_distribution<std::uint32_t>(from, to)(m_engine);
    }
    Bytes bytes(std::size_t count) {
        Bytes bytes(count);
        for (auto& byte : bytes)
            byte = static_cast<std::uint8_t>(m_engine());
        return bytes;
    }

private:
    std::mt19937_64 m_engine;
};

/// Every supported implementation over vectors, `portable` first.
inline std::vector<Implementation> supportedVectors() {
    std::vector<Implementation> supported;
    for (const auto implementation : {Implementation::portable, Implementation::avx2, Implementation::avx512})
        if (isSupported(implementation))
            supported.push_back(implementation);
    return supported;
}

/// What an implementation over vectors is called in a test's name.
inline std::string nameOf(Implementation implementation) {
    return implementation == Implementation::avx512 ? "avx512"
           : implementation == Implementation::avx2 ? "avx2"
                                                    : "portable";
}
