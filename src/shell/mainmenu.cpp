// SPDX-License-Identifier: MIT
#include "shell/mainmenu.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <array>

namespace sixtrace {

namespace {

enum class Kind { Item, Ticked, Unticked, Separator, Submenu };
enum class Shown { Yes, No };

struct Entry {
    const char16_t* menu; ///< name of the menu that holds the entry, null for the menu bar
    const char16_t* name;
    const char16_t* caption;
    Kind kind = Kind::Item;
    Shown shown = Shown::Yes;
    const char16_t* shortcut = nullptr; ///< hidden entries have none, so that they stay out of reach
};

constexpr std::array kEntries{
    Entry{nullptr, u"mnuFile", u"文件(&F)", Kind::Submenu},
    Entry{u"mnuFile", u"mnuNew", u"新建", Kind::Item, Shown::No},
    Entry{u"mnuFile", u"mnuOpen", u"打开", Kind::Item, Shown::Yes, u"Ctrl+O"},
    Entry{u"mnuFile", u"mnuSaveAs", u"另存为位图", Kind::Item, Shown::No},
    Entry{u"mnuFile", u"mnuBar1", u"-", Kind::Separator},
    Entry{u"mnuFile", u"mnuPageSet", u"页面设置"},
    Entry{u"mnuFile", u"mnuPrintView", u"打印预览", Kind::Item, Shown::Yes, u"Ctrl+Shift+P"},
    Entry{u"mnuFile", u"mnuPrint", u"打印", Kind::Item, Shown::Yes, u"Ctrl+P"},
    Entry{u"mnuFile", u"mnuPrintSet", u"打印机设置"},
    Entry{u"mnuFile", u"mnuBar2", u"-", Kind::Separator},
    Entry{u"mnuFile", u"mnuExit", u"退出", Kind::Item, Shown::Yes, u"Ctrl+Q"},
    Entry{nullptr, u"mnuView", u"视图(&V)", Kind::Submenu},
    Entry{u"mnuView", u"mnuWaveXY", u"波形XY", Kind::Ticked},
    Entry{u"mnuView", u"mnuTabular", u"数值列表", Kind::Item, Shown::Yes, u"Ctrl+T"},
    Entry{u"mnuView", u"mnuBar3", u"-", Kind::Separator, Shown::No},
    Entry{u"mnuView", u"mnuBar7", u"-", Kind::Separator},
    Entry{u"mnuView", u"MnuGridColor", u"GridColor"},
    Entry{u"mnuView", u"mnubackgroundcolor", u"Background Color"},
    Entry{u"mnuView", u"mnuGraticule", u"网格", Kind::Ticked, Shown::Yes, u"Ctrl+G"},
    Entry{u"mnuView", u"mnuTools", u"工具栏", Kind::Ticked, Shown::No},
    Entry{u"mnuView", u"mnuStatus", u"状态栏", Kind::Ticked, Shown::No},
    Entry{nullptr, u"mnuFormat", u"格式(&O)", Kind::Submenu},
    Entry{u"mnuFormat", u"mnuLine", u"数据线", Kind::Ticked},
    Entry{u"mnuFormat", u"mnuPoint", u"数据点", Kind::Unticked},
    Entry{u"mnuFormat", u"bar1", u"-", Kind::Separator, Shown::No},
    Entry{nullptr, u"mnuCom", u"通讯(&C)", Kind::Submenu},
    Entry{u"mnuCom", u"mnuComSet", u"串口设置"},
    Entry{u"mnuCom", u"mnubar11", u"-", Kind::Separator},
    Entry{u"mnuCom", u"mnuAcquire", u"手动获取(&A)", Kind::Item, Shown::Yes, u"F5"},
    Entry{u"mnuCom", u"mnubar22", u"-", Kind::Separator},
    Entry{u"mnuCom", u"mnuautoget", u"自动获取", Kind::Unticked},
    Entry{u"mnuCom", u"mnutimeselect", u"时间间隔", Kind::Submenu, Shown::No},
    Entry{u"mnutimeselect", u"mnuone", u"1S", Kind::Unticked},
    Entry{u"mnutimeselect", u"mnutwo", u"2S", Kind::Unticked},
    Entry{u"mnutimeselect", u"mnuthree", u"3S", Kind::Unticked},
    Entry{u"mnutimeselect", u"mnufive", u"5S", Kind::Unticked},
    Entry{u"mnuCom", u"mnustop", u"停止", Kind::Unticked},
    Entry{u"mnuCom", u"mnurun", u"运行", Kind::Unticked, Shown::No},
    Entry{nullptr, u"mnuLanguage", u"语言(&L)", Kind::Submenu},
    Entry{u"mnuLanguage", u"mnuEnglish", u"English", Kind::Unticked},
    Entry{u"mnuLanguage", u"mnuChinese", u"Chinese", Kind::Unticked},
    Entry{nullptr, u"mnuHelp", u"帮助(&H)", Kind::Submenu},
    Entry{u"mnuHelp", u"mnuContent", u"目录", Kind::Item, Shown::Yes, u"F1"},
    Entry{u"mnuHelp", u"mnuBar5", u"-", Kind::Separator},
    Entry{u"mnuHelp", u"mnuAbout", u"关于"},
};

/// Puts the tick of an item back when the user chooses it: the toolkit changes it, but the handlers decide.
void keepTick(QAction& action) {
    QObject::connect(&action, &QAction::triggered, &action, [&action](bool ticked) { action.setChecked(!ticked); });
}

QAction* makeAction(QMenuBar& bar, QMenu* menu, const Entry& entry) {
    const QString name = QString::fromUtf16(entry.name);
    const QString caption = QString::fromUtf16(entry.caption);
    if (entry.kind == Kind::Submenu || menu == nullptr) {
        QMenu* submenu = menu != nullptr ? menu->addMenu(caption) : bar.addMenu(caption);
        submenu->setObjectName(name);
        return submenu->menuAction();
    }
    if (entry.kind == Kind::Separator) {
        return menu->addSeparator();
    }
    QAction* action = menu->addAction(caption);
    if (entry.kind != Kind::Item) {
        action->setCheckable(true);
        action->setChecked(entry.kind == Kind::Ticked);
        keepTick(*action);
    }
    return action;
}

} // namespace

void fillMainMenu(QMenuBar& bar) {
    for (const Entry& entry : kEntries) {
        QMenu* menu = entry.menu != nullptr ? bar.findChild<QMenu*>(QString::fromUtf16(entry.menu)) : nullptr;
        QAction* action = makeAction(bar, menu, entry);
        action->setObjectName(QString::fromUtf16(entry.name));
        action->setVisible(entry.shown == Shown::Yes);
        if (entry.shortcut != nullptr) {
            action->setShortcut(QKeySequence(QString::fromUtf16(entry.shortcut), QKeySequence::PortableText));
        }
    }
}

} // namespace sixtrace
