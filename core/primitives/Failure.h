// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <string>
#include <utility>

/// A failure that the user may read of.
class ReadableFailure : public std::exception {
public:
    /// For the user, in Turkish.
    [[nodiscard]] const std::string& errorDescription() const noexcept { return m_description; }
    [[nodiscard]] const char* what() const noexcept override { return m_description.c_str(); }

protected:
    explicit ReadableFailure(std::string description) : m_description(std::move(description)) {}

private:
    std::string m_description;
};

/// A family of failures, each one of its cases. `Cases` has a type for each case, their union `Case`, and the messages
/// of all in `describe`.
template <class Cases>
class FailureFamily : public ReadableFailure, public Cases {
public:
    using Case = typename Cases::Case;

    explicit FailureFamily(Case failure) : ReadableFailure(Cases::describe(failure)), m_failure(std::move(failure)) {}

    [[nodiscard]] const Case& failure() const noexcept { return m_failure; }
    friend bool operator==(const FailureFamily& a, const FailureFamily& b) { return a.m_failure == b.m_failure; }

private:
    Case m_failure;
};

/// Makes the failure of one case, so that a throw is a sentence: `throw KdbxError::blockHmacMismatch(index)`.
template <class Family, class Case, class... Payload>
struct FailureMaker {
    [[nodiscard]] Family operator()(Payload... payload) const { return Family(Case{std::move(payload)...}); }
};
