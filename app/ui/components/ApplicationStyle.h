// SPDX-License-Identifier: MIT
#pragma once

class QApplication;

/// The look of everything that Qt draws for us: menus, scroll bars, tooltips, calendars, selections.
namespace ApplicationStyle {

/// Gives the whole application the dark look, whatever the desktop is set to.
void apply(QApplication& application);

}  // namespace ApplicationStyle
