// SPDX-License-Identifier: MIT
#include "capture/filelayout.h"

#include <algorithm>

namespace sixtrace {

namespace {

constexpr std::array<CaptureForm, 6> kForms{{
    {"bin", 1, "VRT3310L", TimeBaseFamily::Of25},
    {"V01", 2, "ZMK 3310R", TimeBaseFamily::Of25},
    {"W01", 3, "ZMK 3470R", TimeBaseFamily::Of20},
    {"V11", 4, "VRT3310L", TimeBaseFamily::Of25},
    {"W11", 5, "VRT3470L", TimeBaseFamily::Of20},
    {"V10", 6, "VRT3310L-T", TimeBaseFamily::Of20},
}};

} // namespace

const std::array<CaptureForm, 6>& captureForms() {
    return kForms;
}

const CaptureForm* captureForm(std::string_view tag) {
    const auto form =
        std::find_if(kForms.begin(), kForms.end(), [tag](const CaptureForm& entry) { return entry.tag == tag; });
    return form == kForms.end() ? nullptr : form;
}

namespace layout {

namespace {

constexpr Field kScreenPoints{
    FieldId::ScreenPoints, "ScreenPoints", Storage::Int32, {1, INT32_MAX, "at least 1 is needed to draw"}};
constexpr Field kSampleCount{
    FieldId::SampleCount, "SampleCount", Storage::Int32, {0, kSampleRows, "a channel holds 0 to 10231 samples"}};
constexpr Field kScanPoint{FieldId::ScanPoint, "ScanPoint"};
constexpr Field kTimeIndex{
    FieldId::TimeIndex, "TimeIndex", Storage::Int32, {0, kTimeBaseRows - 1, "time bases are 0 to 27"}};
constexpr Field kZeroLevel{
    FieldId::ZeroLevel, "ZeroLevel", Storage::Int32, {-100, 100, "the screen reaches from -100 to 100"}};
constexpr Field kVoltIndex{FieldId::VoltIndex, "VoltIndex", Storage::Int32, {1, kVoltRows, "volt ranges are 1 to 10"}};
constexpr Field kProbeExp{FieldId::ProbeExp, "ProbeExp", Storage::Int16, {0, 3, "probes are 0 to 3"}};
constexpr Field kSampleInterval{FieldId::SampleInterval, "SampleInterval", Storage::Float};
constexpr Field kFrequency{FieldId::Frequency, "Frequency", Storage::Float};
constexpr Field kPeriod{FieldId::Period, "Period", Storage::Float};
constexpr Field kVoltPerCount{FieldId::VoltPerCount, "VoltPerCount", Storage::Float};

constexpr std::array kWithProbe{kScreenPoints, kSampleCount,    kScanPoint, kTimeIndex, kZeroLevel,   kVoltIndex,
                                kProbeExp,     kSampleInterval, kFrequency, kPeriod,    kVoltPerCount};
constexpr std::array kWithoutProbe{kScreenPoints, kSampleCount,    kScanPoint, kTimeIndex, kZeroLevel,
                                   kVoltIndex,    kSampleInterval, kFrequency, kPeriod,    kVoltPerCount};
constexpr std::array kOlder{kScreenPoints, kSampleCount, kScanPoint,      kTimeIndex, kFrequency,
                            kZeroLevel,    kVoltIndex,   kSampleInterval, kPeriod,    kVoltPerCount};

} // namespace

Fields blockFields(int fileKind) {
    return fileKind == 1 ? Fields(kWithoutProbe) : Fields(kWithProbe);
}

Fields olderBlockFields() {
    return kOlder;
}

std::int64_t samplesToNextBlock(std::int32_t sampleCount, std::int32_t screenPoints) {
    const std::int64_t count = sampleCount;
    const std::int64_t lastRead = std::max<std::int64_t>(count - 1, 0);
    const std::int64_t filling = std::max<std::int64_t>(screenPoints - count, 0);
    return static_cast<std::int64_t>(kSampleSize) * (lastRead + 1 + filling);
}

} // namespace layout

} // namespace sixtrace
