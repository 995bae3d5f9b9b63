// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/Timestamp.h"

#include <QString>

/// A date as the whole window writes it, in the user's time zone: "8 Kas 2026 14:05". A dash for a time that no
/// calendar reaches, which a vault from elsewhere may hold.
[[nodiscard]] QString brandFormatted(Timestamp time);
