// SPDX-License-Identifier: MIT
#include "platform/x11/LocksOff.h"

#include "platform/x11/ModifierBits.h"
#include "platform/x11/XAnswer.h"
#include "platform/x11/Xkb.h"

namespace {

constexpr std::uint8_t allModifiers = 0xFF;

std::uint8_t harmfulLocks(xcb_connection_t* connection) {
    const XAnswer<xcb_xkb_get_state_reply_t> state(
        xcb_xkb_get_state_reply(connection, xcb_xkb_get_state(connection, XCB_XKB_ID_USE_CORE_KBD), nullptr));
    return state ? static_cast<std::uint8_t>(state->lockedMods & ~ModifierBits::of(connection).numLock) : 0;
}

void set(xcb_connection_t* connection, std::uint8_t affectedLocks, std::uint8_t locks, std::uint8_t clearedLatches) {
    xcb_xkb_latch_lock_state(connection, XCB_XKB_ID_USE_CORE_KBD, affectedLocks, locks, 0, 0, clearedLatches, 0, 0);
}

}  // namespace

LocksOff::LocksOff(XConnection& connection) : m_connection(connection), m_locks(harmfulLocks(connection.get())) {
    set(m_connection.get(), m_locks, 0, allModifiers);
    m_connection.roundTrip();
}

LocksOff::~LocksOff() {
    if (m_locks != 0)
        set(m_connection.get(), m_locks, m_locks, 0);
    m_connection.roundTrip();
}
