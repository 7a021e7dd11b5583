// SPDX-License-Identifier: MIT
#pragma once

#include "capture/capturerecord.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sixtrace {

// The samples of a capture in files that other programs read: times in seconds, which are index x interval, and volts
// at the probe's tip. All samples that the file holds, in the order of their index.

/// A channel that is written.
struct SampleColumn {
    std::string_view label;
    const ChannelRecord& channel;
};

/// Comma-separated values: one time column where all channels share the interval, else one before each channel. Lines
/// end in LF; a channel's cells behind its last sample are empty.
[[nodiscard]] std::string samplesCsv(const std::vector<SampleColumn>& columns);

/// Arrays t_LABEL (64-bit reals), v_LABEL (32-bit reals) and the text `info`, as NumPy stores them in one archive.
/// Nothing where memory is short.
[[nodiscard]] std::optional<std::string> samplesNpz(const std::vector<SampleColumn>& columns, std::string_view info);

/// Why channels cannot share a session, in words; nothing where they can.
[[nodiscard]] std::optional<std::string> sessionRefusal(const std::vector<SampleColumn>& columns);
/// A sigrok session, version 2, with an analog channel for each column; they share interval and length.
[[nodiscard]] std::optional<std::string> samplesSession(const std::vector<SampleColumn>& columns);

} // namespace sixtrace
