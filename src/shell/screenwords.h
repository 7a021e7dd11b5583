// SPDX-License-Identifier: MIT
#pragma once

#include "shell/frmcomcontrols.h"

#include <QObject>
#include <QTimer>

class QAction;

namespace sixtrace {

/// What a screen reader says of the screen: the selected channel, its ranges, and the cursor readouts that are shown.
/// Follows the controls that it reads, and announces each change once, after the event that brought it. Owned by the
/// window.
class ScreenWords : public QObject {
public:
    ScreenWords(const FrmComControls& controls, const QAction& mnuChinese, QObject* parent);

    [[nodiscard]] QString text() const;

private:
    void follow();
    void announce();

    FrmComControls m_controls; ///< a copy: it is pointers only
    const QAction& m_mnuChinese;
    QTimer m_soon;
    QString m_announced;
};

} // namespace sixtrace
