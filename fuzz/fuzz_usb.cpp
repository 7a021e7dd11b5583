// SPDX-License-Identifier: MIT
// The USB exchange with a link that answers any bytes, may deliver too few of them anywhere, and is cancelled anywhere.
#include "acquire/usbexchange.h"
#include "require.h"
#include "scratchfolder.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

namespace {

using namespace sixtrace;

/// A longer file is refused before it is made, because filling it with zeros would take most of the time.
constexpr std::int32_t kLongestStored = 4096;

/// Byte 0 of the input says whether the link opens and which wrong result a read of a whole block returns. Byte 1 says
/// after how many blocks the transfer is cancelled. The rest is the stream.
class FuzzedLink final : public TtLink {
public:
    FuzzedLink(QByteArray stream, int how)
        : m_stream(std::move(stream))
        , m_opens((how & 6) != 6)
        , m_lie(how >> 4) {}
    std::int32_t InitializeTt(std::int32_t) override {
        m_open = m_opens;
        return m_opens ? 1 : 0;
    }
    void closeTt(std::int32_t) override { m_open = false; }
    std::int32_t WriteThread(const char*, std::int32_t count) override { return m_open ? count : 0; }
    std::int32_t ReadThread(char* buffer, std::int32_t count) override {
        require(count >= 0 && count <= kUsbBlockSize);
        if (!m_open) {
            return 0;
        }
        const qsizetype given = std::min<qsizetype>(count, m_stream.size() - m_at);
        std::copy_n(m_stream.cbegin() + m_at, given, buffer);
        m_at += given;
        constexpr std::array kLies{-1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(),
                                   kUsbBlockSize + 1};
        const auto lie = static_cast<std::size_t>(m_lie - 1);
        return count == kUsbBlockSize && lie < kLies.size() ? kLies.at(lie) : static_cast<std::int32_t>(given);
    }
    std::int32_t senddatatoTt(const char* bytes, std::int32_t count) override { return WriteThread(bytes, count); }
    std::int32_t getTtData(char* buffer, std::int32_t count) override { return ReadThread(buffer, count); }

private:
    QByteArray m_stream;
    qsizetype m_at = 0;
    bool m_opens;
    int m_lie; ///< number of the wrong result, 0 for none
    bool m_open = false;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchFolder folder;
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const int how = input.isEmpty() ? 0 : static_cast<unsigned char>(input[0]);
    const int cancelAt = input.size() < 2 ? 0 : static_cast<unsigned char>(input[1]);
    static const QString path = folder.filePath(QStringLiteral("D.bin"));
    FuzzedLink link(input.mid(2), how);
    static_cast<void>(link.InitializeTt(0));
    TransferGate gate;
    int yields = 0;
    bool cancelled = false;
    TransferReport report;
    {
        const auto pass = gate.enter();
        report = exchangeUsb(*pass, link,
                             {.storeAt = [](const UsbAnnounced& announced) -> Result<QString> {
                                  require(announced.length >= 0 && announced.length <= 2147583);
                                  require(announced.blocks == announced.length / kUsbBlockSize);
                                  if (announced.length > kLongestStored) {
                                      return RuntimeError::of(ErrorNumber::DiskFull);
                                  }
                                  return path;
                              },
                              .cancelled = [&cancelled] { return cancelled; },
                              .yield =
                                  [&] {
                                      if (++yields == cancelAt) {
                                          cancelled = true;
                                          link.closeTt(0);
                                      }
                                  }});
    }
    require(!gate.held());
    require((report.end == TransferEnd::Error) == report.error.has_value());
    require((report.end == TransferEnd::Cancelled) == cancelled);
    if (report.end == TransferEnd::Finished) {
        require(QFileInfo(path).size() == qint64{report.announced.value()} + 1);
    }
    require(!report.whole() || report.stored == report.announced);
    if (!report.path.isEmpty()) {
        QFile::remove(path);
    }
    return 0;
}
