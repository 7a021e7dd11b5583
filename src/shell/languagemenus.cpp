// SPDX-License-Identifier: MIT
#include "shell/languagemenus.h"

#include "capture/applylanguage.h"
#include "capture/settings.h"
#include "platform/desktop/qtdialogs.h"
#include "shell/maintoolbar.h"

#include <QAction>

namespace sixtrace {

LanguageMenus::LanguageMenus(publicM& model, const Widgets& widgets, std::function<void()> afterSwitch, QObject* parent)
    : QObject(parent)
    , m_model(model)
    , m_widgets(widgets)
    , m_afterSwitch(std::move(afterSwitch)) {
    connect(m_widgets.mnuChinese, &QAction::triggered, this, &LanguageMenus::mnuChinese_Click);
    connect(m_widgets.mnuEnglish, &QAction::triggered, this, &LanguageMenus::mnuEnglish_Click);
}

void LanguageMenus::mnuChinese_Click() {
    switchTo(Language::Chinese);
}

void LanguageMenus::mnuEnglish_Click() {
    switchTo(Language::English);
}

void LanguageMenus::tick(Language language) {
    m_widgets.mnuEnglish->setChecked(language == Language::English);
    m_widgets.mnuChinese->setChecked(language == Language::Chinese);
}

void LanguageMenus::switchTo(Language language) {
    tick(language);
    m_model.LanguageId = language == Language::Chinese ? 0 : 1;
    writeIni(setting::kLanguage, QString::number(m_model.LanguageId), m_model.IniFile);
    if (language == Language::Chinese) {
        showToolkitInChinese();
    } else {
        showToolkitInEnglish();
    }
    SetLanFile(m_model, m_model.LanguageId);
    ApplyLanguage(*m_widgets.form, m_model);
    translateMainToolbar(*m_widgets.Toolbar1, language);
    m_afterSwitch();
}

} // namespace sixtrace
