// SPDX-License-Identifier: MIT
// The USB exchange over a link that answers with any bytes, comes short anywhere and is cancelled anywhere.
#include "acquire/usbexchange.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace {

using namespace sixtrace;

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// Byte 0 of the input: what opens; byte 1: after how many reads a cancel comes; then the stream.
class FuzzedLink final : public TtLink {
public:
    FuzzedLink(QByteArray stream, bool opens)
        : m_stream(std::move(stream))
        , m_opens(opens) {}
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
        const qsizetype given = std::min<qsizetype>(count, m_stream.size());
        std::copy_n(m_stream.cbegin(), given, buffer);
        m_stream.remove(0, given);
        return static_cast<std::int32_t>(given);
    }
    std::int32_t senddatatoTt(const char* bytes, std::int32_t count) override { return WriteThread(bytes, count); }
    std::int32_t getTtData(char* buffer, std::int32_t count) override { return ReadThread(buffer, count); }

private:
    QByteArray m_stream;
    bool m_opens;
    bool m_open = false;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const int how = input.isEmpty() ? 0 : static_cast<unsigned char>(input[0]);
    const int cancelAt = input.size() < 2 ? 0 : static_cast<unsigned char>(input[1]);
    const QString path = folder.filePath(QStringLiteral("D.bin"));
    FuzzedLink link(input.mid(2), (how & 6) != 6);
    static_cast<void>(link.InitializeTt(0));
    TransferGate gate;
    int yields = 0;
    bool cancelled = false;
    TransferReport report;
    {
        const auto pass = gate.enter();
        report = exchangeUsb(*pass, link,
                             {.storeAt = [&path](const UsbAnnounced& announced) -> Result<QString> {
                                  require(announced.length >= 0 && announced.length <= 2147583);
                                  require(announced.blocks == announced.length / kUsbBlockSize);
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
    QFile::remove(path);
    return 0;
}
