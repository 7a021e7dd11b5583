// SPDX-License-Identifier: MIT
#pragma once

#include "capture/capturerecord.h"
#include "output/tableexport.h"

#include <string>

namespace sixtrace {

/// What a table for analysis has and the data table has not.
struct AnalysisWishes {
    bool time = false;  ///< a column time_s of index x interval; when the intervals differ, one before each channel
    bool volts = false; ///< volts at the probe's tip instead of millivolts at the instrument's input
};

/// The text of csvTable(), with times or volts. The record is that of the capture in the table.
[[nodiscard]] std::string analysisTable(const TableExport& table, const CaptureRecord& record, AnalysisWishes wishes);

} // namespace sixtrace
