// SPDX-License-Identifier: MIT
#include "instrument/serialserver.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cstddef>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <termios.h>
#include <unistd.h>

namespace sixtrace {

namespace {

using namespace std::chrono_literals;

constexpr auto kReplugAfter = 2s;
constexpr auto kPatience = 15s; ///< longer than a receiver waits before it asks again
constexpr auto kLateBy = 1s;
constexpr auto kSlice = 2ms; ///< bytes leave in slices of this length

} // namespace

SerialServer::SerialServer(CaptureFeed& feed, QString link, int bytesPerSecond)
    : m_feed(feed)
    , m_link(std::move(link))
    , m_bytesPerSecond(bytesPerSecond) {}

SerialServer::~SerialServer() {
    close();
    if (m_name >= 0) {
        ::close(m_name);
    }
}

/// Takes the link's name among those of all instruments of the machine: an address without a file, which goes with the
/// process however that ends. A link alone would not tell, as the number of its terminal may be another's by now.
bool SerialServer::claimName() {
    const QFileInfo link(m_link);
    const QString whole = QFileInfo(link.absolutePath()).canonicalFilePath() + u'/' + link.fileName();
    const QByteArray digest = QCryptographicHash::hash(QFile::encodeName(whole), QCryptographicHash::Sha256).toHex();
    const QByteArray name = '\0' + QByteArrayLiteral("sixtrace-instrument-") + digest;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::copy(name.cbegin(), name.cend(), address.sun_path);
    m_name = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(name.size()));
    return m_name >= 0 && bind(m_name, reinterpret_cast<const sockaddr*>(&address), size) == 0;
}

std::optional<QString> SerialServer::open() {
    if (!claimName()) {
        return QStringLiteral("another instrument serves there");
    }
    const QFileInfo link(m_link);
    if (link.isSymLink() && link.exists() && !link.symLinkTarget().startsWith(QLatin1String("/dev/pts/"))) {
        return QStringLiteral("it leads to %1, which is no instrument's").arg(link.symLinkTarget());
    }
    return makeLine() ? std::nullopt : std::optional(QStringLiteral("the serial line cannot be made"));
}

bool SerialServer::makeLine() {
    std::array<char, 128> name{};
    termios raw{};
    cfmakeraw(&raw);
    if (openpty(&m_master, &m_slave, name.data(), &raw, nullptr) != 0) {
        return false;
    }
    fcntl(m_master, F_SETFL, O_NONBLOCK);
    fcntl(m_master, F_SETFD, FD_CLOEXEC);
    fcntl(m_slave, F_SETFD, FD_CLOEXEC);
    if (QFileInfo(m_link).isSymLink()) {
        QFile::remove(m_link);
    }
    m_nextByte = ServerClock::now();
    return QFile::link(QString::fromLatin1(name.data()), m_link);
}

void SerialServer::close() {
    if (m_master < 0) {
        return;
    }
    std::array<char, 128> name{};
    if (ttyname_r(m_slave, name.data(), name.size()) == 0 &&
        QFileInfo(m_link).symLinkTarget() == QLatin1String(name.data())) {
        QFile::remove(m_link);
    }
    ::close(m_master);
    ::close(m_slave);
    m_master = -1;
    m_slave = -1;
}

pollfd SerialServer::waitFor() {
    const bool sending = !m_out.isEmpty() && m_full;
    return {m_master, static_cast<short>(sending ? POLLIN | POLLOUT : POLLIN), 0};
}

ServerClock::time_point SerialServer::wakeAt() const {
    if (m_master < 0) {
        return m_replugAt;
    }
    return m_out.isEmpty() || m_full ? ServerClock::time_point::max() : std::max(m_nextByte, m_heldUntil);
}

bool SerialServer::step() {
    if (m_master < 0) {
        if (ServerClock::now() >= m_replugAt && !makeLine()) {
            m_replugAt = ServerClock::now() + kReplugAfter;
        }
        return false;
    }
    if (m_sender && ServerClock::now() - m_lastRequest > kPatience) {
        endFetch(); // the receiver has gone without a word
    }
    const bool heard = readRequests();
    if (m_master >= 0) {
        sendDue();
    }
    return heard;
}

bool SerialServer::readRequests() {
    std::array<char, 256> bytes{};
    bool heard = false;
    for (;;) {
        const ssize_t count = read(m_master, bytes.data(), bytes.size());
        if (count <= 0) {
            return heard;
        }
        heard = true;
        m_lastRequest = ServerClock::now();
        for (ssize_t i = 0; i < count; ++i) {
            if (!m_sender) {
                const auto byte = static_cast<unsigned char>(bytes[static_cast<std::size_t>(i)]);
                if (byte != 'C') {
                    continue; // the tail of an abort, or noise: no request
                }
                const Fetch fetch = m_feed.next();
                m_sender.emplace(fetch.name, fetch.content, fetch.plan);
            }
            m_out += m_sender->answer(static_cast<unsigned char>(bytes[static_cast<std::size_t>(i)]));
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
    tcflush(m_slave, TCIFLUSH); // what nobody has read yet must not greet the next client
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
        const ssize_t sent = write(m_master, m_out.constData(), static_cast<std::size_t>(due));
        if (sent <= 0) {
            m_full = true;
            return;
        }
        m_out.remove(0, sent);
        if (m_bytesPerSecond > 0) {
            const auto taken = std::chrono::nanoseconds(1s) * sent / m_bytesPerSecond;
            m_nextByte = std::max(m_nextByte, now - kSlice) + taken; // a late wake-up is made good, a pause is not
        }
    }
}

} // namespace sixtrace
