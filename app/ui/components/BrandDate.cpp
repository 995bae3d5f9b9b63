// SPDX-License-Identifier: MIT
#include "app/ui/components/BrandDate.h"

#include <QDateTime>
#include <QLocale>

#include <cmath>

namespace {

// The first moments of the years 1 and 10,000: between them a year has at most four digits.
constexpr double firstMoment = -62135596800;
constexpr double endOfCalendar = 253402300800;

}  // namespace

QString brandFormatted(Timestamp time) {
    if (!(time.seconds >= firstMoment && time.seconds < endOfCalendar))  // so that what is no number fails too
        return QStringLiteral("—");
    static const QLocale turkish(QLocale::Turkish, QLocale::Turkey);
    const auto moment = QDateTime::fromSecsSinceEpoch(static_cast<qint64>(std::floor(time.seconds)));
    return turkish.toString(moment, QStringLiteral("d MMM yyyy HH:mm"));
}
