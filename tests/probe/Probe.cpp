// SPDX-License-Identifier: MIT
#include "tests/probe/Probe.h"

#include "tests/support/Failures.h"
#include "tests/support/Hex.h"

#include <algorithm>
#include <limits>

namespace Probe {
namespace {

[[noreturn]] void refuse(const char* name, const char* what) {
    throw Refusal(std::string(name) + ": " + what);
}

Json failure(const std::string& name, const std::string& message) {
    return {{"ok", false}, {"case", name}, {"message", message}};
}

// A group may be a thousand groups deep, each an object in an array. What is deeper comes to the end of the stack.
constexpr int deepestNesting = 2100;

int nestingOf(const std::string& line) {
    int deepest = 0;
    int depth = 0;
    bool isInText = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (isInText && c == '\\')
            ++i;
        else if (c == '"')
            isInText = !isInText;
        else if (!isInText && (c == '[' || c == '{'))
            deepest = std::max(deepest, ++depth);
        else if (!isInText && (c == ']' || c == '}'))
            --depth;
    }
    return deepest;
}

Json performed(const Operations& operations, const std::string& line) {
    require(nestingOf(line) <= deepestNesting, "nested too deep");
    const auto request = Json::parse(line);
    if (!request.is_object())
        throw Refusal("a request is an object");
    const auto operation = operations.find(text(request, "op"));
    if (operation == operations.end())
        throw Refusal("unknown op");
    return operation->second(request);
}

Json answered(const Operations& operations, const std::string& line) {
    try {
        return {{"ok", true}, {"result", performed(operations, line)}};
    } catch (const std::exception& exception) {
        const auto typed = failureOf(exception);
        return typed ? failure(typed->name, typed->message) : failure("probe", exception.what());
    }
}

}  // namespace

std::string answer(const Operations& operations, const std::string& line) {
    // Text from a hostile document may be no UTF-8; an answer always is.
    return answered(operations, line).dump(-1, ' ', false, Json::error_handler_t::replace);
}

const Json& argument(const Json& request, const char* name) {
    const auto found = request.find(name);
    if (found == request.end())
        refuse(name, "missing");
    return *found;
}

std::string text(const Json& request, const char* name) {
    const auto& value = argument(request, name);
    if (!value.is_string())
        refuse(name, "not a text");
    return value.get<std::string>();
}

std::optional<std::string> textOrNull(const Json& request, const char* name) {
    const auto& value = argument(request, name);
    if (value.is_null())
        return std::nullopt;
    return text(request, name);
}

Bytes bytes(const Json& request, const char* name) {
    return bytesOfText(argument(request, name), name);
}

Bytes bytesOfText(const Json& value, const char* name) {
    if (!value.is_string())
        refuse(name, "not bytes");
    try {
        return fromHex(value.get_ref<const std::string&>());
    } catch (const std::invalid_argument& error) {
        refuse(name, error.what());
    }
}

std::uint64_t number(const Json& request, const char* name, std::uint64_t least, std::uint64_t most) {
    const auto& value = argument(request, name);
    if (!value.is_number_unsigned())
        refuse(name, "not a whole number from 0");
    const auto result = value.get<std::uint64_t>();
    if (result < least || result > most)
        refuse(name, "out of range");
    return result;
}

std::uint32_t number32(const Json& request, const char* name) {
    return static_cast<std::uint32_t>(number(request, name, 0, std::numeric_limits<std::uint32_t>::max()));
}

std::uint16_t number16(const Json& request, const char* name) {
    return static_cast<std::uint16_t>(number(request, name, 0, std::numeric_limits<std::uint16_t>::max()));
}

void require(bool condition, const char* what) {
    if (!condition)
        throw Refusal(what);
}

}  // namespace Probe
