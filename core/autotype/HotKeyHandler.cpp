// SPDX-License-Identifier: MIT
#include "core/autotype/HotKeyHandler.h"

#include "core/autotype/WindowMatcher.h"

void HotKeyHandler::press() {
    if (m_autoType.isTyping())
        return;
    m_autoType.captureTarget();
    const auto* const database = m_session.database();
    if (m_session.isLocked() || database == nullptr)
        return;
    const WindowMatcher matcher(m_autoType.frontmostWindowTitle().value_or(""));
    const auto* const match = matcher.firstMatch(database->root);
    if (match == nullptr) {
        m_session.setLastError("Ön plandaki pencereyle eşleşen bir kayıt bulunamadı.");
        return;
    }
    const KdbxEntry entry = *match;  // a copy: typing an entry changes the vault
    m_session.performAutoType(entry);
}
