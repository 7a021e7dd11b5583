// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/result.h"

#include <QString>

namespace sixtrace {

/// The numbers of the run-time errors. Message boxes show them to the user, so they are fixed.
enum class ErrorNumber : int {
    None = 0,
    InvalidCall = 5,
    Overflow = 6,
    SubscriptOutOfRange = 9,
    DivisionByZero = 11,
    TypeMismatch = 13,
    BadFileNumber = 52,
    FileNotFound = 53,
    FileAlreadyOpen = 55,
    DeviceIo = 57,
    FileAlreadyExists = 58,
    DiskFull = 61,
    DeviceUnavailable = 68,
    PermissionDenied = 70,
    DiskNotReady = 71,
    PathAccess = 75,
    PathNotFound = 76,
    ObjectNotSet = 91,
    ObjectRequired = 424,
    CannotCreateObject = 429,
    Printer = 482,
    PortAlreadyOpen = 8005,
    CancelSelected = 32755,
};

/// Why an operation failed, as a message box shows it: a number and a sentence.
struct RuntimeError {
    ErrorNumber number = ErrorNumber::None;
    QString description;

    /// The error with the standard description of its number.
    [[nodiscard]] static RuntimeError of(ErrorNumber number);
    /// The error for the `errno` value of a failed system call.
    [[nodiscard]] static RuntimeError ofErrno(int errnoValue);

    [[nodiscard]] int code() const { return static_cast<int>(number); }
    friend bool operator==(const RuntimeError&, const RuntimeError&) = default;
};

/// The standard sentence of an error number, without a full stop ("Cancel was selected." is the dialog's own and keeps
/// its full stop).
[[nodiscard]] QString describe(ErrorNumber number);

[[nodiscard]] inline Outcome success() {
    return kSuccess;
}

} // namespace sixtrace
