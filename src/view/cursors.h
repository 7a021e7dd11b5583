// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <QObject>

#include <array>
#include <vector>

namespace sixtrace {

class CursorLine;
class ListCombo;
class ReadoutLabel;

/// Which cursors are shown, by row of Combo3.
enum class CursorType { None = 0, Voltage = 1, Time = 2, Both = 3 };

/// The two cursor pairs over the screen and the labels that read them out. Owned by the window, as are its widgets.
class Cursors : public QObject {
public:
    struct Widgets {
        std::array<CursorLine*, 2> Line1; ///< voltage cursors
        std::array<CursorLine*, 2> Line2; ///< time cursors
        ListCombo* Combo3;
        std::vector<ReadoutLabel*> voltageLabels; ///< shown with Line1
        std::vector<ReadoutLabel*> timeLabels;    ///< shown with Line2
    };

    Cursors(publicM& model, Widgets widgets, QObject* parent);

    void Combo3_Click();
    void UpdateVoltCursors();
    void printTime();

private:
    publicM& m_model;
    Widgets m_widgets;
};

} // namespace sixtrace
