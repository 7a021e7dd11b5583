// SPDX-License-Identifier: MIT
#include "shell/helpcommands.h"

#include "platform/desktop/windowtofront.h"
#include "platform/files/programfolder.h"
#include "shell/frmabout.h"

#include <QFileInfo>
#include <QWidget>

namespace sixtrace {

namespace {

/// Compiled help where the desktop opens such files, pages elsewhere.
constexpr std::array kEndings {
#if defined(Q_OS_WIN)
    u".chm",
#endif
        u".html",
};

} // namespace

HelpCommands::HelpCommands(publicM& model, Surroundings surroundings, QWidget& form)
    : QObject(&form)
    , m_model(model)
    , m_surroundings(std::move(surroundings))
    , m_form(form) {}

void HelpCommands::mnuContent_Click() {
    const QString name = withSeparator(m_surroundings.applicationFolder()) +
                         (m_model.LanguageId == 0 ? QStringLiteral("vrt_c") : QStringLiteral("vrt_e"));
    for (const char16_t* ending : kEndings) {
        const QString file = name + QString::fromUtf16(ending);
        if (QFileInfo::exists(file) && m_surroundings.openFile) {
            m_surroundings.openFile(file);
            return;
        }
    }
}

void HelpCommands::mnuAbout_Click() {
    // One that was closed is gone as soon as events run again; it does not come back.
    if (m_about.isNull() || !m_about->isVisible()) {
        m_about = new frmAbout(m_model, m_surroundings.dialogs, &m_form);
    }
    bringToFront(*m_about);
}

} // namespace sixtrace
