// SPDX-License-Identifier: MIT
#include "arguments.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace sixtrace::kqx {

namespace {

constexpr std::size_t kWidth = 79;

/// Appends `text` in lines that are broken at blanks. The first line begins at `column`, the others after `indent`
/// blanks.
void appendWrapped(std::string& out, std::string_view text, std::size_t indent, std::size_t column) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        if (column > indent && column + end + 1 > kWidth) {
            out += '\n';
            out.append(indent, ' ');
            column = indent;
        } else if (column > indent) {
            out += ' ';
            ++column;
        }
        out += text.substr(0, end);
        column += end;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    out += '\n';
}

const Option* optionNamed(const Usage& usage, std::string_view name) {
    const auto option = std::find_if(usage.options.begin(), usage.options.end(),
                                     [name](const Option& entry) { return entry.name == name; });
    return option == usage.options.end() ? nullptr : &*option;
}

ExitCode wrong(std::string_view sentence, std::string_view about, const char* rest = "") {
    return failWith(WrongUse, std::string(sentence) + std::string(about) + rest);
}

} // namespace

ExitCode failWith(ExitCode code, std::string_view text) {
    const std::string line = "kqx: " + std::string(text) + '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
    return code;
}

ExitCode afterPrinting(ExitCode code) {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        return failWith(Failed, "the output cannot be written");
    }
    return code;
}

std::string helpText(const Usage& usage) {
    std::string text = std::string("Usage: kqx ") + usage.command + " [options] " + usage.arguments + '\n';
    appendWrapped(text, usage.description, 0, 0);
    text += "\nOptions:\n";
    const auto line = [&text](const std::string& names, std::string_view help) {
        constexpr std::size_t kHelpColumn = 21;
        text += "  " + names;
        if (names.size() + 4 > kHelpColumn) {
            text += '\n';
            text.append(kHelpColumn, ' ');
        } else {
            text.append(kHelpColumn - 2 - names.size(), ' ');
        }
        appendWrapped(text, help, kHelpColumn, kHelpColumn);
    };
    line("-h, --help", "Print this help.");
    for (const Option& option : usage.options) {
        line(std::string("--") + option.name +
                 (option.value != nullptr ? std::string(" <") + option.value + '>' : std::string()),
             option.help);
    }
    return text;
}

std::optional<ExitCode> Arguments::parse(const Usage& usage, const std::vector<std::string>& arguments) {
    bool help = false;
    bool optionsEnded = false;
    for (auto it = arguments.begin(); it != arguments.end(); ++it) {
        const std::string_view argument = *it;
        if (optionsEnded || argument.size() < 2 || argument.front() != '-') {
            m_positional.emplace_back(argument);
            continue;
        }
        if (argument == "--") {
            optionsEnded = true;
            continue;
        }
        if (argument == "-h" || argument == "--help") {
            help = true;
            continue;
        }
        if (argument[1] != '-') {
            return wrong("unknown option ", argument);
        }
        const std::size_t equals = argument.find('=');
        const std::string_view name = argument.substr(2, equals == std::string_view::npos ? equals : equals - 2);
        const Option* option = optionNamed(usage, name);
        if (option == nullptr) {
            return wrong("unknown option --", name);
        }
        if (option->value == nullptr) {
            if (equals != std::string_view::npos) {
                return wrong("--", name, " takes no value");
            }
            m_given.push_back({std::string(name), {}});
        } else if (equals != std::string_view::npos) {
            m_given.push_back({std::string(name), std::string(argument.substr(equals + 1))});
        } else if (std::next(it) != arguments.end()) {
            ++it;
            m_given.push_back({std::string(name), *it});
        } else {
            return wrong("--", name, " needs a value");
        }
    }
    if (help) {
        const std::string text = helpText(usage);
        std::fwrite(text.data(), 1, text.size(), stdout);
        return Done;
    }
    return std::nullopt;
}

bool Arguments::has(std::string_view name) const {
    return std::any_of(m_given.begin(), m_given.end(), [name](const Given& given) { return given.name == name; });
}

std::string Arguments::value(std::string_view name, std::string_view fallback) const {
    const auto given =
        std::find_if(m_given.rbegin(), m_given.rend(), [name](const Given& entry) { return entry.name == name; });
    return given == m_given.rend() ? std::string(fallback) : given->value;
}

std::optional<int> wholeNumber(std::string_view text, int least, int greatest) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool whole = error == std::errc() && end == text.data() + text.size() && !text.empty();
    return whole && number >= least && number <= greatest ? std::optional(number) : std::nullopt;
}

OrExit<ChannelChoice> channelsOf(const Arguments& arguments) {
    ChannelChoice choice{};
    if (!arguments.has("channels")) {
        choice.fill(true);
        return choice;
    }
    const std::string list = arguments.value("channels") + ',';
    for (std::size_t start = 0; start < list.size();) {
        const std::size_t end = list.find(',', start);
        const auto* const name =
            std::find(kChannelNames.begin(), kChannelNames.end(), std::string_view(list).substr(start, end - start));
        if (name == kChannelNames.end()) {
            return failWith(WrongUse, "--channels takes ch1, ch2, A, B, C and D, separated by commas");
        }
        choice[name - kChannelNames.begin()] = true;
        start = end + 1;
    }
    return choice;
}

} // namespace sixtrace::kqx
