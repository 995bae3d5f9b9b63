// SPDX-License-Identifier: MIT
#include "core/document/KdbxDate.h"

#include "core/primitives/Base64.h"
#include "core/primitives/LittleEndian.h"
#include "core/primitives/Precondition.h"
#include "core/text/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace KdbxDate {
namespace {

using std::chrono::sys_days;
using std::chrono::sys_seconds;
using std::chrono::year_month_day;

// The double below 2^63 is 1024 away, so a count at the very end would round to 2^63 on its way through a
// timestamp, and could not be written again. Counts from a file are held this far inside.
constexpr std::int64_t largestCount = INT64_MAX - 8192;

// The ISO form has no era, so what lies before the year 1 could not be read again; and no calendar goes on forever.
constexpr std::chrono::year firstYear{1};
constexpr std::chrono::year lastYear = std::chrono::year::max();

enum class Fraction : std::uint8_t { none, milliseconds };
enum class Zone : std::uint8_t { utc, offset };

/// Consumes a text from its beginning. After a failed step nothing is left to read, so that the later ones fail too.
class Scanner {
public:
    explicit Scanner(std::string_view text) : m_rest(text) {}

    int number(std::size_t fewestDigits, std::size_t mostDigits) {
        const auto digits = std::min({m_rest.find_first_not_of("0123456789"), m_rest.size(), mostDigits});
        if (digits < fewestDigits) {
            fail();
            return 0;
        }
        int value = 0;
        std::from_chars(m_rest.data(), m_rest.data() + digits, value);
        m_rest.remove_prefix(digits);
        return value;
    }

    int twoDigits() { return number(2, 2); }

    bool skip(char character) {
        if (!m_rest.starts_with(character))
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    void expect(char character) {
        if (!skip(character))
            fail();
    }

    [[nodiscard]] bool hasReadAll() const { return !m_failed && m_rest.empty(); }

private:
    void fail() {
        m_failed = true;
        m_rest = {};
    }

    std::string_view m_rest;
    bool m_failed = false;
};

year_month_day scanDate(Scanner& scanner) {
    const std::chrono::year year(std::min(scanner.number(4, 6), static_cast<int>(lastYear) + 1));
    scanner.expect('-');
    const std::chrono::month month(static_cast<unsigned>(scanner.twoDigits()));
    scanner.expect('-');
    const std::chrono::day day(static_cast<unsigned>(scanner.twoDigits()));
    return {year, month, day};
}

/// The seconds since midnight, or none for a time that no clock shows.
std::optional<int> scanTime(Scanner& scanner) {
    const int hour = scanner.twoDigits();
    scanner.expect(':');
    const int minute = scanner.twoDigits();
    scanner.expect(':');
    const int second = scanner.twoDigits();
    if (hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    return hour * 3600 + minute * 60 + second;
}

/// The seconds by which local time is ahead of UTC.
std::optional<int> scanZone(Scanner& scanner, Zone zone) {
    if (scanner.skip('Z'))
        return 0;
    if (zone == Zone::utc)
        return std::nullopt;
    const bool isBehind = scanner.skip('-');
    if (!isBehind)
        scanner.expect('+');
    const int hours = scanner.twoDigits();
    scanner.expect(':');
    const int minutes = scanner.twoDigits();
    if (hours > 23 || minutes > 59)
        return std::nullopt;
    return (isBehind ? -1 : 1) * (hours * 3600 + minutes * 60);
}

/// "yyyy-MM-ddTHH:mm:ss", the fraction and the zone, in the proleptic Gregorian calendar.
std::optional<Timestamp> parseISO(std::string_view text, Fraction fraction, Zone zone) {
    Scanner scanner(text);
    const auto date = scanDate(scanner);
    scanner.expect('T');
    const auto time = scanTime(scanner);
    int milliseconds = 0;
    if (fraction == Fraction::milliseconds) {
        scanner.expect('.');
        milliseconds = scanner.number(3, 3);
    }
    const auto offset = scanZone(scanner, zone);
    if (!scanner.hasReadAll() || !time || !offset || !date.ok() || date.year() < firstYear)
        return std::nullopt;
    const auto midnight = sys_seconds(sys_days(date)).time_since_epoch().count();
    return Timestamp{static_cast<double>(midnight + *time - *offset) + milliseconds / 1000.0};
}

std::optional<Timestamp> parseBinary(std::string_view text) {
    const auto bytes = Base64::decodeLenient(text);
    if (!bytes || bytes->size() < sizeof(std::int64_t))
        return std::nullopt;
    const auto count = std::clamp(loadLE<std::int64_t>(bytes->data()), -largestCount, largestCount);
    return Timestamp{epoch.seconds + static_cast<double>(count)};
}

/// The second that a time lies in, held within the years that the ISO form can carry.
sys_seconds writableSecond(Timestamp date) {
    constexpr sys_seconds first(sys_days(firstYear / 1 / 1));
    constexpr sys_seconds last(sys_days(lastYear / 12 / 31) + std::chrono::hours(24) - std::chrono::seconds(1));
    const double lowest = static_cast<double>(first.time_since_epoch().count());
    const double highest = static_cast<double>(last.time_since_epoch().count());
    const double second = std::floor(std::isnan(date.seconds) ? lowest : std::clamp(date.seconds, lowest, highest));
    return sys_seconds(std::chrono::seconds(static_cast<std::int64_t>(second)));
}

}  // namespace

std::string encode(Timestamp date, std::uint16_t major) {
    return major >= 4 ? base64(date) : iso8601(date);
}

std::string base64(Timestamp date) {
    const double count = std::round(date.seconds - epoch.seconds);
    // Times come from the clock, from the calendar's years and from counts held within `largestCount`.
    precondition(count >= -0x1p63 && count < 0x1p63);
    std::array<std::uint8_t, sizeof(std::int64_t)> bytes{};
    storeLE(bytes.data(), static_cast<std::int64_t>(count));
    return Base64::encode(bytes);
}

std::string iso8601(Timestamp date) {
    const auto second = writableSecond(date);
    const auto midnight = std::chrono::floor<std::chrono::days>(second);
    const year_month_day day(midnight);
    const std::chrono::hh_mm_ss time(second - midnight);
    std::array<char, 32> text{};
    const int length = std::snprintf(
        text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(day.year()),
        static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()), static_cast<int>(time.hours().count()),
        static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()));
    return {text.data(), static_cast<std::size_t>(length)};
}

std::optional<Timestamp> parse(std::string_view text) {
    const auto trimmed = Text::trimmingWhitespaceAndNewlines(text);
    if (trimmed.empty())
        return std::nullopt;
    // Every ISO form has both signs, so a text without them that is not binary is nothing.
    if (trimmed.find_first_of("-:") == std::string_view::npos)
        return parseBinary(trimmed);
    if (const auto whole = parseISO(trimmed, Fraction::none, Zone::utc))
        return whole;
    if (const auto fractional = parseISO(trimmed, Fraction::milliseconds, Zone::utc))
        return fractional;
    return parseISO(trimmed, Fraction::none, Zone::offset);
}

}  // namespace KdbxDate
