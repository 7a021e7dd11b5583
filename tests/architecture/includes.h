// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace sixtrace::test {

/// Source files by their path below src/ ("view/frame.cpp"), with their text.
using Sources = std::map<std::string, std::string>;

/// What the CMakeLists.txt of a folder declares.
struct FolderLists {
    std::set<std::string> core;    ///< files of sixtrace_core
    std::set<std::string> windows; ///< files of sixtrace_windows
};

/// The file lists in the text of a folder's CMakeLists.txt.
[[nodiscard]] FolderLists listsOf(const std::string& cmakeText);

/// The names in the #include lines of a source: <QFile> gives "QFile", "view/frame.h" gives "view/frame.h".
struct Includes {
    std::vector<std::string> system;
    std::vector<std::string> project;
};
[[nodiscard]] Includes includesOf(const std::string& text);

/// A sentence for each include of a folder that is not below the including one, or of a file outside the tree.
[[nodiscard]] std::vector<std::string> layerFaults(const Sources& sources);

/// A sentence for each file of src/platform that is in no subfolder, or includes a subfolder that is not below its own.
[[nodiscard]] std::vector<std::string> roomFaults(const Sources& sources);

/// A sentence for each core file that includes a widget header or a window of this program. `lists` has one entry for
/// each folder.
[[nodiscard]] std::vector<std::string> widgetFaults(const Sources& sources,
                                                    const std::map<std::string, FolderLists>& lists,
                                                    const std::set<std::string>& widgetHeaders);

} // namespace sixtrace::test
