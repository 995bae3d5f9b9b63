// SPDX-License-Identifier: MIT
#include "core/document/KdbxDate.h"
#include "core/document/KdbxXML.h"
#include "core/document/KdbxXMLEscape.h"
#include "tests/probe/Probe.h"

#include <cmath>

namespace Probe {
namespace {

/// Whether whole seconds from the year 1 fit in 64 bits.
bool fitsInTheBinaryForm(double seconds) {
    return std::isfinite(seconds) && std::abs(seconds - KdbxDate::epoch.seconds) < 9.2e18;
}

Json encodedDate(const Json& request) {
    const auto& seconds = argument(request, "encode");
    require(seconds.is_number(), "encode: not a number");
    const auto major = number16(request, "major");
    require(fitsInTheBinaryForm(seconds.get<double>()), "encode: out of range");
    return KdbxDate::encode({seconds.get<double>()}, major);
}

Json date(const Json& request) {
    if (!request.contains("parse"))
        return encodedDate(request);
    const auto parsed = KdbxDate::parse(text(request, "parse"));
    return parsed ? Json(parsed->seconds) : Json(nullptr);
}

Json parseBool(const Json& request) {
    const auto parsed = KdbxXML::parseBool(text(request, "text"));
    return parsed ? Json(*parsed) : Json(nullptr);
}

Json splitTags(const Json& request) {
    return KdbxXML::splitTags(text(request, "text"));
}

Json sanitise(const Json& request) {
    return KdbxXMLEscape::sanitise(text(request, "text"));
}

Json escape(const Json& request) {
    return KdbxXMLEscape::text(text(request, "text"));
}

}  // namespace

void addText(Operations& operations) {
    operations["date"] = date;
    operations["parseBool"] = parseBool;
    operations["splitTags"] = splitTags;
    operations["sanitise"] = sanitise;
    operations["escape"] = escape;
}

}  // namespace Probe
