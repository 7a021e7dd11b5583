// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/numbers.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace sixtrace {

/// Twips of a margin typed in centimetres; nothing unless the text is a number above 0 and at most 10. A comma is none.
[[nodiscard]] std::optional<std::int32_t> marginOfText(const QString& text, NumberMarks marks = NumberMarks::system());
/// The centimetres of a margin with one decimal.
[[nodiscard]] QString textOfMargin(std::int32_t twips, NumberMarks marks = NumberMarks::system());

/// The percentage of a text; nothing unless it is a positive whole number without any mark.
[[nodiscard]] std::optional<std::int32_t> zoomOfText(const QString& text, NumberMarks marks = NumberMarks::system());

/// The percentage typed for the view, rounded; nothing for a text that is no number, names 0 or holds a comma or a
/// minus sign.
[[nodiscard]] std::optional<std::int32_t> viewPercentOfText(const QString& text,
                                                            NumberMarks marks = NumberMarks::system());

/// The page number of a text, 1 to pageCount; nothing otherwise.
[[nodiscard]] std::optional<std::int16_t> pageOfText(const QString& text, std::int32_t pageCount,
                                                     NumberMarks marks = NumberMarks::system());

} // namespace sixtrace
