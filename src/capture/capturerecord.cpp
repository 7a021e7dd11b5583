// SPDX-License-Identifier: MIT
#include "capture/capturerecord.h"

#include "capture/samplespread.h"
#include "platform/bytefile.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>

namespace sixtrace {

namespace {

constexpr std::array<std::string_view, 6> kTags{"bin", "V01", "W01", "V11", "W11", "V10"};
constexpr std::array<std::string_view, CaptureRecord::kChannels> kLabels{"ch1", "ch2", "A", "B", "C", "D"};
constexpr std::string_view kIds = "12ABCD";
constexpr std::int64_t kSampleRows = 10231; ///< samples that a channel can hold
constexpr std::int64_t kTimeBaseRows = 28;
constexpr std::int64_t kVoltRows = 10;
constexpr std::int64_t kHeader = 10;

std::string printable(std::string_view bytes) {
    static constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte < 0x7F) {
            text += c;
        } else {
            text += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 0xFU]};
        }
    }
    return text;
}

template<typename T>
T decoded(const std::byte* bytes) {
    std::array<std::byte, sizeof(T)> raw{};
    std::memcpy(raw.data(), bytes, sizeof(T));
    if constexpr (std::endian::native == std::endian::big) {
        std::reverse(raw.begin(), raw.end());
    }
    return std::bit_cast<T>(raw);
}

template<typename To>
void narrow(To& target, std::int64_t value) {
    if (value >= std::numeric_limits<To>::min() && value <= std::numeric_limits<To>::max()) {
        target = static_cast<To>(value);
    }
}

std::int64_t spreadOf(std::span<const std::byte> samples) {
    if (samples.size() < 2) {
        return 0;
    }
    const SampleExtremes extremes = extremesOf(samples.data(), samples.size() / 2);
    return std::int64_t{extremes.greatest} - extremes.least;
}

/// The walk over one file.
class Walk {
public:
    Walk(ByteFile& file, CaptureRecord& record)
        : m_file(file)
        , m_record(record)
        , m_size(file.size()) {}

    void run() {
        if (header()) {
            m_at = kHeader;
            while (m_at < m_size && block()) {
            }
        }
    }

private:
    [[nodiscard]] std::string_view text(std::int64_t offset, std::size_t count) {
        const auto bytes = m_file.stretch(offset, count);
        return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    }

    /// Words are put together only for a fault that there is room for.
    template<typename Words>
    void fault(std::int64_t offset, const Words& words) {
        if (m_record.faults.size() < CaptureRecord::kFaultLimit) {
            m_record.faults.push_back({offset, words()});
        }
    }

    bool header() {
        const std::string head(text(0, kHeader));
        if (head.substr(0, 3) != "KQX") {
            fault(0, [&] {
                return head.empty() ? std::string("the file is empty")
                                    : "not a capture: it begins with \"" + printable(head.substr(0, 3)) +
                                          "\" instead of \"KQX\"";
            });
            return false;
        }
        const auto tag = std::find(kTags.begin(), kTags.end(), head.substr(3, 3));
        if (tag == kTags.end()) {
            fault(3, [&] { return "unknown version tag \"" + printable(head.substr(3, 3)) + '"'; });
            return false;
        }
        m_record.FileKind = static_cast<std::int16_t>(tag - kTags.begin() + 1);
        if (head.size() < kHeader) {
            fault(static_cast<std::int64_t>(head.size()),
                  [] { return std::string("the file ends inside its header"); });
            return false;
        }
        return true;
    }

    template<typename T>
    std::optional<T> field(const char* name) {
        const auto bytes = m_file.stretch(m_at, sizeof(T));
        const bool whole = bytes.size() == sizeof(T);
        if (!whole && !m_cut) {
            m_cut = true;
            fault(std::min(m_at, m_size), [&] { return m_label + ": the file ends in the field " + name; });
        }
        m_at += static_cast<std::int64_t>(sizeof(T));
        return whole ? std::optional<T>(decoded<T>(bytes.data())) : std::nullopt;
    }

    /// Which values of a field are sound, and how that is said.
    struct Range {
        std::int64_t least;
        std::int64_t greatest;
        const char* rule;
    };

    template<typename T>
    void ranged(T& target, const char* name, const Range& range) {
        const std::int64_t at = m_at;
        const auto value = field<T>(name);
        if (!value) {
            return;
        }
        target = *value;
        if (*value < range.least || *value > range.greatest) {
            fault(at, [&] { return m_label + ": " + name + " is " + std::to_string(*value) + ", " + range.rule; });
        }
    }

    void real(float& target, const char* name) {
        const std::int64_t at = m_at;
        if (const auto value = field<float>(name)) {
            target = *value;
            if (!std::isfinite(*value)) {
                fault(at, [&] { return m_label + ": " + name + " is not a number"; });
            }
        }
    }

    bool startOfBlock() {
        const std::string start(text(m_at, 3));
        if (m_at + 1 == m_size && start == std::string_view("\0", 1)) {
            return false; // a capture that came over USB ends in one zero byte more
        }
        if (!std::string_view("CH").starts_with(start.substr(0, 2))) {
            fault(m_at, [&] {
                return std::to_string(m_size - m_at) + " bytes behind the last channel are no channel block";
            });
            return false;
        }
        if (start.size() < 3) {
            fault(m_at, [] { return std::string("the file ends in the mark of a channel block"); });
            return false;
        }
        const auto id = kIds.find(start[2]);
        if (id == std::string_view::npos) {
            m_label = "channel \"" + printable(start.substr(2)) + '"';
            fault(m_at + 2, [&] {
                return m_label + ": unknown channel id; its values land in " + std::string(kLabels.at(m_channel));
            });
        } else {
            m_channel = id;
            m_label = kLabels.at(id);
            bool& seen = m_record.channels.at(id).present;
            if (seen) {
                fault(m_at, [&] { return m_label + ": a second block of this channel; it replaces the first"; });
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
        ChannelRecord& channel = m_record.channels.at(m_channel);
        static constexpr std::int64_t kGreatest = std::numeric_limits<std::int32_t>::max();
        static constexpr Range kAny{-kGreatest - 1, kGreatest, ""};
        m_cut = false;
        static_cast<void>(field<std::int32_t>("length"));
        ranged(channel.ScreenPoints, "ScreenPoints", {1, kGreatest, "at least 1 is needed to draw"});
        ranged(channel.SampleCount, "SampleCount", {0, kSampleRows, "a channel holds 0 to 10231 samples"});
        ranged(channel.ScanPoint, "ScanPoint", kAny);
        ranged(channel.TimeIndex, "TimeIndex", {0, kTimeBaseRows - 1, "time bases are 0 to 27"});
        std::int32_t level = 0;
        const bool leveled = m_at + 4 <= m_size;
        ranged(level, "ZeroLevel", {-100, 100, "the screen reaches from -100 to 100"});
        if (leveled) {
            narrow(channel.ZeroLevel, std::int64_t{100} - level);
        }
        ranged(channel.VoltIndex, "VoltIndex", {1, kVoltRows, "volt ranges are 1 to 10"});
        if (m_record.FileKind == 1) {
            channel.ProbeExp = 0;
        } else {
            ranged(channel.ProbeExp, "ProbeExp", {0, 3, "probes are 0 to 3"});
            m_at += 2; // the field is four bytes wide
        }
        real(channel.SampleInterval, "SampleInterval");
        real(channel.Frequency, "Frequency");
        real(channel.Period, "Period");
        real(channel.VoltPerCount, "VoltPerCount");
        narrow(channel.TimeIndexFile, channel.TimeIndex);
        narrow(channel.VoltIndexFile, channel.VoltIndex);
        narrow(channel.VoltIndexView, channel.VoltIndexFile - 1);
        channel.samples = {};
        return !m_cut && samples(channel);
    }

    bool samples(ChannelRecord& channel) {
        const std::int64_t first = m_at;
        const std::int64_t count = channel.SampleCount;
        const std::int64_t slots = channel.ScreenPoints;
        const std::int64_t rows = std::clamp<std::int64_t>(count, 0, kSampleRows);
        channel.samples = m_file.stretch(first, static_cast<std::size_t>(2 * rows));
        channel.samples = channel.samples.first(channel.samples.size() / 2 * 2);
        if (!m_file.isResident()) {
            auto& kept = m_record.kept.at(m_channel);
            kept.assign(channel.samples.begin(), channel.samples.end());
            channel.samples = kept;
        }
        narrow(channel.PeakToPeak, spreadOf(channel.samples));

        // The next block is looked for behind the slots, and one slot further where there is no sample.
        m_at += 2 * (std::max<std::int64_t>(count, 1) - 1) + 2 + 2 * std::max<std::int64_t>(slots - count, 0);
        const std::int64_t held = std::max<std::int64_t>(0, m_size - first) / 2;
        if (held < count) {
            fault(m_size, [&] {
                return m_label + ": the file ends behind sample " + std::to_string(held) + " of " +
                       std::to_string(count);
            });
            return false;
        }
        const std::int64_t end = first + 2 * std::max<std::int64_t>({slots, count, 0});
        if (end > m_size) {
            fault(m_size, [&] {
                return m_label + ": the file ends " + std::to_string(end - m_size) +
                       " bytes before the end of the block's slots";
            });
        }
        return true;
    }

    ByteFile& m_file;
    CaptureRecord& m_record;
    std::int64_t m_size;
    std::int64_t m_at = 0;
    std::size_t m_channel = 0; ///< takes the values of a block whose id is unknown
    std::string m_label;       ///< of the block, as its faults name it
    bool m_cut = false;
};

} // namespace

std::string_view CaptureRecord::form() const {
    return isCapture() ? kTags.at(static_cast<std::size_t>(FileKind) - 1) : std::string_view();
}

std::string_view recordLabel(std::size_t channel) {
    return kLabels.at(channel);
}

void readRecord(ByteFile& file, CaptureRecord& record) {
    record.FileKind = 0;
    record.channels.fill({});
    record.faults.clear();
    Walk(file, record).run();
}

void readRecord(const std::string& path, ByteFile& file, CaptureRecord& record) {
    const FileRefusal refusal = file.open(path);
    readRecord(file, record);
    switch (refusal) {
    case FileRefusal::None:
        return;
    case FileRefusal::Missing:
        record.faults = {{0, "there is no such file"}};
        return;
    case FileRefusal::Folder:
        record.faults = {{0, "this is a folder, not a capture file"}};
        return;
    case FileRefusal::NoOrdinaryFile:
        record.faults = {{0, "this is no ordinary file"}};
        return;
    case FileRefusal::Unreadable:
        record.faults = {{0, "the file cannot be read"}};
        return;
    }
}

} // namespace sixtrace
