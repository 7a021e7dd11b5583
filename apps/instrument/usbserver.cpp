// SPDX-License-Identifier: MIT
#include "instrument/usbserver.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace sixtrace {

namespace {

constexpr int kBlock = 64;
constexpr std::chrono::seconds kLateBy{1};
const QByteArray kCommand = QByteArrayLiteral("START");
const QByteArray kNoise = QByteArrayLiteral("\xA5\x5A\x7E");

/// Calls `use` with the address of a path of any length, by way of its opened folder, as an address holds only 107
/// characters.
template<typename Use>
bool withAddress(const QString& path, Use use) {
    const QFileInfo target(path);
    const int folder = ::open(QFile::encodeName(target.absolutePath()).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    const QByteArray name = "/proc/self/fd/" + QByteArray::number(folder) + '/' + QFile::encodeName(target.fileName());
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    bool done = false;
    if (folder >= 0 && name.size() < static_cast<qsizetype>(sizeof address.sun_path)) {
        std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
        done = use(reinterpret_cast<const sockaddr*>(&address), static_cast<socklen_t>(sizeof address));
    }
    if (folder >= 0) {
        const int reason = errno;
        close(folder);
        errno = reason;
    }
    return done;
}

bool bindTo(int socket, const QString& path) {
    const mode_t before = umask(0077);
    const bool bound = withAddress(
        path, [socket](const sockaddr* address, socklen_t size) { return bind(socket, address, size) == 0; });
    umask(before);
    return bound;
}

/// The socket at a path, if there is one: its place on disk.
std::optional<std::pair<dev_t, ino_t>> socketAt(const QString& path) {
    struct stat state {};
    const bool found = lstat(QFile::encodeName(path).constData(), &state) == 0 && S_ISSOCK(state.st_mode);
    return found ? std::optional(std::pair(state.st_dev, state.st_ino)) : std::nullopt;
}

/// Whether somebody listens there, be it with a queue that is full.
bool answers(const QString& path) {
    const int handle = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const bool connected = handle >= 0 && withAddress(path, [handle](const sockaddr* address, socklen_t size) {
                               return connect(handle, address, size) == 0 || errno == EAGAIN || errno == EINPROGRESS;
                           });
    if (handle >= 0) {
        close(handle);
    }
    return connected;
}

} // namespace

QByteArray usbHeaderBytes(int length, bool bitmap) {
    QByteArray header(12, '\0');
    header[0] = static_cast<char>(length & 0xFF);
    header[1] = static_cast<char>((length >> 8) & 0xFF);
    header[2] = static_cast<char>((length >> 16) & 0xFF);
    header[8] = bitmap ? '\1' : '\0';
    return header;
}

UsbStream usbStream(const Fetch& fetch) {
    const FetchPlan& plan = fetch.plan;
    const auto length = static_cast<int>(fetch.content.size());
    UsbStream stream;
    for (int block = 0; block <= (length + kBlock - 1) / kBlock; ++block) {
        const auto has = [&plan, block](FaultKind kind) { return plan.at(kind, block) != nullptr; };
        QByteArray bytes = block == 0 ? usbHeaderBytes(plan.told(length), fetch.bitmap)
                                      : fetch.content.mid((block - 1) * kBlock, kBlock);
        if (has(FaultKind::Silence)) {
            return stream;
        }
        if (has(FaultKind::Stop)) {
            stream.bytes += bytes.left(bytes.size() / 2);
            return stream;
        }
        if (has(FaultKind::EarlyEnd) || has(FaultKind::Unplug)) {
            stream.closes = true;
            return stream;
        }
        if (has(FaultKind::Late)) {
            stream.lateFrom = std::max<qsizetype>(stream.bytes.size(), 1); // of the header all but its first byte
        }
        if (has(FaultKind::Noise)) {
            stream.bytes += kNoise;
        }
        if (has(FaultKind::LostByte)) {
            bytes.remove(9, 1);
        }
        if (!has(FaultKind::LostBlock)) {
            stream.bytes += bytes.repeated(has(FaultKind::Repeat) ? 2 : 1);
        }
    }
    return stream;
}

UsbServer::UsbServer(CaptureFeed& feed, QString path)
    : m_feed(feed)
    , m_path(std::move(path)) {}

UsbServer::~UsbServer() {
    dropClient();
    if (m_listener >= 0) {
        close(m_listener);
        if (socketAt(m_path) == m_own) {
            QFile::remove(m_path);
        }
    }
}

std::optional<QString> UsbServer::open() {
    if (socketAt(m_path)) {
        if (answers(m_path)) {
            return QStringLiteral("another instrument serves there");
        }
        QFile::remove(m_path);
    }
    const int handle = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const bool bound = handle >= 0 && bindTo(handle, m_path);
    const auto own = bound ? socketAt(m_path) : std::nullopt;
    if (!own || listen(handle, 4) != 0) {
        if (handle >= 0) {
            close(handle);
        }
        return QStringLiteral("the socket cannot be made");
    }
    m_own = *own;
    m_listener = handle;
    return std::nullopt;
}

/// Whether the next byte belongs to the late part, whose time has not come.
bool UsbServer::isHeld() const {
    return m_out.lateFrom > 0 && m_sent >= m_out.lateFrom && ServerClock::now() < m_lateAt;
}

ServerClock::time_point UsbServer::wakeAt() const {
    return isHeld() ? m_lateAt : ServerClock::time_point::max();
}

pollfd UsbServer::waitFor() {
    if (m_client < 0) {
        return {m_listener, POLLIN, 0};
    }
    return {m_client, static_cast<short>(m_sent < m_out.bytes.size() && !isHeld() ? POLLIN | POLLOUT : POLLIN), 0};
}

bool UsbServer::step() {
    if (m_client < 0) {
        m_client = accept4(m_listener, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
        if (m_client < 0) {
            return false;
        }
    }
    const bool heard = readCommand();
    if (m_client >= 0) {
        sendDue();
    }
    return heard;
}

bool UsbServer::readCommand() {
    std::array<char, 256> bytes{};
    bool heard = false;
    for (;;) {
        const ssize_t count = recv(m_client, bytes.data(), bytes.size(), 0);
        if (count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR)) {
            dropClient();
            return heard;
        }
        if (count < 0) {
            return heard;
        }
        heard = true;
        m_in = m_in.append(bytes.data(), count).right(kCommand.size());
        if (m_in == kCommand) {
            m_in.clear();
            m_out = usbStream(m_feed.next());
            m_sent = 0;
            m_lateAt = ServerClock::now() + kLateBy;
        }
    }
}

void UsbServer::sendDue() {
    while (m_sent < m_out.bytes.size()) {
        if (isHeld()) {
            return;
        }
        const bool before = m_sent < m_out.lateFrom;
        const qsizetype end = before ? m_out.lateFrom : m_out.bytes.size();
        const ssize_t count =
            send(m_client, m_out.bytes.constData() + m_sent, static_cast<std::size_t>(end - m_sent), MSG_NOSIGNAL);
        if (count < 0 && errno != EAGAIN && errno != EINTR) {
            dropClient();
        }
        if (count <= 0) {
            return;
        }
        m_sent += count;
        if (before && m_sent >= m_out.lateFrom) {
            m_lateAt = ServerClock::now() + kLateBy;
        }
    }
    if (m_out.closes) {
        dropClient();
    }
}

void UsbServer::dropClient() {
    if (m_client >= 0) {
        close(m_client);
    }
    m_client = -1;
    m_in.clear();
    m_out = {};
    m_sent = 0;
}

} // namespace sixtrace
