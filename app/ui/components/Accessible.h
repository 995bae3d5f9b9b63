// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>

class QWidget;

/// What a screen reader has to know and Qt does not report by itself.
namespace Accessible {

/// Has Qt ask here first, and lets none of its events carry the letters of a hidden field. Once a process, before its
/// first widget.
void install();

/// Has a widget reported as what it is for. One of the project's own classes, which Qt knows as a plain widget or a
/// button; to be called before anything else is reported of it.
void setRole(QWidget& widget, QAccessible::Role role);

/// Has a shown message spoken that changed while the reader is elsewhere. It has the role of a notification, and is
/// spoken by itself when it comes up.
void announce(QWidget& message);

}  // namespace Accessible
