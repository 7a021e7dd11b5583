// SPDX-License-Identifier: MIT
#pragma once

#include <utility>
#include <variant>

namespace sixtrace {

struct RuntimeError;

/// What an operation that can fail gives: a value, or the error that tells why there is none. A value and an error both
/// convert to it. It needs no desktop library.
template<typename T, typename Error = RuntimeError>
class [[nodiscard]] Result {
public:
    Result(T value) // NOLINT(google-explicit-constructor): see above
        : m_content(std::move(value)) {}
    Result(Error error) // NOLINT(google-explicit-constructor): see above
        : m_content(std::move(error)) {}

    [[nodiscard]] bool ok() const { return std::holds_alternative<T>(m_content); }
    explicit operator bool() const { return ok(); }
    /// The value; only when ok().
    [[nodiscard]] const T& value() const { return std::get<T>(m_content); }
    [[nodiscard]] T& value() { return std::get<T>(m_content); }
    /// The error; only when not ok().
    [[nodiscard]] const Error& error() const { return std::get<Error>(m_content); }

private:
    std::variant<T, Error> m_content;
};

/// What an operation without a value gives: success, or an error.
template<typename Error>
using OutcomeOr = Result<std::monostate, Error>;
using Outcome = OutcomeOr<RuntimeError>;

/// The success of such an operation.
inline constexpr std::monostate kSuccess;

} // namespace sixtrace
