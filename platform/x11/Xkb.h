// SPDX-License-Identifier: MIT
#pragma once

#define explicit explicit_  // the name of a field in there
#include <xcb/xkb.h>
#undef explicit
