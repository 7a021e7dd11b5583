// SPDX-License-Identifier: MIT
#pragma once

#include "capture/capturerecord.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace sixtrace {

/// Something wrong with a capture file, in words for people.
struct CaptureFault {
    std::int64_t offset = 0; ///< of the first byte concerned, counted from 0
    QString text;
};

/// Reads a capture file once and lists what is wrong with it, in the order of the file: at most kFaultLimit faults,
/// none for a sound file.
[[nodiscard]] std::vector<CaptureFault> checkCapture(const QString& path);

inline constexpr std::size_t kFaultLimit = CaptureRecord::kFaultLimit;

} // namespace sixtrace
