// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "platform/drawing/lengths.h"
#include "platform/drawing/picture.h"

namespace sixtrace {

/// Pure blue: what a trace is drawn with while it is dragged.
inline constexpr Colour kGhostColour = rgb(0, 0, 255);

/// Begins the sideways drag of a trace: draws it in blue, by exclusive-or over itself on `picture2` and with an opaque
/// pen on `picHidden1`. False where a run-time error ended it.
bool beginTraceDrag(const publicM& model, int channel, Picture& picture2, Picture& picHidden1);

/// Moves a trace sideways: ChannelXShift and PlotX follow, Y is not computed anew. `picture2` then shows the clean
/// frame of `picHidden0` with the moved trace in blue, thinned to about one point a screen unit. False where a run-time
/// error ended it before the picture was shown.
bool moveTraceDrag(publicM& model, int channel, ScreenX delta, const Picture& picHidden0, Picture& picHidden1,
                   Picture& picture2);

/// Begins the drag of a marker: draws its trace, the ghost, by exclusive-or on `picture2` and copies that picture to
/// `picHidden0`. False where a run-time error ended it.
bool beginMarkerDrag(const publicM& model, int channel, Picture& picture2, Picture& picHidden0);

/// Redraws the ghost after the marker has moved to `markerTop`: ChannelYPos and the visible part of PlotY
/// follow. Samples that fall on one column are stepped over. False where a run-time error ended it.
bool moveMarkerDrag(publicM& model, int channel, Twips markerTop, const Picture& picHidden0, Picture& picture2);

} // namespace sixtrace
