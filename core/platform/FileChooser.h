// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// The desktop's own panels in which the user chooses a file.
class FileChooser {
public:
    struct Filter {
        std::string name;
        std::vector<std::string> patterns;  // as in "*.kdbx"
    };
    /// Texts are UTF-8.
    struct Panel {
        std::string title;
        std::string prompt;  // of the button that answers; empty takes the desktop's
        std::vector<Filter> filters;
        std::filesystem::path folder;     // where the user looks first
        std::optional<std::string> name;  // of a file to be written; without one, a file that exists is chosen
        std::uint32_t window = 0;         // of X, which the panel stands over; 0 where there is none
    };
    enum class Outcome : std::uint8_t { chosen, cancelled, failed };
    struct Answer {
        Outcome outcome = Outcome::failed;
        std::filesystem::path file;  // only with `chosen`
    };
    using Answered = std::function<void(const Answer& answer)>;

    virtual ~FileChooser() = default;

    /// Whether the desktop has such panels, as far as is known now.
    [[nodiscard]] virtual bool isThere() const = 0;

    /// Shows a panel, and calls `answered` once, never within this call. A file to be written that exists has been
    /// asked about by then.
    virtual void ask(const Panel& panel, Answered answered) = 0;

    /// Takes a panel away that is not answered yet, without a further call.
    virtual void takeAway() = 0;
};
