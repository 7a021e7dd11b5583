// SPDX-License-Identifier: MIT
#pragma once

#include "capture/screenstate.h"

#include <QString>

#include <functional>

namespace sixtrace {

class Dialogs;

/// The Open and New commands. Whoever fetches a capture loads it by SimpleWav itself.
class CaptureLoading {
public:
    /// `applicationFolder` gives App.Path, with or without a separator at its end.
    CaptureLoading(const Scope& scope, Dialogs& dialogs, std::function<QString()> applicationFolder)
        : m_scope(scope)
        , m_dialogs(dialogs)
        , m_applicationFolder(std::move(applicationFolder)) {}

    void mnuOpen_Click();
    /// The same with a file that the desktop hands over, dropped onto the window or double-clicked, in place of one
    /// that was chosen in the dialog.
    void openDropped(const QString& path);
    void mnuNew_Click();
    /// The older reader with its own dialog and its two messages. No command reaches it.
    void OpenBinFile();

private:
    void beginOpen();
    void openChosen(const QString& path);

    Scope m_scope;
    Dialogs& m_dialogs;
    std::function<QString()> m_applicationFolder;
};

} // namespace sixtrace
