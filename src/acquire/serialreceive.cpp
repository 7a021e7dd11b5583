// SPDX-License-Identifier: MIT
#include "acquire/serialreceive.h"
#include "acquire/crc16.h"

#include "acquire/blockloop.h"
#include "platform/files/filenames.h"
#include "platform/text/numbers.h"

#include <algorithm>
#include <optional>
#include <span>

namespace sixtrace {

namespace {

/// Amounts of a file up to this many KiB are shown in bytes.
constexpr double kLargestInBytes = 3.0;

/// One transfer with a header block.
class YModem final : public BlockLoop {
public:
    YModem(SerialReceive& receive, const TransferPass& pass, const ReceiveJob& job)
        : BlockLoop(receive, pass, job) {
        m_report.path = job.path;
    }

private:
    bool readData(int size) override;
    Outcome takeNext(int size) override;
    /// A data block that is sent twice has the number of the one before, too, and so is read as a header.
    Outcome takeNumberBefore() override { return takeHeader(); }
    void acknowledge(int number) override;
    void askAgain() override { answer(line::kNegativeAcknowledge); }
    void endTransfer() override;

    Outcome takeHeader();
    Outcome store(qsizetype size);
    [[nodiscard]] std::optional<qsizetype> readFieldEnd(qsizetype from) const;

    std::int32_t FileSize = 0;
};

bool YModem::readData(int size) {
    const std::span<char> block = std::span(m_receive.RecvBlock).first(static_cast<std::size_t>(size));
    if (!m_line.SerialInputBlock(block, m_receive.ReadTimeoutMs)) {
        return false;
    }
    const std::optional<int> high = readByte();
    const std::optional<int> low = high ? readByte() : std::nullopt;
    return low && crc16(data(size)) == ((*high << 8) | *low);
}

/// After the first header a second byte requests the first data block.
void YModem::acknowledge(int number) {
    m_job.show(BlockTaken{BlockNo, TotalBytes, FileSize});
    answer(line::kAcknowledge);
    if (BlockNo == 1 && number == 0) {
        answer(line::kRequestCrc);
    }
}

/// The index of the first zero byte from `from` on; nothing when the buffer ends without one.
std::optional<qsizetype> YModem::readFieldEnd(qsizetype from) const {
    const auto& block = m_receive.RecvBlock;
    const auto end = std::find(block.cbegin() + from, block.cend(), '\0');
    return end == block.cend() ? std::nullopt : std::optional<qsizetype>(end - block.cbegin());
}

Outcome YModem::takeHeader() {
    const auto nameEnd = readFieldEnd(0);
    const auto sizeEnd = nameEnd ? readFieldEnd(*nameEnd + 1) : std::nullopt;
    if (!sizeEnd) {
        return RuntimeError::of(ErrorNumber::SubscriptOutOfRange);
    }
    const char* field = m_receive.RecvBlock.data();
    const QString name = QString::fromLocal8Bit(field, *nameEnd);
    const auto size = toInt32(Val(QString::fromLocal8Bit(field + *nameEnd + 1, *sizeEnd - *nameEnd - 1)));
    if (!size) {
        return RuntimeError::of(ErrorNumber::Overflow);
    }
    FileSize = *size;
    m_job.show(HeaderRead{name, FileSize});
    if (!checked(std::int64_t{FileSize} + 1)) {
        return RuntimeError::of(ErrorNumber::Overflow); // the bar ends at the size + 1
    }
    m_report.announced = m_report.announced.value_or(FileSize);
    m_report.bitmap = name.endsWith(QLatin1String("bmp"));
    if (m_report.bitmap) {
        m_report.path = m_job.bitmapFolder + withoutFolder(name);
        m_job.show(StoresAs{m_report.path});
    }
    m_report.inOrder = m_report.inOrder && TotalBytes == 0;
    m_report.stored = 0;
    return m_pass.file().open(m_report.path);
}

Outcome YModem::takeNext(int size) {
    Outcome counted = countBlock(size);
    if (!counted) {
        return counted;
    }
    if (TotalBytes < FileSize) {
        m_job.show(BytesCame{TotalBytes});
        return store(size);
    }
    const auto surplus = checked(std::int64_t{TotalBytes} - FileSize);
    if (!surplus) {
        return RuntimeError::of(ErrorNumber::Overflow);
    }
    const std::int64_t wanted = std::int64_t{size} - *surplus;
    m_report.inOrder = m_report.inOrder && wanted > 0;
    return wanted > 0 ? store(static_cast<qsizetype>(wanted)) : success();
}

Outcome YModem::store(qsizetype size) {
    Outcome written = m_pass.file().write(data(size));
    if (written) {
        m_report.stored += static_cast<std::int32_t>(size);
    }
    return written;
}

void YModem::endTransfer() {
    m_line.WriteByte(line::kAcknowledge);
    m_line.WriteByte(line::kRequestCrc);
    static_cast<void>(readByte()); // whether a byte comes and which one does not matter
    m_line.WriteByte(line::kAcknowledge);
}

} // namespace

TransferReport SerialReceive::YModemReceive(const TransferPass& pass, const ReceiveJob& job) {
    return YModem(*this, pass, job).run();
}

std::int32_t receiveResult(const TransferReport& report) {
    return report.end == TransferEnd::Finished ? report.total : -1;
}

QString amountText(std::int32_t bytes, std::int32_t fileSize) {
    return fileSize / 1024.0 <= kLargestInBytes ? QString::number(bytes) + QStringLiteral(" b")
                                                : QString::number(bytes / 1024) + QStringLiteral(" k");
}

} // namespace sixtrace
