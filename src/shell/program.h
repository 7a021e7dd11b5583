// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "shell/desktopcalls.h"
#include "shell/frmcom.h"

#include <memory>

namespace sixtrace {

class frmSplash;

/// The program from its start: the splash, the main window that the splash loads and shows, and the calls of the
/// desktop, which reach the main window once it is shown. The services have to outlive the program.
class Program {
public:
    explicit Program(FrmComServices services);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Shows the splash, whose timer does the rest.
    void start();

    [[nodiscard]] frmSplash& splash() { return *m_splash; }
    /// Null before the main window is loaded.
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
