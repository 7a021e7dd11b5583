// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sixtrace {

/// The bytes of a file in an archive, made piece by piece where they are wanted: no memory of their own is filled and
/// read again.
struct ZipContent {
    std::size_t size = 0;
    /// Writes `count` bytes from byte `from` on, which lie within the size.
    std::function<void(char* to, std::size_t from, std::size_t count)> make;

    /// The bytes of a text, which has to stay.
    static ZipContent of(std::string_view text);
};

/// An archive that is made in memory, with the time stamps of nobody's clock: the same content gives the same bytes.
class ZipArchive {
public:
    enum class Packing { Stored, Deflated };

    /// Adds a file. Its content is made when the archive is.
    void add(std::string name, ZipContent content, Packing packing) {
        m_entries.push_back({std::move(name), std::move(content), packing});
    }
    /// The archive; nothing where memory is short.
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
