// SPDX-License-Identifier: MIT
#pragma once

class AppState;
class AutoTypeService;
class ClipboardService;
class GlobalHotKey;
class Preferences;

/// The program's long-lived objects, as the window's views are handed them. All of them outlive the window.
struct Environment {
    AppState& state;
    Preferences& preferences;
    ClipboardService& clipboard;
    AutoTypeService& autoType;
    GlobalHotKey& hotKey;
};
