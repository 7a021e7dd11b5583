// SPDX-License-Identifier: MIT
#include "shell/program.h"

#include "platform/desktop/windowtofront.h"
#include "shell/frmsplash.h"

#include <QApplication>

namespace sixtrace {

Program::Program(FrmComServices services)
    : m_services(std::move(services))
    , m_model(std::make_unique<publicM>())
    , m_splash(std::make_unique<frmSplash>([this] { loadMain(); }, [this] { showMain(); })) {}

Program::~Program() = default;

void Program::start() {
    m_splash->show();
}

void Program::loadMain() {
    if (m_frmCom == nullptr) {
        m_frmCom = std::make_unique<FrmCom>(*m_model, m_services);
    }
}

void Program::showMain() {
    loadMain(); // a splash that is dismissed before its first tick has not loaded it
    m_frmCom->show();
    m_calls.reach({.raise = [this] { bringToFront(*m_frmCom); },
                   .isBusy = [] { return QApplication::activeModalWidget() != nullptr; },
                   .open = [this](const QString& path) { m_frmCom->openFromDesktop(path); }});
}

} // namespace sixtrace
