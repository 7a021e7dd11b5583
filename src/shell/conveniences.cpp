// SPDX-License-Identifier: MIT
#include "shell/conveniences.h"

#include "capture/capturecheck.h"
#include "platform/controls/arrowpair.h"
#include "platform/controls/labels.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/markerlabel.h"
#include "platform/controls/picturebox.h"
#include "platform/controls/positionbar.h"
#include "platform/controls/ticklist.h"
#include "shell/capturedrop.h"
#include "shell/frmcom.h"
#include "shell/readoutcopy.h"
#include "shell/screenreader.h"
#include "view/cursorkeys.h"
#include "view/markerkeys.h"

#include <vector>

namespace sixtrace {

namespace {

/// Tab leads from the channel list to the controls of the channel, then to the cursors, the position bar and the
/// markers. Cursors and markers take part while they are shown.
void setTabOrder(const FrmComControls& c, const CursorKeys& cursors) {
    std::vector<QWidget*> order{c.List1, c.Combo1, c.UpDown2, c.Combo2, c.UpDown1, c.Combo3};
    order.insert(order.end(), cursors.handles().begin(), cursors.handles().end());
    order.push_back(c.VScroll1);
    order.insert(order.end(), c.image1.begin(), c.image1.end());
    // Each control is put directly after the list, the last one first. In the opposite order the markers would stay at
    // the beginning: they were made before the list, so they already come after the bar in the toolkit's circle.
    for (std::size_t i = order.size() - 1; i > 0; --i) {
        QWidget::setTabOrder(order.front(), order[i]);
    }
}

/// From now on the label of the loaded capture's path shows the first fault that a check of the file finds. The check
/// reads the file as the loader does. Loading itself reports nothing.
void markFaultsOfCaptures(PathLabel& Label4) {
    QObject::connect(&Label4, &PathLabel::captionSet, &Label4, [&Label4](const QString& path) {
        if (path.isEmpty()) {
            return;
        }
        const auto faults = checkCapture(path);
        if (!faults.empty()) {
            Label4.setFault(faults.front().text);
        }
    });
}

} // namespace

void addConveniences(FrmCom& form, const FrmComControls& controls, ScreenMouse& mouse, QAction& mnuChinese) {
    const auto showState = [&form] { form.showState(); };
    const auto* cursorKeys =
        new CursorKeys(mouse, *controls.Picture2,
                       {controls.Line1[0], controls.Line1[1], controls.Line2[0], controls.Line2[1]}, showState, &form);
    new MarkerKeys(mouse, controls.image1, showState, &form);
    setTabOrder(controls, *cursorKeys);
    keepAccessibleNames(form, mnuChinese);
    new ReadoutCopy(controls, form);
    markFaultsOfCaptures(*controls.Label4);
    new ScreenDescription(controls, mnuChinese, &form);
    new CaptureDrop(form, [&form](const QString& path) { form.openFromDesktop(path); });
}

} // namespace sixtrace
