// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/blocksender.h"
#include "instrument/capturefeed.h"
#include "instrument/server.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace sixtrace {

/// The serial link: a pseudo terminal under a name of its own (a link), on which the block protocol is spoken. Bytes
/// leave at the rate of the line.
class SerialServer final : public LinkServer {
public:
    /// `bytesPerSecond` 0 sends as fast as the client reads.
    SerialServer(CaptureFeed& feed, QString link, int bytesPerSecond);
    ~SerialServer() override;

    /// Makes the terminal and the link; a sentence where that cannot be done. A link that an instrument has left is
    /// replaced; anything else is not, least of all the link of an instrument that still runs.
    [[nodiscard]] std::optional<QString> open();

    [[nodiscard]] pollfd waitFor() override;
    [[nodiscard]] ServerClock::time_point wakeAt() const override;
    bool step() override;

private:
    bool readRequests();
    void sendDue();
    void close();
    void endFetch();
    [[nodiscard]] bool claimName();
    [[nodiscard]] bool makeLine();

    CaptureFeed& m_feed;
    QString m_link;
    int m_bytesPerSecond;
    int m_name = -1; ///< a socket that holds the link's name for as long as this process runs
    int m_master = -1;
    int m_slave = -1; ///< kept open: the line lives on while no client has it open
    std::optional<BlockSender> m_sender;
    QByteArray m_out;
    bool m_full = false; ///< the client does not read
    ServerClock::time_point m_nextByte;
    ServerClock::time_point m_heldUntil; ///< nothing leaves before
    ServerClock::time_point m_lastRequest;
    ServerClock::time_point m_replugAt;
};

} // namespace sixtrace
