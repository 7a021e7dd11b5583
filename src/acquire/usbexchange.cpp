// SPDX-License-Identifier: MIT
#include "acquire/usbexchange.h"

#include <QByteArray>

#include <algorithm>
#include <limits>

namespace sixtrace {

namespace {

constexpr const char* kStart = "START";
constexpr std::int32_t kStartSize = 5;
constexpr std::size_t kContentByte = 8;

int byteAt(const UsbHeader& header, std::size_t index) {
    return static_cast<unsigned char>(header[index]);
}

/// Sends the command and returns the header that comes back; nothing when either fails.
std::optional<UsbHeader> start(TtLink& link) {
    if (link.WriteThread(kStart, kStartSize) != kStartSize) {
        return std::nullopt;
    }
    UsbHeader header{};
    if (link.ReadThread(header.data(), kUsbHeaderSize) != kUsbHeaderSize) {
        return std::nullopt;
    }
    return header;
}

Result<TransferEnd> exchange(const TransferPass& pass, TtLink& link, const UsbJob& job, TransferReport& report) {
    // Cancel closes the link, so that the next read fails.
    const auto failed = [&job] { return job.cancelled() ? TransferEnd::Cancelled : TransferEnd::BrokenOff; };
    const std::optional<UsbHeader> header = start(link);
    if (!header) {
        return failed();
    }
    const Result<std::int32_t> length = usbLength(*header);
    if (!length) {
        return length.error();
    }
    const UsbAnnounced announced{length.value(), length.value() / kUsbBlockSize, usbIsBitmap(*header)};
    report.announced = announced.length;
    report.bitmap = announced.bitmap;
    const Result<QString> path = job.storeAt(announced);
    if (!path) {
        return path.error();
    }
    report.path = path.value();
    const Outcome opened = pass.file().open(report.path);
    if (!opened) {
        return opened.error();
    }
    QByteArray UsbData(qsizetype{announced.length} + 1, '\0'); // the last byte stays 0 and is written too
    const auto read = [&](std::int32_t block, std::int32_t count) {
        const std::int32_t came = link.ReadThread(UsbData.data() + kUsbBlockSize * block, count);
        report.stored += std::clamp(came, 0, count);
        return came == count;
    };
    for (std::int32_t i = 0; i < announced.blocks; ++i) {
        if (!read(i, kUsbBlockSize)) {
            return failed();
        }
        job.blockCame(i);
        job.yield();
    }
    // A short read that fails is not an error: its bytes stay 0.
    static_cast<void>(read(announced.blocks, announced.length - kUsbBlockSize * announced.blocks));
    if (job.cancelled()) {
        return TransferEnd::Cancelled; // after the last whole block: Cancel has closed the file and the link
    }
    const Outcome written = pass.file().write(UsbData);
    if (!written) {
        return written.error();
    }
    return TransferEnd::Finished;
}

} // namespace

Result<std::int32_t> usbLength(const UsbHeader& header) {
    const std::int64_t sum = std::int64_t{byteAt(header, 2)} * 256 + byteAt(header, 1);
    const std::int64_t product = sum * 256000;
    if (sum > std::numeric_limits<std::int16_t>::max() || product > std::numeric_limits<std::int32_t>::max()) {
        return RuntimeError::of(ErrorNumber::Overflow);
    }
    return static_cast<std::int32_t>(product / 1000 + byteAt(header, 0));
}

bool usbIsBitmap(const UsbHeader& header) {
    return header[kContentByte] == 1;
}

QString usbOpenFailedText(Language language) {
    return language == Language::Chinese
               ? QStringLiteral("设备打不开，请检查USB连线是否正常，重新接入设备！")
               : QStringLiteral("The meter open faild.Check the USB cable then reconect the system..");
}

QString usbDataFailedText(Language language) {
    return language == Language::Chinese
               ? QStringLiteral("数据接收错误，请检查USB连线是否正常，重新开始接收！")
               : QStringLiteral("The data received is error.Check the USB cable then restart to receive.");
}

QString usbErrorText(const RuntimeError& error) {
    return QStringLiteral("错误代码:") + QString::number(error.code()) + QStringLiteral("    ") + error.description;
}

TransferReport exchangeUsb(const TransferPass& pass, TtLink& link, const UsbJob& job) {
    TransferReport report;
    const Result<TransferEnd> end = exchange(pass, link, job, report);
    report.end = end ? end.value() : TransferEnd::Error;
    if (!end) {
        report.error = end.error();
    }
    report.total = report.stored;
    return report;
}

} // namespace sixtrace
