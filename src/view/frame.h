// SPDX-License-Identifier: MIT
#pragma once

#include "capture/screenstate.h"
#include "platform/drawing/picture.h"
#include "platform/drawing/vectors.h"
#include "view/geometry.h"

#include <array>
#include <memory>

namespace sixtrace {

/// What a frame reads besides the model.
struct FrameInputs {
    Graticule graticule = Graticule::Dotted;
    TraceStyle style = TraceStyle::Lines;
    PerChannel<bool> selected{};   ///< ticks of the channel list
    PerChannel<Twips> markerTop{}; ///< tops of the markers
};

[[nodiscard]] FrameInputs frameInputs(const ScreenState& screen);

/// Keeps picHidden(0), the copy of the last finished frame from which drags restore the background. Few frames are
/// followed by a drag: a finished frame is only noted, and copied when a drag begins. Code that draws on the screen
/// without finishing a frame has to call bringUpToDate before.
class FrameCopy {
public:
    FrameCopy(const Picture& screen, Picture& copy)
        : m_screen(screen)
        , m_copy(copy) {}

    /// A frame is finished on the screen.
    void noteFrame() { m_due = true; }
    /// The noted frame is not needed: the next one replaces it, or the copy has been cleared.
    void forget() { m_due = false; }
    void bringUpToDate() {
        if (m_due) {
            m_due = false;
            m_copy.BitBlt(0, 0, kScreenWidth, kScreenHeight, m_screen, 0, 0);
        }
    }

private:
    const Picture& m_screen;
    Picture& m_copy;
    bool m_due = false;
};

/// Draws frames of the scope screen. Owns the scratch memory of the drawing, so make it once.
///
/// The result is, to the pixel, what drawing every segment of every trace in order would give. docs/architecture.md
/// explains how it is computed.
class FrameRenderer {
public:
    explicit FrameRenderer(Vectors vectors = Vectors::Allowed);
    ~FrameRenderer();
    FrameRenderer(const FrameRenderer&) = delete;
    FrameRenderer& operator=(const FrameRenderer&) = delete;

    /// Draws a whole frame into `picture2` and notes in `copy` that it is finished. Stores PlotX and PlotY of every
    /// sample visited, ChannelYPos, SampleStep, MsPerPixel and VoltPerPixel in the model.
    ///
    /// A run-time error (a table row that does not exist, a division by zero, a coordinate beyond 32 bits, a sample
    /// beyond the arrays) ends the frame without a message: what was drawn stays, the channels after it are not drawn
    /// and no copy is made.
    void PicReDrawT(publicM& model, const FrameInputs& inputs, Picture& picture2, FrameCopy& copy);
    /// The same with the copy made at once.
    void PicReDrawT(publicM& model, const FrameInputs& inputs, Picture& picture2, Picture& picHidden0);

private:
    struct Scratch;
    std::unique_ptr<Scratch> m_scratch;
};

/// The graticule alone, without channels and without a copy.
void PicDrawSlow(const publicM& model, Graticule graticule, Picture& picture2);

/// The older renderer for a screen of 500 by 400 and 1024 points. Nothing calls it.
void PicReDraw(publicM& model, const FrameInputs& inputs, Picture& picture2);

/// Screen Y of a point of ScreenTrace for channel `channel`, as PicReDraw places it, rounded to 16 bits; nothing on
/// overflow or a missing table row.
[[nodiscard]] std::optional<std::int16_t> SampleToScreenY(const publicM& model, int channel, double value);

} // namespace sixtrace
