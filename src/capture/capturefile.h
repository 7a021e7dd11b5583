// SPDX-License-Identifier: MIT
#pragma once

#include "capture/captureview.h"
#include "capture/publicm.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <string_view>

namespace sixtrace {

/// Height of the marker strip and of a marker, in twips: a load places markers by them.
inline constexpr double kStripHeight = 6030;
inline constexpr double kMarkerHeight = 210;
/// Top of a marker that no load has placed yet, in twips: about the middle of the strip.
inline constexpr double kCentreTop = 3000;

/// What a version tag of a capture file stands for.
struct CaptureForm {
    std::string_view tag;       ///< three characters
    std::int16_t fileKind;      ///< FileKind
    std::string_view modelName; ///< of the instrument
    TimeBaseFamily family;
};

/// The form of a tag, or null for a tag that the program does not know.
[[nodiscard]] const CaptureForm* captureForm(std::string_view tag);
/// All forms in the order of their FileKind, 1 to 6.
[[nodiscard]] const std::array<CaptureForm, 6>& captureForms();

/// Loads a capture file into the model, telling its steps to `view`, and redraws. Whatever is wrong with the file is
/// passed over in silence, statement by statement: a field that the file does not hold keeps its old value. A file
/// that does not begin with "KQX" and a known tag is refused: the model and the screen keep their content, only the
/// data table is gone (and FileKind is 0 when the tag was the reason).
///
/// Costs at most one pass over the bytes that the file really has, whatever its counts say.
void SimpleWav(const QString& path, publicM& model, CaptureView& view);

/// How the older reader ended.
enum class BinFileOutcome { Loaded, MissingFile, NotACapture };

/// The older reader, for the tag "bin" only and with a field order of its own: reads `path` into the model. It stores
/// ZeroLevel as the file has it, every Frequency in channel 0, and touches neither time bases nor PeakToPeak. No
/// command reaches it.
BinFileOutcome OpenBinFile(const QString& path, publicM& model, CaptureView& view);

} // namespace sixtrace
