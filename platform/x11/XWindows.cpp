// SPDX-License-Identifier: MIT
#include "platform/x11/XWindows.h"

#include "platform/x11/OldWindowTitle.h"
#include "platform/x11/XAnswer.h"

#include <QString>

#include <xcb/res.h>

#include <algorithm>
#include <span>

namespace {

// In units of 4 bytes: no title that a match could be found in is longer, and a program that sets one may be hostile.
constexpr std::uint32_t longestText = 16 * 1024;
constexpr std::uint32_t mostWindows = 64 * 1024;
constexpr std::uint32_t allDesktops = 0xFFFFFFFF;

std::string text(const QString& text) {
    return text.left(text.indexOf(QChar(u'\0'))).toStdString();
}

}  // namespace

std::optional<xcb_window_t> XWindows::active() {
    const auto window = numbers(m_connection.root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW);
    return window.empty() || window.front() == XCB_WINDOW_NONE ? std::nullopt : std::optional(window.front());
}

std::optional<std::vector<xcb_window_t>> XWindows::stacked() {
    for (const auto* const name : {"_NET_CLIENT_LIST_STACKING", "_NET_CLIENT_LIST"})
        if (auto windows = numbers(m_connection.root(), name, XCB_ATOM_WINDOW); !windows.empty())
            return windows;
    return std::nullopt;
}

bool XWindows::exists(xcb_window_t window) {
    const XAnswer<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        m_connection.get(), xcb_get_window_attributes(m_connection.get(), window), nullptr));
    return attributes != nullptr;
}

std::int64_t XWindows::processIdentifier(xcb_window_t window) {
    if (const auto process = clientProcess(window))
        return *process;
    if (const auto process = number(window, "_NET_WM_PID"); process && *process > 0)
        return *process;
    return -std::int64_t{window & ~xcb_get_setup(m_connection.get())->resource_id_mask};
}

std::optional<std::int64_t> XWindows::ownProcessIdentifier() {
    return clientProcess(xcb_get_setup(m_connection.get())->resource_id_base);
}

std::string XWindows::title(xcb_window_t window) {
    const auto modern = textProperty(window, m_connection.atom("_NET_WM_NAME"));
    auto title = modern.type == m_connection.atom("UTF8_STRING") ? decoded(modern) : std::string();
    return title.empty() ? decoded(textProperty(window, XCB_ATOM_WM_NAME)) : title;
}

std::string XWindows::className(xcb_window_t window) {
    // Two texts, each with a zero behind it: the instance and the class.
    const auto names = textProperty(window, XCB_ATOM_WM_CLASS).value;
    const auto endOfFirst = std::ranges::find(names, 0);
    if (endOfFirst == names.end())
        return {};
    const std::span second(endOfFirst + 1, names.end());
    return text(QString::fromUtf8(reinterpret_cast<const char*>(second.data()), static_cast<qsizetype>(second.size())));
}

std::optional<xcb_window_t> XWindows::owner(xcb_window_t window) {
    const auto owners = numbers(window, "WM_TRANSIENT_FOR", XCB_ATOM_WINDOW);
    return owners.empty() || owners.front() == XCB_WINDOW_NONE ? std::nullopt : std::optional(owners.front());
}

std::optional<std::uint32_t> XWindows::desktop(xcb_window_t window) {
    const auto desktop = number(window, "_NET_WM_DESKTOP");
    return desktop == allDesktops ? std::nullopt : desktop;
}

std::optional<std::uint32_t> XWindows::currentDesktop() {
    return number(m_connection.root(), "_NET_CURRENT_DESKTOP");
}

XWindows::Property XWindows::textProperty(xcb_window_t window, xcb_atom_t name) {
    const auto request =
        xcb_get_property(m_connection.get(), 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, longestText);
    const XAnswer<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection.get(), request, nullptr));
    if (!reply || reply->format != 8)
        return {};
    const auto* const bytes = static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get()));
    return {.type = reply->type, .value = {bytes, bytes + xcb_get_property_value_length(reply.get())}};
}

std::vector<std::uint32_t> XWindows::numbers(xcb_window_t window, std::string_view name, xcb_atom_t type) {
    const auto request = xcb_get_property(m_connection.get(), 0, window, m_connection.atom(name), type, 0, mostWindows);
    const XAnswer<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection.get(), request, nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto* const items = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {items, items + xcb_get_property_value_length(reply.get()) / 4};
}

std::optional<std::uint32_t> XWindows::number(xcb_window_t window, std::string_view name) {
    const auto values = numbers(window, name, XCB_ATOM_CARDINAL);
    return values.empty() ? std::nullopt : std::optional(values.front());
}

std::optional<std::int64_t> XWindows::clientProcess(std::uint32_t resource) {
    const xcb_res_client_id_spec_t spec{.client = resource, .mask = XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const XAnswer<xcb_res_query_client_ids_reply_t> reply(xcb_res_query_client_ids_reply(
        m_connection.get(), xcb_res_query_client_ids(m_connection.get(), 1, &spec), nullptr));
    if (!reply)
        return std::nullopt;
    for (auto ids = xcb_res_query_client_ids_ids_iterator(reply.get()); ids.rem > 0; xcb_res_client_id_value_next(&ids))
        if ((ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 &&
            xcb_res_client_id_value_value_length(ids.data) > 0)
            return *xcb_res_client_id_value_value(ids.data);
    return std::nullopt;
}

std::string XWindows::decoded(const Property& property) {
    const auto* const bytes = reinterpret_cast<const char*>(property.value.data());
    const auto size = static_cast<qsizetype>(property.value.size());
    if (size == 0)
        return {};
    if (property.type == XCB_ATOM_STRING)
        return text(QString::fromLatin1(bytes, size));
    if (property.type == m_connection.atom("UTF8_STRING"))
        return text(QString::fromUtf8(bytes, size));
    return text(QString::fromStdString(OldWindowTitle::decoded(property.value, property.type)));
}
