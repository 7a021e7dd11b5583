// SPDX-License-Identifier: MIT
#pragma once

#include "output/tableexport.h"
#include "output/tablefill.h"
#include "support/strings.h"

#include <memory>
#include <vector>

namespace sixtrace::test {

/// Gives a channel of the model samples, as a load would.
inline void hold(publicM& model, int channel, float voltPerCount, const std::vector<std::int16_t>& samples) {
    model.ChannelPresent[channel] = 1;
    model.VoltPerCount[channel] = voltPerCount;
    model.SampleCount[channel] = static_cast<std::int32_t>(samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        model.SampleData(channel, static_cast<int>(i)) = samples[i];
    }
}

/// Samples 0, step, 2 step ...
inline std::vector<std::int16_t> ramp(int count, int step) {
    std::vector<std::int16_t> samples;
    samples.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        samples.push_back(static_cast<std::int16_t>(i * step));
    }
    return samples;
}

inline void fillWhole(TableCells& cells, const publicM& model) {
    TableFill fill(cells, model);
    while (fill.step()) {
    }
}

/// A model and its table.
struct Table {
    std::unique_ptr<publicM> model = std::make_unique<publicM>();
    TableCells cells{u'.'};

    void fill() { fillWhole(cells, *model); }
    [[nodiscard]] QString at(int row, int col) const { return cells.TextMatrix(row, col); }
};

} // namespace sixtrace::test
