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

/// What a page shows besides the model.
struct PageInputs {
    FrameInputs frame;
    PerChannel<QString> rows; ///< texts of the channel list
};

[[nodiscard]] PageInputs pageInputs(const ScreenState& screen);

/// Composes pages: a legend, channel labels with zero ticks, and a framed copy of the scope screen. Printer and preview
/// get the same page. The model, the settings and the printer outlive it.
class PageComposer {
public:
    PageComposer(publicM& model, const MdlPrinter& settings, Printer& printer);

    /// Composes the page on the printer, or on a picture at zoomPercent. An error ends the composition at that point:
    /// a picture keeps what has been drawn, and the printer's document is dropped. Error 424 for any other target.
    ///
    /// Until the next frame PlotX, PlotY, MsPerPixel and VoltPerPixel hold the values of the page.
    [[nodiscard]] Outcome PrintResult(PageTarget& target, std::int32_t zoomPercent, const PageInputs& inputs);

    /// The zero line of each channel, in twips below the top of the frame.
    PerChannel<double> ChannelPageY{};

    /// A rectangle of the page in twips: the space that is still free, and in the end that of the screen copy.
    struct Box {
        std::int32_t left = 0;
        std::int32_t top = 0;
        std::int32_t width = 0;
        std::int32_t height = 0;
    };

    /// Draws the frame and the traces at the origin of `hidden`, and pastes that picture on the target at the box.
    /// Afterwards the left and top of the box are 0.
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

/// The factor of a preview, with one decimal: 75 percent give 0.8, and 104 percent give 1.0.
[[nodiscard]] float previewScale(std::int32_t zoomPercent);

} // namespace sixtrace
