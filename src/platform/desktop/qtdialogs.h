// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop/dialogs.h"

class QWidget;

namespace sixtrace {

/// The desktop's dialogs. They stand over the window that is active when they are asked for.
class QtDialogs : public Dialogs {
public:
    std::optional<FileChoice> ShowOpen(const FileRequest& request) override;
    std::optional<FileChoice> ShowSave(const FileRequest& request) override;
    std::optional<Colour> ShowColor(Colour start, const QString& title) override;
    void message(const QString& text, MessageIcon icon, const QString& title) override;
    Answer question(const QString& text, MessageIcon icon, const QString& title) override;
    std::optional<QString> input(const QString& prompt, const QString& title, const QString& preset) override;
};

/// The name filters of a file dialog from pairs "label|pattern|label|pattern".
[[nodiscard]] QStringList nameFilters(const QString& pairs);

} // namespace sixtrace
