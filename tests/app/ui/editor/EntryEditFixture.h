// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/SecretField.h"
#include "app/ui/editor/DateTimeField.h"
#include "tests/app/ui/SheetFixture.h"

/// An entry that has something of everything.
inline KdbxEntry fullEntry() {
    auto entry = entryTitled("GitHub");
    entry.username = "isilkaya";
    entry.password = SecureString("kT4}vQ9w");
    entry.url = "https://github.com/login";
    entry.notes = "Bir\nİki";
    entry.tags = {"iş", "kritik"};
    entry.iconID = 20;
    entry.customFields = {{"PIN", "4821"}, {"Müşteri no", "48-1123"}};
    entry.protectedCustomFields = {"PIN"};
    entry.autoTypeWindowAssociations = {{.window = "GitHub*", .sequence = "{PASSWORD}"}};
    entry.unknownXML = {"<CustomData><Item/></CustomData>"};
    entry.created = entry.modified = entry.accessed = {1'700'000'000};
    return entry;
}

/// The form of an entry, filled in as a user does.
class EntryEditFixture : public SheetFixture {
protected:
    void createIn(const KdbxGroup& group) { open(AppState::Route::newEntry(group.id)); }
    DateTimeField* expiryField() const { return WindowProbe::find<DateTimeField>(window, "Son kullanma tarihi"); }
    SecretField& password() const { return *WindowProbe::find<SecretField>(window, "Parola"); }
    QList<QLineEdit*> keys() const { return all<QLineEdit>("Alan adı"); }
    QList<SecretField*> values() const { return all<SecretField>("Değer"); }
    const KdbxEntry& edited() const { return root().entries[0]; }
    void addField(const QString& key, const QString& value) {
        click("Alan ekle");
        keys().back()->insert(key);
        values().back()->insert(value);
    }
};
