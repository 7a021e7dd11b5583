// SPDX-License-Identifier: MIT
#include "capture/capturerecord.h"

#include "capture/filelayout.h"
#include "platform/files/bytefile.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <type_traits>

namespace sixtrace {

namespace {

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

/// Largest minus smallest sample, in counts; 0 for none.
std::int64_t spreadOf(std::span<const std::byte> samples) {
    const std::size_t count = samples.size() / layout::kSampleSize;
    int least = count > 0 ? sampleAt(samples, 0) : 0;
    int greatest = least;
    for (std::size_t i = 1; i < count; ++i) {
        const int sample = sampleAt(samples, i);
        least = std::min(least, sample);
        greatest = std::max(greatest, sample);
    }
    return std::int64_t{greatest} - least;
}

/// Reads one file from its header to its last block.
class Walk {
public:
    Walk(ByteFile& file, CaptureRecord& record)
        : m_file(file)
        , m_record(record)
        , m_size(file.size()) {}

    void run() {
        if (header()) {
            m_at = layout::kHeaderSize;
            while (m_at < m_size && block()) {
            }
        }
    }

private:
    [[nodiscard]] std::string_view text(std::int64_t offset, std::size_t count) {
        const auto bytes = m_file.stretch(offset, count);
        return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    }

    /// The text is composed only for a fault that will be listed.
    template<typename Words>
    void fault(std::int64_t offset, const Words& words) {
        if (m_record.faults.size() < CaptureRecord::kFaultLimit) {
            m_record.faults.push_back({offset, words()});
        }
    }

    bool header() {
        const std::string head(text(0, layout::kHeaderSize));
        if (head.substr(0, 3) != layout::kMagic) {
            fault(0, [&] {
                return head.empty() ? std::string("the file is empty")
                                    : "not a capture: it begins with \"" + printable(head.substr(0, 3)) +
                                          "\" instead of \"KQX\"";
            });
            return false;
        }
        const CaptureForm* form = captureForm(std::string_view(head).substr(3, layout::kTagSize));
        if (form == nullptr) {
            fault(3, [&] { return "unknown version tag \"" + printable(head.substr(3, 3)) + '"'; });
            return false;
        }
        m_record.FileKind = form->fileKind;
        if (head.size() < layout::kHeaderSize) {
            fault(static_cast<std::int64_t>(head.size()),
                  [] { return std::string("the file ends inside its header"); });
            return false;
        }
        return true;
    }

    /// Reads a value and moves on; nothing where the file ends before the end of the value.
    template<typename T>
    std::optional<T> number(std::string_view name) {
        const auto bytes = m_file.stretch(m_at, sizeof(T));
        const bool whole = bytes.size() == sizeof(T);
        if (!whole && !m_cut) {
            m_cut = true;
            fault(std::min(m_at, m_size),
                  [&] { return m_label + ": the file ends in the field " + std::string(name); });
        }
        m_at += static_cast<std::int64_t>(layout::kFieldSize);
        return whole ? std::optional<T>(decoded<T>(bytes.data())) : std::nullopt;
    }

    template<typename T>
    void read(const layout::Field& field, T& target) {
        const std::int64_t at = m_at;
        const auto value = number<T>(field.name);
        if (!value) {
            return;
        }
        target = *value;
        const auto name = [&] { return m_label + ": " + std::string(field.name) + " is "; };
        if constexpr (std::is_floating_point_v<T>) {
            if (!std::isfinite(*value)) {
                fault(at, [&] { return name() + "not a number"; });
            }
        } else if (*value < field.range.least || *value > field.range.greatest) {
            fault(at, [&] { return name() + std::to_string(*value) + ", " + std::string(field.range.rule); });
        }
    }

    bool startOfBlock() {
        const std::string start(text(m_at, 3));
        if (m_at + 1 == m_size && start == std::string_view("\0", 1)) {
            return false; // a capture that came over USB ends in one zero byte more
        }
        if (!layout::kBlockMark.starts_with(start.substr(0, layout::kBlockMark.size()))) {
            fault(m_at,
                  [&] { return std::to_string(m_size - m_at) + " bytes after the last channel are no channel block"; });
            return false;
        }
        if (start.size() < 3) {
            fault(m_at, [] { return std::string("the file ends in the mark of a channel block"); });
            return false;
        }
        const auto id = channelOfId(start[2]);
        if (!id) {
            m_label = "channel \"" + printable(start.substr(2)) + '"';
            fault(m_at + 2, [&] {
                return m_label + ": unknown channel id; its values land in " + std::string(recordLabel(m_channel));
            });
        } else {
            m_channel = static_cast<std::size_t>(*id);
            m_label = recordLabel(m_channel);
            bool& seen = m_record.channels.at(m_channel).present;
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
        m_cut = false;
        static_cast<void>(number<std::int32_t>("length"));
        channel.ProbeExp = m_record.FileKind == 1 ? std::int16_t{0} : channel.ProbeExp;
        for (const layout::Field& field : layout::blockFields(m_record.FileKind)) {
            if (field.id == layout::FieldId::ZeroLevel) {
                readZeroLevel(field, channel);
            } else {
                layout::withMember(field.id, channel, [&](auto& member) { read(field, member); });
            }
        }
        narrow(channel.TimeIndexFile, channel.TimeIndex);
        narrow(channel.VoltIndexFile, channel.VoltIndex);
        narrow(channel.VoltIndexView, channel.VoltIndexFile - 1);
        channel.samples = {};
        return !m_cut && samples(channel);
    }

    /// The file counts upward from -100; the record, like the model, counts downward from 0.
    void readZeroLevel(const layout::Field& field, ChannelRecord& channel) {
        std::int32_t level = 0;
        const bool held = m_at + static_cast<std::int64_t>(layout::kFieldSize) <= m_size;
        read(field, level);
        if (held) {
            narrow(channel.ZeroLevel, std::int64_t{100} - level);
        }
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

        m_at += layout::samplesToNextBlock(channel.SampleCount, channel.ScreenPoints);
        const std::int64_t held = std::max<std::int64_t>(0, m_size - first) / 2;
        if (held < count) {
            fault(m_size, [&] {
                return m_label + ": the file ends after sample " + std::to_string(held) + " of " +
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
    std::size_t m_channel = 0; ///< of the last known id; it takes the values of a block with an unknown id too
    std::string m_label;       ///< of the block, as its faults name it
    bool m_cut = false;
};

} // namespace

std::string_view CaptureRecord::form() const {
    return isCapture() ? captureForms().at(static_cast<std::size_t>(FileKind) - 1).tag : std::string_view();
}

std::string_view recordLabel(std::size_t channel) {
    return kChannelNames.at(channel);
}

void readRecord(ByteFile& file, CaptureRecord& record) {
    record.FileKind = 0;
    record.channels.fill({});
    record.faults.clear();
    Walk(file, record).run();
}

void readRecord(const std::string& path, ByteFile& file, CaptureRecord& record) {
    const auto opened = file.open(path);
    readRecord(file, record);
    if (opened) {
        return;
    }
    switch (opened.error()) {
    case FileRefusal::Missing:
        record.faults = {{0, "there is no such file"}};
        return;
    case FileRefusal::Folder:
        record.faults = {{0, "this is a folder, not a capture file"}};
        return;
    case FileRefusal::NoOrdinaryFile:
        record.faults = {{0, "this is not an ordinary file"}};
        return;
    case FileRefusal::Unreadable:
        record.faults = {{0, "the file cannot be read"}};
        return;
    }
}

} // namespace sixtrace
