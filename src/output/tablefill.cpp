// SPDX-License-Identifier: MIT
#include "output/tablefill.h"

#include "platform/text/numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sixtrace {

bool TableFill::step() {
    bool more = false;
    if (m_phase == Phase::Start) {
        m_phase = Phase::Rows;
        more = writeHeads() && writeFirstRows() && m_rowsWritten < m_samples;
    } else if (m_phase == Phase::Rows) {
        more = writeRow(m_rowsWritten) && m_rowsWritten < m_samples;
    }
    if (!more) {
        m_phase = Phase::Finished;
    }
    return more;
}

bool TableFill::writeHeads() {
    // The heads are written from right to left. A factor that is not finite ends the fill, so that the heads to the
    // left of it stay empty.
    for (int channel = kChannels - 1; channel >= 0; --channel) {
        const double factor = probeFactor(m_model.ProbeExp[channel]);
        if (!std::isfinite(factor)) {
            return false;
        }
        const QString head = channelName(channel) + QStringLiteral(" / ") + generalText(factor, NumberMarks{});
        m_cells.setHead(TableCells::columnOfChannel(channel), head.toStdString());
    }
    return true;
}

bool TableFill::writeFirstRows() {
    const std::int32_t longest = *std::max_element(m_model.SampleCount.begin(), m_model.SampleCount.end());
    // The count of rows is one more, which would overflow for the greatest number.
    if (longest < 0 || longest == std::numeric_limits<std::int32_t>::max()) {
        return false;
    }
    m_cells.setRows(std::min(longest, kSampleRows) + 1);
    m_samples = m_cells.Rows() - 1;
    m_rowsWritten = std::min(m_samples, kRowsAtOnce);
    for (int row = 1; row <= m_rowsWritten; ++row) {
        writeRowNumber(row);
    }
    for (int channel = 0; channel < kChannels; ++channel) {
        const int count =
            m_model.ChannelPresent[channel] == 1 ? std::min(m_model.SampleCount[channel], kRowsAtOnce) : 0;
        for (int sample = 0; sample < count; ++sample) {
            if (!writeValue(channel, sample)) {
                return false;
            }
        }
    }
    return true;
}

bool TableFill::writeRow(int sample) {
    m_rowsWritten = TableCells::rowOfSample(sample);
    writeRowNumber(m_rowsWritten);
    for (int channel = 0; channel < kChannels; ++channel) {
        const bool held = m_model.ChannelPresent[channel] == 1 && sample < m_model.SampleCount[channel];
        if (held && !writeValue(channel, sample)) {
            return false;
        }
    }
    return true;
}

void TableFill::writeRowNumber(int row) {
    m_cells.setCell(row, 0, rowNumberText(static_cast<std::uint32_t>(row)));
}

bool TableFill::writeValue(int channel, int sample) {
    const float value = static_cast<float>(m_model.SampleData(channel, sample)) * m_model.VoltPerCount[channel];
    if (!std::isfinite(value)) {
        return false;
    }
    m_cells.setCell(TableCells::rowOfSample(sample), TableCells::columnOfChannel(channel), numberText(value));
    return true;
}

} // namespace sixtrace
