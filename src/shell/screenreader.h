// SPDX-License-Identifier: MIT
#pragma once

#include "shell/frmcomcontrols.h"

#include <QObject>
#include <QTimer>

class QAction;

namespace sixtrace {

/// Names the controls that have no caption for assistive tools, in the language whose menu item is ticked, now and
/// after each switch of the language.
void keepAccessibleNames(QWidget& form, QAction& mnuChinese);

/// What a screen reader says about the screen: the selected channel, its time base and volt range, and the cursor
/// readouts that are shown. Announces a change once, after the event that caused it. Owned by the window.
class ScreenDescription : public QObject {
public:
    ScreenDescription(const FrmComControls& controls, const QAction& mnuChinese, QObject* parent);

    [[nodiscard]] QString text() const;

private:
    void watchControls();
    void announceChange();

    FrmComControls m_controls;
    const QAction& m_mnuChinese;
    QTimer m_afterEvent;
    QString m_announced;
};

} // namespace sixtrace
