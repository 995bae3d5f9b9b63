// SPDX-License-Identifier: MIT
#pragma once

/// While it lives, a failure that Qt ends the process for becomes one line for the user and exit status 1. There is no
/// window yet to say it in: a display that cannot be reached, or an unknown platform, would leave a page of
/// advice on plugins and a core dump. Other messages wait until it goes.
class StartupFailures {
public:
    StartupFailures();
    StartupFailures(const StartupFailures&) = delete;
    StartupFailures& operator=(const StartupFailures&) = delete;
    ~StartupFailures();
};
