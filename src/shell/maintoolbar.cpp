// SPDX-License-Identifier: MIT
#include "shell/maintoolbar.h"

#include "platform/controls/toolbar.h"

#include <QAction>
#include <QMenuBar>

#include <array>

namespace sixtrace {

namespace {

struct Tool {
    int button;
    const char16_t* item; ///< name of the menu item that a click triggers
    const char16_t* chinese;
    const char16_t* english;
};

/// Buttons 1, 5, 10 and 15 are gaps.
constexpr std::array kTools{
    Tool{2, u"mnuOpen", u"打开", u"Open"},
    Tool{3, u"mnuPrintView", u"打印预览", u"Print Preview"},
    Tool{4, u"mnuPrint", u"打印", u"Print"},
    Tool{6, u"mnuTabular", u"数值列表", u"Data Table"},
    Tool{7, u"mnuGraticule", u"网格", u"Gridlines"},
    Tool{8, u"mnuLine", u"数据线", u"Data Line"},
    Tool{9, u"mnuPoint", u"数据点", u"Data Point"},
    Tool{11, u"mnuComSet", u"端口设置", u"ports-settings"},
    Tool{12, u"mnuAcquire", u"手动获取", u"Get Data"},
    Tool{13, u"mnuautoget", u"自动获取", u"Auto Get Data"},
    Tool{kStopButton, u"mnustop", u"停止", u"Stop"},
    Tool{16, u"mnuContent", u"帮助", u"Help"},
};

QAction& itemOf(const Tool& tool, const QMenuBar& menus) {
    return *menus.findChild<QAction*>(QString::fromUtf16(tool.item));
}

void Toolbar1_ButtonClick(const QMenuBar& menus, int index) {
    for (const Tool& tool : kTools) {
        if (tool.button == index) {
            itemOf(tool, menus).trigger();
        }
    }
}

} // namespace

ToolBar* makeMainToolbar(QWidget& parent) {
    ToolPictures::Names pictures;
    for (const Tool& tool : kTools) {
        pictures.at(static_cast<std::size_t>(tool.button)) =
            QStringLiteral(":/sixtrace/tool%1.svg").arg(tool.button, 2, 10, QLatin1Char('0'));
    }
    return new ToolBar(QStringLiteral("Toolbar1"), pictures, &parent);
}

void connectMainToolbar(ToolBar& Toolbar1, const QMenuBar& menus) {
    QObject::connect(&Toolbar1, &ToolBar::ButtonClick, &menus,
                     [&menus](int index) { Toolbar1_ButtonClick(menus, index); });
    for (const Tool& tool : kTools) {
        if (tool.button == kStopButton) {
            continue; // it acts at once and shows no state
        }
        ToolButton* const button = &Toolbar1.button(tool.button);
        const QAction& item = itemOf(tool, menus);
        button->setTicked(item.isChecked());
        QObject::connect(&item, &QAction::toggled, button, [button](bool ticked) { button->setTicked(ticked); });
    }
}

void translateMainToolbar(ToolBar& Toolbar1, Language language) {
    for (const Tool& tool : kTools) {
        Toolbar1.setToolTipText(tool.button,
                                QString::fromUtf16(language == Language::Chinese ? tool.chinese : tool.english));
    }
}

} // namespace sixtrace
