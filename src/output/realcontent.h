// SPDX-License-Identifier: MIT
#pragma once

#include "output/littleendian.h"
#include "output/ziparchive.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <utility>

namespace sixtrace {

/// The content of a file of an archive: `head`, and after it `count` little-endian reals of type T. A real is computed
/// as value(i) when the archive reads it. i is an int, since processors convert several ints to reals at once. The
/// archive may read pieces that start and end anywhere.
template<typename T, typename Value>
ZipContent realsOf(std::string head, std::size_t count, Value value) {
    const std::size_t size = head.size() + count * sizeof(T);
    return {size, [head = std::move(head), value](char* to, std::size_t from, std::size_t wanted) {
                if (from < head.size()) {
                    const std::size_t part = std::min(wanted, head.size() - from);
                    std::copy_n(head.data() + from, part, to);
                    to += part;
                    from += part;
                    wanted -= part;
                }
                const Value made =
                    value; // a local copy, which the writes of the loop cannot change: that makes it faster
                std::size_t at = from - head.size();
                while (wanted > 0) {
                    // Whole values are written in one loop; a value that the piece's start or end cuts is written by
                    // itself.
                    const std::size_t cut = at % sizeof(T);
                    const std::size_t first = at / sizeof(T);
                    std::size_t part = 0;
                    if (cut == 0 && wanted >= sizeof(T)) {
                        const std::size_t whole = wanted / sizeof(T);
                        for (std::size_t i = 0; i < whole; ++i) {
                            putLittle(to + i * sizeof(T), static_cast<T>(made(static_cast<int>(first + i))));
                        }
                        part = whole * sizeof(T);
                    } else {
                        std::array<char, sizeof(T)> one{};
                        putLittle(one.data(), static_cast<T>(made(static_cast<int>(first))));
                        part = std::min(wanted, sizeof(T) - cut);
                        std::memcpy(to, one.data() + cut, part);
                    }
                    to += part;
                    at += part;
                    wanted -= part;
                }
            }};
}

} // namespace sixtrace
