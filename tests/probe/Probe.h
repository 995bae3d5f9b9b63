// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <cstdint>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>

/// The project's code behind a line protocol: one JSON object in, one out. A section of operations is one source file.
namespace Probe {

using Json = nlohmann::ordered_json;

/// What is answered as case "probe": nothing of the program's own was called, or it could not be.
class Refusal final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Gives an operation's result for its request, or throws: a typed failure, or a Refusal.
using Operation = std::function<Json(const Json& request)>;
using Operations = std::map<std::string, Operation>;

void addVault(Operations& operations);
void addPrimitives(Operations& operations);
void addText(Operations& operations);
void addBrowsing(Operations& operations);
void addPasswords(Operations& operations);
void addState(Operations& operations);

/// The answer to one line; there is one for every line.
[[nodiscard]] std::string answer(const Operations& operations, const std::string& line);

/// Arguments of a request. Each throws a Refusal where the argument is missing or of another kind.
[[nodiscard]] const Json& argument(const Json& request, const char* name);
[[nodiscard]] std::string text(const Json& request, const char* name);
[[nodiscard]] std::optional<std::string> textOrNull(const Json& request, const char* name);
[[nodiscard]] Bytes bytes(const Json& request, const char* name);
[[nodiscard]] Bytes bytesOfText(const Json& value, const char* name);
/// An integer from `least` to `most`.
[[nodiscard]] std::uint64_t number(const Json& request, const char* name, std::uint64_t least, std::uint64_t most);
[[nodiscard]] std::uint32_t number32(const Json& request, const char* name);
[[nodiscard]] std::uint16_t number16(const Json& request, const char* name);

/// A precondition of what is about to be called.
void require(bool condition, const char* what);

}  // namespace Probe
