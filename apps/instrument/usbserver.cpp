// SPDX-License-Identifier: MIT
#include "instrument/usbserver.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sixtrace {

namespace {

constexpr int kBlock = 64;
constexpr std::chrono::seconds kLateBy{1};
const QByteArray kCommand = QByteArrayLiteral("START");
const QByteArray kNoise = QByteArrayLiteral("\xA5\x5A\x7E");

std::string systemPath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

ttdll::Descriptor makeSocket() {
    return ttdll::Descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}

/// Binds a socket that only this user may use.
bool bindTo(const ttdll::Descriptor& socket, const QString& path) {
    const mode_t before = umask(0077);
    const bool bound = ttdll::withAddress(systemPath(path), [&socket](const sockaddr* address, socklen_t size) {
        return bind(socket.number(), address, size) == 0;
    });
    umask(before);
    return bound;
}

/// The socket at a path, if there is one: its place on disk.
std::optional<std::pair<dev_t, ino_t>> socketAt(const QString& path) {
    struct stat state {};
    const bool found = lstat(QFile::encodeName(path).constData(), &state) == 0 && S_ISSOCK(state.st_mode);
    return found ? std::optional(std::pair(state.st_dev, state.st_ino)) : std::nullopt;
}

/// Whether somebody listens there, even if the queue of callers is full.
bool answers(const QString& path) {
    const ttdll::Descriptor caller = makeSocket();
    return caller && ttdll::withAddress(systemPath(path), [&caller](const sockaddr* address, socklen_t size) {
               return connect(caller.number(), address, size) == 0 || errno == EAGAIN || errno == EINPROGRESS;
           });
}

} // namespace

QByteArray usbHeaderBytes(int length, UsbContent content) {
    QByteArray header(12, '\0');
    header[0] = static_cast<char>(length & 0xFF);
    header[1] = static_cast<char>((length >> 8) & 0xFF);
    header[2] = static_cast<char>((length >> 16) & 0xFF);
    header[8] = content == UsbContent::Bitmap ? '\1' : '\0';
    return header;
}

UsbStream usbStream(const Fetch& fetch) {
    const FetchPlan& plan = fetch.plan;
    const auto length = static_cast<int>(fetch.content.size());
    const UsbContent content = fetch.bitmap ? UsbContent::Bitmap : UsbContent::Capture;
    UsbStream stream;
    for (int block = 0; block <= (length + kBlock - 1) / kBlock; ++block) {
        const auto has = [&plan, block](FaultKind kind) { return plan.at(kind, block) != nullptr; };
        QByteArray bytes =
            block == 0 ? usbHeaderBytes(plan.told(length), content) : fetch.content.mid((block - 1) * kBlock, kBlock);
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
    if (m_listener && socketAt(m_path) == m_own) {
        QFile::remove(m_path);
    }
}

Outcome UsbServer::open() {
    if (socketAt(m_path)) {
        if (answers(m_path)) {
            return RuntimeError{ErrorNumber::PortAlreadyOpen, QStringLiteral("another instrument serves there")};
        }
        QFile::remove(m_path);
    }
    ttdll::Descriptor made = makeSocket();
    const auto own = made && bindTo(made, m_path) ? socketAt(m_path) : std::nullopt;
    if (!own || listen(made.number(), 4) != 0) {
        return RuntimeError{ErrorNumber::DeviceUnavailable, QStringLiteral("the socket cannot be made")};
    }
    m_own = *own;
    m_listener = std::move(made);
    return success();
}

/// Whether the next byte belongs to the late part, and that part is not due yet.
bool UsbServer::isHeld() const {
    return m_out.lateFrom && m_sent >= *m_out.lateFrom && ServerClock::now() < m_lateAt;
}

ServerClock::time_point UsbServer::wakeAt() const {
    return isHeld() ? m_lateAt : ServerClock::time_point::max();
}

std::optional<pollfd> UsbServer::waitFor() {
    if (!m_client) {
        return pollfd{m_listener.number(), POLLIN, 0};
    }
    return pollfd{m_client.number(),
                  static_cast<short>(m_sent < m_out.bytes.size() && !isHeld() ? POLLIN | POLLOUT : POLLIN), 0};
}

bool UsbServer::step() {
    if (!m_client) {
        m_client = ttdll::Descriptor(accept4(m_listener.number(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
        if (!m_client) {
            return false;
        }
    }
    const bool heard = readCommand();
    if (m_client) {
        sendDue();
    }
    return heard;
}

bool UsbServer::readCommand() {
    std::array<char, 256> bytes{};
    bool heard = false;
    for (;;) {
        const ssize_t count = recv(m_client.number(), bytes.data(), bytes.size(), 0);
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
        const bool before = m_out.lateFrom && m_sent < *m_out.lateFrom;
        const qsizetype end = before ? *m_out.lateFrom : m_out.bytes.size();
        const QByteArrayView due = QByteArrayView(m_out.bytes).sliced(m_sent, end - m_sent);
        const ssize_t count = send(m_client.number(), due.data(), static_cast<std::size_t>(due.size()), MSG_NOSIGNAL);
        if (count < 0 && errno != EAGAIN && errno != EINTR) {
            dropClient();
        }
        if (count <= 0) {
            return;
        }
        m_sent += count;
        if (before && m_sent >= *m_out.lateFrom) {
            m_lateAt = ServerClock::now() + kLateBy;
        }
    }
    if (m_out.closes) {
        dropClient();
    }
}

void UsbServer::dropClient() {
    m_client.close();
    m_in.clear();
    m_out = {};
    m_sent = 0;
}

} // namespace sixtrace
