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

/// Appends `"label":...` and all figures under their keys; null for a figure that does not exist.
void appendMeasuresJson(std::string& out, std::size_t channel, const ChannelMeasures& measures);

/// The header line "file,label,samples,...". It ends in CR LF, like the rows.
[[nodiscard]] std::string measuresCsvHead();
/// Appends a row. A figure that does not exist is an empty cell.
void appendMeasuresCsv(std::string& out, std::string_view file, std::size_t channel, const ChannelMeasures& measures);

/// Appends an aligned table for people. Each channel is a column, and the units are those of the window.
void appendMeasuresTable(std::string& out, const std::vector<LabelledMeasures>& channels);

} // namespace sixtrace::kqx
