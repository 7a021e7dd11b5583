// SPDX-License-Identifier: MIT
#pragma once

#include "capture/capturefile.h"

#include <QByteArray>

#include <cstdint>
#include <vector>

namespace sixtrace {

/// One channel block as it goes into a file, fields in the file's own sense.
struct CaptureBlock {
    char id = '1'; ///< '1', '2', 'A' ... 'D'; others are written as they are
    std::int32_t screenPoints = 0;
    std::int32_t sampleCount = 0; ///< usually samples.size()
    std::int32_t scanPoint = 0;
    std::int32_t timeIndex = 0;
    std::int32_t zeroLevel = 0; ///< -100 bottom of the screen to 100 top
    std::int32_t voltIndex = 1; ///< counted from 1
    std::int16_t probeExp = 0;  ///< not written for the tag "bin"
    float sampleInterval = 0;   ///< microseconds
    float frequency = 0;        ///< hertz
    float period = 0;           ///< microseconds
    float voltPerCount = 0;     ///< millivolts
    std::vector<std::int16_t> samples;
};

/// A whole capture file. The header's number is the count of blocks and a block's length field the count of its bytes
/// behind that field; no reader looks at either. Behind the samples a block is filled with zeros up to its slots, the
/// larger of screenPoints and sampleCount, and by one slot more when it holds no sample, which is where readers look
/// for the next block.
[[nodiscard]] QByteArray captureBytes(const CaptureForm& form, const std::vector<CaptureBlock>& blocks);

} // namespace sixtrace
