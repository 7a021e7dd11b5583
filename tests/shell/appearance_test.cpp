// SPDX-License-Identifier: MIT
#include "shell/capturewindow.h"

#include "platform/controls/markerlabel.h"
#include "platform/controls/toolbar.h"
#include "support/strings.h"

#include <QTest>

namespace sixtrace::test {
namespace {

constexpr Colour kGreen = 0x00FF00;

class AppearanceWindow : public CaptureWindow {
protected:
    void SetUp() override {
        CaptureWindow::SetUp();
        openFlat();
    }
    [[nodiscard]] QByteArray settings() const { return read(u"vkq.ini"_s); }
};

TEST_F(AppearanceWindow, TheScreensColourReachesEverythingThatSharesItAndTheSettings) {
    dialogs.colours.emplace_back(kGreen);
    doubleClick(screen(), 300, 30);
    EXPECT_EQ(screen().picture().Point(303, 33), kGreen);
    EXPECT_EQ(model->BackColor, kGreen);
    EXPECT_EQ(list().chipBack(), kGreen);
    EXPECT_EQ(control<QWidget>("CenterPoint").palette().color(QPalette::Window), QColor(0, 255, 0));
    EXPECT_TRUE(settings().contains("[Pic2Color]"));
    EXPECT_TRUE(settings().contains("BackColor= 65280"));
}

TEST_F(AppearanceWindow, AfterAChoiceOfTheScreensColourTheHiddenPicturesMatchSoThatADragShowsNoOldColour) {
    dialogs.colours.emplace_back(kGreen);
    doubleClick(screen(), 300, 30);
    for (int index = 0; index < 3; ++index) {
        EXPECT_EQ(hidden(index).picture().BackColor, kGreen) << index;
        EXPECT_EQ(hidden(index).picture().Point(303, 33), kGreen) << index;
    }
    press(screen(), 50, 200);
    drag(screen(), 90, 200);
    EXPECT_EQ(screen().picture().Point(303, 33), kGreen);
    EXPECT_EQ(screen().picture().Point(10, 333), kGreen);
}

TEST_F(AppearanceWindow, TheMenuChoosesTheScreensColourToo) {
    dialogs.colours.emplace_back(kGreen);
    item("mnubackgroundcolor").trigger();
    EXPECT_EQ(screen().picture().Point(303, 33), kGreen);
}

TEST_F(AppearanceWindow, TheStripsColourIsChosenOnTheStripAndLeavesTheMarkersUntilTheNextClick) {
    dialogs.colours.emplace_back(kGreen);
    doubleClick(control<QWidget>("Picture3"), 12, 390);
    EXPECT_EQ(control<QWidget>("Picture3").palette().color(QPalette::Window), QColor(0, 255, 0));
    EXPECT_TRUE(settings().contains("[Pic3Color]"));
    EXPECT_TRUE(settings().contains("back= 65280"));
    EXPECT_EQ(marker(2).backColor(), QColor(0, 255, 255));
    list().setListIndex(0);
    EXPECT_EQ(marker(2).backColor(), QColor(0, 255, 0));
}

TEST_F(AppearanceWindow, TheGridsColourIsDrawnAndKept) {
    dialogs.colours.emplace_back(kGreen);
    item("MnuGridColor").trigger();
    EXPECT_EQ(model->GridColor, kGreen);
    EXPECT_EQ(screen().picture().Point(0, 0), kGreen);
    EXPECT_TRUE(settings().contains("[GridColor]"));
    EXPECT_TRUE(settings().contains("Grid= 65280"));
}

TEST_F(AppearanceWindow, BlackIsKeptWithABlankBeforeItsZero) {
    dialogs.colours.emplace_back(0);
    item("MnuGridColor").trigger();
    EXPECT_TRUE(settings().contains("Grid= 0"));
}

TEST_F(AppearanceWindow, CancelInAnyColourDialogLeavesStateAndSettingsUntouched) {
    const QByteArray before = settings();
    const QImage picture = screenImage();
    doubleClick(screen(), 300, 30);
    item("mnubackgroundcolor").trigger();
    item("MnuGridColor").trigger();
    doubleClick(control<QWidget>("Picture3"), 12, 390);
    EXPECT_EQ(settings(), before);
    EXPECT_EQ(screenImage(), picture);
    EXPECT_EQ(control<QWidget>("Picture3").palette().color(QPalette::Window), QColor(0, 255, 255));
}

TEST_F(AppearanceWindow, DuringTimedAcquisitionNoColourIsAskedFor) {
    model->AutoRun = true;
    dialogs.colours.assign(4, kGreen);
    doubleClick(screen(), 300, 30);
    item("mnubackgroundcolor").trigger();
    item("MnuGridColor").trigger();
    doubleClick(control<QWidget>("Picture3"), 12, 390);
    EXPECT_EQ(dialogs.colours.size(), 4U);
}

TEST_F(AppearanceWindow, TheGraticuleTogglesAtOnceAndInTheSettings) {
    const QImage dotted = screenImage();
    item("mnuGraticule").trigger();
    EXPECT_FALSE(item("mnuGraticule").isChecked());
    EXPECT_NE(screenImage(), dotted);
    EXPECT_TRUE(settings().contains("Graticule=False"));
    control<ToolBar>("Toolbar1").button(7).click();
    EXPECT_TRUE(item("mnuGraticule").isChecked());
    EXPECT_EQ(screenImage(), dotted);
    EXPECT_TRUE(settings().contains("Graticule=True"));
}

TEST_F(AppearanceWindow, TheGraticuleRedrawsEvenDuringTimedAcquisition) {
    model->AutoRun = true;
    const QImage dotted = screenImage();
    item("mnuGraticule").trigger();
    EXPECT_NE(screenImage(), dotted);
}

TEST_F(AppearanceWindow, LinesAndPointsExcludeEachOtherAndBothAreKept) {
    openScene("six");
    const QImage lines = screenImage();
    item("mnuPoint").trigger();
    EXPECT_FALSE(item("mnuLine").isChecked());
    EXPECT_TRUE(item("mnuPoint").isChecked());
    EXPECT_NE(screenImage(), lines);
    EXPECT_TRUE(settings().contains("DrawLine=False"));
    EXPECT_TRUE(settings().contains("DrawPoint=True"));
    item("mnuPoint").trigger();
    EXPECT_TRUE(item("mnuPoint").isChecked()) << "a second choice leaves it";
    control<ToolBar>("Toolbar1").button(8).click();
    EXPECT_TRUE(item("mnuLine").isChecked());
    EXPECT_FALSE(item("mnuPoint").isChecked());
    EXPECT_EQ(screenImage(), lines);
    EXPECT_TRUE(settings().contains("DrawLine=True"));
    EXPECT_TRUE(settings().contains("DrawPoint=False"));
}

TEST_F(AppearanceWindow, DuringTimedAcquisitionThePointModeWaitsForTheNextFrame) {
    openScene("six");
    const QImage lines = screenImage();
    model->AutoRun = true;
    item("mnuPoint").trigger();
    EXPECT_TRUE(item("mnuPoint").isChecked());
    EXPECT_EQ(screenImage(), lines);
    EXPECT_TRUE(settings().contains("DrawPoint=True"));
}

TEST_F(AppearanceWindow, DuringTimedAcquisitionTheLineModeWaitsForTheNextFrameToo) {
    openScene("six");
    item("mnuPoint").trigger();
    const QImage points = screenImage();
    model->AutoRun = true;
    item("mnuLine").trigger();
    EXPECT_TRUE(item("mnuLine").isChecked());
    EXPECT_EQ(screenImage(), points);
    EXPECT_TRUE(settings().contains("DrawLine=True"));
}

TEST_F(AppearanceWindow, SettingsWithNeitherLinesNorPointsDrawPointsAndTickNeither) {
    write(u"vkq.ini"_s, "[Common]\nDrawLine=False\nDrawPoint=False\n");
    load();
    form->show();
    CaptureBlock jump = flat('1', 0);
    jump.samples[1] = 100; // lines would run from row 200 up to row 100 and back
    open({jump});
    EXPECT_FALSE(item("mnuLine").isChecked());
    EXPECT_FALSE(item("mnuPoint").isChecked());
    EXPECT_EQ(screen().picture().Point(1, 100), model->LineColor[0]);
    EXPECT_NE(screen().picture().Point(1, 133), model->LineColor[0]);
}

TEST_F(AppearanceWindow, SettingsThatAreNoColoursOrTruthValuesAreTakenAsAnyNumberWouldBe) {
    write(u"vkq.ini"_s, "[Pic2Color]\nBackColor=green\n[Common]\nDrawLine=perhaps\nGraticule=\n");
    load();
    EXPECT_EQ(screen().picture().BackColor, 0) << "no digits are a zero: black";
    EXPECT_TRUE(item("mnuLine").isChecked()) << "the default";
    EXPECT_TRUE(item("mnuGraticule").isChecked());
}

TEST_F(AppearanceWindow, ASettingsFileThatCannotBeWrittenKeepsTheChoiceForTheRun) {
    const QString folderInItsPlace = iniFile();
    ASSERT_TRUE(QFile::remove(folderInItsPlace));
    ASSERT_TRUE(QDir().mkpath(folderInItsPlace));
    dialogs.colours.emplace_back(kGreen);
    item("MnuGridColor").trigger();
    EXPECT_EQ(screen().picture().Point(0, 0), kGreen);
    EXPECT_TRUE(dialogs.messages.isEmpty());
}

class ColourTitles : public FrmComTest {};

TEST_F(ColourTitles, TheDialogSaysWhatIsColoured) {
    load();
    const auto choose = [this] {
        dialogs.colourTitles.clear();
        item("mnubackgroundcolor").trigger();
        item("MnuGridColor").trigger();
        QTest::mouseDClick(&control<QWidget>("Picture3"), Qt::LeftButton, {}, QPoint(3, 3));
        for (const int channel : {0, 2}) {
            Q_EMIT control<MarkerLabel>(channel == 0 ? "image1(0)" : "image1(2)").doubleClicked();
        }
        return dialogs.colourTitles;
    };
    EXPECT_EQ(choose(),
              (QStringList{u"背景颜色"_s, u"网格颜色"_s, u"标记栏颜色"_s, u"ch1 波形颜色"_s, u"A 波形颜色"_s}));
    item("mnuEnglish").trigger();
    EXPECT_EQ(choose(), (QStringList{u"Background Color"_s, u"Grid Color"_s, u"Marker Strip Color"_s,
                                     u"Trace Color of ch1"_s, u"Trace Color of A"_s}));
}

} // namespace
} // namespace sixtrace::test
