// SPDX-License-Identifier: MIT
#include "platform/x11/XDisplay.h"

#include "platform/x11/XHandle.h"

bool XDisplay::canBeOpened() {
    return XHandle().isOpen();
}
