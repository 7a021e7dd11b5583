// SPDX-License-Identifier: MIT
#pragma once

#include "capture/capturerecord.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sixtrace {

// The samples of a capture in files for other programs: times in seconds, which are index x interval, and volts at the
// probe's tip. They hold all samples of the capture file in the order of their index.

/// A channel to write.
struct SampleColumn {
    std::string_view label;
    const ChannelRecord& channel;
};

/// Comma-separated values: one time column when all channels have the same sample interval, otherwise one before each
/// channel. Lines end in LF; the cells below the last sample of a channel are empty.
[[nodiscard]] std::string samplesCsv(const std::vector<SampleColumn>& columns);

/// An archive of NumPy arrays: t_LABEL (64-bit reals) and v_LABEL (32-bit reals) for each channel, and the text `info`.
/// Nothing when there is not enough memory.
[[nodiscard]] std::optional<std::string> samplesNpz(const std::vector<SampleColumn>& columns, std::string_view info);

/// A sentence that says why the channels cannot be in one session; nothing when they can.
[[nodiscard]] std::optional<std::string> sessionRefusal(const std::vector<SampleColumn>& columns);
/// A sigrok session, version 2, with an analog channel for each column. The channels have the same sample interval and
/// length. Nothing when there is not enough memory.
[[nodiscard]] std::optional<std::string> samplesSession(const std::vector<SampleColumn>& columns);

} // namespace sixtrace
