// SPDX-License-Identifier: MIT
// The texts that users type into page setup and preview, and the place of the page in the preview.
#include "output/pagesetup.h"
#include "output/previewgeometry.h"
#include "support/strings.h"

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

constexpr NumberMarks kMarks{};

std::int32_t fullPage(double windowWidth, double windowHeight, double paperWidth, double paperHeight) {
    return fullPagePercent(Twips(windowWidth), Twips(windowHeight), Twips(paperWidth), Twips(paperHeight));
}

double placed(double picture, double window) {
    return placeOnAxis(Twips(picture), Twips(window)).number();
}

double dragged(double delta, double place, double picture, double window) {
    return dragOnAxis(Twips(delta), Twips(place), Twips(picture), Twips(window)).number();
}

TEST(PageInput, MarginsAreAbove0AndAtMost10Centimetres) {
    EXPECT_EQ(marginOfText(u"10"_s, kMarks), 5670);
    EXPECT_EQ(marginOfText(u"0.1"_s, kMarks), 57);   // 56.7
    EXPECT_EQ(marginOfText(u"2.5"_s, kMarks), 1418); // 1417.5 is rounded to the even number
    for (const char* bad : {"0", "10.1", "1,5", "", "-1", "x", "1 cm", "1e1x", "nan", "inf"}) {
        EXPECT_FALSE(marginOfText(QString::fromUtf8(bad), kMarks)) << bad;
    }
}

TEST(PageInput, ThePercentIsAPositiveWholeNumberWithoutMarks) {
    EXPECT_EQ(zoomOfText(u"100"_s, kMarks), 100);
    for (const char* bad : {"100.5", "-5", "100e-1", "1,000", "0", "", "x", "5%", "99999999999"}) {
        EXPECT_FALSE(zoomOfText(QString::fromUtf8(bad), kMarks)) << bad;
    }
}

TEST(PageInput, TheViewsPercentIsNeither0NorNegativeAndMayHaveAFraction) {
    EXPECT_EQ(viewPercentOfText(u"150"_s, kMarks), 150);
    EXPECT_EQ(viewPercentOfText(u"99.6"_s, kMarks), 100);
    for (const char* bad : {"0", "-10", "100e-1", "1,5", "abc", "5%", "9999999999"}) {
        EXPECT_FALSE(viewPercentOfText(QString::fromUtf8(bad), kMarks)) << bad;
    }
}

TEST(PageInput, AWholePageIsDecidedByTheTighterSide) {
    // 11400 - 200 by 9210 - 200 twips: the height decides, 9010 / 16840.
    EXPECT_EQ(fullPage(11400, 9210, 11907, 16840), 54);
    // 6200 - 200 by 30000 - 200: the width decides, 6000 / 11907.
    EXPECT_EQ(fullPage(6200, 30000, 11907, 16840), 50);
    EXPECT_EQ(fullPage(100, 100, 11907, 16840), 1) << "no window is too small";
}

TEST(PageInput, APictureSmallerThanTheWindowStandsCentredElseAtTheOrigin) {
    EXPECT_EQ(placed(1000, 1500), 250);
    EXPECT_EQ(placed(1000, 1001), 0); // 0.5 is rounded to the even number
    EXPECT_EQ(placed(1500, 1500), 0);
    EXPECT_EQ(placed(2000, 1500), 0);
}

TEST(PageInput, ADragKeepsTheNearEdgeOutsideAndTheFarEdgeInside) {
    // A picture of 2000 in a window of 1500 hides 500.
    EXPECT_EQ(dragged(-300, 0, 2000, 1500), -300);
    EXPECT_EQ(dragged(-700, 0, 2000, 1500), -500);
    EXPECT_EQ(dragged(-700, -400, 2000, 1500), -100);
    EXPECT_EQ(dragged(200, -400, 2000, 1500), 200);
    EXPECT_EQ(dragged(700, -400, 2000, 1500), 400);
    EXPECT_EQ(dragged(10, 0, 2000, 1500), 0);
    EXPECT_EQ(dragged(10, 250, 1000, 1500), 0) << "a centred picture stays";
    EXPECT_EQ(dragged(-10, 250, 1000, 1500), 0);
}

TEST(PageInput, APictureBeyond32BitsStandsAtTheOriginAndCanBeDragged) {
    // A4 at 2147483647 percent.
    EXPECT_EQ(placed(119.07 * 2147483647, 11400), 0);
    EXPECT_EQ(dragged(-300, 0, 119.07 * 2147483647, 11400), -300);
    EXPECT_EQ(dragged(300, -500, 119.07 * 2147483647, 11400), 300);
}

TEST(PageInput, APictureOneTwipSmallerThanTheWindowStandsAtTheOriginAndMovesByThatTwip) {
    EXPECT_EQ(placed(1499, 1500), 0);
    EXPECT_EQ(dragged(-10, 0, 1499, 1500), 1); // the picture is 1 smaller than the window
    EXPECT_EQ(dragged(10, 0, 1499, 1500), 0);
}

TEST(PageInput, APageIsNamedByAWholeNumberInItsRange) {
    EXPECT_EQ(pageOfText(u"1"_s, 1, kMarks), 1);
    EXPECT_EQ(pageOfText(u"3"_s, 3, kMarks), 3);
    for (const char* bad : {"0", "2", "-1", "1.0", "1,0", "", "x", "1x", "99999"}) {
        EXPECT_FALSE(pageOfText(QString::fromUtf8(bad), 1, kMarks)) << bad;
    }
}

TEST(PageInput, AMarginIsShownInCentimetresWithOneDecimal) {
    EXPECT_EQ(textOfMargin(567, kMarks), u"1.0"_s);
    EXPECT_EQ(textOfMargin(57, kMarks), u"0.1"_s);
    EXPECT_EQ(textOfMargin(850, kMarks), u"1.5"_s); // 1.4991
    EXPECT_EQ(textOfMargin(5670, kMarks), u"10.0"_s);
}

} // namespace
} // namespace sixtrace::test
