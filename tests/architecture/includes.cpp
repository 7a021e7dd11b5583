// SPDX-License-Identifier: MIT
#include "architecture/includes.h"

#include <initializer_list>
#include <sstream>
#include <string_view>

namespace sixtrace::test {

namespace {

/// The folders with their levels, the lowest first. Folders of the same level do not include each other.
const std::map<std::string, int> kLayers{{"ttdll", -1},  {"platform", 0}, {"capture", 1}, {"view", 2},
                                         {"acquire", 3}, {"output", 3},   {"shell", 4}};

/// The subfolders of src/platform with their levels, in the same way.
const std::map<std::string, int> kPlatformRooms{{"text", 0},     {"drawing", 0},  {"files", 1},  {"ports", 2},
                                                {"printing", 2}, {"controls", 2}, {"desktop", 3}};

std::string folderOf(const std::string& path) {
    return path.substr(0, path.find('/'));
}

/// The second folder of a path, empty where it has none: "files" of "platform/files/workshop.h".
std::string roomOf(const std::string& path) {
    const auto first = path.find('/');
    const auto second = path.find('/', first + 1);
    return second == std::string::npos ? "" : path.substr(first + 1, second - first - 1);
}

/// Joins pieces to one text.
std::string joined(std::initializer_list<std::string_view> pieces) {
    std::string text;
    for (const std::string_view piece : pieces) {
        text += piece;
    }
    return text;
}

} // namespace

FolderLists listsOf(const std::string& cmakeText) {
    FolderLists lists;
    std::istringstream lines(cmakeText);
    std::set<std::string>* list = nullptr; // the list of the call that is being read
    bool inSources = false;
    for (std::string line; std::getline(lines, line);) {
        line = line.substr(0, line.find('#'));
        if (line.starts_with("sixtrace_")) {
            list = line.starts_with("sixtrace_core(") || line.starts_with("sixtrace_plugin") ? &lists.core
                   : line.starts_with("sixtrace_windows(")                                   ? &lists.windows
                                                                                             : nullptr;
            inSources = false;
        }
        const bool closes = line.find(')') != std::string::npos;
        std::istringstream words(line.substr(0, line.find(')')));
        for (std::string word; words >> word;) {
            if (word == "SOURCES" || word == "LINKS") {
                inSources = word == "SOURCES";
            } else if (inSources && list != nullptr) {
                list->insert(word);
            }
        }
        if (closes) {
            list = nullptr;
        }
    }
    return lists;
}

Includes includesOf(const std::string& text) {
    Includes includes;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        std::erase_if(line, [](char c) { return c == ' ' || c == '\t'; });
        constexpr std::string_view kDirective = "#include";
        if (!line.starts_with(kDirective) || line.size() == kDirective.size()) {
            continue;
        }
        const char open = line[kDirective.size()];
        const auto close = line.find(open == '<' ? '>' : '"', kDirective.size() + 1);
        if ((open == '<' || open == '"') && close != std::string::npos) {
            const std::string name = line.substr(kDirective.size() + 1, close - kDirective.size() - 1);
            (open == '<' ? includes.system : includes.project).push_back(name);
        }
    }
    return includes;
}

std::vector<std::string> layerFaults(const Sources& sources) {
    std::vector<std::string> faults;
    for (const auto& [path, text] : sources) {
        const std::string folder = folderOf(path);
        const auto mine = kLayers.find(folder);
        if (mine == kLayers.end()) {
            faults.push_back(path + " lies in a folder that has no layer");
            continue;
        }
        for (const std::string& header : includesOf(text).project) {
            const std::string target = folderOf(header);
            const auto theirs = kLayers.find(target);
            if (theirs == kLayers.end() || header.find("..") != std::string::npos) {
                // Files that the build generates, such as moc output, have no folder in their name.
                if (header.find('/') != std::string::npos) {
                    faults.push_back(joined({path, " includes ", header, ", which is no library path"}));
                }
            } else if (target != folder && theirs->second >= mine->second) {
                faults.push_back(joined({path, " includes ", header, ", which does not lie below it"}));
            }
        }
    }
    return faults;
}

std::vector<std::string> roomFaults(const Sources& sources) {
    std::vector<std::string> faults;
    for (const auto& [path, text] : sources) {
        if (folderOf(path) != "platform") {
            continue;
        }
        const auto mine = kPlatformRooms.find(roomOf(path));
        if (mine == kPlatformRooms.end()) {
            faults.push_back(path + " lies in no room");
            continue;
        }
        for (const std::string& header : includesOf(text).project) {
            const auto theirs = kPlatformRooms.find(roomOf(header));
            const bool elsewhere = folderOf(header) == "platform" && roomOf(header) != mine->first;
            if (elsewhere && (theirs == kPlatformRooms.end() || theirs->second >= mine->second)) {
                faults.push_back(joined({path, " includes ", header, ", which does not lie below it"}));
            }
        }
    }
    return faults;
}

std::vector<std::string> widgetFaults(const Sources& sources, const std::map<std::string, FolderLists>& lists,
                                      const std::set<std::string>& widgetHeaders) {
    std::vector<std::string> faults;
    for (const auto& [folder, list] : lists) {
        for (const std::string& file : list.core) {
            const std::string path = joined({folder, "/", file});
            const auto source = sources.find(path);
            if (source == sources.end()) {
                faults.push_back(path + " is listed and not there");
                continue;
            }
            const Includes includes = includesOf(source->second);
            for (const std::string& header : includes.system) {
                const std::string name = header.substr(header.rfind('/') + 1);
                if (header.starts_with("QtWidgets") || header.starts_with("QtPrintSupport") ||
                    widgetHeaders.contains(name)) {
                    faults.push_back(joined({path, " is windowless and includes <", header, ">"}));
                }
            }
            for (const std::string& header : includes.project) {
                const auto owner = lists.find(folderOf(header));
                const std::string name = header.substr(header.find('/') + 1);
                if (owner != lists.end() && owner->second.windows.contains(name)) {
                    faults.push_back(joined({path, " is windowless and includes the window ", header}));
                }
            }
        }
    }
    return faults;
}

} // namespace sixtrace::test
