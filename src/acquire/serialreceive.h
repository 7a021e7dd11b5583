// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "platform/binaryfile.h"
#include "platform/byteport.h"
#include "platform/runtimeerror.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <cstdint>

namespace sixtrace {

/// The bytes of the block protocol. Negative acknowledge and abort are the instrument's own, not those of the
/// published protocol.
namespace line {
inline constexpr int kShortBlock = 1;
inline constexpr int kLongBlock = 2;
inline constexpr int kEndOfTransmission = 4;
inline constexpr int kAcknowledge = 6;
inline constexpr int kAbortTail = 8;
inline constexpr int kNegativeAcknowledge = 15;
inline constexpr int kAbort = 18;
inline constexpr int kRequestCrc = 67;
inline constexpr int kShortData = 128;
inline constexpr int kLongData = 1024;
} // namespace line

/// What a receive shows and asks while it runs: the fields of the receive window, by their names.
class ReceiveForm {
public:
    ReceiveForm() = default;
    ReceiveForm(const ReceiveForm&) = delete;
    ReceiveForm& operator=(const ReceiveForm&) = delete;
    virtual ~ReceiveForm() = default;

    [[nodiscard]] virtual QString Text2() = 0;      ///< path to store to
    virtual void setText1(const QString& name) = 0; ///< name that came over the line
    virtual void setText2(const QString& path) = 0;
    virtual void setText3(int blockNo) = 0;
    virtual void setText4(int retries) = 0;
    virtual void setAmounts(const QString& received, const QString& size) = 0; ///< Text5 and Text6
    virtual void setBarMaximum(std::int32_t maximum) = 0;                      ///< the minimum is 0
    virtual void setBar(std::int32_t value) = 0;
    virtual void yield() = 0; ///< lets waiting events run
};

/// The receiving side of the block protocol, over a byte port: one file per transfer, a header block first. It keeps
/// what outlives a transfer (ReadTimeoutMs, the block buffer) and owns the file being written. Not responsible for
/// opening the port. One transfer at a time; the owner sees to that with running().
class SerialReceive {
public:
    SerialReceive(BytePort& port, ReceiveForm& form, publicM& model)
        : m_port(port)
        , m_form(form)
        , m_model(model) {}

    /// Time-out of every protocol read in milliseconds; 0 reads without limit.
    std::int16_t ReadTimeoutMs = 0;

    /// Receives the file that the instrument sends to the path of Text2. The data bytes received, padding included;
    /// -1 after a failure or a cancel; or the run-time error that ended the transfer.
    Result<std::int32_t> YModemReceive();
    /// The older shape of the same loop, without header block, into "test.bmp" of the current folder. Nothing calls it.
    Result<std::int32_t> XModemReceive();

    /// The next byte, or -1 at the time-out.
    [[nodiscard]] int ReadByteWithTimeout(int timeoutMs);
    /// Reads until the line has been silent for 100 ms. A sender that never pauses is left alone after ten seconds.
    void ReadFlush();
    /// Reads `count` bytes into `buffer`; gives `count`, or -1 when they are not all there in time. What has come then
    /// stays in the port.
    [[nodiscard]] int SerialInputBlock(char* buffer, int count, int timeoutMs);
    /// Sends a byte, after throwing away all that has come in.
    void WriteByte(int byte);

    [[nodiscard]] bool running() const { return m_running; }

private:
    enum class Next { Block, Retry, Resend, End };

    Result<std::int32_t> receiveBlocks();
    Result<Next> takeBlock();
    Outcome takeHeader();
    Outcome takeData(int size);
    void showProgress();
    bool retryAborts();
    std::int32_t abortTransfer();
    std::int32_t endTransfer();
    [[nodiscard]] bool readCheckedBlock(int size);
    [[nodiscard]] int readFieldEnd(int from) const;

    Result<std::int32_t> receivePlainBlocks();
    Result<Next> takePlainBlock(bool withCrc);
    [[nodiscard]] bool readPlainBlock(int size, bool withCrc);

    BytePort& m_port;
    ReceiveForm& m_form;
    publicM& m_model;
    BinaryFile m_file; ///< file number 1
    std::array<char, line::kLongData> RecvBlock{};
    std::int16_t BlockNo = 1;
    std::int32_t TotalBytes = 0;
    std::int32_t FileSize = 0;
    int Retries = 0;
    int SendByte = line::kRequestCrc;
    bool m_lost = false; ///< the line went away during a wait without limit
    bool m_running = false;
};

/// The last part of a name that may come from a stranger: what stands behind every "/", "\" and ":".
[[nodiscard]] QString withoutFolder(const QString& name);

} // namespace sixtrace
