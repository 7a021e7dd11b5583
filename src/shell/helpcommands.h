// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>

namespace sixtrace {

class Dialogs;

/// The commands of the help menu. Owned by the window.
class HelpCommands : public QObject {
public:
    struct Services {
        Dialogs& dialogs;
        std::function<QString()> applicationFolder;
        /// Opens a file in the program that the desktop has for it.
        std::function<void(const QString& path)> openFile;
    };

    HelpCommands(publicM& model, Services services, QWidget& form);

    /// Opens the help in the current language. Does nothing where the file is missing.
    void mnuContent_Click();
    void mnuAbout_Click();

private:
    publicM& m_model;
    Services m_services;
    QWidget& m_form;
    QPointer<QWidget> m_about; ///< null while the about box is not loaded
};

} // namespace sixtrace
