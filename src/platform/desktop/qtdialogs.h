// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop/dialogs.h"

namespace sixtrace {

/// The dialogs of the desktop. Each is shown over the window that is active when it is called.
class QtDialogs : public Dialogs {
public:
    std::optional<FileChoice> ShowOpen(const FileRequest& request) override;
    std::optional<FileChoice> ShowSave(const FileRequest& request) override;
    std::optional<Colour> ShowColor(Colour start, const QString& title) override;
    void message(const QString& text, MessageIcon icon, const QString& title) override;
    Answer question(const QString& text, MessageIcon icon, const QString& title) override;
    std::optional<QString> input(const QString& prompt, const QString& title, const QString& preset) override;
};

/// Converts the filters of a FileRequest, "label|pattern|label|pattern", to those of the toolkit's file dialog.
[[nodiscard]] QStringList nameFilters(const QString& pairs);

/// Translates the toolkit's own dialogs and buttons into Chinese, or puts them back into English. Holds for all that is
/// shown from then on. Where the toolkit's Chinese is not installed they stay English.
void showToolkitInChinese();
void showToolkitInEnglish();

} // namespace sixtrace
