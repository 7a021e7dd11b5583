// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/colour.h"

#include <QFileInfo>
#include <QString>

#include <optional>

namespace sixtrace {

/// What a message box shows beside its text.
enum class MessageIcon { Plain, Information, Exclamation, Critical };

/// The answer to a question with two buttons.
enum class Answer { Yes, No };

/// One choice of a file dialog. A cancelled dialog gives no value where these are optional.
struct FileRequest {
    QString fileName;      ///< preset name, may hold a folder and a pattern ("dat/*.bin")
    QString filter;        ///< "Text|*.txt|Sheet|*.xls": pairs of a label and a pattern
    int filterIndex = 1;   ///< the filter shown first, counted from 1
    QString initialFolder; ///< where to start when fileName names no folder
};
struct FileChoice {
    QString fileName;
    int filterIndex = 1;
};

/// The dialogs of the desktop, behind one interface so that tests answer them by script. None of them asks whether an
/// existing file may be replaced: that question is the program's.
class Dialogs {
public:
    Dialogs() = default;
    Dialogs(const Dialogs&) = delete;
    Dialogs& operator=(const Dialogs&) = delete;
    virtual ~Dialogs() = default;

    [[nodiscard]] virtual std::optional<FileChoice> ShowOpen(const FileRequest& request) = 0;
    [[nodiscard]] virtual std::optional<FileChoice> ShowSave(const FileRequest& request) = 0;
    /// The title says what is coloured.
    [[nodiscard]] virtual std::optional<Colour> ShowColor(Colour start, const QString& title) = 0;
    virtual void message(const QString& text, MessageIcon icon, const QString& title = {}) = 0;
    [[nodiscard]] virtual Answer question(const QString& text, MessageIcon icon, const QString& title) = 0;
    /// The text typed, or nothing where the box was cancelled.
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
