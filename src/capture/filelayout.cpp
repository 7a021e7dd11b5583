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

constexpr std::array kWithProbe{&kScreenPoints, &kSampleCount,    &kScanPoint, &kTimeIndex, &kZeroLevel,   &kVoltIndex,
                                &kProbeExp,     &kSampleInterval, &kFrequency, &kPeriod,    &kVoltPerCount};
constexpr std::array kWithoutProbe{&kScreenPoints, &kSampleCount,    &kScanPoint, &kTimeIndex, &kZeroLevel,
                                   &kVoltIndex,    &kSampleInterval, &kFrequency, &kPeriod,    &kVoltPerCount};
constexpr std::array kOlder{&kScreenPoints, &kSampleCount, &kScanPoint,      &kTimeIndex, &kFrequency,
                            &kZeroLevel,    &kVoltIndex,   &kSampleInterval, &kPeriod,    &kVoltPerCount};

} // namespace

Fields blockFields(int fileKind) {
    return fileKind == 1 ? Fields(kWithoutProbe) : Fields(kWithProbe);
}

Fields olderBlockFields() {
    return kOlder;
}

double samplesToNextBlock(std::int32_t sampleCount, std::int32_t screenPoints) {
    const double count = sampleCount;
    const double slots = screenPoints;
    const double lastRead = count > 1 ? 2 * (count - 1) : 0;
    return lastRead + (count >= slots ? 2 : 2 * (slots - count) + 2);
}

} // namespace layout

} // namespace sixtrace
