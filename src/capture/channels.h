// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace sixtrace {

inline constexpr int kChannels = 6;       ///< ch1, ch2, A, B, C, D in this order, everywhere
inline constexpr int kSampleRows = 10231; ///< samples that a channel can hold
inline constexpr int kTimeBaseRows = 28;  ///< rows of TimeBaseTable and of the time list
inline constexpr int kVoltRows = 10;      ///< rows of VoltTable and of the volt list
inline constexpr int kScanTimeRow = 22;   ///< time-base rows from here on are slow scans

/// Which rows of the time-base table a capture uses: 25 nS, 250 nS ... or 20 nS, 200 nS ...
enum class TimeBaseFamily { Of25, Of20 };

/// The ids of the channels in a capture file.
inline constexpr std::string_view kChannelIds = "12ABCD";
/// The names of the channels without padding.
inline constexpr std::array<std::string_view, kChannels> kChannelNames{"ch1", "ch2", "A", "B", "C", "D"};

/// Channel 0 to 5 of an id byte of a capture file: '1', '2', 'A' ... 'D'.
[[nodiscard]] constexpr std::optional<int> channelOfId(char id) {
    const std::size_t channel = kChannelIds.find(id);
    return channel == std::string_view::npos ? std::nullopt : std::optional(static_cast<int>(channel));
}

} // namespace sixtrace
