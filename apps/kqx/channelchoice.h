// SPDX-License-Identifier: MIT
#pragma once

#include "arguments.h"

#include "capture/capturerecord.h"

#include <array>
#include <optional>

namespace sixtrace::kqx {

/// Which channels a command works on.
using ChannelChoice = std::array<bool, kChannels>;

/// The channels of --channels, all of them without it. Nothing for a wrong list, once a sentence has said so.
[[nodiscard]] std::optional<ChannelChoice> channelsOf(const Arguments& arguments);

} // namespace sixtrace::kqx
