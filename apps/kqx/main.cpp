// SPDX-License-Identifier: MIT
// The command-line companion. Commands that read numbers from captures run in this program. Commands that draw, or that
// talk to the instrument or to the desktop, run in a second program, which loads the libraries for them.
#include "datacommands.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace sixtrace::kqx {

namespace {

/// A command, and what it is for.
struct Command {
    std::string_view name;
    std::string_view summary;
    /// Runs it; null for a command of the second program. This program starts faster without the desktop's libraries.
    ExitCode (*run)(const std::vector<std::string>& arguments) = nullptr;
};

/// All commands in the order of their names.
constexpr std::array kCommands{
    Command{"convert", "write the samples of captures for other programs (.csv, .npz, .sr)", convert},
    Command{"fetch", "fetch captures from the instrument"},
    Command{"info", "print what capture files hold, and what is wrong with them", info},
    Command{"measure", "measure the samples of captures in volts and seconds", measure},
    Command{"open", "open a capture in the running program, or start it"},
    Command{"page", "write the printed page of captures as PDF files"},
    Command{"ports", "list the connections to an instrument, and why one does not open"},
    Command{"screen", "write the screen of captures as PNG files"},
    Command{"table", "write the samples of captures as text, CSV or workbook"},
};

/// The program for the other commands. It lies in the same folder, or in the library folder of an install.
constexpr std::string_view kDesktopProgram = "kqx-desktop";

std::string overview() {
    constexpr std::size_t kNameWidth = 9;
    std::string text = "Usage: kqx COMMAND ...\n\nCommands:\n";
    for (const Command& command : kCommands) {
        text += "  " + std::string(command.name) + std::string(kNameWidth - command.name.size(), ' ') +
                std::string(command.summary) + '\n';
    }
    return text + "\n\"kqx COMMAND --help\" explains one command, \"man kqx\" all of them.\n"
                  "Exit codes: 0 done, 1 failed or a fault was found in a file, 2 wrong use.\n";
}

/// The folder of this program, with a slash at its end.
std::string ownFolder() {
    char* const self = ::realpath("/proc/self/exe", nullptr);
    std::string path = self != nullptr ? std::string(self) : std::string("./");
    std::free(self); // NOLINT(cppcoreguidelines-no-malloc): realpath allocates so
    path.resize(path.rfind('/') + 1);
    return path;
}

/// Replaces this process by the second program, so that signals and the exit code are that program's. It returns only
/// when there is no such program.
ExitCode handOn(char** argv) {
    const std::string own = ownFolder();
    // Language files and the transfer library are looked for in the folder of kqx, so the program is called by that
    // name.
    std::string self = own + "kqx";
    argv[0] = self.data();
    for (const std::string& folder : {own, own + SIXTRACE_LIBRARY_FROM_PROGRAMS + '/'}) {
        ::execv((folder + std::string(kDesktopProgram)).c_str(), argv);
    }
    return failWith(Failed, std::string(kDesktopProgram) + " is not installed beside kqx, so this command cannot run");
}

void print(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

ExitCode run(int argc, char** argv) {
    if (argc < 2) {
        return failWith(WrongUse, "no command given\n\n" + overview());
    }
    const std::string_view name = argv[1];
    if (name == "--help" || name == "-h" || name == "help") {
        print(overview());
        return Done;
    }
    if (name == "--version") {
        print("kqx " SIXTRACE_VERSION "\n");
        return Done;
    }
    const auto command =
        std::find_if(kCommands.begin(), kCommands.end(), [name](const Command& entry) { return entry.name == name; });
    if (command == kCommands.end()) {
        return failWith(WrongUse, "unknown command \"" + std::string(name) + "\"\n\n" + overview());
    }
    return command->run != nullptr ? command->run({argv + 2, argv + argc}) : handOn(argv);
}

} // namespace

} // namespace sixtrace::kqx

int main(int argc, char** argv) {
    using namespace sixtrace::kqx;
    return afterPrinting(run(argc, argv));
}
