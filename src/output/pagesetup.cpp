// SPDX-License-Identifier: MIT
#include "output/pagesetup.h"

#include "platform/printing/pagetarget.h"

namespace sixtrace {

namespace {

constexpr double kGreatestMargin = 10; // centimetres

bool isNumeric(const QString& text, NumberMarks marks) {
    return parseNumber(text, marks).has_value();
}

} // namespace

std::optional<std::int32_t> marginOfText(const QString& text, NumberMarks marks) {
    const double centimetres = Val(text);
    const bool good =
        centimetres > 0 && centimetres <= kGreatestMargin && !text.contains(u',') && isNumeric(text, marks);
    return good ? toInt32(centimetres * kTwipsPerCentimetre) : std::nullopt;
}

QString textOfMargin(std::int32_t twips, NumberMarks marks) {
    return Format(twips / kTwipsPerCentimetre, u"0.0", marks);
}

std::optional<std::int32_t> zoomOfText(const QString& text, NumberMarks marks) {
    const double percent = Val(text);
    const bool good =
        percent > 0 && !text.contains(u'-') && !text.contains(u',') && !text.contains(u'.') && isNumeric(text, marks);
    return good ? toInt32(percent) : std::nullopt;
}

std::optional<std::int32_t> viewPercentOfText(const QString& text, NumberMarks marks) {
    const double percent = Val(text);
    const bool good = percent != 0 && !text.contains(u',') && !text.contains(u'-') && isNumeric(text, marks);
    return good ? toInt32(percent) : std::nullopt;
}

std::optional<std::int16_t> pageOfText(const QString& text, std::int32_t pageCount, NumberMarks marks) {
    if (text.contains(u',') || text.contains(u'.') || !isNumeric(text, marks)) {
        return std::nullopt;
    }
    const auto page = toInt16(Val(text));
    return page && *page > 0 && *page <= pageCount ? page : std::nullopt;
}

} // namespace sixtrace
