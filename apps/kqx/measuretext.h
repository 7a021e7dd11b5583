// SPDX-License-Identifier: MIT
#pragma once

#include "capture/measure.h"

#include <string>
#include <vector>

namespace sixtrace::kqx {

struct LabelledMeasures {
    std::size_t channel;
    ChannelMeasures measures;
};

/// Appends `"label":...` and all figures under their keys; null for one that does not exist.
void appendMeasuresJson(std::string& out, std::size_t channel, const ChannelMeasures& measures);

/// "file,label,samples,..." and its line end, CR LF as all of the rows.
[[nodiscard]] std::string measuresCsvHead();
/// Appends a row. A figure that does not exist is an empty cell.
void appendMeasuresCsv(std::string& out, std::string_view file, std::size_t channel, const ChannelMeasures& measures);

/// Appends an aligned table for people, a column a channel, in the units that the window shows.
void appendMeasuresTable(std::string& out, const std::vector<LabelledMeasures>& channels);

} // namespace sixtrace::kqx
