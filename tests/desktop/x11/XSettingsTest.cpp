// SPDX-License-Identifier: MIT
#include "platform/x11/XSettings.h"

#include "platform/x11/XAnswer.h"
#include "tests/desktop/x11/X11Test.h"

#include <xcb/xcb.h>

#include <string>
#include <vector>

namespace {

/// A desktop's settings daemon, as far as one integer goes.
class Daemon {
public:
    Daemon() : m_connection(xcb_connect(nullptr, nullptr)), m_window(xcb_generate_id(m_connection)) {
        const auto root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, root, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_set_selection_owner(m_connection, m_window, atom("_XSETTINGS_S0"), XCB_CURRENT_TIME);
    }
    ~Daemon() { xcb_disconnect(m_connection); }
    Daemon(const Daemon&) = delete;
    Daemon& operator=(const Daemon&) = delete;

    void setAnimations(std::uint8_t value) {
        const std::string name = "Gtk/EnableAnimations";
        std::vector<std::uint8_t> bytes{0, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 0, 0, std::uint8_t(name.size()), 0};
        bytes.insert(bytes.end(), name.begin(), name.end());
        bytes.insert(bytes.end(), {1, 0, 0, 0, value, 0, 0, 0});
        const auto settings = atom("_XSETTINGS_SETTINGS");
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_window, settings, settings, 8,
                            static_cast<std::uint32_t>(bytes.size()), bytes.data());
        sync();
    }

private:
    xcb_atom_t atom(const std::string& name) {
        const auto cookie = xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
        const XAnswer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, cookie, nullptr));
        return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    }
    /// Returns when the server has done all of it.
    void sync() { atom("_XSETTINGS_S0"); }

    xcb_connection_t* m_connection;
    xcb_window_t m_window;
};

class XSettingsDesktopTest : public X11Test {};

TEST_F(XSettingsDesktopTest, aDisplayWithoutADesktopKeepsNoSettings) {
    EXPECT_FALSE(XSettings::integer("Gtk/EnableAnimations"));
}

TEST_F(XSettingsDesktopTest, aDesktopsSettingIsReadAsItIsNow) {
    Daemon daemon;
    daemon.setAnimations(1);
    EXPECT_EQ(XSettings::integer("Gtk/EnableAnimations"), 1);
    daemon.setAnimations(0);
    EXPECT_EQ(XSettings::integer("Gtk/EnableAnimations"), 0);
    EXPECT_FALSE(XSettings::integer("Gtk/Other"));
}

}  // namespace
