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
    // From the right to the left: a factor beyond all numbers leaves the heads on its left unwritten.
    for (int channel = kChannels - 1; channel >= 0; --channel) {
        const double factor = probeFactor(m_model.ProbeExp[static_cast<std::size_t>(channel)]);
        if (!std::isfinite(factor)) {
            return false;
        }
        const QString head = channelName(channel) + QStringLiteral(" / ") + generalText(factor, NumberMarks{});
        m_cells.setHead(channel + 1, head.toStdString());
    }
    return true;
}

bool TableFill::writeFirstRows() {
    const std::int32_t longest = *std::max_element(m_model.SampleCount.begin(), m_model.SampleCount.end());
    // A count below none, or one whose rows cannot be numbered, is no count of rows.
    if (longest < 0 || longest == std::numeric_limits<std::int32_t>::max()) {
        return false;
    }
    m_cells.setRows(std::min(longest, kSampleRows) + 1);
    m_samples = m_cells.Rows() - 1;
    m_rowsWritten = std::min(m_samples, kRowsAtOnce);
    for (int row = 1; row <= m_rowsWritten; ++row) {
        m_cells.setCell(row, 0, rowNumberText(static_cast<std::uint32_t>(row)));
    }
    for (int channel = 0; channel < kChannels; ++channel) {
        const auto c = static_cast<std::size_t>(channel);
        const int count = m_model.ChannelPresent[c] == 1 ? std::min(m_model.SampleCount[c], kRowsAtOnce) : 0;
        for (int sample = 0; sample < count; ++sample) {
            if (!writeValue(channel, sample)) {
                return false;
            }
        }
    }
    return true;
}

bool TableFill::writeRow(int sample) {
    m_cells.setCell(sample + 1, 0, rowNumberText(static_cast<std::uint32_t>(sample) + 1));
    m_rowsWritten = sample + 1;
    for (int channel = 0; channel < kChannels; ++channel) {
        const auto c = static_cast<std::size_t>(channel);
        if (m_model.ChannelPresent[c] == 1 && sample < m_model.SampleCount[c] && !writeValue(channel, sample)) {
            return false;
        }
    }
    return true;
}

bool TableFill::writeValue(int channel, int sample) {
    const float value = static_cast<float>(m_model.SampleData(channel, sample)) *
                        m_model.VoltPerCount[static_cast<std::size_t>(channel)];
    if (!std::isfinite(value)) {
        return false;
    }
    m_cells.setCell(sample + 1, channel + 1, numberText(value));
    return true;
}

} // namespace sixtrace
