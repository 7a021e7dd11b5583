// SPDX-License-Identifier: MIT
#include "instrument/serialserver.h"

#include "acquire/serialline.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cstddef>
#include <fcntl.h>
#include <pty.h>
#include <span>
#include <sys/socket.h>
#include <sys/un.h>
#include <termios.h>
#include <unistd.h>

namespace sixtrace {

namespace {

using namespace std::chrono_literals;

constexpr auto kReplugAfter = 2s;
constexpr auto kPatience = 15s; ///< longer than a receiver waits before it asks once more
constexpr auto kLateBy = 1s;
constexpr auto kSlice = 2ms; ///< bytes leave in slices of this length

} // namespace

SerialServer::SerialServer(CaptureFeed& feed, QString link, int bytesPerSecond)
    : m_feed(feed)
    , m_link(std::move(link))
    , m_bytesPerSecond(bytesPerSecond) {}

SerialServer::~SerialServer() {
    close();
}

/// Claims the link's name among all instruments of the machine, by a socket with an address that is no file: it goes
/// away with the process, however that ends. The link itself does not tell whether its instrument still runs, since the
/// number of its terminal may belong to another process by now.
Outcome SerialServer::claimName() {
    const QFileInfo link(m_link);
    const QString whole = QFileInfo(link.absolutePath()).canonicalFilePath() + u'/' + link.fileName();
    const QByteArray digest = QCryptographicHash::hash(QFile::encodeName(whole), QCryptographicHash::Sha256).toHex();
    const QByteArray name = '\0' + QByteArrayLiteral("sixtrace-instrument-") + digest;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::copy(name.cbegin(), name.cend(), address.sun_path);
    m_name = ttdll::Descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(name.size()));
    if (!m_name || bind(m_name.number(), reinterpret_cast<const sockaddr*>(&address), size) != 0) {
        return RuntimeError{ErrorNumber::PortAlreadyOpen, QStringLiteral("another instrument serves there")};
    }
    return success();
}

Outcome SerialServer::open() {
    Outcome claimed = claimName();
    if (!claimed) {
        return claimed;
    }
    const QFileInfo link(m_link);
    if (link.isSymLink() && link.exists() && !link.symLinkTarget().startsWith(QLatin1String("/dev/pts/"))) {
        return RuntimeError{ErrorNumber::FileAlreadyExists,
                            QStringLiteral("it leads to %1, which is no instrument's").arg(link.symLinkTarget())};
    }
    return makeLine();
}

Outcome SerialServer::makeLine() {
    const RuntimeError failed{ErrorNumber::DeviceUnavailable, QStringLiteral("the serial line cannot be made")};
    std::array<char, 128> name{};
    termios raw{};
    cfmakeraw(&raw);
    int master = 0;
    int slave = 0;
    if (openpty(&master, &slave, name.data(), &raw, nullptr) != 0) {
        return failed;
    }
    m_master = ttdll::Descriptor(master);
    m_slave = ttdll::Descriptor(slave);
    fcntl(master, F_SETFL, O_NONBLOCK);
    fcntl(master, F_SETFD, FD_CLOEXEC);
    fcntl(slave, F_SETFD, FD_CLOEXEC);
    if (QFileInfo(m_link).isSymLink()) {
        QFile::remove(m_link);
    }
    m_nextByte = ServerClock::now();
    return QFile::link(QString::fromLatin1(name.data()), m_link) ? success() : failed;
}

void SerialServer::close() {
    if (!m_master) {
        return;
    }
    std::array<char, 128> name{};
    if (ttyname_r(m_slave.number(), name.data(), name.size()) == 0 &&
        QFileInfo(m_link).symLinkTarget() == QLatin1String(name.data())) {
        QFile::remove(m_link);
    }
    m_master.close();
    m_slave.close();
}

std::optional<pollfd> SerialServer::waitFor() {
    if (!m_master) {
        return std::nullopt;
    }
    const bool sending = !m_out.isEmpty() && m_full;
    return pollfd{m_master.number(), static_cast<short>(sending ? POLLIN | POLLOUT : POLLIN), 0};
}

ServerClock::time_point SerialServer::wakeAt() const {
    if (!m_master) {
        return m_replugAt;
    }
    return m_out.isEmpty() || m_full ? ServerClock::time_point::max() : std::max(m_nextByte, m_heldUntil);
}

bool SerialServer::step() {
    if (!m_master) {
        if (ServerClock::now() >= m_replugAt && !makeLine()) {
            m_replugAt = ServerClock::now() + kReplugAfter;
        }
        return false;
    }
    if (m_sender && ServerClock::now() - m_lastRequest > kPatience) {
        endFetch(); // the receiver has gone without an abort
    }
    const bool heard = readRequests();
    if (m_master) {
        sendDue();
    }
    return heard;
}

bool SerialServer::readRequests() {
    std::array<char, 256> bytes{};
    bool heard = false;
    for (;;) {
        const ssize_t count = read(m_master.number(), bytes.data(), bytes.size());
        if (count <= 0) {
            return heard;
        }
        heard = true;
        m_lastRequest = ServerClock::now();
        for (const char each : std::span(bytes).first(static_cast<std::size_t>(count))) {
            const auto byte = static_cast<unsigned char>(each);
            if (!m_sender) {
                if (byte != line::kRequestCrc) {
                    continue; // the tail of an abort, or noise: no request
                }
                const Fetch fetch = m_feed.next();
                m_sender.emplace(fetch.name, fetch.content, fetch.plan);
            }
            m_out += m_sender->answer(byte);
            if (m_sender->takeLate()) {
                m_heldUntil = ServerClock::now() + kLateBy;
            }
            if (m_sender->state() == BlockSender::State::Unplugged) {
                endFetch();
                close();
                m_replugAt = ServerClock::now() + kReplugAfter;
                return true;
            }
            if (m_sender->over()) {
                endFetch();
            }
        }
    }
}

void SerialServer::endFetch() {
    m_sender.reset();
    m_out.clear();
    m_full = false;
    tcflush(m_slave.number(), TCIFLUSH); // the next client must not get what this one has not read
}

void SerialServer::sendDue() {
    m_full = false;
    while (!m_out.isEmpty()) {
        const auto now = ServerClock::now();
        if (now < m_heldUntil) {
            return;
        }
        qsizetype due = m_out.size();
        if (m_bytesPerSecond > 0) {
            if (now < m_nextByte) {
                return;
            }
            due = std::clamp<qsizetype>(m_bytesPerSecond * kSlice / 1s, 1, due);
        }
        const ssize_t sent = write(m_master.number(), m_out.constData(), static_cast<std::size_t>(due));
        if (sent <= 0) {
            m_full = true;
            return;
        }
        m_out.remove(0, sent);
        if (m_bytesPerSecond > 0) {
            const auto taken = std::chrono::nanoseconds(1s) * sent / m_bytesPerSecond;
            m_nextByte = std::max(m_nextByte, now - kSlice) +
                         taken; // time lost by a late wake-up is made up for, that of a pause is not
        }
    }
}

} // namespace sixtrace
