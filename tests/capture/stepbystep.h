// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <QByteArray>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>

namespace sixtrace::test {

/// A second reader of captures, to compare with: it reads one number of the file after the other, and knows nothing of
/// windows or speed. A number that the file does not hold completely is missing.
class StepByStep {
public:
    StepByStep(const QByteArray& bytes, publicM& model)
        : m_bytes(bytes)
        , m(model) {}

    void read() {
        m_at = 10;
        for (std::size_t c = 0; c < 6; ++c) {
            m.ChannelPresent[c] = 0;
            m.ProbeExp[c] = 0;
            m.ChannelXShift[c] = 0;
            m.SampleCount[c] = 0;
        }
        while (m_at < m_bytes.size() && block()) {
        }
    }

private:
    std::optional<std::uint64_t> bits(int size) {
        const std::int64_t at = m_at;
        m_at += size;
        if (at + size > m_bytes.size()) {
            return std::nullopt;
        }
        std::uint64_t value = 0;
        for (int i = 0; i < size; ++i) {
            const auto byte = static_cast<unsigned char>(m_bytes.at(static_cast<qsizetype>(at) + i));
            value |= std::uint64_t{byte} << (8 * i);
        }
        return value;
    }
    void int32(std::int32_t& target) {
        if (const auto value = bits(4)) {
            target = static_cast<std::int32_t>(*value);
        }
    }
    void int16(std::int16_t& target) {
        if (const auto value = bits(2)) {
            target = static_cast<std::int16_t>(*value);
        }
    }
    void real(float& target) {
        if (const auto value = bits(4)) {
            const auto raw = static_cast<std::uint32_t>(*value);
            std::memcpy(&target, &raw, 4);
        }
    }
    static void narrow(std::int16_t& target, std::int64_t value) {
        if (value >= -32768 && value <= 32767) {
            target = static_cast<std::int16_t>(value);
        }
    }

    bool block() {
        if (bits(1) != std::uint64_t{'C'} || bits(1) != std::uint64_t{'H'}) {
            return false;
        }
        const auto id = bits(1);
        const QByteArray ids("12ABCD");
        if (id && ids.contains(static_cast<char>(*id))) {
            m_c = static_cast<std::size_t>(ids.indexOf(static_cast<char>(*id)));
            m.ChannelPresent[m_c] = 1;
        }
        m_at += 4;
        int32(m.ScreenPoints[m_c]);
        int32(m.SampleCount[m_c]);
        int32(m.ScanPoint[m_c]);
        int32(m.TimeIndex[m_c]);
        if (const auto raw = bits(4)) {
            const std::int64_t level = 100 - std::int64_t{static_cast<std::int32_t>(*raw)};
            m.ZeroLevel[m_c] = level > 2147483647 ? m.ZeroLevel[m_c] : static_cast<std::int32_t>(level);
        }
        int32(m.VoltIndex[m_c]);
        if (m.FileKind == 1) {
            m.ProbeExp[m_c] = 0;
        } else {
            int16(m.ProbeExp[m_c]);
            m_at += 2;
        }
        real(m.SampleInterval[m_c]);
        real(m.Frequency[m_c]);
        real(m.Period[m_c]);
        real(m.VoltPerCount[m_c]);
        narrow(m.TimeIndexFile[m_c], m.TimeIndex[m_c]);
        narrow(m.VoltIndexFile[m_c], m.VoltIndex[m_c]);
        m.TimeIndexView[m_c] = m.TimeIndexFile[m_c];
        narrow(m.VoltIndexView[m_c], m.VoltIndexFile[m_c] - 1);
        samples();
        return true;
    }

    void samples() {
        const int channel = static_cast<int>(m_c);
        const std::int64_t first = m_at;
        const std::int64_t count = m.SampleCount[m_c];
        int16(m.SampleData(channel, 0));
        int least = m.SampleData(channel, 0);
        int greatest = least;
        // After the last row nothing is stored, so there is nothing to read.
        for (std::int64_t i = 1; i < std::min<std::int64_t>(count, kSampleRows); ++i) {
            m_at = first + 2 * i;
            int16(m.SampleData(channel, static_cast<int>(i)));
            least = std::min<int>(least, m.SampleData(channel, static_cast<int>(i)));
            greatest = std::max<int>(greatest, m.SampleData(channel, static_cast<int>(i)));
        }
        narrow(m.PeakToPeak[m_c], greatest - least);
        const std::int64_t last = first + 2 * std::max<std::int64_t>(count - 1, 0);
        const std::int64_t slots = m.ScreenPoints[m_c];
        m_at = last + (count >= slots ? 2 : 2 * (slots - count) + 2);
    }

    const QByteArray& m_bytes;
    publicM& m;
    std::int64_t m_at = 0;
    std::size_t m_c = 0;
};

} // namespace sixtrace::test
