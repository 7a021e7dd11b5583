// SPDX-License-Identifier: MIT
#include "shell/everydayways.h"

#include "platform/controls/arrowpair.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/markerlabel.h"
#include "platform/controls/picturebox.h"
#include "platform/controls/positionbar.h"
#include "platform/controls/ticklist.h"
#include "shell/accessiblenames.h"
#include "shell/capturedrop.h"
#include "shell/capturefaults.h"
#include "shell/frmcom.h"
#include "shell/readoutcopy.h"
#include "shell/screenwords.h"
#include "view/cursorkeys.h"
#include "view/markerkeys.h"

#include <QAction>
#include <QMenuBar>

#include <array>
#include <vector>

namespace sixtrace {

namespace {

struct Shortcut {
    const char16_t* item;
    const char16_t* keys;
};

constexpr std::array kShortcuts{
    Shortcut{u"mnuOpen", u"Ctrl+O"},    Shortcut{u"mnuPrintView", u"Ctrl+Shift+P"},
    Shortcut{u"mnuPrint", u"Ctrl+P"},   Shortcut{u"mnuExit", u"Ctrl+Q"},
    Shortcut{u"mnuTabular", u"Ctrl+T"}, Shortcut{u"mnuGraticule", u"Ctrl+G"},
    Shortcut{u"mnuAcquire", u"F5"},     Shortcut{u"mnuContent", u"F1"},
};

/// From the list over its channel's controls to the cursors and markers, which stand in the walk while they are shown.
void setTabOrder(const FrmComControls& c, const CursorKeys& cursors) {
    std::vector<QWidget*> order{c.List1, c.Combo1, c.UpDown2, c.Combo2, c.UpDown1, c.Combo3};
    order.insert(order.end(), cursors.handles().begin(), cursors.handles().end());
    order.push_back(c.VScroll1);
    order.insert(order.end(), c.image1.begin(), c.image1.end());
    // The last one first, each directly behind the list. The other way round the markers, which were made before the
    // list, would already follow the bar in the circle and stay where the walk begins.
    for (std::size_t i = order.size() - 1; i > 0; --i) {
        QWidget::setTabOrder(order.front(), order[i]);
    }
}

} // namespace

void setStandardShortcuts(const QMenuBar& bar) {
    for (const Shortcut& shortcut : kShortcuts) {
        bar.findChild<QAction*>(QString::fromUtf16(shortcut.item))
            ->setShortcut(QKeySequence(QString::fromUtf16(shortcut.keys), QKeySequence::PortableText));
    }
}

void addEverydayWays(FrmCom& form, const EverydayAreas& areas) {
    const FrmComControls& c = areas.controls;
    setStandardShortcuts(*form.menuBar());
    const auto* cursorKeys = new CursorKeys(areas.mouse, *c.Picture2, {c.Line1[0], c.Line1[1], c.Line2[0], c.Line2[1]},
                                            areas.showState, &form);
    new MarkerKeys(areas.mouse, c.image1, areas.showState, &form);
    setTabOrder(c, *cursorKeys);
    keepAccessibleNames(form, areas.mnuChinese);
    new ReadoutCopy(c, form);
    markFaultsOfCaptures(*c.Label4);
    new ScreenWords(c, areas.mnuChinese, &form);
    new CaptureDrop(form, areas.openDropped);
}

} // namespace sixtrace
