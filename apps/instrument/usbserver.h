// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/capturefeed.h"
#include "instrument/linkserver.h"
#include "platform/text/runtimeerror.h"
#include "ttdll/localsocket.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <sys/types.h>
#include <utility>

namespace sixtrace {

/// What a transfer over USB brings, as its header tells.
enum class UsbContent { Capture, Bitmap };

/// The header of twelve bytes that goes before `length` data bytes.
[[nodiscard]] QByteArray usbHeaderBytes(int length, UsbContent content);

/// What a fetch sends over the USB link.
struct UsbStream {
    QByteArray bytes;
    bool closes = false;               ///< the link goes away after these bytes
    std::optional<qsizetype> lateFrom; ///< the bytes from this place on are sent a second late
};

/// The stream of a fetch, with those faults of its plan that this link knows: silence, stop, early-end, unplug,
/// lost-byte, lost-block, repeat, late, noise, wrong-length, short-length, bitmap. Block 0 is the header, blocks have
/// 64 bytes.
[[nodiscard]] UsbStream usbStream(const Fetch& fetch);

/// The USB link: a local socket that only this user may use. It serves one client at a time and answers "START".
class UsbServer final : public LinkServer {
public:
    UsbServer(CaptureFeed& feed, QString path);
    ~UsbServer() override;

    /// Listens. A socket at which nobody answers is replaced; anything else at its place is an error, with a sentence.
    [[nodiscard]] Outcome open();

    [[nodiscard]] std::optional<pollfd> waitFor() override;
    [[nodiscard]] ServerClock::time_point wakeAt() const override;
    bool step() override;

private:
    bool readCommand();
    void sendDue();
    void dropClient();
    [[nodiscard]] bool isHeld() const;

    CaptureFeed& m_feed;
    QString m_path;
    ttdll::Descriptor m_listener;
    ttdll::Descriptor m_client;      ///< none until one calls
    std::pair<dev_t, ino_t> m_own{}; ///< the socket file that this server has made
    QByteArray m_in;
    UsbStream m_out;
    qsizetype m_sent = 0;
    ServerClock::time_point m_lateAt; ///< when the late part is sent
};

} // namespace sixtrace
