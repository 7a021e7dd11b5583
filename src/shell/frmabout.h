// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <QWidget>

namespace sixtrace {

class Dialogs;

/// The about box: name and version of the program, and a button that starts the system's own information program. The
/// window deletes itself when it is closed.
class frmAbout : public QWidget {
public:
    frmAbout(publicM& model, Dialogs& dialogs, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void StartSysInfo();

    Dialogs& m_dialogs;
};

} // namespace sixtrace
