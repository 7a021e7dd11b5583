// SPDX-License-Identifier: MIT
#include "tasks.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <set>
#include <sys/stat.h>
#include <thread>

namespace sixtrace::kqx {

namespace {

constexpr int kMostJobs = 256;

ExitCode refuse(const Usage& usage, const std::string& text) {
    return failWith(WrongUse, std::string("kqx ") + usage.command + ' ' + text);
}

ExitCode refuseArguments(const Usage& usage) {
    return refuse(usage, std::string("takes ") + usage.arguments);
}

/// All bytes of a list of names, or nothing when it cannot be read.
std::optional<std::string> listOf(const std::string& name) {
    std::FILE* const file = name == "-" ? stdin : std::fopen(name.c_str(), "rbe");
    if (file == nullptr) {
        return std::nullopt;
    }
    std::string all;
    std::array<char, 65536> piece{};
    std::size_t got = 0;
    while ((got = std::fread(piece.data(), 1, piece.size(), file)) > 0) {
        all.append(piece.data(), got);
    }
    const bool whole = std::ferror(file) == 0;
    if (file != stdin) {
        std::fclose(file);
    }
    return whole ? std::optional(std::move(all)) : std::nullopt;
}

/// Appends the parts of a list that end in `end`. They go straight to their place, since lists can be long.
void appendParts(std::vector<std::string>& parts, std::string_view all, char end) {
    parts.reserve(parts.size() + static_cast<std::size_t>(std::count(all.begin(), all.end(), end)) + 1);
    while (!all.empty()) {
        const std::size_t length = std::min(all.find(end), all.size());
        if (length > 0) {
            parts.emplace_back(all.substr(0, length));
        }
        all.remove_prefix(std::min(length + 1, all.size()));
    }
}

/// The extension of a name in small letters and without its point; empty for a name without one.
std::string extensionOf(std::string_view name) {
    const std::size_t slash = name.rfind('/');
    const std::string_view base = slash == std::string_view::npos ? name : name.substr(slash + 1);
    const std::size_t point = base.rfind('.');
    std::string extension(point == std::string_view::npos || point == 0 ? std::string_view() : base.substr(point + 1));
    for (char& c : extension) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return extension;
}

/// The file that the result of a file goes to: "DIR/x.EXT" for "x.bin".
std::string resultName(const std::string& file, const std::string& folder, const std::string& extension) {
    std::string base = file.substr(file.rfind('/') + 1);
    const std::size_t point = base.rfind('.');
    if (point != std::string::npos && point > 0) {
        base.resize(point);
    }
    base += '.' + extension;
    if (folder.empty()) {
        return base;
    }
    return folder.back() == '/' ? folder + base : folder + '/' + base;
}

bool isFolder(const std::string& path) {
    struct stat about {};
    return ::stat(path.c_str(), &about) == 0 && S_ISDIR(about.st_mode);
}

/// The text "csv, npz or sr", with `mark` before each extension.
std::string listed(const std::vector<std::string>& extensions, const std::string& mark) {
    std::string text;
    for (std::size_t i = 0; i < extensions.size(); ++i) {
        text += (i == 0 ? "" : i + 1 == extensions.size() ? " or " : ", ") + mark + extensions[i];
    }
    return text;
}

bool isAmong(const std::vector<std::string>& extensions, const std::string& extension) {
    return std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
}

/// The extension of the result of FILE OUT: that of --to, of OUT's name, or the only one that the command writes.
OrExit<std::string> extensionForOne(const Arguments& arguments, const std::string& out,
                                    const std::vector<std::string>& extensions) {
    if (arguments.has("to")) {
        return arguments.value("to");
    }
    const bool toOutput = out == "-";
    if (toOutput && extensions.size() == 1) {
        return extensions.front();
    }
    std::string extension = toOutput ? std::string() : extensionOf(out);
    if (isAmong(extensions, extension)) {
        return extension;
    }
    return failWith(WrongUse, toOutput
                                  ? "for standard output, --to has to name the kind of file: " + listed(extensions, "")
                                  : out + ": the name has to end in " + listed(extensions, "."));
}

/// The extension of the results of several files: that of --to, or the only one that the command writes.
OrExit<std::string> extensionForSeveral(const Arguments& arguments, const std::vector<std::string>& extensions) {
    if (!arguments.has("to") && extensions.size() > 1) {
        return failWith(WrongUse, "for several files, --to has to name the kind of file: " + listed(extensions, ""));
    }
    return arguments.value("to", extensions.front());
}

/// A task for each file, whose result goes into --out-dir or into the current folder.
OrExit<std::vector<Task>> tasksOf(const Arguments& arguments, std::vector<std::string> files,
                                  const std::string& extension) {
    const std::string folder = arguments.value("out-dir");
    if (arguments.has("out-dir") && !isFolder(folder)) {
        return failWith(Failed, folder + ": there is no such folder");
    }
    std::vector<Task> tasks;
    std::set<std::string> names;
    for (std::string& file : files) {
        std::string out = resultName(file, folder, extension);
        if (!names.insert(out).second) {
            return failWith(WrongUse,
                            out + " would be written twice, by files of the same name; nothing has been written");
        }
        tasks.push_back({std::move(file), std::move(out)});
    }
    return tasks;
}

} // namespace

std::vector<Option> listOptions() {
    return {{"files-from", "list", "Read more file names from this list, one per line; - is standard input."},
            {"null", nullptr, "Names in the list end with a NUL byte, as find -print0 writes them."},
            {"jobs", "n", "Work on n files at the same time, 1 to 256; by default on one per processor."}};
}

std::vector<Option> writingOptions(const char* forms) {
    std::vector<Option> options = listOptions();
    options.push_back({"out-dir", "folder",
                       "Write the results into this folder, which must exist; x.bin becomes x.EXT. By default the "
                       "results of several FILEs go into the current folder."});
    options.push_back({"to", "ext", forms});
    options.push_back({"no-clobber", nullptr, "Do not replace a file that exists already; the exit code is 1 then."});
    return options;
}

std::vector<Option> withOptions(std::vector<Option> options, const std::vector<Option>& more) {
    options.insert(options.end(), more.begin(), more.end());
    return options;
}

OrExit<std::vector<std::string>> filesToRead(const Usage& usage, const Arguments& arguments) {
    std::vector<std::string> files = arguments.positional();
    if (!arguments.has("files-from")) {
        return files.empty() ? OrExit<std::vector<std::string>>(refuseArguments(usage)) : files;
    }
    const std::string name = arguments.value("files-from");
    const auto list = listOf(name);
    if (!list) {
        return failWith(Failed, name + ": the list of file names cannot be read");
    }
    appendParts(files, *list, arguments.has("null") ? '\0' : '\n');
    return files;
}

OrExit<int> jobsOf(const Arguments& arguments) {
    const int processors = std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, kMostJobs);
    if (!arguments.has("jobs")) {
        return processors;
    }
    const auto jobs = wholeNumber(arguments.value("jobs"), 1, kMostJobs);
    if (!jobs) {
        return failWith(WrongUse, "--jobs takes a whole number from 1 to 256");
    }
    return *jobs;
}

OrExit<Tasks> filesToWrite(const Usage& usage, const Arguments& arguments, const std::vector<std::string>& extensions) {
    if (arguments.has("to") && !isAmong(extensions, arguments.value("to"))) {
        return failWith(WrongUse, "--to takes " + listed(extensions, ""));
    }
    const std::vector<std::string>& given = arguments.positional();
    const bool toOutput = given.size() > 1 && given.back() == "-";
    Tasks made;
    made.existing = arguments.has("no-clobber") ? Existing::Kept : Existing::Replaced;
    made.isBatch = !toOutput && (arguments.has("to") || arguments.has("out-dir") || arguments.has("files-from"));
    if (!made.isBatch) {
        if (given.size() != 2) {
            return given.size() > 2 && !toOutput
                       ? refuse(usage, "takes several files only with --to EXT or --out-dir FOLDER")
                       : refuseArguments(usage);
        }
        auto extension = extensionForOne(arguments, given[1], extensions);
        if (!extension) {
            return extension.error();
        }
        made.extension = std::move(extension.value());
        made.tasks = {{given[0], given[1]}};
        return made;
    }
    auto files = filesToRead(usage, arguments);
    if (!files) {
        return files.error();
    }
    auto extension = extensionForSeveral(arguments, extensions);
    if (!extension) {
        return extension.error();
    }
    made.extension = std::move(extension.value());
    auto tasks = tasksOf(arguments, std::move(files.value()), made.extension);
    if (!tasks) {
        return tasks.error();
    }
    made.tasks = std::move(tasks.value());
    return made;
}

} // namespace sixtrace::kqx
