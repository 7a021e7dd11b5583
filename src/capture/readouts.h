// SPDX-License-Identifier: MIT
#pragma once

#include "capture/mdllan.h"
#include "capture/measurementunits.h"
#include "capture/publicm.h"
#include "platform/text/numbers.h"

#include <QString>

namespace sixtrace {

/// The three measurement texts of a channel, with their units.
struct MeasurementTexts {
    QString frequency;  ///< of labPPe
    QString period;     ///< of LabPe
    QString peakToPeak; ///< of LabMaxx
};

/// Text of a signal's frequency.
[[nodiscard]] QString frequencyText(Hertz frequency, NumberMarks marks = NumberMarks::system());
/// Text of a signal's period. The frequency chooses the unit, so that both texts change their unit together.
[[nodiscard]] QString periodText(Hertz frequency, Microseconds period, NumberMarks marks = NumberMarks::system());
/// Text of a peak-to-peak voltage.
[[nodiscard]] QString peakToPeakText(Millivolts voltage, NumberMarks marks = NumberMarks::system());

/// The texts of a channel of the model; all empty for a channel that the capture does not hold.
[[nodiscard]] MeasurementTexts measurementTexts(const publicM& model, int channel,
                                                NumberMarks marks = NumberMarks::system());

/// Titles of the frames for the selected row, whose first four characters name the channel.
struct FrameTitles {
    QString cursor;   ///< Frame1
    QString timeBase; ///< Frame2
    QString voltage;  ///< Frame3
    QString channel;  ///< Frame4
};
[[nodiscard]] FrameTitles frameTitles(const QString& row, Language language);

} // namespace sixtrace
