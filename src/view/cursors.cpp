// SPDX-License-Identifier: MIT
#include "view/cursors.h"

#include "platform/labels.h"
#include "platform/listcombo.h"
#include "platform/picturebox.h"
#include "view/geometry.h"

#include <cmath>

namespace sixtrace {

Cursors::Cursors(publicM& model, Widgets widgets, CursorNeighbours& neighbours, QObject* parent)
    : QObject(parent)
    , m_model(model)
    , m_widgets(std::move(widgets))
    , m_neighbours(neighbours) {
    connect(m_widgets.Combo3, &ListCombo::Click, this, &Cursors::Combo3_Click);
    connect(m_widgets.Picture2, &PictureBox::mouseDown, this, &Cursors::Picture2_MouseDown);
    connect(m_widgets.Picture2, &PictureBox::mouseMove, this, &Cursors::Picture2_MouseMove);
    connect(m_widgets.Picture2, &PictureBox::mouseUp, this, &Cursors::Picture2_MouseUp);
}

CursorType Cursors::type() const {
    return static_cast<CursorType>(m_widgets.Combo3->ListIndex());
}
bool Cursors::showsVoltage() const {
    return type() == CursorType::Voltage || type() == CursorType::Both;
}
bool Cursors::showsTime() const {
    return type() == CursorType::Time || type() == CursorType::Both;
}

CursorPlaces Cursors::places() const {
    return {m_widgets.Line1[0]->Y1(), m_widgets.Line1[1]->Y1(), m_widgets.Line2[0]->X1(), m_widgets.Line2[1]->X1()};
}

void Cursors::setPointer(MousePointer pointer) {
    if (pointer == m_pointer) {
        return;
    }
    m_pointer = pointer;
    m_widgets.Picture2->setCursor(pointer == MousePointer::NorthSouth ? Qt::SizeVerCursor
                                  : pointer == MousePointer::EastWest ? Qt::SizeHorCursor
                                                                      : Qt::ArrowCursor);
}

void Cursors::Combo3_Click() {
    if (m_model.AutoRun) {
        return;
    }
    const auto show = [](const auto& things, bool visible) {
        for (auto* thing : things) {
            thing->setVisible(visible);
        }
    };
    show(m_widgets.Line1, showsVoltage());
    show(m_widgets.voltageValues, showsVoltage());
    show(m_widgets.voltageUnits, showsVoltage());
    show(m_widgets.otherVoltageLabels, showsVoltage());
    m_widgets.LabDy->setVisible(showsVoltage());
    show(m_widgets.Line2, showsTime());
    show(m_widgets.timeValues, showsTime());
    show(m_widgets.timeUnits, showsTime());
    show(m_widgets.otherTimeLabels, showsTime());
    m_widgets.LabDx->setVisible(showsTime());

    UpdateVoltCursors();
    if (showsTime()) {
        readTimes(TimeLadder::OfCombo3);
    }
}

void Cursors::readVoltage(std::size_t cursor) {
    const int channel = m_neighbours.selectedRow();
    if (channel < 0) {
        return;
    }
    const CursorReadout readout = voltageAt(m_model, channel, m_widgets.Line1[cursor]->Y1());
    m_widgets.voltageValues[cursor]->setCaption(readout.value);
    m_widgets.voltageUnits[cursor]->setCaption(readout.unit);
}

void Cursors::UpdateVoltCursors() {
    if (!showsVoltage() || m_neighbours.selectedRow() < 0) {
        return;
    }
    readVoltage(0);
    readVoltage(1);
    m_widgets.LabDy->setCaption(
        differenceOf(m_widgets.voltageValues[0]->caption(), m_widgets.voltageValues[1]->caption()));
}

void Cursors::printTime() {
    if (showsTime()) {
        readTimes(TimeLadder::OfPrintTime);
    }
}

void Cursors::readTimes(TimeLadder ladder) {
    const int channel = m_neighbours.selectedRow();
    if (channel < 0 || m_model.ChannelPresent.at(static_cast<std::size_t>(channel)) == 0) {
        return;
    }
    for (std::size_t cursor = 0; cursor < m_widgets.Line2.size(); ++cursor) {
        const auto readout = timeAt(m_model, channel, m_widgets.Line2[cursor]->X1(), ladder);
        if (!readout) {
            return;
        }
        m_widgets.timeValues[cursor]->setCaption(readout->value);
        m_widgets.timeUnits[cursor]->setCaption(readout->unit);
    }
    m_widgets.LabDx->setCaption(differenceOf(m_widgets.timeValues[0]->caption(), m_widgets.timeValues[1]->caption()));
}

CursorHit Cursors::grabbed() const {
    if (YCursorDrag != 0) {
        return YCursorDrag == 1 ? CursorHit::Voltage1 : CursorHit::Voltage2;
    }
    return XCursorDrag == 0 ? CursorHit::None : XCursorDrag == 1 ? CursorHit::Time1 : CursorHit::Time2;
}

void Cursors::grab(CursorHit line) {
    switch (line) {
    case CursorHit::Voltage1:
        YCursorDrag = 1;
        break;
    case CursorHit::Voltage2:
        YCursorDrag = 2;
        break;
    case CursorHit::Time1:
        XCursorDrag = 1;
        break;
    case CursorHit::Time2:
        XCursorDrag = 2;
        break;
    case CursorHit::None:
        break;
    }
}

void Cursors::Picture2_MouseDown(int, double X, double Y) {
    if (m_model.AutoRun) {
        return;
    }
    X = std::floor(X);
    Y = std::floor(Y);
    // Whether a line is shown plays no part: a hidden cursor takes the press all the same.
    if (const CursorHit line = cursorUnder(places(), X, Y); line != CursorHit::None) {
        grab(line);
        return;
    }
    if (m_neighbours.selectedRow() < 0) {
        return;
    }
    const TracePick pick = pickTrace(m_model, X, Y);
    if (pick.pointer) {
        setPointer(*pick.pointer);
    }
    if (pick.failed) {
        return;
    }
    if (pick.channel >= 0) {
        TraceDrag = pick.channel + 1;
    }
    if (m_pointer != MousePointer::EastWest) {
        return;
    }
    m_widgets.Picture2->picture().drawMode = DrawMode::XorPen;
    DragStartX = DragLastX = X;
    DragDeltaX = 0;
    // The shape may be left over from a time cursor; then there is no trace to draw.
    if (TraceDrag != 0) {
        static_cast<void>(m_neighbours.beginTraceDrag(TraceDrag - 1));
    }
}

void Cursors::dragTrace(double X) {
    DragDeltaX = static_cast<float>(X - DragLastX);
    if (m_neighbours.moveTraceDrag(TraceDrag - 1, DragDeltaX)) {
        DragLastX = X;
    }
}

bool Cursors::moveVoltageCursor(double Y) {
    if (YCursorDrag != 0) {
        const auto cursor = static_cast<std::size_t>(YCursorDrag - 1);
        m_widgets.Line1[cursor]->setY(Y);
        readVoltage(cursor);
    } else if (onVoltageCursor(places(), Y)) {
        setPointer(MousePointer::NorthSouth);
        return false;
    } else {
        setPointer(MousePointer::Arrow);
    }
    m_widgets.LabDy->setCaption(
        differenceOf(m_widgets.voltageValues[0]->caption(), m_widgets.voltageValues[1]->caption()));
    return true;
}

bool Cursors::moveTimeCursor(double X) {
    // Read out first: the time readouts lag the line by one move.
    printTime();
    if (XCursorDrag != 0) {
        m_widgets.Line2[static_cast<std::size_t>(XCursorDrag - 1)]->setX(X);
    } else if (onTimeCursor(places(), X)) {
        setPointer(MousePointer::EastWest);
        return false;
    } else {
        setPointer(MousePointer::Arrow);
    }
    return true;
}

void Cursors::Picture2_MouseMove(int, double X, double Y) {
    X = std::floor(X);
    Y = std::floor(Y);
    if (m_model.AutoRun || X < 0 || X >= kScreenWidth || Y < 0 || Y >= kScreenHeight) {
        return;
    }
    if (TraceDrag != 0) {
        dragTrace(X);
        return;
    }
    if (showsVoltage() && !moveVoltageCursor(Y)) {
        return;
    }
    if (showsTime() && !moveTimeCursor(X)) {
        return;
    }
    if (const TracePick pick = hoverTrace(m_model, X, Y); pick.pointer) {
        setPointer(*pick.pointer);
    }
}

void Cursors::Picture2_MouseUp(int, double, double) {
    if (m_model.AutoRun) {
        return;
    }
    YCursorDrag = 0;
    XCursorDrag = 0;
    TraceDrag = 0;
    m_neighbours.PicReDrawT();
}

} // namespace sixtrace
