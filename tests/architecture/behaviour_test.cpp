// SPDX-License-Identifier: MIT
// Each test and each file that the tables in docs/behaviour name must exist.
#include "support/sourcefolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string_view>

namespace sixtrace::test {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;

constexpr std::array kFolders{"src/", "apps/", "docs/", "tests/", "lang/"};

std::string contentOf(const fs::path& path) {
    const std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

fs::path root() {
    return {SIXTRACE_SOURCE_DIR};
}

/// "Suite.Name" of every test in the tree.
std::set<std::string> testNames() {
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(root() / "tests")) {
        std::ifstream file(entry.path());
        for (std::string line; entry.path().extension() == ".cpp" && std::getline(file, line);) {
            const auto open = line.find('(');
            const auto comma = line.find(", ", open);
            const auto close = line.find(')', comma);
            if (line.starts_with("TEST") && close != std::string::npos) {
                names.insert(line.substr(open + 1, comma - open - 1) + '.' + line.substr(comma + 2, close - comma - 2));
            }
        }
    }
    return names;
}

/// The words of a table file that stand between backquotes.
std::set<std::string> quotedWords(const std::string& text) {
    std::set<std::string> words;
    std::istringstream parts(text);
    bool quoted = false;
    for (std::string part; std::getline(parts, part, '`'); quoted = !quoted) {
        if (quoted) {
            words.insert(part);
        }
    }
    return words;
}

bool isWord(std::string_view text) {
    return !text.empty() && std::isupper(static_cast<unsigned char>(text.front())) != 0 &&
           std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isalnum(c) != 0; });
}

/// "Suite.Name", both beginning with a capital letter.
bool looksLikeATest(const std::string& word) {
    const auto point = word.find('.');
    return point != std::string::npos && isWord(std::string_view(word).substr(0, point)) &&
           isWord(std::string_view(word).substr(point + 1));
}

bool looksLikeAPath(const std::string& word) {
    return std::any_of(kFolders.begin(), kFolders.end(),
                       [&word](const char* folder) { return word.starts_with(folder); });
}

/// Calls `check` with the name of each table file and each quoted word in it.
void forEachWord(const auto& check) {
    for (const auto& entry : fs::directory_iterator(root() / "docs" / "behaviour")) {
        for (const std::string& word : quotedWords(contentOf(entry.path()))) {
            check(entry.path().filename().string(), word);
        }
    }
}

TEST(BehaviourTables, NameOnlyTestsThatExist) {
    const std::set<std::string> tests = testNames();
    ASSERT_GT(tests.size(), 400U);
    std::vector<std::string> missing;
    int named = 0;
    forEachWord([&](const std::string& file, const std::string& word) {
        if (looksLikeATest(word)) {
            ++named;
            if (!tests.contains(word)) {
                missing.push_back(file + ": " + word);
            }
        }
    });
    EXPECT_THAT(missing, IsEmpty());
    EXPECT_GT(named, 100);
}

TEST(BehaviourTables, NameOnlyFilesThatExist) {
    std::vector<std::string> missing;
    int named = 0;
    forEachWord([&](const std::string& file, const std::string& word) {
        if (looksLikeAPath(word)) {
            ++named;
            if (!fs::exists(root() / word)) {
                missing.push_back(file + ": " + word);
            }
        }
    });
    EXPECT_THAT(missing, IsEmpty());
    EXPECT_GT(named, 50);
}

} // namespace
} // namespace sixtrace::test
