// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <QByteArray>
#include <QFile>
#include <QString>

namespace sixtrace {

/// A file that is open for binary access. A missing file is made; an existing file is not cut. Writing begins at its
/// first byte and replaces the bytes there, so that a longer file keeps its rest. There is no buffer: when a transfer
/// breaks off, the file holds all bytes that have come.
class BinaryFile {
public:
    /// Closes what was open, and opens `path` at its first byte.
    Outcome open(const QString& path);
    [[nodiscard]] bool isOpen() const { return m_file.isOpen(); }
    /// Writes after the bytes of the last write. Error 52 when no file is open, 61 when the disk is full.
    Outcome write(const QByteArray& bytes);
    void close() { m_file.close(); }

private:
    QFile m_file;
};

} // namespace sixtrace
