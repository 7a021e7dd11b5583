// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/colour.h"

#include <QFileInfo>
#include <QString>

#include <optional>

namespace sixtrace {

/// The picture that a message box shows beside its text.
enum class MessageIcon { Plain, Information, Exclamation, Critical };

/// The answer to a question with two buttons.
enum class Answer { Yes, No };

/// What a file dialog shows at first.
struct FileRequest {
    QString fileName;      ///< preset name. It may hold a folder and a pattern, for example "dat/*.bin"
    QString filter;        ///< "Text|*.txt|Sheet|*.xls": pairs of a label and a pattern
    int filterIndex = 1;   ///< the filter that is chosen at first, counted from 1
    QString initialFolder; ///< the folder that is shown when fileName names none
};

/// What the user has chosen in a file dialog.
struct FileChoice {
    QString fileName;
    int filterIndex = 1;
};

/// The dialogs of the desktop. Tests implement this interface to answer dialogs by script. ShowSave does not ask
/// whether an existing file may be replaced: the program asks that itself. A dialog that the user cancels gives no
/// value.
class Dialogs {
public:
    Dialogs() = default;
    Dialogs(const Dialogs&) = delete;
    Dialogs& operator=(const Dialogs&) = delete;
    virtual ~Dialogs() = default;

    [[nodiscard]] virtual std::optional<FileChoice> ShowOpen(const FileRequest& request) = 0;
    [[nodiscard]] virtual std::optional<FileChoice> ShowSave(const FileRequest& request) = 0;
    /// `title` says what gets the colour.
    [[nodiscard]] virtual std::optional<Colour> ShowColor(Colour start, const QString& title) = 0;
    virtual void message(const QString& text, MessageIcon icon, const QString& title = {}) = 0;
    [[nodiscard]] virtual Answer question(const QString& text, MessageIcon icon, const QString& title) = 0;
    [[nodiscard]] virtual std::optional<QString> input(const QString& prompt, const QString& title,
                                                       const QString& preset) = 0;
};

/// Whether a file may be written at `path`: yes where no file is, otherwise what the user answers.
[[nodiscard]] inline bool mayReplace(Dialogs& dialogs, const QString& path) {
    const QFileInfo existing(path);
    return !existing.exists() || existing.isDir() ||
           dialogs.question(QStringLiteral("File Exist!  Do you want to continue ?"), MessageIcon::Exclamation,
                            QStringLiteral("Message")) == Answer::Yes;
}

} // namespace sixtrace
