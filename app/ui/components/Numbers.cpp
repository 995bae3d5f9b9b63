// SPDX-License-Identifier: MIT
#include "app/ui/components/Numbers.h"

#include <QLocale>

QString Numbers::grouped(qlonglong count) {
    static const QLocale turkish(QLocale::Turkish, QLocale::Turkey);
    return turkish.toString(count);
}
