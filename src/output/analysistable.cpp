// SPDX-License-Identifier: MIT
#include "output/tableexport.h"

#include "capture/capturerecord.h"
#include "capture/measure.h"
#include "capture/numbertexts.h"

#include <algorithm>
#include <cmath>

namespace sixtrace {

namespace {

/// One column of the file.
struct Column {
    enum class Kind { Cells, Time, Volts } kind;
    int cells;                    ///< column of the table
    const ChannelRecord* channel; ///< null for the sequence number
    double factor = 1;            ///< of Time and Volts
};

bool isThere(const ChannelRecord& channel) {
    return channel.present && channel.heldSamples() > 0;
}

const ChannelRecord& channelAt(const CaptureRecord& record, int col) {
    return record.channels.at(TableCells::channelOfColumn(col));
}

/// The longest channel of the columns when all of them have the same sample interval; null when their intervals differ,
/// and when there is no channel.
const ChannelRecord* sharedClock(const std::vector<int>& columns, const CaptureRecord& record) {
    const ChannelRecord* clock = nullptr;
    for (const int col : columns) {
        if (col == 0 || !isThere(channelAt(record, col))) {
            continue;
        }
        const ChannelRecord& channel = channelAt(record, col);
        if (clock != nullptr && clock->SampleInterval != channel.SampleInterval) {
            return nullptr;
        }
        if (clock == nullptr || clock->heldSamples() < channel.heldSamples()) {
            clock = &channel;
        }
    }
    return clock;
}

std::vector<Column> columnsOf(const TableExport& table, const CaptureRecord& record, AnalysisWishes wishes,
                              const ChannelRecord* clock) {
    std::vector<Column> columns;
    const auto addClock = [&] {
        if (wishes.time && clock != nullptr) {
            columns.push_back({Column::Kind::Time, 0, clock, secondsPerSample(*clock)});
        }
    };
    const bool sequenceFirst = !table.order.empty() && table.order.front() == 0;
    if (!sequenceFirst) {
        addClock();
    }
    for (const int col : table.order) {
        if (col == 0) {
            columns.push_back({Column::Kind::Cells, col, nullptr});
            if (sequenceFirst) {
                addClock();
            }
            continue;
        }
        const ChannelRecord& channel = channelAt(record, col);
        if (wishes.time && clock == nullptr) {
            columns.push_back({Column::Kind::Time, col, &channel, secondsPerSample(channel)});
        }
        columns.push_back(
            {wishes.volts ? Column::Kind::Volts : Column::Kind::Cells, col, &channel, voltsPerCount(channel)});
    }
    return columns;
}

std::string headOf(const Column& column, const TableCells& cells) {
    if (column.kind == Column::Kind::Cells) {
        return column.cells == 0 ? "sequence" : cells.head(column.cells);
    }
    if (column.kind == Column::Kind::Time && column.cells == 0) {
        return "time_s";
    }
    const std::string label(kChannelNames.at(TableCells::channelOfColumn(column.cells)));
    return column.kind == Column::Kind::Time ? "time_" + label + "_s" : label + "_v";
}

} // namespace

std::string analysisTable(const TableExport& table, const CaptureRecord& record, AnalysisWishes wishes) {
    const ChannelRecord* const clock = sharedClock(table.order, record);
    const std::vector<Column> columns = columnsOf(table, record, wishes, clock);
    std::string text;
    for (const Column& column : columns) {
        text += headOf(column, table.cells);
        text += &column == &columns.back() ? '\n' : ',';
    }
    for (int row = 1; row < table.cells.Rows(); ++row) {
        const auto sample = static_cast<std::size_t>(TableCells::sampleOfRow(row));
        for (const Column& column : columns) {
            const bool held =
                column.channel != nullptr && isThere(*column.channel) && sample < column.channel->heldSamples();
            if (column.kind == Column::Kind::Cells) {
                text += table.cells.cell(row, column.cells).view();
            } else if (held && column.kind == Column::Kind::Time) {
                appendNumber(text, static_cast<double>(sample) * column.factor);
            } else if (held) {
                appendNumber(text, sampleAt(column.channel->samples, sample) * column.factor);
            }
            text += &column == &columns.back() ? '\n' : ',';
        }
    }
    return text;
}

} // namespace sixtrace
