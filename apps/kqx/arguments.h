// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sixtrace::kqx {

/// What the process says at its end.
enum ExitCode {
    Done = 0,
    Failed = 1,
    WrongUse = 2,
    NoInstrument = 3, ///< no port or link to an instrument, or nobody answers there
    IsBitmap = 4,     ///< what was fetched is a bitmap and no capture
    NotStored = 5,    ///< what was fetched has no place to stand
};

/// A sentence on standard error, and the code to end with.
int failWith(ExitCode code, std::string_view text);
/// The code to end with, once it is known whether all that was printed has gone out.
[[nodiscard]] int afterPrinting(int code);

/// An option of a command.
struct Option {
    const char* name;  ///< without "--"
    const char* value; ///< what its value is called; null for an option without one
    const char* help;
};

/// How a command is called.
struct Usage {
    const char* command;
    const char* arguments; ///< behind the options: "FILE..."
    const char* description;
    std::vector<Option> options;
};

/// The arguments behind a command, as bytes: a file name need not be text.
class Arguments {
public:
    /// Parses; nothing when the command goes on, else the code to end with: help was asked for and given, or the
    /// arguments are wrong. "--" ends the options; "-" alone is no option.
    [[nodiscard]] std::optional<int> parse(const Usage& usage, const std::vector<std::string>& arguments);

    [[nodiscard]] bool has(std::string_view name) const;
    /// The last value given, or `fallback`.
    [[nodiscard]] std::string value(std::string_view name, std::string_view fallback = {}) const;
    [[nodiscard]] const std::vector<std::string>& positional() const { return m_positional; }

private:
    struct Given {
        std::string name;
        std::string value;
    };
    std::vector<Given> m_given;
    std::vector<std::string> m_positional;
};

[[nodiscard]] std::string helpText(const Usage& usage);

/// A whole number from `least` to `greatest`, written with nothing but its digits and a sign.
[[nodiscard]] std::optional<int> wholeNumber(std::string_view text, int least, int greatest);

} // namespace sixtrace::kqx
