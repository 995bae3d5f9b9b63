// SPDX-License-Identifier: MIT
#include "app/ui/commands/Command.h"

#include <QLocale>

namespace {

// In the order in which such signs are written: ⇧⌘G.
QString signsOf(const QKeySequence& key) {
    auto names = key.toString(QKeySequence::PortableText).split(QLatin1Char('+'));
    const bool hasShift = names.removeOne(QStringLiteral("Shift"));
    const bool hasCommand = names.removeOne(QStringLiteral("Ctrl"));
    return (hasShift ? QStringLiteral("⇧") : QString()) + (hasCommand ? QStringLiteral("⌘") : QString()) +
           names.join(QString());
}

}  // namespace

QString Command::text() const {
    static const QLocale turkish(QLocale::Turkish);  // whose small I has no dot, wherever the program runs
    return title.left(1) + turkish.toLower(title.mid(1));
}

QString Command::tip() const {
    auto name = text();
    name.remove(QStringLiteral("…"));
    return name + QStringLiteral(" (") + signsOf(keys.first()) + QLatin1Char(')');
}
