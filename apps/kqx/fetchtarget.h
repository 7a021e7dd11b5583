// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <QString>

namespace sixtrace::kqx {

/// Where captures go: into a folder under names with date and time, or under one name.
class FetchTarget {
public:
    /// `output` is a folder, a file, or empty for the current folder; a link is followed. An error, whose description
    /// is a sentence, where no file can come to stand there, or must not replace the one that stands there.
    [[nodiscard]] static Result<FetchTarget> of(const QString& output, bool overwrite);

    /// The folder in which the file will stand.
    [[nodiscard]] const QString& folder() const { return m_folder; }
    [[nodiscard]] bool isFolder() const { return m_file.isEmpty(); }
    /// Gives a received file its name, and tells it. A bitmap's ends in ".bmp".
    [[nodiscard]] Result<QString> place(const QString& received, bool bitmap) const;

private:
    [[nodiscard]] Result<QString> placeStamped(const QString& received, const QString& suffix) const;

    QString m_folder;
    QString m_file; ///< empty where names carry the time
    bool m_overwrite = false;
};

} // namespace sixtrace::kqx
