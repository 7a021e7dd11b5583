// SPDX-License-Identifier: MIT
#include "capture/capturecheck.h"

#include "capture/bytesource.h"
#include "capture/filelayout.h"
#include "capture/publicm.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <type_traits>

namespace sixtrace {

namespace {

using Text = QString;

QLatin1String latin(std::string_view text) {
    return {text.data(), static_cast<qsizetype>(text.size())};
}

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
        const std::string head = bytes(layout::kHeaderSize);
        if (head.substr(0, 3) != layout::kMagic) {
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
        m_fileKind = form->fileKind;
        if (head.size() < layout::kHeaderSize) {
            fault(static_cast<std::int64_t>(head.size()), QStringLiteral("the file ends inside its header"));
            return false;
        }
        m_at = layout::kHeaderSize;
        return true;
    }

    /// The value at the walk's place, which it leaves behind; nothing where the file ends in it.
    template<typename T>
    std::optional<T> number(std::string_view name) {
        const auto value = m_source.number<T>(static_cast<double>(m_at) + 1);
        if (!value && !m_cut) {
            m_cut = true;
            fault(std::min(m_at, m_size),
                  QStringLiteral("%1: the file ends in the field %2").arg(m_label, latin(name)));
        }
        m_at += static_cast<std::int64_t>(layout::kFieldSize);
        return value;
    }

    bool startOfBlock() {
        const std::string start = bytes(3);
        if (m_at + 1 == m_size && start == std::string_view("\0", 1)) {
            return false; // a capture that came over USB ends in one zero byte more
        }
        if (start.substr(0, 2) != layout::kBlockMark.substr(0, std::min<std::size_t>(2, start.size()))) {
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

    /// What is wrong with the values of a block, told once the block is known to hold them all.
    template<typename T>
    void judge(const layout::Field& field, const std::optional<T>& value, std::int64_t offset,
               std::vector<CaptureFault>& faults) const {
        if (!value) {
            return;
        }
        if constexpr (std::is_floating_point_v<T>) {
            if (!std::isfinite(*value)) {
                faults.push_back({offset, QStringLiteral("%1: %2 is not a number").arg(m_label, latin(field.name))});
            }
        } else if (*value < field.range.least || *value > field.range.greatest) {
            faults.push_back({offset, QStringLiteral("%1: %2 is %3, %4")
                                          .arg(m_label, latin(field.name))
                                          .arg(*value)
                                          .arg(QStringView(field.range.rule))});
        }
    }

    bool block() {
        if (!startOfBlock()) {
            return false;
        }
        m_cut = false;
        static_cast<void>(number<std::int32_t>("length"));
        std::int32_t slots = 0;
        std::int32_t count = 0;
        std::vector<CaptureFault> faults;
        for (const layout::Field* field : layout::blockFields(m_fileKind)) {
            const std::int64_t at = m_at;
            std::visit(
                [&]<typename T>(const layout::Places<T>&) {
                    const auto value = number<T>(field->name);
                    judge(*field, value, at, faults);
                    if constexpr (std::is_same_v<T, std::int32_t>) {
                        slots = field == &layout::kScreenPoints ? value.value_or(0) : slots;
                        count = field == &layout::kSampleCount ? value.value_or(0) : count;
                    }
                },
                field->places);
        }
        for (const CaptureFault& found : faults) {
            fault(found.offset, found.text);
        }
        return !m_cut && samples(slots, count);
    }

    bool samples(std::int32_t slots, std::int32_t count) {
        const std::int64_t first = m_at;
        m_at += static_cast<std::int64_t>(layout::samplesToNextBlock(count, slots));
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
    int m_fileKind = 0;
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
