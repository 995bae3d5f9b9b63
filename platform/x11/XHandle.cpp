// SPDX-License-Identifier: MIT
#include "platform/x11/XHandle.h"

#include "platform/x11/XAnswer.h"

#include <cstdint>

XHandle::XHandle() : m_connection(xcb_connect(nullptr, &m_screen)) {}

bool XHandle::isOpen() const {
    return xcb_connection_has_error(get()) == 0;
}

xcb_window_t XHandle::root() const {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(get()));
    for (int screen = m_screen; screen > 0 && screens.rem > 1; --screen)
        xcb_screen_next(&screens);
    return screens.data->root;
}

xcb_atom_t XHandle::atom(std::string_view name, bool onlyIfExists) const {
    const auto request =
        xcb_intern_atom(get(), onlyIfExists ? 1 : 0, static_cast<std::uint16_t>(name.size()), name.data());
    const XAnswer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(get(), request, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}
