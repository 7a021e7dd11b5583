// SPDX-License-Identifier: MIT
#pragma once

#include "capture/screenstate.h"

#include <QString>

#include <functional>

namespace sixtrace {

class Dialogs;

/// The Open and New commands. A capture that was fetched is loaded by SimpleWav directly.
class CaptureLoading {
public:
    /// `applicationFolder` gives App.Path, with or without a separator at its end.
    CaptureLoading(const Scope& scope, Dialogs& dialogs, std::function<QString()> applicationFolder)
        : m_scope(scope)
        , m_dialogs(dialogs)
        , m_applicationFolder(std::move(applicationFolder)) {}

    void mnuOpen_Click();
    /// Opens a file that was dropped onto the window or double-clicked in the file manager, as mnuOpen_Click opens the
    /// one that was chosen in its dialog.
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
