// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// What an auto-type sequence may hold, for the fields that one is typed into.
[[nodiscard]] inline QString sequenceHint() {
    return QStringLiteral(
        "{USERNAME} {PASSWORD} {TAB} {ENTER} {DELAY 200} {CLEARFIELD} {URL} {TITLE} {NOTES} {S:AlanAdı}");
}
