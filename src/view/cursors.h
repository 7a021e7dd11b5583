// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "view/cursorreadouts.h"
#include "view/tracepick.h"

#include <QObject>

#include <array>
#include <optional>
#include <vector>

namespace sixtrace {

class CursorLine;
class ListCombo;
class PictureBox;
class ReadoutLabel;

/// Which cursors are shown, by row of Combo3.
enum class CursorType { None = 0, Voltage = 1, Time = 2, Both = 3 };

/// What the cursors and the trace drag ask of the other areas.
class CursorNeighbours {
public:
    CursorNeighbours() = default;
    CursorNeighbours(const CursorNeighbours&) = delete;
    CursorNeighbours& operator=(const CursorNeighbours&) = delete;
    virtual ~CursorNeighbours() = default;

    /// Row that List1 stands on, -1 for none.
    [[nodiscard]] virtual int selectedRow() const = 0;
    virtual void PicReDrawT() = 0;
    /// Both give false where a run-time error ended them.
    virtual bool beginTraceDrag(int channel) = 0;
    virtual bool moveTraceDrag(int channel, float delta) = 0;
};

/// The two cursor pairs over the screen with the labels that read them out, and the sideways drag of a trace, which
/// shares their mouse events. Owned by the window, as are its widgets.
class Cursors : public QObject {
public:
    struct Widgets {
        PictureBox* Picture2;
        std::array<CursorLine*, 2> Line1; ///< voltage cursors
        std::array<CursorLine*, 2> Line2; ///< time cursors
        ListCombo* Combo3;
        std::array<ReadoutLabel*, 2> voltageValues; ///< LabY1, LabY2
        std::array<ReadoutLabel*, 2> voltageUnits;  ///< LabYY11, LabYY22
        ReadoutLabel* LabDy;
        std::array<ReadoutLabel*, 2> timeValues; ///< LabX1, LabX2
        std::array<ReadoutLabel*, 2> timeUnits;  ///< LabXX11, LabXX22
        ReadoutLabel* LabDx;
        std::vector<ReadoutLabel*> otherVoltageLabels; ///< captions and the textless unit, shown with Line1
        std::vector<ReadoutLabel*> otherTimeLabels;    ///< the same with Line2
    };

    Cursors(publicM& model, Widgets widgets, CursorNeighbours& neighbours, QObject* parent);

    void Combo3_Click();
    void Picture2_MouseDown(int Button, double X, double Y);
    void Picture2_MouseMove(int Button, double X, double Y);
    void Picture2_MouseUp(int Button, double X, double Y);

    /// Reads the voltage cursors out anew if they are shown.
    void UpdateVoltCursors();
    /// Reads the time cursors out anew if they are shown and the selected channel holds a capture.
    void printTime();

    [[nodiscard]] MousePointer pointer() const { return m_pointer; }
    /// The line that is being dragged, and whether anything is: a trace may be.
    [[nodiscard]] CursorHit grabbed() const;
    [[nodiscard]] bool dragging() const { return grabbed() != CursorHit::None || TraceDrag != 0; }
    /// Takes hold of a line as a press on it does, whatever else lies at its place. Picture2_MouseUp lets it go.
    void grab(CursorHit line);

private:
    [[nodiscard]] CursorType type() const;
    [[nodiscard]] bool showsVoltage() const;
    [[nodiscard]] bool showsTime() const;
    [[nodiscard]] CursorPlaces places() const;
    void setPointer(MousePointer pointer);
    void readVoltage(std::size_t cursor);
    void readTimes(TimeLadder ladder);
    void dragTrace(double X);
    /// False when the pointer hovers over a line, which ends the event.
    [[nodiscard]] bool moveVoltageCursor(double Y);
    [[nodiscard]] bool moveTimeCursor(double X);

    // Each move of the pointer reads the cursors out, mostly to what they say already: texts are kept until they
    // change.
    struct WrittenTime {
        std::optional<TimeReading> reading;
        CursorReadout readout;
    };
    class Difference {
    public:
        /// Shows the difference of two values, as they read, on a label.
        void show(ReadoutLabel& label, const std::array<ReadoutLabel*, 2>& values);

    private:
        QString m_first;
        QString m_second;
        QString m_text;
    };

    publicM& m_model;
    Widgets m_widgets;
    CursorNeighbours& m_neighbours;
    std::array<WrittenTime, 2> m_writtenTimes;
    Difference m_voltageDifference;
    Difference m_timeDifference;
    MousePointer m_pointer = MousePointer::Arrow;

    int YCursorDrag = 0; ///< 1 or 2: that voltage cursor is being dragged
    int XCursorDrag = 0; ///< the same for the time cursors
    int TraceDrag = 0;   ///< channel + 1 of the trace being dragged
    double DragStartX = 0;
    double DragLastX = 0;
    float DragDeltaX = 0;
};

} // namespace sixtrace
