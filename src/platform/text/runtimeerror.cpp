// SPDX-License-Identifier: MIT
#include "platform/text/runtimeerror.h"

#include <cerrno>

namespace sixtrace {

QString describe(ErrorNumber number) {
    switch (number) {
    case ErrorNumber::None:
        return {};
    case ErrorNumber::InvalidCall:
        return QStringLiteral("Invalid procedure call or argument");
    case ErrorNumber::Overflow:
        return QStringLiteral("Overflow");
    case ErrorNumber::SubscriptOutOfRange:
        return QStringLiteral("Subscript out of range");
    case ErrorNumber::DivisionByZero:
        return QStringLiteral("Division by zero");
    case ErrorNumber::TypeMismatch:
        return QStringLiteral("Type mismatch");
    case ErrorNumber::BadFileNumber:
        return QStringLiteral("Bad file name or number");
    case ErrorNumber::FileNotFound:
        return QStringLiteral("File not found");
    case ErrorNumber::FileAlreadyOpen:
        return QStringLiteral("File already open");
    case ErrorNumber::DeviceIo:
        return QStringLiteral("Device I/O error");
    case ErrorNumber::FileAlreadyExists:
        return QStringLiteral("File already exists");
    case ErrorNumber::DiskFull:
        return QStringLiteral("Disk full");
    case ErrorNumber::DeviceUnavailable:
        return QStringLiteral("Device unavailable");
    case ErrorNumber::PermissionDenied:
        return QStringLiteral("Permission denied");
    case ErrorNumber::DiskNotReady:
        return QStringLiteral("Disk not ready");
    case ErrorNumber::PathAccess:
        return QStringLiteral("Path/File access error");
    case ErrorNumber::PathNotFound:
        return QStringLiteral("Path not found");
    case ErrorNumber::ObjectNotSet:
        return QStringLiteral("Object variable or With block variable not set");
    case ErrorNumber::ObjectRequired:
        return QStringLiteral("Object required");
    case ErrorNumber::CannotCreateObject:
        return QStringLiteral("Component can't create object");
    case ErrorNumber::Printer:
        return QStringLiteral("Printer error");
    case ErrorNumber::PortAlreadyOpen:
        return QStringLiteral("Port already open");
    case ErrorNumber::CancelSelected:
        return QStringLiteral("Cancel was selected.");
    }
    return QStringLiteral("Application-defined or object-defined error");
}

RuntimeError RuntimeError::of(ErrorNumber number) {
    return {number, describe(number)};
}

RuntimeError RuntimeError::ofErrno(int errnoValue) {
    switch (errnoValue) {
    case 0:
        return {};
    case ENOENT:
        return of(ErrorNumber::FileNotFound);
    case ENOTDIR:
        return of(ErrorNumber::PathNotFound);
    case ENODEV:
    case ENXIO:
        return of(ErrorNumber::DeviceUnavailable);
    case EACCES:
    case EPERM:
    case ETXTBSY:
        return of(ErrorNumber::PermissionDenied);
    case EISDIR:
    case EROFS:
    case ELOOP:
        return of(ErrorNumber::PathAccess);
    case EEXIST:
        return of(ErrorNumber::FileAlreadyExists);
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return of(ErrorNumber::DiskFull);
    case EBUSY:
        return of(ErrorNumber::FileAlreadyOpen);
    case EBADF:
    case ENAMETOOLONG:
    case EINVAL:
        return of(ErrorNumber::BadFileNumber);
    case ENOMEDIUM:
        return of(ErrorNumber::DiskNotReady);
    default:
        return of(ErrorNumber::DeviceIo);
    }
}

} // namespace sixtrace
