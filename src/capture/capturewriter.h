// SPDX-License-Identifier: MIT
#pragma once

#include "capture/filelayout.h"

#include <QByteArray>

#include <vector>

namespace sixtrace {

/// A whole capture file. The number in the header is the count of blocks, and the length field of a block is the count
/// of its bytes after that field; no reader uses either. After the samples a block has zeros up to the end of its
/// slots, of which there are as many as screenPoints or as samples, whichever is more. A block without samples has one
/// slot more, because readers look for the next block after it.
[[nodiscard]] QByteArray captureBytes(const CaptureForm& form, const std::vector<CaptureBlock>& blocks);

} // namespace sixtrace
