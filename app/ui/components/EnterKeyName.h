// SPDX-License-Identifier: MIT
#pragma once

class QCoreApplication;

/// The name of the Enter key in the texts of shortcuts. Qt's Turkish calls it "Dönüş", and that of the keypad "Giriş",
/// which are on no keyboard.
namespace EnterKeyName {

/// Sets the name right for the application's life; after Qt's own translation, which it goes before.
void install(QCoreApplication& application);

}  // namespace EnterKeyName
