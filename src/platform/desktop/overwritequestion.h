// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop/dialogs.h"

#include <QFileInfo>

namespace sixtrace {

/// Whether a file may be written at `path`: yes where no file is, otherwise what the user answers.
[[nodiscard]] inline bool mayReplace(Dialogs& dialogs, const QString& path) {
    const QFileInfo existing(path);
    return !existing.exists() || existing.isDir() ||
           dialogs.question(QStringLiteral("File Exist!  Do you want to continue ?"), MessageIcon::Exclamation,
                            QStringLiteral("Message")) == Answer::Yes;
}

} // namespace sixtrace
