// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sixtrace {

/// An archive that is made in memory, with the time stamps of nobody's clock: the same content gives the same bytes.
class ZipArchive {
public:
    enum class Packing { Stored, Deflated };

    /// Adds a file. The bytes are not copied: they have to stay until file() has returned.
    void add(std::string name, std::string_view bytes, Packing packing) {
        m_entries.push_back({std::move(name), bytes, packing});
    }
    /// The archive; nothing where memory is short.
    [[nodiscard]] std::optional<std::string> file() const;

private:
    struct Entry {
        std::string name;
        std::string_view bytes;
        Packing packing;
    };
    std::vector<Entry> m_entries;
};

} // namespace sixtrace
