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

/// Walks a capture file as the reader does and names what is wrong with it, in the order of the file; nothing for a
/// sound one. At most kFaultLimit faults are named. It reads the file only, once.
[[nodiscard]] std::vector<CaptureFault> checkCapture(const QString& path);

inline constexpr std::size_t kFaultLimit = CaptureRecord::kFaultLimit;

} // namespace sixtrace
