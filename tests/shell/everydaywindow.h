// SPDX-License-Identifier: MIT
#pragma once

#include "shell/capturewindow.h"
#include "view/cursorkeys.h"
#include "view/cursors.h"

#include <QTest>

namespace sixtrace::test {

/// The main window with a capture, operated by keys.
class EverydayWindow : public CaptureWindow {
protected:
    void openFlatActive() {
        openFlat();
        form->activateWindow();
        QApplication::setActiveWindow(form.get());
    }
    [[nodiscard]] CursorHandle& handle(const char* name) const {
        return dynamic_cast<CursorHandle&>(control<QWidget>(name));
    }
    void chooseCursors(CursorType type) { cursorType().setListIndex(static_cast<int>(type)); }
    void key(QWidget& widget, Qt::Key key) {
        widget.setFocus(Qt::TabFocusReason);
        QTest::keyClick(&widget, key);
    }
    QStringList walk(int steps) {
        QStringList walked;
        for (int i = 0; i < steps; ++i) {
            QTest::keyClick(form.get(), Qt::Key_Tab);
            walked.append(form->focusWidget() != nullptr ? form->focusWidget()->objectName() : QString());
        }
        return walked;
    }
};

} // namespace sixtrace::test
