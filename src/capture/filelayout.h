// SPDX-License-Identifier: MIT
#pragma once

#include "capture/channels.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
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
    std::string_view rule = {}; ///< what is said of others
};

/// How a value is stored. Every field is four bytes wide; a 16-bit value takes the lower half, the upper half means
/// nothing.
enum class Storage { Int32, Int16, Float };

enum class FieldId {
    ScreenPoints,
    SampleCount,
    ScanPoint,
    TimeIndex,
    ZeroLevel,
    VoltIndex,
    ProbeExp,
    SampleInterval,
    Frequency,
    Period,
    VoltPerCount,
};

struct Field {
    FieldId id;
    std::string_view name; ///< as the model has it
    Storage storage = Storage::Int32;
    Range range = {};
};

using Fields = std::span<const Field>;

/// The fields of a block after its start, in the order of the file; the samples follow. Captures with the tag "bin"
/// know no probe.
[[nodiscard]] Fields blockFields(int fileKind);
/// The order in which the older reader takes them.
[[nodiscard]] Fields olderBlockFields();

/// From the first sample of a block to the start of the next block, in bytes: the samples, the slots that hold filling
/// and, where there is no sample, one slot more. A count below 1 is read as one sample.
[[nodiscard]] std::int64_t samplesToNextBlock(std::int32_t sampleCount, std::int32_t screenPoints);

/// Hands the member of a field to `use`, of a record whose members bear the fields' names: the model, or what a file
/// says of one channel.
template<typename Record, typename Use>
void withMember(FieldId id, Record& record, const Use& use) {
    switch (id) {
    case FieldId::ScreenPoints:
        return use(record.ScreenPoints);
    case FieldId::SampleCount:
        return use(record.SampleCount);
    case FieldId::ScanPoint:
        return use(record.ScanPoint);
    case FieldId::TimeIndex:
        return use(record.TimeIndex);
    case FieldId::ZeroLevel:
        return use(record.ZeroLevel);
    case FieldId::VoltIndex:
        return use(record.VoltIndex);
    case FieldId::ProbeExp:
        return use(record.ProbeExp);
    case FieldId::SampleInterval:
        return use(record.SampleInterval);
    case FieldId::Frequency:
        return use(record.Frequency);
    case FieldId::Period:
        return use(record.Period);
    case FieldId::VoltPerCount:
        return use(record.VoltPerCount);
    }
}

} // namespace layout

} // namespace sixtrace
