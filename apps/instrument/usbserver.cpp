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
constexpr int kWrongLengthBy = 1000;
const QByteArray kCommand = QByteArrayLiteral("START");
const QByteArray kNoise = QByteArrayLiteral("\xA5\x5A\x7E");

/// Binds to a path of any length, by way of its opened folder, as an address holds only 107 characters.
bool bindTo(int socket, const QString& path) {
    const QFileInfo target(path);
    const int folder = ::open(QFile::encodeName(target.absolutePath()).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    const QByteArray name = "/proc/self/fd/" + QByteArray::number(folder) + '/' + QFile::encodeName(target.fileName());
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    bool bound = false;
    if (folder >= 0 && name.size() < static_cast<qsizetype>(sizeof address.sun_path)) {
        std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
        const mode_t before = umask(0077);
        bound = bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
        umask(before);
    }
    if (folder >= 0) {
        close(folder);
    }
    return bound;
}

bool isSocket(const QString& path) {
    struct stat state {};
    return lstat(QFile::encodeName(path).constData(), &state) == 0 && S_ISSOCK(state.st_mode);
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

QByteArray usbStream(const Fetch& fetch, bool& closes) {
    const FetchPlan& plan = fetch.plan;
    const auto length = static_cast<int>(fetch.content.size());
    const int told = length + (plan.has(FaultKind::WrongLength) ? kWrongLengthBy : 0);
    closes = false;
    QByteArray stream;
    for (int block = 0; block <= (length + kBlock - 1) / kBlock; ++block) {
        QByteArray bytes =
            block == 0 ? usbHeaderBytes(told, fetch.bitmap) : fetch.content.mid((block - 1) * kBlock, kBlock);
        if (plan.at(FaultKind::Silence, block) != nullptr) {
            return stream;
        }
        if (plan.at(FaultKind::Stop, block) != nullptr) {
            return stream + bytes.left(bytes.size() / 2);
        }
        if (plan.at(FaultKind::EarlyEnd, block) != nullptr || plan.at(FaultKind::Unplug, block) != nullptr) {
            closes = true;
            return stream;
        }
        if (plan.at(FaultKind::Noise, block) != nullptr) {
            stream += kNoise;
        }
        if (plan.at(FaultKind::LostByte, block) != nullptr) {
            bytes.remove(9, 1);
        }
        if (plan.at(FaultKind::LostBlock, block) == nullptr) {
            stream += bytes;
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
        QFile::remove(m_path);
    }
}

bool UsbServer::open() {
    if (isSocket(m_path)) {
        QFile::remove(m_path);
    }
    const int handle = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (handle < 0 || !bindTo(handle, m_path) || listen(handle, 4) != 0) {
        if (handle >= 0) {
            close(handle);
        }
        return false;
    }
    m_listener = handle;
    return true;
}

pollfd UsbServer::waitFor() {
    if (m_client < 0) {
        return {m_listener, POLLIN, 0};
    }
    return {m_client, static_cast<short>(m_sent < m_out.size() ? POLLIN | POLLOUT : POLLIN), 0};
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
            m_out = usbStream(m_feed.next(), m_closes);
            m_sent = 0;
        }
    }
}

void UsbServer::sendDue() {
    while (m_sent < m_out.size()) {
        const ssize_t count =
            send(m_client, m_out.constData() + m_sent, static_cast<std::size_t>(m_out.size() - m_sent), MSG_NOSIGNAL);
        if (count < 0 && errno != EAGAIN && errno != EINTR) {
            dropClient();
        }
        if (count <= 0) {
            return;
        }
        m_sent += count;
    }
    if (m_closes) {
        dropClient();
    }
}

void UsbServer::dropClient() {
    if (m_client >= 0) {
        close(m_client);
    }
    m_client = -1;
    m_in.clear();
    m_out.clear();
    m_sent = 0;
    m_closes = false;
}

} // namespace sixtrace
