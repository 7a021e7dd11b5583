// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sixtrace {

/// The bytes of a file in an archive. They are made piece by piece when the archive reads them, so that they take no
/// memory of their own.
struct ZipContent {
    std::size_t size = 0;
    /// Writes `count` bytes from byte `from` on, which lie within the size.
    std::function<void(char* to, std::size_t from, std::size_t count)> make;

    /// The bytes of a text, which has to exist as long as this object.
    static ZipContent of(std::string_view text);
};

/// A ZIP archive that is made in memory. Its time stamps are fixed, so that the same content gives the same bytes.
class ZipArchive {
public:
    enum class Packing { Stored, Deflated };

    /// Adds a file. Its content is made by file().
    void add(std::string name, ZipContent content, Packing packing) {
        m_entries.push_back({std::move(name), std::move(content), packing});
    }
    /// The bytes of the archive; nothing when there is not enough memory.
    [[nodiscard]] std::optional<std::string> file() const;

private:
    struct Entry {
        std::string name;
        ZipContent content;
        Packing packing;
    };
    std::vector<Entry> m_entries;
};

} // namespace sixtrace
