// SPDX-License-Identifier: MIT
#pragma once

#include "support/strings.h"

#include <QProcess>
#include <QTemporaryDir>

namespace sixtrace::test {

/// A print server of the test's own, on loopback, with one queue that makes PDF files of what it is given. It ends with
/// this object, at the latest with the test program's time limit.
class PrivateQueue {
public:
    PrivateQueue() = default;
    ~PrivateQueue();
    PrivateQueue(const PrivateQueue&) = delete;
    PrivateQueue& operator=(const PrivateQueue&) = delete;

    /// Starts the server and adds the queue "Test" with A4 paper. False where that fails; `error` says why.
    [[nodiscard]] bool start();
    /// The file of the finished job; empty where none has come after a while.
    [[nodiscard]] QByteArray waitForJob();
    [[nodiscard]] QString jobFile() const { return m_folder.filePath(u"job.pdf"_s); }

    /// Adds another queue of the same kind, with an option of the driver.
    [[nodiscard]] bool add(const QString& name, const QString& option);
    /// A command of the print system, from wherever the machine keeps it.
    [[nodiscard]] bool run(const QString& program, const QStringList& arguments);

    QString error;

private:
    [[nodiscard]] bool writeSettings();

    QTemporaryDir m_folder;
    quint16 m_port = 0;
    QProcess m_server;
};

/// What a program prints on its standard output; empty where it fails.
[[nodiscard]] QByteArray outputOf(const QString& program, const QStringList& arguments);

} // namespace sixtrace::test
