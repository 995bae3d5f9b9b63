// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <string>
#include <variant>

/// Why nothing, or not everything, was typed.
class AutoTypeError final : public std::exception {
public:
    struct AccessibilityPermissionMissing {
        bool operator==(const AccessibilityPermissionMissing&) const = default;
    };
    struct NoTargetApplication {
        bool operator==(const NoTargetApplication&) const = default;
    };
    struct EventCreationFailed {
        bool operator==(const EventCreationFailed&) const = default;
    };
    struct TargetActivationFailed {
        std::string applicationName;
        bool operator==(const TargetActivationFailed&) const = default;
    };
    struct TargetNoLongerInFront {
        std::string applicationName;
        bool operator==(const TargetNoLongerInFront&) const = default;
    };
    using Case = std::variant<AccessibilityPermissionMissing, NoTargetApplication, EventCreationFailed,
                              TargetActivationFailed, TargetNoLongerInFront>;

    static AutoTypeError accessibilityPermissionMissing();
    static AutoTypeError noTargetApplication();
    static AutoTypeError eventCreationFailed();
    static AutoTypeError targetActivationFailed(std::string applicationName);
    static AutoTypeError targetNoLongerInFront(std::string applicationName);

    [[nodiscard]] const Case& failure() const noexcept { return m_failure; }

    /// For the user, in Turkish.
    [[nodiscard]] const std::string& errorDescription() const noexcept { return m_description; }
    [[nodiscard]] const char* what() const noexcept override { return m_description.c_str(); }

private:
    explicit AutoTypeError(Case failure);

    Case m_failure;
    std::string m_description;
};
