// SPDX-License-Identifier: MIT
#include "shell/helpcommands.h"

#include "capture/mdllan.h"
#include "platform/desktop/windowtofront.h"
#include "platform/files/filenames.h"
#include "shell/frmabout.h"

#include <QFileInfo>
#include <QWidget>

namespace sixtrace {

namespace {

/// Only Windows opens compiled help files. The other desktops open pages.
constexpr std::array kEndings {
#if defined(Q_OS_WIN)
    u".chm",
#endif
        u".html",
};

} // namespace

HelpCommands::HelpCommands(publicM& model, Services services, QWidget& form)
    : QObject(&form)
    , m_model(model)
    , m_services(std::move(services))
    , m_form(form) {}

void HelpCommands::mnuContent_Click() {
    const QString name = withSeparator(m_services.applicationFolder()) +
                         (languageOf(m_model) == Language::Chinese ? QStringLiteral("vrt_c") : QStringLiteral("vrt_e"));
    for (const char16_t* ending : kEndings) {
        const QString file = name + QString::fromUtf16(ending);
        if (QFileInfo::exists(file) && m_services.openFile) {
            m_services.openFile(file);
            return;
        }
    }
}

void HelpCommands::mnuAbout_Click() {
    // A window that was closed deletes itself when events run next, so it cannot be shown again.
    if (m_about.isNull() || !m_about->isVisible()) {
        m_about = new frmAbout(m_model, m_services.dialogs, &m_form);
    }
    bringToFront(*m_about);
}

} // namespace sixtrace
