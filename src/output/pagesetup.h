// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/numbers.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace sixtrace {

/// The twips of a margin that is typed in centimetres. Nothing unless the text is a number above 0 and at most 10
/// without a comma.
[[nodiscard]] std::optional<std::int32_t> marginOfText(const QString& text, NumberMarks marks = NumberMarks::system());
/// The text of a margin in centimetres, with one decimal.
[[nodiscard]] QString textOfMargin(std::int32_t twips, NumberMarks marks = NumberMarks::system());

/// The percentage in a text. Nothing unless it is a positive whole number without a sign, a point or a comma.
[[nodiscard]] std::optional<std::int32_t> zoomOfText(const QString& text, NumberMarks marks = NumberMarks::system());

/// The percentage that is typed for the view, rounded. Nothing for a text that is no number, that is 0, or that holds a
/// comma or a minus sign.
[[nodiscard]] std::optional<std::int32_t> viewPercentOfText(const QString& text,
                                                            NumberMarks marks = NumberMarks::system());

/// The page number in a text, 1 to pageCount; nothing for any other text.
[[nodiscard]] std::optional<std::int16_t> pageOfText(const QString& text, std::int32_t pageCount,
                                                     NumberMarks marks = NumberMarks::system());

} // namespace sixtrace
