// SPDX-License-Identifier: MIT
#include "platform/controls/arrowpair.h"
#include "platform/controls/labels.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/look.h"
#include "platform/controls/markerlabel.h"
#include "platform/controls/picturebox.h"
#include "platform/controls/positionbar.h"
#include "platform/controls/ticklist.h"
#include "platform/desktop/qtdialogs.h"
#include "support/strings.h"

#include <QApplication>
#include <QtTest/QtTest>

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

class Controls : public ::testing::Test {
protected:
    void SetUp() override { applyLook(*qApp); }
};

struct RecordedCombo : ListCombo {
    RecordedCombo()
        : ListCombo(nullptr) {
        addItems({u"a"_s, u"b"_s, u"c"_s});
        QObject::connect(this, &ListCombo::Click, this, [this] { ++clicks; });
    }
    int clicks = 0;
};

using ListComboControl = Controls;

TEST_F(ListComboControl, SettingTheIndexByCodeRaisesClickOnlyWhenItChanges) {
    RecordedCombo combo;
    combo.setListIndex(1);
    combo.setListIndex(1);
    EXPECT_EQ(combo.clicks, 1);
    EXPECT_EQ(combo.ListIndex(), 1);
}

TEST_F(ListComboControl, GivingItATextSelectsTheEntryWithoutAClick) {
    RecordedCombo combo;
    combo.setText(u"c"_s);
    EXPECT_EQ(combo.ListIndex(), 2);
    combo.setText(u"no such entry"_s);
    EXPECT_EQ(combo.ListIndex(), 2);
    EXPECT_EQ(combo.clicks, 0);
}

TEST_F(ListComboControl, ChoiceByTheUserRaisesClick) {
    RecordedCombo combo;
    combo.show();
    combo.setFocus();
    QTest::keyClick(&combo, Qt::Key_Down);
    EXPECT_EQ(combo.ListIndex(), 1);
    EXPECT_EQ(combo.clicks, 1);
}

TEST_F(ListComboControl, RewritingTheShownEntryKeepsTheChoice) {
    RecordedCombo combo;
    combo.setListIndex(1);
    combo.setList(1, u"B"_s);
    EXPECT_EQ(combo.Text(), u"B"_s);
    EXPECT_EQ(combo.clicks, 1);
}

struct RecordedBar : PositionBar {
    RecordedBar()
        : PositionBar(nullptr) {
        resize(9, 401);
        setRange(0, 800);
        setValue(400);
        QObject::connect(this, &PositionBar::Change, this, [this] { events.append(u"change %1"_s.arg(Value())); });
        QObject::connect(this, &PositionBar::Scroll, this, [this] { events.append(u"scroll %1"_s.arg(Value())); });
        QObject::connect(this, &PositionBar::ScrollEnd, this, [this] { events.append(u"end"_s); });
    }
    QStringList events;
};

using PositionBarControl = Controls;

TEST_F(PositionBarControl, DragRaisesScrollWithTheNewValueAndChangeOnceAtItsEnd) {
    RecordedBar bar;
    bar.show();
    const QPoint grip = bar.thumbRect().center();
    QTest::mousePress(&bar, Qt::LeftButton, {}, grip);
    QTest::mouseMove(&bar, QPoint(grip.x(), 400));
    EXPECT_EQ(bar.events, QStringList{u"scroll 800"_s});
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, QPoint(grip.x(), 400));
    EXPECT_EQ(bar.events, (QStringList{u"scroll 800"_s, u"change 800"_s}));
}

TEST_F(PositionBarControl, DragThatComesBackSaysThatItIsOverAndChangesNothing) {
    RecordedBar bar;
    bar.show();
    const QPoint grip = bar.thumbRect().center();
    QTest::mousePress(&bar, Qt::LeftButton, {}, grip);
    QTest::mouseMove(&bar, QPoint(grip.x(), 400));
    QTest::mouseMove(&bar, grip);
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, grip);
    EXPECT_EQ(bar.events, (QStringList{u"scroll 800"_s, u"scroll 400"_s, u"end"_s}));
}

TEST_F(PositionBarControl, ArrowsStepByOneAndTheLowerOneGivesTheLargerValue) {
    RecordedBar bar;
    bar.show();
    QTest::mouseClick(&bar, Qt::LeftButton, {}, QPoint(4, 396));
    EXPECT_EQ(bar.Value(), 401);
    QTest::mouseClick(&bar, Qt::LeftButton, {}, QPoint(4, 4));
    EXPECT_EQ(bar.Value(), 400);
}

TEST_F(PositionBarControl, ValueOutsideTheRangeGoesToTheNearerEnd) {
    RecordedBar bar;
    bar.setValueClamped(1e300);
    EXPECT_EQ(bar.Value(), 800);
    bar.setValueClamped(-3.2);
    EXPECT_EQ(bar.Value(), 0);
    bar.setValueClamped(2.5);
    EXPECT_EQ(bar.Value(), 2) << "halves go to the even number";
}

TEST_F(PositionBarControl, ThumbIsAtLeast32PixelsLongAndStandsInTheMiddleOfTheTrack) {
    RecordedBar bar;
    EXPECT_EQ(bar.thumbRect().height(), 32);
    EXPECT_EQ(bar.thumbRect().width(), 6);
    EXPECT_NEAR(bar.thumbRect().center().y(), 200, 1);
}

using ArrowPairControl = Controls;

TEST_F(ArrowPairControl, RightAndUpperArrowsRaiseUpClickTheOthersDownClick) {
    QStringList events;
    const auto record = [&events](const ArrowPair& arrows) {
        QObject::connect(&arrows, &ArrowPair::UpClick, &arrows, [&events] { events.append(u"up"_s); });
        QObject::connect(&arrows, &ArrowPair::DownClick, &arrows, [&events] { events.append(u"down"_s); });
    };
    ArrowPair sideways(Qt::Horizontal, nullptr);
    sideways.resize(33, 20);
    record(sideways);
    ArrowPair upright(Qt::Vertical, nullptr);
    upright.resize(16, 33);
    record(upright);
    QTest::mouseClick(&sideways, Qt::LeftButton, {}, QPoint(25, 10));
    QTest::mouseClick(&sideways, Qt::LeftButton, {}, QPoint(8, 10));
    QTest::mouseClick(&upright, Qt::LeftButton, {}, QPoint(8, 8));
    QTest::mouseClick(&upright, Qt::LeftButton, {}, QPoint(8, 25));
    EXPECT_EQ(events, (QStringList{u"up"_s, u"down"_s, u"up"_s, u"down"_s}));
}

using ReadoutLabelControl = Controls;

TEST_F(ReadoutLabelControl, TooWideTextShrinksUntilItFitsAndStandsAsToolTip) {
    ReadoutLabel label(nullptr);
    label.resize(78, 18);
    label.show();
    label.setCaption(u"12.00"_s);
    EXPECT_EQ(label.paintedPixels(), 13);
    EXPECT_TRUE(label.toolTip().isEmpty());
    const QString wide = u"-1234567890.00"_s;
    label.setCaption(wide);
    EXPECT_LT(label.paintedPixels(), 13);
    EXPECT_LE(QFontMetrics(interfaceFont(label.paintedPixels())).horizontalAdvance(wide), 78);
    EXPECT_EQ(label.toolTip(), wide);
    EXPECT_EQ(label.caption(), wide);
}

TEST_F(ReadoutLabelControl, NoTextGetsSmallerThan9Pixels) {
    ReadoutLabel label(nullptr);
    label.resize(20, 18);
    label.show();
    label.setCaption(QString(200, QLatin1Char('8')));
    EXPECT_EQ(label.paintedPixels(), 9);
}

TEST_F(ReadoutLabelControl, TextGivenBeforeTheLabelIsSeenFitsWhenItIs) {
    ReadoutLabel label(nullptr);
    label.resize(78, 18);
    const QString wide = u"-1234567890.00"_s;
    label.setCaption(wide);
    label.show();
    EXPECT_LE(QFontMetrics(interfaceFont(label.paintedPixels())).horizontalAdvance(wide), 78);
    EXPECT_EQ(label.toolTip(), wide);
}

TEST_F(ReadoutLabelControl, LeadingBlankOfAUnitIsKeptButNotPainted) {
    ReadoutLabel blank(nullptr);
    ReadoutLabel plain(nullptr);
    blank.resize(26, 18);
    plain.resize(26, 18);
    blank.setCaption(u" V"_s);
    plain.setCaption(u"V"_s);
    EXPECT_EQ(blank.text(), u" V"_s);
    EXPECT_EQ(blank.grab().toImage(), plain.grab().toImage());
}

using PictureBoxControl = Controls;

TEST_F(PictureBoxControl, ShowsItsPicturePixelByPixel) {
    PictureBox box(40, 30, nullptr);
    box.resize(40, 30);
    box.picture().BackColor = rgb(64, 0, 64);
    box.picture().Cls();
    box.picture().ForeColor = rgb(1, 200, 3);
    box.picture().PSet(7, 9);
    box.picture().PSet(39, 29);
    const QImage shown = box.grab().toImage();
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 40; ++x) {
            ASSERT_EQ(toColour(shown.pixelColor(x, y)), box.picture().Point(x, y)) << x << "," << y;
        }
    }
}

TEST_F(PictureBoxControl, CursorLinesLieOverThePictureAndLeaveItUntouched) {
    PictureBox box(40, 30, nullptr);
    box.resize(40, 30);
    box.picture().BackColor = 0;
    box.picture().Cls();
    CursorLine line(box, u"Line1(0)"_s, 0, 10, 44, 10, rgb(128, 255, 255));
    QImage shown = box.grab().toImage();
    EXPECT_EQ(shown.pixelColor(0, 10), QColor(128, 255, 255));
    EXPECT_EQ(shown.pixelColor(39, 10), QColor(128, 255, 255));
    EXPECT_EQ(shown.pixelColor(5, 9), QColor(Qt::black));
    EXPECT_EQ(shown.pixelColor(5, 11), QColor(Qt::black));
    EXPECT_EQ(box.picture().Point(5, 10), 0);
    line.setY(20);
    shown = box.grab().toImage();
    EXPECT_EQ(shown.pixelColor(5, 10), QColor(Qt::black));
    EXPECT_EQ(shown.pixelColor(5, 20), QColor(128, 255, 255));
    line.setVisible(false);
    EXPECT_EQ(box.grab().toImage().pixelColor(5, 20), QColor(Qt::black));
}

using MarkerLabelControl = Controls;

TEST_F(MarkerLabelControl, KeepsItsTopInTwipsWhileTheWidgetFollowsToTheNearestPixel) {
    QWidget strip;
    MarkerLabel marker(u"1->"_s, Twips(360), Twips(210), &strip);
    marker.setTop(Twips(1402.5));
    EXPECT_DOUBLE_EQ(marker.Top().number(), 1402.5);
    EXPECT_EQ(marker.y(), 94) << "93.5 pixels";
    EXPECT_EQ(marker.size(), QSize(24, 14));
    marker.setTop(Twips(1e12));
    EXPECT_DOUBLE_EQ(marker.Top().number(), 1e12);
}

TEST_F(MarkerLabelControl, TextContrastsWithItsBack) {
    EXPECT_EQ(contrastingText(QColor(255, 255, 0)), QColor(Qt::black));
    EXPECT_EQ(contrastingText(QColor(64, 0, 64)), QColor(Qt::white));
    EXPECT_EQ(contrastingText(QColor(128, 0, 255)), QColor(Qt::white));
    EXPECT_EQ(contrastingText(QColor(255, 128, 0)), QColor(Qt::black));
}

TEST(FileFilters, PairsBecomeNameFiltersWithoutNamingAPatternTwice) {
    EXPECT_EQ(nameFilters(u"KQX bin (*.bin)|*.bin|所有文件|*.*"_s),
              (QStringList{u"KQX bin (*.bin)"_s, u"所有文件 (*)"_s}));
    EXPECT_TRUE(nameFilters(QString()).isEmpty());
}

} // namespace
} // namespace sixtrace::test
