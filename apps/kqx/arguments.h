// SPDX-License-Identifier: MIT
#pragma once

#include "capture/channels.h"
#include "platform/text/result.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sixtrace::kqx {

/// The exit code of the program.
enum ExitCode {
    Done = 0,
    Failed = 1,
    WrongUse = 2,
    NoInstrument = 3, ///< there is no connection to an instrument, or no instrument answers
    IsBitmap = 4,     ///< the fetched file is a bitmap and no capture
    NotStored = 5,    ///< the fetched file cannot be stored
};

/// A value, or the code to end with; the reason has then been printed.
template<typename T>
using OrExit = Result<T, ExitCode>;

/// Prints "kqx: " and the text to standard error, and returns the code.
ExitCode failWith(ExitCode code, std::string_view text);
/// The code to end with: `code`, or Failed when the output could not be written.
[[nodiscard]] ExitCode afterPrinting(ExitCode code);

/// An option of a command.
struct Option {
    const char* name;  ///< without "--"
    const char* value; ///< the name of its value in the help text; null for an option without a value
    const char* help;
};

/// How a command is used.
struct Usage {
    const char* command;
    const char* arguments; ///< those that follow the options: "FILE..."
    const char* description;
    std::vector<Option> options;
};

/// The arguments of a command, as bytes: a file name need not be text.
class Arguments {
public:
    /// Reads the arguments that follow the command's name. The result is empty when the command can go on. Otherwise it
    /// is the code to end with: the help text, or what is wrong with the arguments, has been printed. "--" ends the
    /// options; "-" alone is no option.
    [[nodiscard]] std::optional<ExitCode> parse(const Usage& usage, const std::vector<std::string>& arguments);

    [[nodiscard]] bool has(std::string_view name) const;
    /// The value of an option, the last one when it is given several times; `fallback` when it is not given.
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

/// A whole number from `least` to `greatest`, written with digits and a minus sign only.
[[nodiscard]] std::optional<int> wholeNumber(std::string_view text, int least, int greatest);

/// For each channel whether a command works on it.
using ChannelChoice = PerChannel<bool>;

/// The channels of the option --channels; all channels when it is not given.
[[nodiscard]] OrExit<ChannelChoice> channelsOf(const Arguments& arguments);

} // namespace sixtrace::kqx
