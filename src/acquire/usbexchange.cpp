// SPDX-License-Identifier: MIT
#include "acquire/usbexchange.h"

#include "platform/numbers.h"

#include <limits>

namespace sixtrace {

namespace {

constexpr const char* kStart = "START";
constexpr std::int32_t kStartSize = 5;
constexpr std::size_t kContentByte = 8;
constexpr int kSuffix = 3;

int byteAt(const UsbHeader& header, std::size_t index) {
    return static_cast<unsigned char>(header[index]);
}

/// The bytes that go to the file: the data and one zero byte behind them.
QByteArray dataBuffer(std::int32_t length) {
    return QByteArray(qsizetype{length} + 1, '\0');
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

std::optional<UsbHeader> usbStart(TtLink& link) {
    if (link.WriteThread(kStart, kStartSize) != kStartSize) {
        return std::nullopt;
    }
    UsbHeader header{};
    if (link.ReadThread(header.data(), kUsbHeaderSize) != kUsbHeaderSize) {
        return std::nullopt;
    }
    return header;
}

QString usbOpenFailedText(int languageId) {
    return languageId == 0 ? QStringLiteral("设备打不开，请检查USB连线是否正常，重新接入设备！")
                           : QStringLiteral("The meter open faild.Check the USB cable then reconect the system..");
}

QString usbDataFailedText(int languageId) {
    return languageId == 0 ? QStringLiteral("数据接收错误，请检查USB连线是否正常，重新开始接收！")
                           : QStringLiteral("The data received is error.Check the USB cable then restart to receive.");
}

QString usbErrorText(const RuntimeError& error) {
    return QStringLiteral("错误代码:") + QString::number(error.code()) + QStringLiteral("    ") + error.description;
}

void UsbTransfer::Command4_Click() {
    if (m_link.InitializeTt(0) == 0) {
        m_dialogs.message(usbOpenFailedText(m_model.LanguageId), MessageIcon::Information);
        return;
    }
    m_busy = true;
    m_form.setCommand4Enabled(false);
    m_cancel = false;
    const Result<Ending> ending = exchange();
    if (!ending) {
        m_dialogs.message(usbErrorText(ending.error()), MessageIcon::Plain);
        m_file.close();
        m_link.closeTt(1);
        m_busy = false;
        m_form.setCommand4Enabled(true);
        m_form.unload();
        return;
    }
    if (ending.value() == Ending::Failed) {
        failed();
        return;
    }
    m_file.close();
    m_form.setCommand4Enabled(true);
    m_link.closeTt(0);
    m_busy = false;
    m_model.ReceiveResult = 1;
    m_form.unload();
}

Outcome UsbTransfer::nameBitmap() {
    const QString name = m_form.Text1();
    const QString path = m_form.Text2();
    if (name.size() < kSuffix) {
        return RuntimeError::of(ErrorNumber::InvalidCall);
    }
    m_form.setText1(name.chopped(kSuffix) + QStringLiteral("bmp"));
    if (path.size() < kSuffix) {
        return RuntimeError::of(ErrorNumber::InvalidCall);
    }
    m_form.setText2(path.chopped(kSuffix) + QStringLiteral("bmp"));
    return success();
}

Result<UsbTransfer::Ending> UsbTransfer::exchange() {
    const std::optional<UsbHeader> header = usbStart(m_link);
    if (!header) {
        return Ending::Failed;
    }
    const Result<std::int32_t> length = usbLength(*header);
    if (!length) {
        return length.error();
    }
    QByteArray UsbData = dataBuffer(length.value());
    m_form.setText6(length.value());
    if (usbIsBitmap(*header)) {
        const Outcome named = nameBitmap();
        if (!named) {
            return named.error();
        }
    }
    m_model.ReceivedFile = m_form.Text2();
    const std::int32_t blocks = length.value() / kUsbBlockSize;
    const std::int32_t rest = length.value() - kUsbBlockSize * blocks;
    m_form.setBarMaximum(blocks);
    std::int32_t received = 0;
    m_form.setText5(received);
    const Outcome opened = m_file.open(m_model.ReceivedFile);
    if (!opened) {
        return opened.error();
    }
    for (std::int32_t i = 0; i < blocks; ++i) {
        if (m_link.ReadThread(UsbData.data() + kUsbBlockSize * i, kUsbBlockSize) != kUsbBlockSize) {
            return Ending::Failed;
        }
        m_form.setBar(i);
        received += kUsbBlockSize;
        m_form.setText5(received);
        m_form.yield();
    }
    // Whether the short read failed is not looked at; the file then ends in zero bytes.
    static_cast<void>(m_link.ReadThread(UsbData.data() + kUsbBlockSize * blocks, rest));
    if (m_cancel) {
        return Ending::Failed; // Cancel came after the last whole block and has closed file and link
    }
    const Outcome written = m_file.write(UsbData);
    if (!written) {
        return written.error();
    }
    return Ending::Done;
}

void UsbTransfer::failed() {
    if (m_cancel) {
        m_cancel = false; // Cancel has done the rest
        return;
    }
    m_dialogs.message(usbDataFailedText(m_model.LanguageId), MessageIcon::Information);
    m_file.close();
    m_link.closeTt(1);
    m_form.setCommand4Enabled(true);
    m_busy = false;
}

void UsbTransfer::CancelButton_Click() {
    m_cancel = true;
    if (m_busy) {
        m_file.close();
        m_link.closeTt(0);
        m_form.waitForTimer1();
        m_link.InitializeTt(1);
        m_link.closeTt(1);
        m_busy = false;
    }
    m_form.setCommand4Enabled(true);
    m_model.ReceiveResult = 0;
    m_form.unload();
}

namespace {

Result<AutoUsbEnding> exchangeAll(TtLink& link, BinaryFile& file, const QString& path) {
    const std::optional<UsbHeader> header = usbStart(link);
    if (!header) {
        return AutoUsbEnding::Failed;
    }
    const Result<std::int32_t> length = usbLength(*header);
    if (!length) {
        return length.error();
    }
    QByteArray UsbData = dataBuffer(length.value());
    const Outcome opened = file.open(path);
    if (!opened) {
        return opened.error();
    }
    const std::int32_t blocks = length.value() / kUsbBlockSize;
    for (std::int32_t i = 0; i < blocks; ++i) {
        if (link.ReadThread(UsbData.data() + kUsbBlockSize * i, kUsbBlockSize) != kUsbBlockSize) {
            return AutoUsbEnding::Failed;
        }
    }
    static_cast<void>(
        link.ReadThread(UsbData.data() + kUsbBlockSize * blocks, length.value() - kUsbBlockSize * blocks));
    const Outcome written = file.write(UsbData);
    if (!written) {
        return written.error();
    }
    return AutoUsbEnding::Done;
}

} // namespace

AutoUsbEnding getfromUSB(TtLink& link, Dialogs& dialogs, publicM& model, const QString& path) {
    static_cast<void>(link.InitializeTt(0)); // a link that is not there shows at the first bytes
    model.ReceivedFile = path;
    BinaryFile file;
    const Result<AutoUsbEnding> ending = exchangeAll(link, file, path);
    file.close();
    if (ending && ending.value() == AutoUsbEnding::Done) {
        link.closeTt(0);
        model.ReceiveResult = 1;
        return AutoUsbEnding::Done;
    }
    if (ending) {
        dialogs.message(usbDataFailedText(model.LanguageId), MessageIcon::Information);
    } else {
        dialogs.message(usbErrorText(ending.error()), MessageIcon::Plain);
    }
    link.closeTt(1);
    return AutoUsbEnding::Failed;
}

} // namespace sixtrace
