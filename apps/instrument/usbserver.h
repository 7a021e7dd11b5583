// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/capturefeed.h"
#include "instrument/server.h"

#include <QByteArray>
#include <QString>

namespace sixtrace {

/// The header of twelve bytes that goes before `length` data bytes.
[[nodiscard]] QByteArray usbHeaderBytes(int length, bool bitmap);

/// All that a fetch sends over the USB link, with the faults that this link knows: silence, stop, early-end, unplug,
/// lost-byte, lost-block, noise, wrong-length, bitmap. Block 0 is the header, blocks have 64 bytes. `closes` tells that
/// the link goes away behind these bytes.
[[nodiscard]] QByteArray usbStream(const Fetch& fetch, bool& closes);

/// The USB link as a local socket that only this user may use: one client at a time, answered on "START".
class UsbServer final : public LinkServer {
public:
    UsbServer(CaptureFeed& feed, QString path);
    ~UsbServer() override;

    /// Listens; false where that fails. A socket of that name is replaced, anything else is not.
    [[nodiscard]] bool open();

    [[nodiscard]] pollfd waitFor() override;
    [[nodiscard]] ServerClock::time_point wakeAt() const override { return ServerClock::time_point::max(); }
    bool step() override;

private:
    bool readCommand();
    void sendDue();
    void dropClient();

    CaptureFeed& m_feed;
    QString m_path;
    int m_listener = -1;
    int m_client = -1;
    QByteArray m_in;
    QByteArray m_out;
    qsizetype m_sent = 0;
    bool m_closes = false;
};

} // namespace sixtrace
