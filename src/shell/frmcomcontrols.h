// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <QString>

#include <array>

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

/// The controls of the main window below its menu bar, at their places. Plain pointers: the window owns them all.
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

/// Size of the main window below its menu bar, pixels.
inline constexpr int kClientWidth = 800;
inline constexpr int kClientHeight = 553;

/// Makes every control as a child of `client`, with its object name and its design caption.
[[nodiscard]] FrmComControls makeFrmComControls(QWidget& client);

/// Name of an element of a control array: "image1(2)".
[[nodiscard]] QString elementName(const QString& name, int index);

} // namespace sixtrace
