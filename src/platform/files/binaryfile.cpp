// SPDX-License-Identifier: MIT
#include "platform/files/binaryfile.h"

#include <QFileInfo>

namespace sixtrace {

namespace {

RuntimeError openError(const QString& path) {
    const QFileInfo target(path);
    if (path.isEmpty() || path.contains(QChar::Null)) {
        return RuntimeError::of(ErrorNumber::BadFileNumber);
    }
    if (target.exists()) {
        return RuntimeError::of(target.isFile() ? ErrorNumber::PermissionDenied : ErrorNumber::PathAccess);
    }
    const QFileInfo folder(target.path());
    if (!folder.isDir()) {
        return RuntimeError::of(ErrorNumber::PathNotFound);
    }
    return RuntimeError::of(folder.isWritable() ? ErrorNumber::BadFileNumber : ErrorNumber::PathAccess);
}

} // namespace

Outcome BinaryFile::open(const QString& path) {
    close();
    const QFileInfo target(path);
    if (target.exists() && !target.isFile()) {
        return RuntimeError::of(ErrorNumber::PathAccess); // a folder, or a device, which would lose the bytes
    }
    m_file.setFileName(path);
    if (!m_file.open(QIODevice::ReadWrite | QIODevice::Unbuffered)) {
        return openError(path);
    }
    return success();
}

Outcome BinaryFile::write(const QByteArray& bytes) {
    if (!m_file.isOpen()) {
        return RuntimeError::of(ErrorNumber::BadFileNumber);
    }
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 part = m_file.write(bytes.constData() + done, bytes.size() - done);
        if (part <= 0) {
            return RuntimeError::of(m_file.error() == QFileDevice::ResourceError ||
                                            m_file.error() == QFileDevice::WriteError
                                        ? ErrorNumber::DiskFull
                                        : ErrorNumber::DeviceIo);
        }
        done += part;
    }
    return success();
}

} // namespace sixtrace
