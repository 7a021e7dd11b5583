// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "shell/desktopcalls.h"
#include "shell/frmcom.h"

#include <memory>

namespace sixtrace {

class frmSplash;

/// The program from its start on: the splash, which loads the main window unseen behind it and shows it when it goes,
/// and the desktop's calls, which reach the main window from then on. What it is given outlives it.
class Program {
public:
    explicit Program(FrmComServices services);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Shows the splash; all else follows by itself.
    void start();

    [[nodiscard]] frmSplash& splash() { return *m_splash; }
    /// The main window, or null before it is loaded.
    [[nodiscard]] FrmCom* frmCom() const { return m_frmCom.get(); }
    [[nodiscard]] DesktopCalls& calls() { return m_calls; }

private:
    void loadMain();
    void showMain();

    FrmComServices m_services;
    std::unique_ptr<publicM> m_model;
    std::unique_ptr<FrmCom> m_frmCom;
    DesktopCalls m_calls;
    std::unique_ptr<frmSplash> m_splash;
};

} // namespace sixtrace
