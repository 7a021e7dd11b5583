// SPDX-License-Identifier: MIT
#pragma once

#include "support/strings.h"

#include <QProcess>
#include <QStringList>

namespace sixtrace::test {

/// How a program ended, and its output.
struct Ran {
    int exitCode = -1; ///< -1 when it did not start, crashed or took longer than a minute
    QByteArray out;
    QByteArray err;
};

/// Runs a program of this build to its end.
inline Ran run(const QString& program, const QStringList& arguments) {
    constexpr int kPatienceMs = 60000;
    QProcess process;
    process.start(QStringLiteral(SIXTRACE_BIN "/") + program, arguments);
    process.closeWriteChannel();
    if (!process.waitForFinished(kPatienceMs)) {
        process.kill();
        process.waitForFinished();
        return {};
    }
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, process.readAllStandardOutput(),
            process.readAllStandardError()};
}

} // namespace sixtrace::test
