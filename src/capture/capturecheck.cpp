// SPDX-License-Identifier: MIT
#include "capture/capturecheck.h"

#include "capture/bytesource.h"
#include "capture/capturefile.h"
#include "capture/publicm.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>

namespace sixtrace {

namespace {

using Text = QString;

Text printable(std::string_view bytes) {
    Text text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += byte >= 0x20 && byte < 0x7F ? QString(QLatin1Char(c))
                                            : QStringLiteral("\\x%1").arg(byte, 2, 16, QLatin1Char('0'));
    }
    return text;
}

/// The walk over one file.
class Walk {
public:
    Walk(ByteSource& source, std::int64_t size)
        : m_source(source)
        , m_size(size) {}

    std::vector<CaptureFault> run() {
        if (header()) {
            while (m_at < m_size && m_faults.size() < kFaultLimit && block()) {
            }
        }
        return std::move(m_faults);
    }

private:
    void fault(std::int64_t offset, const Text& text) {
        if (m_faults.size() < kFaultLimit) {
            m_faults.push_back({offset, text});
        }
    }

    [[nodiscard]] std::string bytes(std::int64_t count) {
        const auto stretch = m_source.upTo(static_cast<double>(m_at) + 1, static_cast<std::size_t>(count));
        return {reinterpret_cast<const char*>(stretch.bytes), stretch.count};
    }

    bool header() {
        const std::string head = bytes(10);
        if (head.substr(0, 3) != "KQX") {
            fault(0, head.empty() ? QStringLiteral("the file is empty")
                                  : QStringLiteral("not a capture: it begins with \"%1\" instead of \"KQX\"")
                                        .arg(printable(head.substr(0, 3))));
            return false;
        }
        const CaptureForm* form = captureForm(std::string_view(head).substr(3, 3));
        if (form == nullptr) {
            fault(3, QStringLiteral("unknown version tag \"%1\"").arg(printable(std::string_view(head).substr(3, 3))));
            return false;
        }
        m_hasProbe = form->fileKind != 1;
        if (head.size() < 10) {
            fault(static_cast<std::int64_t>(head.size()), QStringLiteral("the file ends inside its header"));
            return false;
        }
        m_at = 10;
        return true;
    }

    template<typename T>
    std::optional<T> field(const char* name) {
        const auto value = m_source.number<T>(static_cast<double>(m_at) + 1);
        if (!value && !m_cut) {
            m_cut = true;
            fault(std::min(m_at, m_size),
                  QStringLiteral("%1: the file ends in the field %2").arg(m_label, QLatin1String(name)));
        }
        m_at += static_cast<std::int64_t>(sizeof(T));
        return value;
    }

    void outOfRange(std::int64_t offset, const char* name, std::int64_t value, const Text& rule) {
        fault(offset, QStringLiteral("%1: %2 is %3, %4").arg(m_label, QLatin1String(name)).arg(value).arg(rule));
    }

    bool startOfBlock() {
        const std::string start = bytes(3);
        if (m_at + 1 == m_size && start == std::string_view("\0", 1)) {
            return false; // a capture that came over USB ends in one zero byte more
        }
        if (start.substr(0, 2) != std::string_view("CH").substr(0, std::min<std::size_t>(2, start.size()))) {
            fault(m_at, QStringLiteral("%1 bytes behind the last channel are no channel block").arg(m_size - m_at));
            return false;
        }
        if (start.size() < 3) {
            fault(m_at, QStringLiteral("the file ends in the mark of a channel block"));
            return false;
        }
        const int channel = channelOfId(start[2]);
        if (channel < 0) {
            m_label = QStringLiteral("channel \"%1\"").arg(printable(std::string_view(start).substr(2)));
            fault(m_at + 2, QStringLiteral("%1: unknown channel id; its values land in %2").arg(m_label, m_channel));
        } else {
            m_label = channelName(channel);
            m_channel = m_label;
            bool& seen = m_seen.at(static_cast<std::size_t>(channel));
            if (seen) {
                fault(m_at, QStringLiteral("%1: a second block of this channel; it replaces the first").arg(m_label));
            }
            seen = true;
        }
        m_at += 3;
        return true;
    }

    bool block() {
        if (!startOfBlock()) {
            return false;
        }
        m_cut = false;
        static_cast<void>(field<std::int32_t>("length"));
        const std::int64_t slotsAt = m_at;
        const auto slots = field<std::int32_t>("ScreenPoints");
        const std::int64_t countAt = m_at;
        const auto count = field<std::int32_t>("SampleCount");
        static_cast<void>(field<std::int32_t>("ScanPoint"));
        const std::int64_t timeAt = m_at;
        const auto time = field<std::int32_t>("TimeIndex");
        const std::int64_t zeroAt = m_at;
        const auto zero = field<std::int32_t>("ZeroLevel");
        const std::int64_t voltAt = m_at;
        const auto volt = field<std::int32_t>("VoltIndex");
        if (m_hasProbe) {
            const std::int64_t probeAt = m_at;
            const auto probe = field<std::int16_t>("ProbeExp");
            m_at += 2;
            if (probe && (*probe < 0 || *probe > 3)) {
                outOfRange(probeAt, "ProbeExp", *probe, QStringLiteral("probes are 0 to 3"));
            }
        }
        for (const char* name : {"SampleInterval", "Frequency", "Period", "VoltPerCount"}) {
            const std::int64_t at = m_at;
            const auto value = field<float>(name);
            if (value && !std::isfinite(*value)) {
                fault(at, QStringLiteral("%1: %2 is not a number").arg(m_label, QLatin1String(name)));
            }
        }
        if (m_cut) {
            return false;
        }
        checkRange(slots, slotsAt, "ScreenPoints", 1, INT32_MAX, QStringLiteral("at least 1 is needed to draw"));
        checkRange(count, countAt, "SampleCount", 0, kSampleRows, QStringLiteral("a channel holds 0 to 10231 samples"));
        checkRange(time, timeAt, "TimeIndex", 0, kTimeBaseRows - 1, QStringLiteral("time bases are 0 to 27"));
        checkRange(zero, zeroAt, "ZeroLevel", -100, 100, QStringLiteral("the screen reaches from -100 to 100"));
        checkRange(volt, voltAt, "VoltIndex", 1, kVoltRows, QStringLiteral("volt ranges are 1 to 10"));
        return samples(*slots, *count);
    }

    void checkRange(const std::optional<std::int32_t>& value, std::int64_t offset, const char* name, std::int64_t least,
                    std::int64_t greatest, const Text& rule) {
        if (value && (*value < least || *value > greatest)) {
            outOfRange(offset, name, *value, rule);
        }
    }

    bool samples(std::int64_t slots, std::int64_t count) {
        // The reader looks for the next block behind the slots, and one slot further when there is no sample.
        const std::int64_t first = m_at;
        const std::int64_t read = std::max<std::int64_t>(count, 1);
        m_at += 2 * (read - 1) + (count >= slots ? 2 : 2 * (slots - count) + 2);
        const std::int64_t held = std::max<std::int64_t>(0, m_size - first) / 2;
        if (held < std::max<std::int64_t>(count, 0)) {
            fault(m_size, QStringLiteral("%1: the file ends behind sample %2 of %3").arg(m_label).arg(held).arg(count));
            return false;
        }
        const std::int64_t end = first + 2 * std::max<std::int64_t>({slots, count, 0});
        if (end > m_size) {
            fault(m_size, QStringLiteral("%1: the file ends %2 bytes before the end of the block's slots")
                              .arg(m_label)
                              .arg(end - m_size));
        }
        return true;
    }

    ByteSource& m_source;
    std::int64_t m_size;
    std::int64_t m_at = 0;
    bool m_hasProbe = true;
    bool m_cut = false;
    Text m_label;                    ///< of the block, as its faults name it
    Text m_channel = channelName(0); ///< takes the values of a block whose id is unknown
    std::array<bool, kChannels> m_seen{};
    std::vector<CaptureFault> m_faults;
};

} // namespace

std::vector<CaptureFault> checkCapture(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists()) {
        return {{0, QStringLiteral("there is no such file")}};
    }
    if (info.isDir()) {
        return {{0, QStringLiteral("this is a folder, not a capture file")}};
    }
    ByteSource source;
    if (!source.open(path)) {
        return {{0, info.isFile() ? QStringLiteral("the file cannot be read")
                                  : QStringLiteral("this is no ordinary file")}};
    }
    return Walk(source, info.size()).run();
}

} // namespace sixtrace
