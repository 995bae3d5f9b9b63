// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// What the program was started with.
struct CommandLine {
    std::vector<std::filesystem::path> files;  // absolute, in the order in which they were given
    bool isService = false;                    // started by the bus: what is wanted comes by it

    /// Before and after Qt has taken its own arguments, which have one hyphen.
    enum class Reading : bool { first, leftOver };
    /// The exit status of a start that asks for no window, once it is answered: a question for the version or for help,
    /// or an option that does not exist.
    [[nodiscard]] static std::optional<int> answer(const std::vector<std::string>& arguments, Reading reading);

    /// What Qt has left, once none of it has an answer.
    [[nodiscard]] static CommandLine read(const std::vector<std::string>& arguments);
};
