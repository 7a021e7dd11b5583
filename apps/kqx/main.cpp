// SPDX-License-Identifier: MIT
// The command-line companion. What reads numbers out of captures is done here; a command that draws, talks to the
// instrument or to the desktop is handed on to a program beside this one, which loads the libraries for it.
#include "commandlist.h"
#include "datacommands.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>
#include <vector>

namespace sixtrace::kqx {

namespace {

std::string overview() {
    constexpr std::size_t kNameWidth = 9;
    std::string text = "Usage: kqx COMMAND ...\n\nCommands:\n";
    for (const CommandEntry& command : kCommands) {
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

/// Becomes the program of the desktop's commands; returns only where that is not there. It takes the place of this
/// process, so that signals and the exit code are its own.
int handOn(char** argv) {
    const std::string own = ownFolder();
    // The program is told whose folder counts: language files and the transfer library are looked for beside kqx.
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

int run(int argc, char** argv) {
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
    const auto command = std::find_if(kCommands.begin(), kCommands.end(),
                                      [name](const CommandEntry& entry) { return entry.name == name; });
    if (command == kCommands.end()) {
        return failWith(WrongUse, "unknown command \"" + std::string(name) + "\"\n\n" + overview());
    }
    if (command->by == DoneBy::Desktop) {
        return handOn(argv);
    }
    const std::vector<std::string> arguments(argv + 2, argv + argc);
    if (name == "info") {
        return info(arguments);
    }
    return name == "measure" ? measure(arguments) : convert(arguments);
}

} // namespace

} // namespace sixtrace::kqx

int main(int argc, char** argv) {
    using namespace sixtrace::kqx;
    return afterPrinting(run(argc, argv));
}
