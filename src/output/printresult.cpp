// SPDX-License-Identifier: MIT
#include "output/printresult.h"

#include "capture/markerstrip.h"
#include "output/pagegraticule.h"
#include "platform/printing/picturepage.h"
#include "platform/printing/printer.h"
#include "platform/text/numbers.h"
#include "view/channelplot.h"

#include <algorithm>

namespace sixtrace {

namespace {

constexpr Colour kWhite = 0x00FFFFFF;
constexpr Colour kGrey = 0x00C0C0C0;  // number 7 of the table of sixteen colours
constexpr double kFontSize = 12;      // points
constexpr std::int32_t kIndent = 567; // of the legend and the frame, to the right of the labels' column
constexpr std::int32_t kGap = 110;    // between legend and frame
constexpr double kMostDotsPerInch = 600;

/// Rounds a real to a whole number; error 6 when it does not fit.
Outcome assign(std::int32_t& target, double value) {
    const auto whole = toInt32(value);
    if (!whole) {
        return RuntimeError::of(ErrorNumber::Overflow);
    }
    target = *whole;
    return success();
}

/// The first error of several assignments.
Outcome first(std::initializer_list<Outcome> outcomes) {
    const auto failed = std::find_if(outcomes.begin(), outcomes.end(), [](const Outcome& each) { return !each.ok(); });
    return failed == outcomes.end() ? success() : *failed;
}

} // namespace

float previewScale(std::int32_t zoomPercent) {
    const NumberMarks marks;
    return static_cast<float>(Val(Format(zoomPercent / 100.0, u"0.0", marks)));
}

PageInputs pageInputs(const ScreenState& screen) {
    return {frameInputs(screen), screen.rows};
}

PageComposer::PageComposer(publicM& model, const MdlPrinter& settings, Printer& printer)
    : m_model(model)
    , m_settings(settings)
    , m_printer(printer) {}

Outcome PageComposer::PrintResult(PageTarget& target, std::int32_t zoomPercent, const PageInputs& inputs) {
    Outcome done = compose(target, zoomPercent, inputs);
    if (&target != &m_printer) {
        return done;
    }
    if (!done) {
        m_printer.KillDoc();
        return done;
    }
    m_printer.NewPage();
    return m_printer.EndDoc();
}

/// The part of the sheet that the printer reaches, without the margins.
Result<PageComposer::Box> PageComposer::printableBox() const {
    const auto sheet = m_printer.sheet();
    if (!sheet) {
        return sheet.error();
    }
    Box box;
    box.left = m_settings.PrintMarginLeft;
    box.top = m_settings.PrintMarginTop;
    Outcome fits = first({assign(box.height, static_cast<double>(sheet.value().ScaleHeight) -
                                                 m_settings.PrintMarginTop - m_settings.PrintMarginBottom),
                          assign(box.width, static_cast<double>(sheet.value().ScaleWidth) - m_settings.PrintMarginLeft -
                                                m_settings.PrintMarginRight)});
    return fits ? Result<Box>(box) : fits.error();
}

/// Makes the picture of the whole sheet, with a dashed line at the margins that is not printed. The part that the
/// printer cannot reach is taken to be equally wide on both sides.
Outcome PageComposer::beginSheet(PicturePage& picture, double s, Box& box) const {
    const auto metrics = m_printer.sheet();
    if (!metrics) {
        return metrics.error();
    }
    const Sheet& sheet = metrics.value();
    std::int32_t oy = 0;
    std::int32_t ox = 0;
    Outcome fits =
        first({assign(oy, (sheet.Height - sheet.ScaleHeight) / 2.0), assign(ox, (sheet.Width - sheet.ScaleWidth) / 2.0),
               assign(box.top, s * (static_cast<double>(box.top) + oy)),
               assign(box.left, s * (static_cast<double>(box.left) + ox)), assign(box.height, s * box.height),
               assign(box.width, s * box.width)});
    if (!fits) {
        return fits;
    }
    if (!picture.setSize(s * m_settings.PaperWidth, s * m_settings.PaperHeight)) {
        return RuntimeError::of(ErrorNumber::InvalidCall);
    }
    picture.DrawStyle = DrawStyle::Dot;
    picture.ForeColor = kGrey;
    picture.LineBox(box.left, box.top, box.width, box.height);
    return success();
}

Outcome PageComposer::compose(PageTarget& target, std::int32_t zoomPercent, const PageInputs& inputs) {
    auto* const picture = dynamic_cast<PicturePage*>(&target);
    const bool isPrinter = &target == &m_printer;
    if (!isPrinter && picture == nullptr) {
        return RuntimeError::of(ErrorNumber::ObjectRequired);
    }
    const float scale = isPrinter ? 1.0F : previewScale(zoomPercent);
    const auto s = static_cast<double>(scale);
    const auto printable = printableBox();
    if (!printable) {
        return printable.error();
    }
    Box box = printable.value();

    if (!isPrinter) {
        Outcome begun = beginSheet(*picture, s, box);
        if (!begun) {
            return begun;
        }
    }

    target.FontSize = s * kFontSize;
    target.CurrentX = box.left + kIndent;
    target.CurrentY = box.top;
    Outcome done = printLegend(target, inputs, box);
    if (done) {
        done = fitFrame(box);
    }
    if (!done) {
        return done;
    }
    target.DrawStyle = DrawStyle::Solid;
    printLabels(target, inputs, box);

    PicturePage hidden(std::min(target.resolution(), kMostDotsPerInch));
    hidden.setScreenDots();
    done = PrinterDrawT(hidden, box, target, inputs.frame);
    if (done && !isPrinter && picture->showPicture) {
        picture->showPicture(picture->Image());
    }
    return done;
}

Outcome PageComposer::printLegend(PageTarget& target, const PageInputs& inputs, Box& box) const {
    for (int channel = 0; channel < kChannels; ++channel) {
        if (!isShown(m_model, inputs.frame.selected, channel)) {
            continue;
        }
        // White could not be seen on paper.
        const Colour colour = m_model.LineColor[channel];
        target.ForeColor = colour == kWhite ? 0 : colour;
        target.CurrentX = box.left + kIndent;
        target.PrintLine(inputs.rows[channel]);
    }
    const double legend = target.CurrentY - box.top;
    return first({assign(box.height, box.height - legend - kGap), assign(box.top, target.CurrentY + kGap),
                  assign(box.left, static_cast<double>(box.left) + kIndent),
                  assign(box.width, static_cast<double>(box.width) - kIndent)});
}

/// Gives the frame the shape of the screen, 3 to 2, at the upper left of the box.
Outcome PageComposer::fitFrame(Box& box) {
    const double w = box.width;
    const double h = box.height;
    Outcome fits = h * 3 <= w * 2 ? assign(box.width, h * 3 / 2) : assign(box.height, w * 2 / 3);
    if (!fits) {
        return fits;
    }
    return box.width > 0 && box.height > 0 ? success() : Outcome(RuntimeError::of(ErrorNumber::InvalidCall));
}

void PageComposer::printLabels(PageTarget& target, const PageInputs& inputs, const Box& box) {
    for (int channel = 0; channel < kChannels; ++channel) {
        if (!isShown(m_model, inputs.frame.selected, channel)) {
            continue;
        }
        target.ForeColor = m_model.LineColor[channel];
        ChannelPageY[channel] = strip::zeroLine(inputs.frame.markerTop[channel]) * box.height;
        const double zeroLine = box.top + ChannelPageY[channel];
        target.CurrentX = box.left - kIndent;
        target.CurrentY = zeroLine - kGap;
        target.PrintText(inputs.rows[channel].left(3));
        target.CurrentY = zeroLine;
        target.LineTo(box.left, zeroLine);
    }
}

Outcome PageComposer::PrinterDrawT(PicturePage& hidden, Box& box, PageTarget& target, const FrameInputs& inputs) {
    const Box place = box;
    box.left = 0;
    box.top = 0;
    hidden.BackColor = m_model.BackColor;
    if (!hidden.setSize(box.width + kFrameBorder, box.height + kFrameBorder)) {
        return RuntimeError::of(ErrorNumber::InvalidCall);
    }
    hidden.ForeColor = m_model.GridColor;
    drawPageGraticule(hidden, box.width, box.height, inputs.graticule, divisionsAcross(m_model.FileKind));
    target.DrawStyle = DrawStyle::Solid;
    for (int channel = 0; channel < kChannels; ++channel) {
        hidden.ForeColor = m_model.LineColor[channel];
        if (!isShown(m_model, inputs.selected, channel)) {
            continue;
        }
        PageSink sink(hidden, m_model, channel, inputs.style);
        const PageArea page{Twips(box.width), Twips(box.height), Twips(ChannelPageY[channel])};
        ChannelPlot plot(m_model, channel, inputs.style, m_points, sink, page);
        if (Outcome plotted = plot.plot(); !plotted) {
            return plotted;
        }
    }
    target.PaintPicture(hidden.Image(), place.left, place.top, box.width + kFrameBorder, box.height + kFrameBorder);
    return success();
}

} // namespace sixtrace
