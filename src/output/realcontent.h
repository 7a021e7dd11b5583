// SPDX-License-Identifier: MIT
#pragma once

#include "output/ziparchive.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <string>
#include <utility>

namespace sixtrace {

/// Writes a value, the least significant byte first.
template<typename T>
void putLittle(char* at, T value) {
    std::memcpy(at, &value, sizeof value);
    if constexpr (std::endian::native == std::endian::big) {
        std::reverse(at, at + sizeof value);
    }
}

/// `count` reals of type T behind a head, little-endian, each made by `value(i)` when it is wanted; i is an int, which
/// processors turn into reals several at a time. A piece may start and end anywhere.
template<typename T, typename Value>
ZipContent realsOf(std::string head, std::size_t count, Value value) {
    const std::size_t size = head.size() + count * sizeof(T);
    return {size, [head = std::move(head), value](char* to, std::size_t from, std::size_t wanted) {
                if (from < head.size()) {
                    const std::size_t part = std::min(wanted, head.size() - from);
                    std::memcpy(to, head.data() + from, part);
                    to += part;
                    from += part;
                    wanted -= part;
                }
                const Value made = value; // a copy whose place nothing else can write to, so that the loop is quick
                std::size_t at = from - head.size();
                while (wanted > 0) {
                    // Whole values at once; one that is cut by the piece's start or end by itself.
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
