// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <QByteArray>
#include <QFile>
#include <QString>

namespace sixtrace {

/// A file open for binary access: made where it is missing, never cut. Bytes written from the start replace those that
/// stand there; a longer file keeps its tail. Every write reaches the system at once, so that a transfer that breaks
/// off leaves all that had come.
class BinaryFile {
public:
    /// Opens at the first byte. An open file is closed before.
    Outcome open(const QString& path);
    [[nodiscard]] bool isOpen() const { return m_file.isOpen(); }
    /// Writes behind the last write. Error 52 when no file is open.
    Outcome write(const QByteArray& bytes);
    void close() { m_file.close(); }

private:
    QFile m_file;
};

} // namespace sixtrace
