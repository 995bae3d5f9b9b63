// SPDX-License-Identifier: MIT
#include "app/state/HotKeyFormatter.h"
#include "core/autotype/AutoTypeSequence.h"
#include "core/autotype/WindowMatcher.h"
#include "core/generator/PasswordGenerator.h"
#include "core/primitives/Overloaded.h"
#include "tests/probe/Probe.h"
#include "tests/probe/ProbeEntry.h"

#include <array>

namespace Probe {
namespace {

constexpr std::int64_t longestPassword = 100'000'000;  // an answer is held in memory several times over

Json strength(const Json& request) {
    const auto estimate = PasswordGenerator::strength(text(request, "text"));
    return {{"score", estimate.score}, {"entropyBits", estimate.entropyBits}};
}

bool flag(const Json& options, const char* name, bool otherwise) {
    if (!options.contains(name))
        return otherwise;
    require(options.at(name).is_boolean(), "options: a class is not a boolean");
    return options.at(name).get<bool>();
}

std::int64_t length(const Json& options, std::int64_t otherwise) {
    if (!options.contains("length"))
        return otherwise;
    require(options.at("length").is_number_integer(), "options: length is not a whole number");
    return options.at("length").get<std::int64_t>();
}

/// What is not named has its default.
PasswordGenerator::Options options(const Json& request) {
    const auto& named = argument(request, "options");
    require(named.is_object(), "options: not an object");
    const PasswordGenerator::Options standard;
    return {.length = length(named, standard.length),
            .upper = flag(named, "upper", standard.upper),
            .lower = flag(named, "lower", standard.lower),
            .digits = flag(named, "digits", standard.digits),
            .symbols = flag(named, "symbols", standard.symbols),
            .excludeAmbiguous = flag(named, "excludeAmbiguous", standard.excludeAmbiguous)};
}

Json generate(const Json& request) {
    const auto chosen = options(request);
    require(chosen.length <= longestPassword, "options: length is out of range");
    return PasswordGenerator::generate(chosen);
}

/// In the order of the enumeration.
constexpr std::array keyNames{"tab",  "enter", "escape", "space", "backspace", "delete",
                              "home", "end",   "up",     "down",  "left",      "right"};

Json jsonOf(const AutoTypeAction& action) {
    return std::visit(Overloaded{
                          [](const AutoTypeAction::Text& text) {
                              return Json{{"case", "text"}, {"value", text.view()}};
                          },
                          [](const AutoTypeAction::Key& key) {
                              return Json{{"case", "key"}, {"value", keyNames.at(static_cast<std::size_t>(key.key))}};
                          },
                          [](const AutoTypeAction::Delay& delay) {
                              return Json{{"case", "delay"}, {"value", delay.milliseconds}};
                          },
                          [](const AutoTypeAction::ClearField&) {
                              return Json{{"case", "clearField"}};
                          },
                      },
                      action.action);
}

Json sequence(const Json& request) {
    auto actions = Json::array();
    for (const auto& action : AutoTypeSequence::parse(text(request, "sequence"), entry(request, "entry")))
        actions.push_back(jsonOf(action));
    return actions;
}

Json windowMatch(const Json& request) {
    return WindowMatcher(text(request, "title")).matches(entry(request, "entry"));
}

Json hotKeyText(const Json& request) {
    return HotKeyFormatter::describe(
        {.keyCode = number32(request, "keyCode"), .modifiers = number32(request, "modifiers")});
}

}  // namespace

void addPasswords(Operations& operations) {
    operations["strength"] = strength;
    operations["generate"] = generate;
    operations["sequence"] = sequence;
    operations["windowMatch"] = windowMatch;
    operations["hotKeyText"] = hotKeyText;
}

}  // namespace Probe
