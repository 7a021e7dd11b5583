// SPDX-License-Identifier: MIT
#include "view/cursors.h"

#include "platform/labels.h"
#include "platform/listcombo.h"
#include "platform/picturebox.h"

namespace sixtrace {

Cursors::Cursors(publicM& model, Widgets widgets, QObject* parent)
    : QObject(parent)
    , m_model(model)
    , m_widgets(std::move(widgets)) {
    connect(m_widgets.Combo3, &ListCombo::Click, this, &Cursors::Combo3_Click);
}

void Cursors::Combo3_Click() {
    if (m_model.AutoRun) {
        return;
    }
    const auto type = static_cast<CursorType>(m_widgets.Combo3->ListIndex());
    const bool voltage = type == CursorType::Voltage || type == CursorType::Both;
    const bool time = type == CursorType::Time || type == CursorType::Both;
    for (std::size_t i = 0; i < m_widgets.Line1.size(); ++i) {
        m_widgets.Line1[i]->setVisible(voltage);
        m_widgets.Line2[i]->setVisible(time);
    }
    for (ReadoutLabel* label : m_widgets.voltageLabels) {
        label->setVisible(voltage);
    }
    for (ReadoutLabel* label : m_widgets.timeLabels) {
        label->setVisible(time);
    }
}

// The readouts themselves come with the cursors' mouse handling; until then their labels stay empty.
void Cursors::UpdateVoltCursors() {}
void Cursors::printTime() {}

} // namespace sixtrace
