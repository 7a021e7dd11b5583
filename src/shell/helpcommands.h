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
    struct Surroundings {
        Dialogs& dialogs;
        std::function<QString()> applicationFolder;
        /// Hands a file to the desktop's program for it.
        std::function<void(const QString& path)> openFile;
    };

    HelpCommands(publicM& model, Surroundings surroundings, QWidget& form);

    /// Opens the help in the language that is ticked. A missing file is passed over in silence.
    void mnuContent_Click();
    void mnuAbout_Click();

private:
    publicM& m_model;
    Surroundings m_surroundings;
    QWidget& m_form;
    QPointer<QWidget> m_about; ///< while it is loaded
};

} // namespace sixtrace
