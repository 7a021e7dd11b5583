// SPDX-License-Identifier: MIT
#pragma once

#include "capture/capturerecord.h"
#include "output/tableexport.h"

#include <string>

namespace sixtrace {

/// What a table for analysis has that the data table has not.
struct AnalysisWishes {
    bool time = false;  ///< a column time_s with index x interval; one before each channel where intervals differ
    bool volts = false; ///< volts at the probe's tip in place of millivolts at the instrument's input
};

/// The columns of csvTable() with time or volts. The record is that of the capture in the table.
[[nodiscard]] std::string analysisTable(const TableExport& table, const CaptureRecord& record, AnalysisWishes wishes);

} // namespace sixtrace
