// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace sixtrace {

inline constexpr int kChannels = 6;       ///< ch1, ch2, A, B, C, D in this order, everywhere
inline constexpr int kSampleRows = 10231; ///< samples that a channel can hold
inline constexpr int kTimeBaseRows = 28;  ///< rows of TimeBaseTable and of the time list
inline constexpr int kVoltRows = 10;      ///< rows of VoltTable and of the volt list
inline constexpr int kScanTimeRow = 22;   ///< time-base rows from here on are slow scans

/// An array of a fixed size that any integer addresses: channels and table rows are signed numbers everywhere.
template<typename T, std::size_t Size>
struct NumberedArray : std::array<T, Size> {
    using Elements = std::array<T, Size>;

    [[nodiscard]] constexpr T& operator[](std::integral auto number) {
        return Elements::operator[](static_cast<std::size_t>(number));
    }
    [[nodiscard]] constexpr const T& operator[](std::integral auto number) const {
        return Elements::operator[](static_cast<std::size_t>(number));
    }
    /// Whether there is an element of that number.
    [[nodiscard]] static constexpr bool has(std::integral auto number) {
        return std::cmp_greater_equal(number, 0) && std::cmp_less(number, Size);
    }
    /// The element of a number; nothing where a damaged capture names one that is not there.
    [[nodiscard]] constexpr std::optional<T> find(std::integral auto number) const {
        return has(number) ? std::optional<T>((*this)[number]) : std::nullopt;
    }
    /// The same as [] with a check; throws std::out_of_range.
    [[nodiscard]] constexpr T& at(std::integral auto number) { return Elements::at(static_cast<std::size_t>(number)); }
    [[nodiscard]] constexpr const T& at(std::integral auto number) const {
        return Elements::at(static_cast<std::size_t>(number));
    }
};

/// One element for each channel, for each row of the time-base table or of the volt table.
template<typename T>
using PerChannel = NumberedArray<T, kChannels>;
template<typename T>
using PerTimeBase = NumberedArray<T, kTimeBaseRows>;
template<typename T>
using PerVoltRange = NumberedArray<T, kVoltRows>;

/// Which rows of the time-base table a capture uses: 25 nS, 250 nS ... or 20 nS, 200 nS ...
enum class TimeBaseFamily { Of25, Of20 };

/// The ids of the channels in a capture file.
inline constexpr std::string_view kChannelIds = "12ABCD";
/// The names of the channels without padding.
inline constexpr PerChannel<std::string_view> kChannelNames{"ch1", "ch2", "A", "B", "C", "D"};

/// Channel 0 to 5 of an id byte of a capture file: '1', '2', 'A' ... 'D'.
[[nodiscard]] constexpr std::optional<int> channelOfId(char id) {
    const std::size_t channel = kChannelIds.find(id);
    return channel == std::string_view::npos ? std::nullopt : std::optional(static_cast<int>(channel));
}

} // namespace sixtrace
