// SPDX-License-Identifier: MIT
#include "platform/x11/XDesktop.h"

#include <utility>

std::unique_ptr<XDesktop> XDesktop::connected() {
    auto connection = XConnection::connected();
    auto hotKeyConnection = XConnection::connected();
    if (!connection || !hotKeyConnection)
        return nullptr;
    return std::make_unique<XDesktop>(std::move(connection), std::move(hotKeyConnection));
}

XDesktop::XDesktop(std::unique_ptr<XConnection> ownConnection, std::unique_ptr<XConnection> hotKeyConnection)
    : connection(std::move(ownConnection)),
      layout(*connection),
      keyboard({.connection = *connection, .layout = layout, .hotKey = hotKeyState}),
      applications(*connection),
      idleTime(*connection),
      hotKeys(std::move(hotKeyConnection), hotKeyState) {}
