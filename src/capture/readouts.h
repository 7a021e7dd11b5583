// SPDX-License-Identifier: MIT
#pragma once

#include "capture/mdllan.h"
#include "capture/measurementunits.h"
#include "capture/publicm.h"
#include "platform/text/numbers.h"

#include <QString>

#include <optional>

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

/// What the instrument and the samples say about the signal of a channel.
struct SignalFigures {
    Hertz frequency;
    Microseconds period;
    Millivolts peakToPeak; ///< at the probe's tip

    [[nodiscard]] bool operator==(const SignalFigures&) const = default;
};

/// The figures of a channel of the model; none for a channel that the capture does not hold.
[[nodiscard]] std::optional<SignalFigures> signalFigures(const publicM& model, int channel);
/// The texts of the figures; all empty where there are none.
[[nodiscard]] MeasurementTexts measurementTexts(const std::optional<SignalFigures>& figures,
                                                NumberMarks marks = NumberMarks::system());

/// The row of the channel list that the frames are titled after, and in which language.
struct TitledRow {
    QString row; ///< empty before a row is selected
    Language language = Language::Chinese;

    [[nodiscard]] bool operator==(const TitledRow&) const = default;
};

/// Titles of the frames for a row, whose first four characters name the channel.
struct FrameTitles {
    QString cursor;   ///< Frame1
    QString timeBase; ///< Frame2
    QString voltage;  ///< Frame3
    QString channel;  ///< Frame4
};
[[nodiscard]] FrameTitles frameTitles(const TitledRow& titled);

} // namespace sixtrace
