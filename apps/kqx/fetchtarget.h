// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/bytefile.h"
#include "platform/text/runtimeerror.h"

#include <QString>

namespace sixtrace::kqx {

/// Where fetched files go: into a folder under names with date and time, or to one file.
class FetchTarget {
public:
    /// `output` is a folder, a file, or empty for the current folder; a link is followed. It is an error when no file
    /// can be stored there, and when a file exists there that is to be kept. The description of the error is a
    /// sentence.
    [[nodiscard]] static Result<FetchTarget> of(const QString& output, Existing existing);

    /// The folder that the file goes to.
    [[nodiscard]] const QString& folder() const { return m_folder; }
    [[nodiscard]] bool isFolder() const { return m_file.isEmpty(); }
    /// Moves a received file to its place, and returns its path. That of a bitmap ends in ".bmp".
    [[nodiscard]] Result<QString> place(const QString& received, bool bitmap) const;

private:
    [[nodiscard]] Result<QString> placeStamped(const QString& received, const QString& suffix) const;

    QString m_folder;
    QString m_file; ///< empty for names with date and time
    Existing m_existing = Existing::Kept;
};

} // namespace sixtrace::kqx
