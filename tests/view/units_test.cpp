// SPDX-License-Identifier: MIT
// A mix-up of units does not compile.
#include "capture/measurementunits.h"
#include "capture/readouts.h"
#include "capture/zeromarkers.h"
#include "view/cursors.h"
#include "view/drags.h"
#include "view/screenmouse.h"
#include "view/tracepick.h"

#include <gtest/gtest.h>

#include <functional>
#include <type_traits>

namespace sixtrace::test {
namespace {

template<typename... Units>
constexpr bool kApart = true;
template<typename Unit, typename... Others>
constexpr bool kApart<Unit, Others...> = !std::is_convertible_v<double, Unit> && !std::is_convertible_v<Unit, double> &&
                                         (!std::is_constructible_v<Unit, Others> && ...) &&
                                         (!std::is_constructible_v<Others, Unit> && ...) && kApart<Others...>;
static_assert(kApart<Twips, ScreenX, ScreenY, Hertz, Seconds, Microseconds, Volts, Millivolts>);

template<typename A, typename B>
concept CanBeMixed = requires(A a, B b) {
    a + b;
}
|| requires(A a, B b) {
    a - b;
}
|| requires(A a, B b) {
    a < b;
}
|| requires(A a, B b) {
    a == b;
}
|| requires(A a, B b) {
    a / b;
};
static_assert(CanBeMixed<Twips, Twips>);
static_assert(!CanBeMixed<Twips, ScreenY>);
static_assert(!CanBeMixed<ScreenX, ScreenY>);
static_assert(!CanBeMixed<Volts, Millivolts>);
static_assert(!std::is_invocable_v<std::plus<>, Twips, double>);

// The places of a marker and of its zero line on the screen.
static_assert(std::is_invocable_v<decltype(zeroLineOfMarker), Twips>);
static_assert(!std::is_invocable_v<decltype(zeroLineOfMarker), ScreenY>);
static_assert(!std::is_invocable_v<decltype(zeroLineOfMarker), double>);
static_assert(!std::is_assignable_v<decltype(ZeroMarker::top)&, ScreenY>);
static_assert(!std::is_invocable_v<decltype(moveMarkerDrag), publicM&, int, ScreenY, const Picture&, Picture&>);
static_assert(!std::is_invocable_v<decltype(moveTraceDrag), publicM&, int, Twips, const Picture&, Picture&, Picture&>);

// Columns and rows.
static_assert(std::is_invocable_v<decltype(cursorUnder), const CursorPlaces&, ScreenX, ScreenY>);
static_assert(!std::is_invocable_v<decltype(cursorUnder), const CursorPlaces&, ScreenY, ScreenX>);
static_assert(!std::is_invocable_v<decltype(pickTrace), const publicM&, ScreenY, ScreenX>);
static_assert(!std::is_invocable_v<decltype(moveTimeCursor), ScreenState&, std::size_t, ScreenY>);
static_assert(!std::is_invocable_v<decltype(voltageAt), const publicM&, int, ScreenX, NumberMarks>);
static_assert(!std::is_invocable_v<decltype(&ScreenMouse::Picture2_MouseDown), ScreenMouse&, ScreenY, ScreenX>);
static_assert(!std::is_invocable_v<decltype(&ScreenMouse::Picture2_MouseDown), ScreenMouse&, Twips, Twips>);
static_assert(!std::is_invocable_v<decltype(&ScreenMouse::image1_MouseDown), ScreenMouse&, int, ScreenY>);

// Measurements.
static_assert(std::is_invocable_v<decltype(periodText), Hertz, Microseconds, NumberMarks>);
static_assert(!std::is_invocable_v<decltype(periodText), Microseconds, Hertz, NumberMarks>);
static_assert(!std::is_invocable_v<decltype(peakToPeakText), Volts, NumberMarks>);
static_assert(!std::is_convertible_v<UnitNotation<Hertz>, UnitNotation<Microseconds>>);

TEST(Units, APixelIs15TwipsAndARowOfTheScreen15075ThousandthsOnTheMarkerStrip) {
    EXPECT_EQ(twipsOfPixels(2), Twips(30));
    EXPECT_EQ(nearestPixel(Twips(37.5)), 3);
    EXPECT_EQ(nearestPixel(Twips(-37.4)), -2);
    EXPECT_EQ(rectOfTwips(480, 560, 9015, 6015), QRect(32, 37, 601, 401));
    EXPECT_DOUBLE_EQ(wayOnStrip(ScreenY(-2)).number(), -30.15);
    EXPECT_DOUBLE_EQ(strip::zeroLine(Twips(-105)), 0);
    EXPECT_DOUBLE_EQ(strip::zeroLine(Twips(5925)), 1);
}

TEST(Units, SecondsBecomeMicrosecondsAndVoltsMillivolts) {
    EXPECT_EQ(microsecondsOf(Seconds(0.25)), Microseconds(250000));
    EXPECT_EQ(millivoltsOf(Volts(-1.5)), Millivolts(-1500));
}

} // namespace
} // namespace sixtrace::test
