// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Failure.h"

#include <string>
#include <variant>

struct AutoTypeErrorCases {
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

    [[nodiscard]] static std::string describe(const Case& failure);
};

/// Why nothing, or not everything, was typed.
class AutoTypeError final : public FailureFamily<AutoTypeErrorCases> {
public:
    using FailureFamily::FailureFamily;

    static constexpr FailureMaker<AutoTypeError, AccessibilityPermissionMissing> accessibilityPermissionMissing{};
    static constexpr FailureMaker<AutoTypeError, NoTargetApplication> noTargetApplication{};
    static constexpr FailureMaker<AutoTypeError, EventCreationFailed> eventCreationFailed{};
    static constexpr FailureMaker<AutoTypeError, TargetActivationFailed, std::string> targetActivationFailed{};
    static constexpr FailureMaker<AutoTypeError, TargetNoLongerInFront, std::string> targetNoLongerInFront{};
};
