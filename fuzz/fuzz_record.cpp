// SPDX-License-Identifier: MIT
// What kqx makes of a capture of any bytes without the model: measurements, and files for other programs.
#include "capture/capturerecord.h"
#include "capture/measure.h"
#include "capturebench.h"
#include "output/samplefiles.h"
#include "platform/files/bytefile.h"
#include "require.h"

#include <cmath>

namespace {

using namespace sixtrace;

void checkMeasures(const ChannelMeasures& measures, std::size_t samples) {
    require(measures[Measure::Samples] == static_cast<double>(samples));
    for (const double value : measures.values) {
        require(!std::isinf(value));
    }
    // A figure that does not exist is NaN, which compares as false.
    require(!(measures[Measure::Min] > measures[Measure::Max]) && !(measures[Measure::PeakToPeak] < 0));
    // It can exceed 100 % when the widths differ much: the mean width includes all pulses, the period only whole
    // cycles.
    require(std::isnan(measures[Measure::Duty]) || measures[Measure::Duty] >= 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ByteFile file;
    static CaptureRecord record;
    static Measuring measuring;
    file.openBytes(inputBytes(data, size));
    readRecord(file, record);
    const Sweep sweep = size % 2 == 0 ? Sweep::Fresh : Sweep::All;
    std::vector<SampleColumn> columns;
    for (std::size_t c = 0; c < record.channels.size(); ++c) {
        const ChannelRecord& channel = record.channels.at(c);
        checkMeasures(measuring.measure(channel, sweep), measuredSamples(channel, sweep));
        if (channel.present) {
            columns.push_back({recordLabel(c), channel});
        }
    }
    if (columns.empty()) {
        return 0;
    }
    require(samplesCsv(columns).ends_with('\n'));
    // Archives take far more time than the rest, so only one input in sixteen makes them.
    if (size % 16 == 0) {
        require(samplesNpz(columns, "{}").has_value());
        require(sessionRefusal(columns).has_value() || samplesSession(columns).has_value());
    }
    return 0;
}
