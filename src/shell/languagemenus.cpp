// SPDX-License-Identifier: MIT
#include "shell/languagemenus.h"

#include "capture/applylanguage.h"
#include "capture/mdllan.h"
#include "capture/settings.h"
#include "platform/controls/toolbar.h"
#include "platform/desktop/toolkitlanguage.h"

#include <QAction>

#include <array>

namespace sixtrace {

namespace {

struct ToolTip {
    int button;
    const char16_t* chinese;
    const char16_t* english;
};

constexpr std::array kToolTips{
    ToolTip{2, u"打开", u"Open"},          ToolTip{3, u"打印预览", u"Print Preview"},
    ToolTip{4, u"打印", u"Print"},         ToolTip{6, u"数值列表", u"Data Table"},
    ToolTip{7, u"网格", u"Gridlines"},     ToolTip{8, u"数据线", u"Data Line"},
    ToolTip{9, u"数据点", u"Data Point"},  ToolTip{11, u"端口设置", u"ports-settings"},
    ToolTip{12, u"手动获取", u"Get Data"}, ToolTip{13, u"自动获取", u"Auto Get Data"},
    ToolTip{14, u"停止", u"Stop"},         ToolTip{16, u"帮助", u"Help"},
};

} // namespace

LanguageMenus::LanguageMenus(publicM& model, const Widgets& widgets, std::function<void()> afterSwitch, QObject* parent)
    : QObject(parent)
    , m_model(model)
    , m_widgets(widgets)
    , m_afterSwitch(std::move(afterSwitch)) {
    connect(m_widgets.mnuChinese, &QAction::triggered, this, &LanguageMenus::mnuChinese_Click);
    connect(m_widgets.mnuEnglish, &QAction::triggered, this, &LanguageMenus::mnuEnglish_Click);
}

void LanguageMenus::mnuChinese_Click() {
    switchTo(0);
}
void LanguageMenus::mnuEnglish_Click() {
    switchTo(1);
}

void LanguageMenus::tick(int languageId) {
    m_widgets.mnuEnglish->setChecked(languageId != 0);
    m_widgets.mnuChinese->setChecked(languageId == 0);
}

void LanguageMenus::switchTo(std::int16_t languageId) {
    tick(languageId);
    m_model.LanguageId = languageId;
    writeIni(QStringLiteral("Common"), QStringLiteral("Language"), QString::number(languageId), m_model.IniFile);
    setToolkitLanguage(languageId);
    SetLanFile(m_model, languageId);
    ApplyLanguage(*m_widgets.form, m_model);
    for (const ToolTip& tip : kToolTips) {
        m_widgets.Toolbar1->setToolTipText(tip.button, QString::fromUtf16(languageId == 0 ? tip.chinese : tip.english));
    }
    m_afterSwitch();
}

} // namespace sixtrace
