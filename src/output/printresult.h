// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "output/mdlprinter.h"
#include "platform/text/runtimeerror.h"
#include "view/frame.h"
#include "view/tracepoints.h"

namespace sixtrace {

class PageTarget;
class PicturePage;
class Printer;

/// What a page shows beside the model.
struct PageInputs {
    FrameInputs frame;
    PerChannel<QString> rows; ///< texts of the channel list
};

[[nodiscard]] PageInputs pageInputs(const ScreenState& screen);

/// Composes pages: legend, channel labels with their zero ticks, and a framed copy of the scope screen. Printer and
/// preview get the same page. The settings, the model and the printer are handed in and outlive it.
class PageComposer {
public:
    PageComposer(publicM& model, const MdlPrinter& settings, Printer& printer);

    /// Composes the page on the printer, or at zoomPercent on a preview's picture. An error ends the composition at
    /// that point: what is on a picture stays, a document of the printer is thrown away.
    ///
    /// PlotX, PlotY, MsPerPixel and VoltPerPixel hold the page's values afterwards, until the next frame.
    [[nodiscard]] Outcome PrintResult(PageTarget& target, std::int32_t zoomPercent, const PageInputs& inputs);

    /// Zero line of each channel in twips below the top of the frame.
    PerChannel<double> ChannelPageY{};

    /// The box of the page that is left for what comes next, and at last the one that the screen copy fills.
    struct Box {
        std::int32_t left = 0;
        std::int32_t top = 0;
        std::int32_t width = 0;
        std::int32_t height = 0;
    };

    /// Draws frame and traces into `hidden`, at its origin, and pastes it on the target at the box. The box's left and
    /// top are 0 afterwards.
    [[nodiscard]] Outcome PrinterDrawT(PicturePage& hidden, Box& box, PageTarget& target, const FrameInputs& inputs);

private:
    [[nodiscard]] Outcome compose(PageTarget& target, std::int32_t zoomPercent, const PageInputs& inputs);
    [[nodiscard]] Result<Box> printableBox() const;
    [[nodiscard]] Outcome beginSheet(PicturePage& picture, double scale, Box& box) const;
    [[nodiscard]] Outcome printLegend(PageTarget& target, const PageInputs& inputs, Box& box) const;
    [[nodiscard]] static Outcome fitFrame(Box& box);
    void printLabels(PageTarget& target, const PageInputs& inputs, const Box& box);

    publicM& m_model;
    const MdlPrinter& m_settings;
    Printer& m_printer;
    TracePoints m_points{Vectors::Allowed};
};

/// The scale of a preview: the percentage as a share with one decimal, so that 75 % gives 0.8 and 104 % gives 1.0.
[[nodiscard]] float previewScale(std::int32_t zoomPercent);

} // namespace sixtrace
