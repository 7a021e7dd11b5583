// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <QObject>

#include <functional>

class QAction;
class QWidget;

namespace sixtrace {

class ToolBar;

/// The two language commands of the main window. Owned by it, as are its widgets.
class LanguageMenus : public QObject {
public:
    struct Widgets {
        QWidget* form;
        ToolBar* Toolbar1;
        QAction* mnuEnglish;
        QAction* mnuChinese;
    };

    /// `afterSwitch` retitles what code composes itself.
    LanguageMenus(publicM& model, const Widgets& widgets, std::function<void()> afterSwitch, QObject* parent);

    void mnuChinese_Click();
    void mnuEnglish_Click();
    /// Ticks the menu of a language: 0 is Chinese, anything else English.
    void tick(int languageId);

private:
    void switchTo(std::int16_t languageId);

    publicM& m_model;
    Widgets m_widgets;
    std::function<void()> m_afterSwitch;
};

} // namespace sixtrace
