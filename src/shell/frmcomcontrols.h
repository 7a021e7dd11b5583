// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <QString>

#include <array>
#include <optional>

class QLabel;
class QWidget;

namespace sixtrace {

class ArrowPair;
class CursorLine;
class FramePanel;
class ListCombo;
class MarkerLabel;
class PathLabel;
class PictureBox;
class PositionBar;
class ReadoutLabel;
class TickList;
class ToolBar;
class TwoWordLabel;

/// The controls of the main window below its menu bar. The window owns them all.
struct FrmComControls {
    ToolBar* Toolbar1;

    PositionBar* VScroll1;
    QWidget* Picture3;
    PerChannel<MarkerLabel*> image1;
    PerChannel<MarkerLabel*> ZLabel;
    MarkerLabel* image2;

    PictureBox* Picture2;
    std::array<PictureBox*, 3> picHidden;
    std::array<CursorLine*, 2> Line1;
    std::array<CursorLine*, 2> Line2;
    QLabel* CenterPoint;

    FramePanel* Frame1;
    ReadoutLabel *LabYY1, *LabY1, *LabYY11, *LabYY2, *LabY2, *LabYY22, *Labddy, *LabDy, *LabDDYY;
    ReadoutLabel *LabXX1, *LabX1, *LabXX11, *LabXX2, *LabX2, *LabXX22, *labDDx, *LabDx, *LabDDXX;
    ReadoutLabel* Label3;
    ListCombo* Combo3;

    FramePanel* Frame2;
    TwoWordLabel* Label2;
    ListCombo* Combo1;
    ArrowPair* UpDown2;

    FramePanel* Frame3;
    TwoWordLabel* Label1;
    ListCombo* Combo2;
    ArrowPair* UpDown1;

    FramePanel* Frame4;
    ReadoutLabel *LabP, *LabPe, *LabPP, *labPPe, *LabMax, *LabMaxx;

    TickList* List1;
    PathLabel* Label4;
    PathLabel* Label5;
};

/// The labels of one readout: its name, its value, and its unit where the value does not hold it.
struct Readout {
    const ReadoutLabel* name;
    const ReadoutLabel* value;
    const ReadoutLabel* unit = nullptr;
};
/// The readouts of Frame1, from top to bottom.
[[nodiscard]] std::array<Readout, 6> cursorReadouts(const FrmComControls& controls);

/// What a readout says, without blanks at the ends and without the colon of its name.
struct ReadoutTexts {
    QString name;
    QString value;
    QString unit; ///< empty where the readout has no label for it, or none is written on it
};
/// Nothing while the readout is hidden or has no value.
[[nodiscard]] std::optional<ReadoutTexts> shownTexts(const Readout& readout);

/// Size of the main window below its menu bar, pixels.
inline constexpr int kClientWidth = 800;
inline constexpr int kClientHeight = 553;

/// Makes every control at its place as a child of `client`, with its object name and the caption of its design.
[[nodiscard]] FrmComControls makeFrmComControls(QWidget& client);

/// The object name of an element of a control array, for example "image1(2)".
[[nodiscard]] QString elementName(const QString& name, int index);

} // namespace sixtrace
