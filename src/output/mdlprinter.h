// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <cstdint>

namespace sixtrace {

class PageTarget;

/// Whoever composes pages for the preview.
class PreviewOwner {
public:
    PreviewOwner() = default;
    PreviewOwner(const PreviewOwner&) = delete;
    PreviewOwner& operator=(const PreviewOwner&) = delete;
    virtual ~PreviewOwner() = default;

    /// Composes the page on a target; zoomPercent plays no part for a printer. An error ends it where it stands.
    [[nodiscard]] virtual Outcome PrintResult(PageTarget& target, std::int32_t zoomPercent) = 0;
};

/// Print settings that last for the run of the program. All lengths in twips.
struct MdlPrinter {
    std::int32_t PrintMarginTop = 0;
    std::int32_t PrintMarginBottom = 0;
    std::int32_t PrintMarginLeft = 0;
    std::int32_t PrintMarginRight = 0;
    std::int32_t PaperHeight = 0; ///< of the sheet, as the preview took it from the printer
    std::int32_t PaperWidth = 0;
    sixtrace::PreviewOwner* PreviewOwner = nullptr;
};

/// How the preview composes its page: what the page setup reads and writes of it. It is back at its start when the
/// preview goes.
struct PreviewScale {
    std::int32_t BaseZoom = 0;  ///< percent of the page that is composed once and stretched; 0 stands for 100
    bool RePrintOnZoom = false; ///< whether each change of scale composes the page anew

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
