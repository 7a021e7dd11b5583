// SPDX-License-Identifier: MIT
#pragma once

#include "capture/mdllan.h"

#include <QObject>

#include <functional>

class QAction;
class QWidget;

namespace sixtrace {

class ToolBar;

/// The two language commands of the main window. Owned by the window, as are the widgets.
class LanguageMenus : public QObject {
public:
    struct Widgets {
        QWidget* form;
        ToolBar* Toolbar1;
        QAction* mnuEnglish;
        QAction* mnuChinese;
    };

    /// `afterSwitch` is called at the end of a switch, to rewrite the texts that do not come from the language file.
    LanguageMenus(publicM& model, const Widgets& widgets, std::function<void()> afterSwitch, QObject* parent);

    void mnuChinese_Click();
    void mnuEnglish_Click();
    /// Ticks the menu item of a language and unticks the other one.
    void tick(Language language);

private:
    void switchTo(Language language);

    publicM& m_model;
    Widgets m_widgets;
    std::function<void()> m_afterSwitch;
};

} // namespace sixtrace
