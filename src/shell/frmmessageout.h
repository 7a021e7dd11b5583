// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <QLabel>
#include <QWidget>

namespace sixtrace {

/// The message window of the serial transfer. A transfer writes its last message into the label, but nothing ever shows
/// the window. Its button hides it.
class FrmMessageOut : public QWidget {
public:
    explicit FrmMessageOut(publicM& model);

    [[nodiscard]] QLabel& Label1() const { return *m_Label1; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLabel* m_Label1;
};

} // namespace sixtrace
