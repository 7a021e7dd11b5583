// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <cstdint>

namespace sixtrace {

class PageTarget;

/// Composes pages for the preview.
class PreviewOwner {
public:
    PreviewOwner() = default;
    PreviewOwner(const PreviewOwner&) = delete;
    PreviewOwner& operator=(const PreviewOwner&) = delete;
    virtual ~PreviewOwner() = default;

    /// Composes the page on a target; zoomPercent is ignored for a printer. An error ends the composition at that
    /// point.
    [[nodiscard]] virtual Outcome PrintResult(PageTarget& target, std::int32_t zoomPercent) = 0;
};

/// Print settings that last for the run of the program. All lengths in twips.
struct MdlPrinter {
    std::int32_t PrintMarginTop = 0;
    std::int32_t PrintMarginBottom = 0;
    std::int32_t PrintMarginLeft = 0;
    std::int32_t PrintMarginRight = 0;
    std::int32_t PaperHeight = 0; ///< of the sheet; the preview sets it from the printer
    std::int32_t PaperWidth = 0;
    sixtrace::PreviewOwner* PreviewOwner = nullptr;
};

/// How the preview scales its page. The page setup reads and writes it. It has its first values again when the preview
/// is closed.
struct PreviewScale {
    std::int32_t BaseZoom = 0;  ///< percent at which the page is composed once, to be stretched then; 0 means 100
    bool RePrintOnZoom = false; ///< whether each change of the scale composes the page again

    [[nodiscard]] std::int32_t baseZoom() const { return BaseZoom == 0 ? 100 : BaseZoom; }
};

/// The margins of a program that has just started: 1 cm each.
inline constexpr std::int32_t kDefaultMargin = 567;
inline void setDefaultMargins(MdlPrinter& settings) {
    settings.PrintMarginTop = kDefaultMargin;
    settings.PrintMarginBottom = kDefaultMargin;
    settings.PrintMarginLeft = kDefaultMargin;
    settings.PrintMarginRight = kDefaultMargin;
}

} // namespace sixtrace
