// SPDX-License-Identifier: MIT
#pragma once

#include "capture/filelayout.h"

#include <QByteArray>

#include <vector>

namespace sixtrace {

/// A whole capture file. The header's number is the count of blocks and a block's length field the count of its bytes
/// behind that field; no reader looks at either. Behind the samples a block is filled with zeros up to its slots, the
/// larger of screenPoints and sampleCount, and by one slot more when it holds no sample, which is where readers look
/// for the next block.
[[nodiscard]] QByteArray captureBytes(const CaptureForm& form, const std::vector<CaptureBlock>& blocks);

} // namespace sixtrace
