// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/capturefeed.h"
#include "instrument/server.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <sys/types.h>
#include <utility>

namespace sixtrace {

/// The header of twelve bytes that goes before `length` data bytes.
[[nodiscard]] QByteArray usbHeaderBytes(int length, bool bitmap);

/// All that a fetch sends over the USB link.
struct UsbStream {
    QByteArray bytes;
    bool closes = false;    ///< the link goes away behind these bytes
    qsizetype lateFrom = 0; ///< what stands behind this place leaves a second late; 0 for nothing
};

/// The stream of a fetch with the faults that this link knows: silence, stop, early-end, unplug, lost-byte, lost-block,
/// repeat, late, noise, wrong-length, short-length, bitmap. Block 0 is the header, blocks have 64 bytes.
[[nodiscard]] UsbStream usbStream(const Fetch& fetch);

/// The USB link as a local socket that only this user may use: one client at a time, answered on "START".
class UsbServer final : public LinkServer {
public:
    UsbServer(CaptureFeed& feed, QString path);
    ~UsbServer() override;

    /// Listens; a sentence where that cannot be done. A socket at which nobody answers is replaced, anything else is
    /// not.
    [[nodiscard]] std::optional<QString> open();

    [[nodiscard]] pollfd waitFor() override;
    [[nodiscard]] ServerClock::time_point wakeAt() const override;
    bool step() override;

private:
    bool readCommand();
    void sendDue();
    void dropClient();
    [[nodiscard]] bool isHeld() const;

    CaptureFeed& m_feed;
    QString m_path;
    int m_listener = -1;
    int m_client = -1;
    std::pair<dev_t, ino_t> m_own{}; ///< the socket file that this server has made
    QByteArray m_in;
    UsbStream m_out;
    qsizetype m_sent = 0;
    ServerClock::time_point m_lateAt; ///< when the late part leaves
};

} // namespace sixtrace
