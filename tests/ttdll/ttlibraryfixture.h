// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ports/ttlink.h"
#include "support/strings.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace sixtrace::test {

/// An instrument at a socket, which does what the test says.
class Instrument {
public:
    explicit Instrument(const QString& path)
        : m_listening(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray name = QFile::encodeName(path);
        EXPECT_LT(static_cast<std::size_t>(name.size()), sizeof address.sun_path);
        std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
        EXPECT_EQ(bind(m_listening, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(m_listening, 1), 0);
    }
    ~Instrument() {
        hangUp();
        close(m_listening);
    }
    Instrument(const Instrument&) = delete;
    Instrument& operator=(const Instrument&) = delete;

    void answerCall() { m_link = accept(m_listening, nullptr, nullptr); }
    void send(const QByteArray& bytes) const {
        EXPECT_EQ(::send(m_link, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL),
                  bytes.size());
    }
    [[nodiscard]] QByteArray take(int count) const {
        QByteArray bytes(count, '\0');
        bytes.resize(recv(m_link, bytes.data(), static_cast<std::size_t>(count), MSG_WAITALL));
        return bytes;
    }
    void hangUp() {
        if (m_link >= 0) {
            close(m_link);
        }
        m_link = -1;
    }

private:
    int m_listening;
    int m_link = -1;
};

/// A copy of the library in a folder of its own, which is where it looks for its settings.
class TransferLibrary : public ::testing::Test {
protected:
    TransferLibrary() {
        EXPECT_TRUE(QFile::copy(QStringLiteral(SIXTRACE_BIN "/libttdll.so"), path(u"libttdll.so"_s)));
        settings("Link=socket\nReadTimeout=100\nWriteTimeout=100\n");
    }
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }
    void settings(const QByteArray& content) const { write(u"ttdll.ini"_s, content); }
    void write(const QString& name, const QByteArray& content) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
    [[nodiscard]] std::string log() const {
        QFile file(path(u"ttdll.log"_s));
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
    }
    [[nodiscard]] bool logHas(const char* text) const { return log().find(text) != std::string::npos; }

private:
    QTemporaryDir m_folder;

protected:
    TtLibrary library{m_folder.path() + u'/'};
};

} // namespace sixtrace::test
