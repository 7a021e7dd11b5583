// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/blocksender.h"
#include "instrument/capturefeed.h"
#include "instrument/linkserver.h"
#include "platform/text/runtimeerror.h"
#include "ttdll/localsocket.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace sixtrace {

/// The serial link: a pseudo terminal, with a symbolic link to it, over which the block protocol runs. Bytes are sent
/// at the rate of a real line.
class SerialServer final : public LinkServer {
public:
    /// `link` is the path of the symbolic link. `bytesPerSecond` 0 sends as fast as the client reads.
    SerialServer(CaptureFeed& feed, QString link, int bytesPerSecond);
    ~SerialServer() override;

    /// Makes the terminal and the link to it. A link that an instrument has left behind is replaced. Anything else at
    /// its place is an error, with a sentence that says what it is: above all the link of an instrument that still
    /// runs.
    [[nodiscard]] Outcome open();

    [[nodiscard]] std::optional<pollfd> waitFor() override;
    [[nodiscard]] ServerClock::time_point wakeAt() const override;
    bool step() override;

private:
    bool readRequests();
    void sendDue();
    void close();
    void endFetch();
    [[nodiscard]] Outcome claimName();
    [[nodiscard]] Outcome makeLine();

    CaptureFeed& m_feed;
    QString m_link;
    int m_bytesPerSecond;
    ttdll::Descriptor m_name;   ///< a socket that holds the link's name for as long as this process runs
    ttdll::Descriptor m_master; ///< none while the line is unplugged
    ttdll::Descriptor m_slave;  ///< kept open, so that the line stays while no client has it open
    std::optional<BlockSender> m_sender;
    QByteArray m_out;
    bool m_full = false; ///< nothing can be sent until the client reads
    ServerClock::time_point m_nextByte;
    ServerClock::time_point m_heldUntil; ///< nothing is sent before
    ServerClock::time_point m_lastRequest;
    ServerClock::time_point m_replugAt;
};

} // namespace sixtrace
