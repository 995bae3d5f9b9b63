// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/SecureString.h"

#include <string>

/// Wipes a text that holds a secret at the end of a scope, whichever way it ends.
class WipedAtEnd {
public:
    explicit WipedAtEnd(std::string& text) noexcept : m_text(text) {}
    ~WipedAtEnd() { wipe(m_text); }
    WipedAtEnd(const WipedAtEnd&) = delete;
    WipedAtEnd& operator=(const WipedAtEnd&) = delete;

private:
    std::string& m_text;
};
