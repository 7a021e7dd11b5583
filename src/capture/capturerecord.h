// SPDX-License-Identifier: MIT
#pragma once

#include "capture/channels.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sixtrace {

class ByteFile;

// The content of a capture file, without a model, a window or a desktop library, for programs that read thousands of
// files. A record depends on its file alone; a load, in contrast, keeps old values of the model where a damaged file
// has none.

/// Something wrong with a capture file, in words for people.
struct RecordFault {
    std::int64_t offset = 0; ///< of the first byte concerned, counted from 0
    std::string text;
};

/// One channel, with the names of the model's fields. The values are those of its last block; a field that no block
/// holds is 0.
struct ChannelRecord {
    bool present = false; ///< a block has the channel's own id
    std::int32_t ScreenPoints = 0;
    std::int32_t SampleCount = 0; ///< as the file says it
    std::int32_t ScanPoint = 0;
    std::int32_t TimeIndex = 0;
    std::int32_t ZeroLevel = 0; ///< 0 top, 100 middle, 200 bottom of the screen
    std::int32_t VoltIndex = 0; ///< counted from 1
    std::int16_t ProbeExp = 0;
    float SampleInterval = 0; ///< microseconds
    float Frequency = 0;      ///< hertz
    float Period = 0;         ///< microseconds
    float VoltPerCount = 0;   ///< millivolts at probe factor 1
    std::int16_t TimeIndexFile = 0;
    std::int16_t VoltIndexFile = 0;
    std::int16_t VoltIndexView = 0;
    std::int16_t PeakToPeak = 0; ///< counts, of the samples that the file holds
    /// The samples that the file holds, at most 10231 and not more than SampleCount: 16 bits each, little-endian. The
    /// memory is that of the ByteFile, or of `kept` in the record.
    std::span<const std::byte> samples;

    [[nodiscard]] std::size_t heldSamples() const { return samples.size() / 2; }
};

struct CaptureRecord {
    static constexpr std::size_t kFaultLimit = 50; ///< further faults are not listed

    std::int16_t FileKind = 0; ///< 0 where the file is no capture: the only fault says why
    PerChannel<ChannelRecord> channels{};
    std::vector<RecordFault> faults;
    PerChannel<std::vector<std::byte>> kept; ///< samples of a file that is too long to be kept in memory

    [[nodiscard]] bool isCapture() const { return FileKind != 0; }
    /// The three letters of its form, empty for none.
    [[nodiscard]] std::string_view form() const;
};

/// Reads an opened file: its blocks, found by position as SimpleWav finds them, and what is wrong with them, in the
/// order of the file. Costs at most one pass over the file, whatever its counts say.
void readRecord(ByteFile& file, CaptureRecord& record);

/// Opens and reads. A file that cannot be read has a fault that says so.
void readRecord(const std::string& path, ByteFile& file, CaptureRecord& record);

/// "ch1", "ch2", "A" ...
[[nodiscard]] std::string_view recordLabel(std::size_t channel);

/// Sample `i` of samples as a file holds them.
[[nodiscard]] inline int sampleAt(std::span<const std::byte> samples, std::size_t i) {
    if constexpr (std::endian::native == std::endian::little) { // a compiler turns this into wide loads
        std::int16_t value = 0;
        std::memcpy(&value, samples.data() + 2 * i, sizeof value);
        return value;
    }
    return static_cast<std::int16_t>(std::to_integer<unsigned>(samples[2 * i]) |
                                     std::to_integer<unsigned>(samples[2 * i + 1]) << 8);
}

} // namespace sixtrace
