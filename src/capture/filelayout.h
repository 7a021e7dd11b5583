// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

namespace sixtrace {

/// What a version tag of a capture file stands for.
struct CaptureForm {
    std::string_view tag;       ///< three characters
    std::int16_t fileKind;      ///< FileKind
    std::string_view modelName; ///< of the instrument
    TimeBaseFamily family;
};

/// The form of a tag, or null for a tag that the program does not know.
[[nodiscard]] const CaptureForm* captureForm(std::string_view tag);
/// All forms in the order of their FileKind, 1 to 6.
[[nodiscard]] const std::array<CaptureForm, 6>& captureForms();

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

/// The byte layout of a capture file: a header, then channel blocks up to the end of the file. Numbers are
/// little-endian, integers two's complement, floats IEEE 754 single precision. Readers, checker and writer all work
/// from these tables.
namespace layout {

inline constexpr std::string_view kMagic = "KQX";
inline constexpr std::size_t kTagSize = 3;
inline constexpr std::size_t kHeaderSize = 10; ///< magic, tag and a number of four bytes that nobody looks at
inline constexpr std::string_view kBlockMark = "CH";
/// Mark, id and the four bytes of the length, which nobody looks at: positions follow from the two counts.
inline constexpr std::size_t kBlockStart = 7;
inline constexpr std::size_t kFieldSize = 4; ///< of every field
inline constexpr std::size_t kSampleSize = 2;

/// The values of a field that a sound capture has.
struct Range {
    std::int64_t least = INT32_MIN;
    std::int64_t greatest = INT32_MAX;
    std::u16string_view rule = {}; ///< what is said of others
};

/// Where a field's value stands in the model, and where in a block to be written; the type tells how it is stored. A
/// 16-bit value takes the lower half of its four bytes, the upper half means nothing.
template<typename T>
struct Places {
    PerChannel<T> publicM::*model;
    T CaptureBlock::*block;
};

struct Field {
    std::string_view name; ///< as the model has it
    std::variant<Places<std::int32_t>, Places<std::int16_t>, Places<float>> places;
    Range range = {};
};

inline constexpr Field kScreenPoints{"ScreenPoints",
                                     Places<std::int32_t>{&publicM::ScreenPoints, &CaptureBlock::screenPoints},
                                     {1, INT32_MAX, u"at least 1 is needed to draw"}};
inline constexpr Field kSampleCount{"SampleCount",
                                    Places<std::int32_t>{&publicM::SampleCount, &CaptureBlock::sampleCount},
                                    {0, kSampleRows, u"a channel holds 0 to 10231 samples"}};
inline constexpr Field kScanPoint{"ScanPoint", Places<std::int32_t>{&publicM::ScanPoint, &CaptureBlock::scanPoint}};
inline constexpr Field kTimeIndex{"TimeIndex",
                                  Places<std::int32_t>{&publicM::TimeIndex, &CaptureBlock::timeIndex},
                                  {0, kTimeBaseRows - 1, u"time bases are 0 to 27"}};
inline constexpr Field kZeroLevel{"ZeroLevel",
                                  Places<std::int32_t>{&publicM::ZeroLevel, &CaptureBlock::zeroLevel},
                                  {-100, 100, u"the screen reaches from -100 to 100"}};
inline constexpr Field kVoltIndex{"VoltIndex",
                                  Places<std::int32_t>{&publicM::VoltIndex, &CaptureBlock::voltIndex},
                                  {1, kVoltRows, u"volt ranges are 1 to 10"}};
inline constexpr Field kProbeExp{
    "ProbeExp", Places<std::int16_t>{&publicM::ProbeExp, &CaptureBlock::probeExp}, {0, 3, u"probes are 0 to 3"}};
inline constexpr Field kSampleInterval{"SampleInterval",
                                       Places<float>{&publicM::SampleInterval, &CaptureBlock::sampleInterval}};
inline constexpr Field kFrequency{"Frequency", Places<float>{&publicM::Frequency, &CaptureBlock::frequency}};
inline constexpr Field kPeriod{"Period", Places<float>{&publicM::Period, &CaptureBlock::period}};
inline constexpr Field kVoltPerCount{"VoltPerCount",
                                     Places<float>{&publicM::VoltPerCount, &CaptureBlock::voltPerCount}};

using Fields = std::span<const Field* const>;

/// The fields of a block after its start, in the order of the file; the samples follow. Captures with the tag "bin"
/// know no probe.
[[nodiscard]] Fields blockFields(int fileKind);
/// The order in which the older reader takes them.
[[nodiscard]] Fields olderBlockFields();

/// From the first sample of a block to the start of the next block, in bytes: the samples, the slots that hold filling
/// and, where there is no sample, one slot more. A count below 1 is read as one sample.
[[nodiscard]] double samplesToNextBlock(std::int32_t sampleCount, std::int32_t screenPoints);

} // namespace layout

} // namespace sixtrace
