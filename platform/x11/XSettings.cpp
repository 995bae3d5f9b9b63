// SPDX-License-Identifier: MIT
#include "platform/x11/XSettings.h"

#include "platform/x11/XAnswer.h"
#include "platform/x11/XHandle.h"

#include <string>

namespace XSettings {
namespace {

enum class Kind : std::uint8_t { integer = 0, text = 1, colour = 2 };

constexpr std::size_t colourSize = 8;
constexpr std::uint32_t longestProperty = 1 << 20;  // bytes; desktops keep a few thousand

/// The property's fields one after the other, in the byte order that its first byte names.
class Reader {
public:
    explicit Reader(std::span<const std::uint8_t> bytes) : m_rest(bytes) { m_isBigEndian = number(1) == 1; }

    [[nodiscard]] bool isWhole() const { return m_isWhole; }
    std::uint32_t number(std::size_t size) {
        const auto bytes = take(size);
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < bytes.size(); ++i)
            value |= std::uint32_t{bytes[i]} << (8 * (m_isBigEndian ? bytes.size() - 1 - i : i));
        return value;
    }
    /// A text that is padded to a multiple of four bytes.
    std::string_view padded(std::size_t size) {
        const auto bytes = take(size);
        take((4 - size % 4) % 4);
        return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    }
    std::span<const std::uint8_t> take(std::size_t size) {
        m_isWhole = m_isWhole && size <= m_rest.size();
        if (!m_isWhole)
            return {};
        const auto bytes = m_rest.first(size);
        m_rest = m_rest.subspan(size);
        return bytes;
    }

private:
    std::span<const std::uint8_t> m_rest;
    bool m_isBigEndian = false;
    bool m_isWhole = true;
};

xcb_window_t ownerOf(xcb_atom_t selection, const XHandle& display) {
    const auto request = xcb_get_selection_owner(display.get(), selection);
    const XAnswer<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(display.get(), request, nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

}  // namespace

std::optional<std::int32_t> integer(std::string_view name) {
    const XHandle display;
    if (!display.isOpen())
        return std::nullopt;
    const auto selection = display.existingAtom("_XSETTINGS_S" + std::to_string(display.screen()));
    const auto settings = display.existingAtom("_XSETTINGS_SETTINGS");
    if (selection == XCB_ATOM_NONE || settings == XCB_ATOM_NONE)
        return std::nullopt;
    const auto request =
        xcb_get_property(display.get(), 0, ownerOf(selection, display), settings, settings, 0, longestProperty / 4);
    const XAnswer<xcb_get_property_reply_t> reply(xcb_get_property_reply(display.get(), request, nullptr));
    if (!reply || reply->format != 8)
        return std::nullopt;
    return integerIn({static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get())),
                      static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))},
                     name);
}

std::optional<std::int32_t> integerIn(std::span<const std::uint8_t> property, std::string_view name) {
    Reader reader(property);
    reader.take(3);
    reader.number(4);  // the serial
    auto count = reader.number(4);
    for (; count > 0 && reader.isWhole(); --count) {
        const auto kind = static_cast<Kind>(reader.number(1));
        reader.take(1);
        const auto found = reader.padded(reader.number(2));
        reader.number(4);  // the serial of its last change
        if (kind == Kind::text) {
            reader.padded(reader.number(4));
        } else if (kind == Kind::colour) {
            reader.take(colourSize);
        } else if (kind == Kind::integer) {
            const auto value = reader.number(4);
            if (reader.isWhole() && found == name)
                return static_cast<std::int32_t>(value);
        } else {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

}  // namespace XSettings
