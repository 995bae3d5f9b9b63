// SPDX-License-Identifier: MIT
#pragma once

#include "core/autotype/AutoTypeService.h"
#include "core/model/KdbxDatabase.h"

#include <string_view>

/// The session, as far as a press of the global hot key needs it.
class HotKeySession {
public:
    virtual ~HotKeySession() = default;

    [[nodiscard]] virtual bool isLocked() const = 0;

    /// The open vault, or null.
    [[nodiscard]] virtual const KdbxDatabase* database() const = 0;

    /// Types what the entry's sequence says.
    virtual void performAutoType(const KdbxEntry& entry) = 0;

    /// Shows a failure to the user.
    virtual void setLastError(std::string_view message) = 0;
};

/// What a press of the global hot key does: types the first entry that the front window's title speaks of.
class HotKeyHandler {
public:
    /// Both outlive the handler.
    HotKeyHandler(AutoTypeService& autoType, HotKeySession& session) noexcept
        : m_autoType(autoType), m_session(session) {}

    /// One press. A locked vault makes it silent, and so does a run that is going on: what is typed may hold the
    /// combination itself.
    void press();

private:
    AutoTypeService& m_autoType;
    HotKeySession& m_session;
};
