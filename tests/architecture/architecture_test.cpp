// SPDX-License-Identifier: MIT
// Libraries include only libraries below them, and cores include no widget headers.
#include "architecture/includes.h"
#include "support/sourcefolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace sixtrace::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string contentOf(const fs::path& path) {
    const std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

fs::path sourceRoot() {
    return fs::path(SIXTRACE_SOURCE_DIR) / "src";
}

const Sources& tree() {
    static const Sources sources = [] {
        Sources found;
        for (const auto& entry : fs::recursive_directory_iterator(sourceRoot())) {
            const std::string extension = entry.path().extension();
            // Files right below src/ belong to no library of the program.
            const fs::path below = fs::relative(entry.path(), sourceRoot());
            if (entry.is_regular_file() && (extension == ".cpp" || extension == ".h") && below.has_parent_path()) {
                found[below.generic_string()] = contentOf(entry.path());
            }
        }
        return found;
    }();
    return sources;
}

std::map<std::string, FolderLists> lists() {
    std::map<std::string, FolderLists> found;
    for (const auto& entry : fs::directory_iterator(sourceRoot())) {
        if (entry.is_directory() && fs::exists(entry.path() / "CMakeLists.txt")) {
            found[entry.path().filename().string()] = listsOf(contentOf(entry.path() / "CMakeLists.txt"));
        }
    }
    return found;
}

/// Names of the desktop library's widget and printing headers.
std::set<std::string> widgetHeaders() {
    std::set<std::string> names;
    for (const char* folder : {SIXTRACE_QTWIDGETS_DIR, SIXTRACE_QTWIDGETS_DIR "/../QtPrintSupport"}) {
        for (const auto& entry : fs::directory_iterator(folder)) {
            names.insert(entry.path().filename().string());
        }
    }
    return names;
}

TEST(Architecture, NoLibraryIncludesOneThatDoesNotLieBelowIt) {
    ASSERT_GT(tree().size(), 20U);
    EXPECT_THAT(layerFaults(tree()), IsEmpty());
}

TEST(Architecture, EveryFileOfPlatformLiesInARoomAndIncludesOnlyRoomsBelow) {
    EXPECT_THAT(roomFaults(tree()), IsEmpty());
}

TEST(Architecture, NoCoreIncludesAWidgetHeaderOrAWindow) {
    const std::set<std::string> headers = widgetHeaders();
    ASSERT_TRUE(headers.contains("QWidget"));
    ASSERT_TRUE(headers.contains("QPrinter"));
    ASSERT_FALSE(lists().at("view").core.empty());
    EXPECT_THAT(widgetFaults(tree(), lists(), headers), IsEmpty());
}

TEST(Architecture, EverySourceIsListedByItsFolder) {
    const auto all = lists();
    for (const auto& [path, text] : tree()) {
        const std::string folder = path.substr(0, path.find('/'));
        const std::string file = path.substr(path.find('/') + 1);
        const auto list = all.find(folder);
        ASSERT_NE(list, all.end()) << path;
        EXPECT_TRUE(list->second.core.contains(file) || list->second.windows.contains(file)) << path;
    }
}

TEST(Architecture, EverySourceNamesItsLicenceAndEveryHeaderIsIncludedOnce) {
    for (const auto& [path, text] : tree()) {
        EXPECT_TRUE(text.starts_with("// SPDX-License-Identifier: MIT\n")) << path;
        if (path.ends_with(".h")) {
            EXPECT_NE(text.find("\n#pragma once\n"), std::string::npos) << path;
        }
    }
}

// Tests of the checks themselves: each has to find the fault that it looks for.

TEST(ArchitectureChecks, SeeAnUpwardInclude) {
    EXPECT_THAT(layerFaults({{"capture/a.h", "#include \"view/frame.h\"\n"}}),
                ElementsAre("capture/a.h includes view/frame.h, which does not lie below it"));
    EXPECT_THAT(layerFaults({{"view/a.h", "#include \"capture/publicm.h\"\n#include \"view/b.h\"\n"}}), IsEmpty());
}

TEST(ArchitectureChecks, SeeThatAcquireAndOutputIncludeEachOther) {
    EXPECT_EQ(layerFaults({{"acquire/a.cpp", "#include \"output/b.h\"\n"}}).size(), 1U);
    EXPECT_EQ(layerFaults({{"output/b.cpp", "  #  include \"acquire/a.h\"\n"}}).size(), 1U);
}

TEST(ArchitectureChecks, SeeAWayOutOfTheTreeAndAFolderWithoutALayer) {
    EXPECT_EQ(layerFaults({{"view/a.cpp", "#include \"../capture/publicm.h\"\n"}}).size(), 1U);
    EXPECT_EQ(layerFaults({{"view/a.cpp", "#include \"apps/kqx/commands.h\"\n"}}).size(), 1U);
    EXPECT_EQ(layerFaults({{"attic/a.cpp", ""}}).size(), 1U);
}

TEST(ArchitectureChecks, SeeAFileWithoutARoomAndARoomThatDoesNotLieBelow) {
    EXPECT_EQ(roomFaults({{"platform/a.h", ""}}).size(), 1U);
    EXPECT_EQ(roomFaults({{"platform/attic/a.h", ""}}).size(), 1U);
    EXPECT_THAT(roomFaults({{"platform/text/a.h", "#include \"platform/files/b.h\"\n"}}),
                ElementsAre("platform/text/a.h includes platform/files/b.h, which does not lie below it"));
    EXPECT_EQ(roomFaults({{"platform/ports/a.h", "#include \"platform/printing/b.h\"\n"}}).size(), 1U);
    EXPECT_THAT(roomFaults({{"platform/files/a.h", "#include \"platform/files/b.h\"\n#include \"platform/text/c.h\"\n"
                                                   "#include \"ttdll/d.h\"\n"},
                            {"view/a.h", "#include \"platform/files/b.h\"\n"}}),
                IsEmpty());
}

TEST(ArchitectureChecks, ReadTheListsOfAFolder) {
    const FolderLists read = listsOf("sixtrace_core(view SOURCES\n  a.cpp a.h # b.cpp\n LINKS sixtrace::capture)\n"
                                     "sixtrace_windows(view SOURCES w.cpp)\n");
    EXPECT_EQ(read.core, (std::set<std::string>{"a.cpp", "a.h"}));
    EXPECT_EQ(read.windows, (std::set<std::string>{"w.cpp"}));
}

TEST(ArchitectureChecks, SeeAWidgetOrAWindowInACore) {
    const std::map<std::string, FolderLists> folders{{"view", {{"a.cpp"}, {"w.h"}}}};
    const std::set<std::string> headers{"QWidget"};
    EXPECT_EQ(widgetFaults({{"view/a.cpp", "#include <QWidget>\n"}}, folders, headers).size(), 1U);
    EXPECT_EQ(widgetFaults({{"view/a.cpp", "#include <QtWidgets/QLabel>\n"}}, folders, headers).size(), 1U);
    EXPECT_EQ(widgetFaults({{"view/a.cpp", "#include \"view/w.h\"\n"}}, folders, headers).size(), 1U);
    EXPECT_THAT(widgetFaults({{"view/a.cpp", "#include <QImage>\n"}}, folders, headers), IsEmpty());
    EXPECT_EQ(widgetFaults({}, folders, headers).size(), 1U);
}

} // namespace
} // namespace sixtrace::test
