// SPDX-License-Identifier: MIT
#pragma once

#include "support/strings.h"

#include <QProcess>
#include <QTemporaryDir>

namespace sixtrace::test {

/// A private print server on the loopback interface, with a queue that writes PDF files. It ends with this object, or
/// when the test program ends.
class PrivateQueue {
public:
    PrivateQueue() = default;
    ~PrivateQueue();
    PrivateQueue(const PrivateQueue&) = delete;
    PrivateQueue& operator=(const PrivateQueue&) = delete;

    /// Starts the server and adds the queue "Test" with A4 paper. False on failure; `error` then says why.
    [[nodiscard]] bool start();
    /// The file of the finished job; empty if none has come after 30 seconds.
    [[nodiscard]] QByteArray waitForJob();
    [[nodiscard]] QString jobFile() const { return m_folder.filePath(u"job.pdf"_s); }

    /// Adds another queue of the same kind, with an option of the driver.
    [[nodiscard]] bool add(const QString& name, const QString& option);
    /// Runs a command of the print system, which may be in /usr/sbin or /usr/bin.
    [[nodiscard]] bool run(const QString& program, const QStringList& arguments);

    QString error;

private:
    [[nodiscard]] bool writeSettings();

    QTemporaryDir m_folder;
    quint16 m_port = 0;
    QProcess m_server;
};

/// The standard output of a program; empty if the program fails.
[[nodiscard]] QByteArray outputOf(const QString& program, const QStringList& arguments);

} // namespace sixtrace::test
