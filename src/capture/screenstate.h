// SPDX-License-Identifier: MIT
#pragma once

#include "capture/markerstrip.h"
#include "capture/publicm.h"
#include "capture/readouts.h"

#include <QString>

#include <array>
#include <optional>

namespace sixtrace {

/// Which cursors are shown, by row of Combo3.
enum class CursorType { None = 0, Voltage = 1, Time = 2, Both = 3 };

[[nodiscard]] constexpr bool showsVoltage(CursorType type) {
    return type == CursorType::Voltage || type == CursorType::Both;
}
[[nodiscard]] constexpr bool showsTime(CursorType type) {
    return type == CursorType::Time || type == CursorType::Both;
}

/// How a trace is drawn: lines between its samples, or a point for each.
enum class TraceStyle { Lines, Points };
/// What divides the screen: dotted lines, or the solid cross with ticks.
enum class Graticule { Dotted, Cross };

/// Shapes of the pointer over the screen, by their numbers.
enum class MousePointer { Arrow = 1, NorthSouth = 7, EastWest = 9 };

/// A zero marker of the strip, and the flat label at the strip's end that stands in for it when it has left the strip.
struct ZeroMarker {
    Twips top = strip::kCentreTop; ///< the master copy of the channel's vertical place
    bool shown = false;
    bool pressed = false; ///< has its border
    Colour back = 0;
    bool standInShown = false;
    Twips standInTop;
    Colour standInBack = 0;
};

/// VScroll1: one step of its value is a division; half its maximum is the middle of the screen.
struct PositionBarState {
    int maximum = 0;
    int value = 0;
};

/// Where the cursor lines stand.
struct CursorPlaces {
    std::array<ScreenY, 2> voltage{ScreenY{100}, ScreenY{300}}; ///< Line1(0) and Line1(1)
    std::array<ScreenX, 2> time{ScreenX{180}, ScreenX{420}};    ///< Line2(0) and Line2(1)
};

/// The texts of one pair of cursors. The difference has no unit of its own.
struct CursorTexts {
    std::array<QString, 2> values;
    std::array<QString, 2> units;
    QString difference;
};

/// A time readout before it becomes text.
struct TimeReading {
    double value = 0;
    QLatin1String unit;

    [[nodiscard]] bool operator==(const TimeReading&) const = default;
};

/// What the main window shows besides the model: made once, passed by reference. Functions over the model and this
/// record are the rules of the program (channellist.h, zeromarkers.h and the topics of the folder view); widgets show
/// the record. So the command line, the printed page and the tests run the same rules without a window.
struct ScreenState {
    // The channel list, List1.
    PerChannel<QString> rows;
    PerChannel<bool> ticks{};
    int selectedRow = -1;

    // The lists Combo1 (time bases), Combo2 (volt ranges) and Combo3 (cursors). A list may show another row than the
    // model has: during timed acquisition a choice has no effect.
    PerTimeBase<QString> timeList;
    PerVoltRange<QString> voltList;
    int timeRow = -1;
    int voltRow = -1;
    CursorType cursorChoice = CursorType::None; ///< entry of Combo3
    CursorType cursorsShown = CursorType::None; ///< lines and labels on the screen

    // Zero lines.
    PerChannel<ZeroMarker> markers;
    PositionBarState bar;
    bool barEnabled = true;
    std::optional<QString> CenterPoint; ///< height of the zero line while the thumb is dragged
    std::int16_t CurChannel = -1;       ///< channel whose marker VScroll1 drives; -1 when there is none
    bool ScrollLive = false;            ///< false while code moves VScroll1, whose change then does nothing

    // Cursors and readouts.
    CursorPlaces cursors;
    CursorTexts voltages;                    ///< LabY1, LabY2, their units, LabDy
    CursorTexts times;                       ///< LabX1, LabX2, their units, LabDx
    std::array<TimeReading, 2> timeReadings; ///< the readings that `times` shows
    MeasurementTexts measurements;           ///< Frame4
    FrameTitles titles;
    MousePointer pointer = MousePointer::Arrow;

    // Appearance.
    Graticule graticule = Graticule::Dotted;
    bool lineTicked = true;   ///< mnuLine, which decides how traces are drawn
    bool pointTicked = false; ///< mnuPoint; a settings file may have both or neither
    Colour screenColor = 0x00FFFFFF;
    Colour stripColor = 0;

    // The paths at the window's foot.
    QString loadedPath;      ///< Label4
    unsigned pathsShown = 0; ///< counts the paths, also the same one again: its file may have changed
    QString modelName;       ///< Label5

    void showPath(const QString& path) {
        loadedPath = path;
        ++pathsShown;
    }
    [[nodiscard]] TraceStyle traceStyle() const { return lineTicked ? TraceStyle::Lines : TraceStyle::Points; }
};

/// What the rules need from higher folders. This base class does nothing, which is enough for programs that only read
/// captures. ScopeScreen of the folder view implements it, with a window and without one.
class ScreenDuties {
public:
    ScreenDuties() = default;
    ScreenDuties(const ScreenDuties&) = delete;
    ScreenDuties& operator=(const ScreenDuties&) = delete;
    virtual ~ScreenDuties() = default;

    /// A whole new frame is due (PicReDrawT).
    virtual void frameDue() {}
    /// The readouts of the cursors that are shown are due (UpdateVoltCursors, then printTime).
    virtual void readoutsDue() {}
    /// An empty screen is due, without graticule.
    virtual void blankDue() {}
    /// The data table closes: a load is about to change what it lists.
    virtual void closeTable() {}
    /// The data table is loaded again, without being shown.
    virtual void openTable() {}
};

/// What every rule works with.
struct Scope {
    publicM& model;
    ScreenState& screen;
    ScreenDuties& duties;
};

/// A screen without pictures, for programs that need only the state after a load. It begins in the state after
/// start-up. The model's tables have to be filled before.
class UnseenScreen {
public:
    explicit UnseenScreen(publicM& model);

    [[nodiscard]] Scope scope() { return {m_model, state, m_duties}; }

    ScreenState state;

private:
    publicM& m_model;
    ScreenDuties m_duties;
};

} // namespace sixtrace
