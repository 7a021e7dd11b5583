// SPDX-License-Identifier: MIT
#include "shell/frmcomfixture.h"

#include "platform/controls/arrowpair.h"
#include "platform/controls/captions.h"
#include "platform/controls/picturebox.h"
#include "platform/controls/toolbar.h"
#include "support/strings.h"

#include <QMenu>
#include <QMenuBar>
#include <QtTest/QtTest>

namespace sixtrace::test {
namespace {

using FrmComPlaces = FrmComTest;

struct Place {
    const char* name;
    const char* parent; ///< null: the area below the menu bar
    QRect pixels;       ///< inside the parent
};

// Designed twips, divided by 15 and rounded to the nearest pixel by hand.
const std::array kPlaces{
    Place{"Toolbar1", nullptr, {0, 0, 800, 35}},
    Place{"VScroll1", nullptr, {0, 37, 9, 401}},
    Place{"Picture3", nullptr, {8, 37, 24, 402}},
    Place{"Picture2", nullptr, {32, 37, 601, 401}},
    Place{"picHidden(0)", nullptr, {176, 56, 601, 401}},
    Place{"picHidden(1)", nullptr, {224, 40, 601, 401}},
    Place{"picHidden(2)", nullptr, {64, 32, 601, 401}},
    Place{"Frame1", nullptr, {640, 40, 153, 217}},
    Place{"Frame2", nullptr, {640, 272, 153, 81}},
    Place{"Frame3", nullptr, {640, 360, 153, 81}},
    Place{"Frame4", nullptr, {552, 440, 241, 81}},
    Place{"List1", nullptr, {8, 440, 521, 88}},
    Place{"Label4", nullptr, {0, 528, 609, 25}},
    Place{"Label5", nullptr, {608, 528, 185, 25}},
    Place{"CenterPoint", "Picture2", {200, 192, 201, 17}},
    Place{"Combo3", "Frame1", {56, 176, 89, 22}},
    Place{"Label3", "Frame1", {8, 181, 41, 17}},
    Place{"Combo1", "Frame2", {8, 40, 89, 24}},
    Place{"UpDown2", "Frame2", {104, 40, 33, 20}},
    Place{"Label2", "Frame2", {8, 24, 129, 17}},
    Place{"Combo2", "Frame3", {8, 48, 89, 24}},
    Place{"UpDown1", "Frame3", {112, 40, 16, 33}},
    Place{"Label1", "Frame3", {8, 24, 137, 17}},
    Place{"LabP", "Frame4", {16, 16, 73, 17}},
    Place{"LabPe", "Frame4", {88, 16, 145, 17}},
    Place{"LabPP", "Frame4", {16, 36, 73, 17}},
    Place{"labPPe", "Frame4", {88, 36, 145, 17}},
    Place{"LabMax", "Frame4", {16, 56, 73, 17}},
    Place{"LabMaxx", "Frame4", {88, 56, 145, 17}},
    Place{"LabYY1", "Frame1", {8, 24, 24, 18}},
    Place{"LabY1", "Frame1", {36, 24, 78, 18}},
    Place{"LabYY11", "Frame1", {118, 24, 26, 18}},
    Place{"LabYY2", "Frame1", {8, 46, 24, 18}},
    Place{"LabY2", "Frame1", {36, 46, 78, 18}},
    Place{"LabYY22", "Frame1", {118, 46, 26, 18}},
    Place{"Labddy", "Frame1", {8, 68, 24, 18}},
    Place{"LabDy", "Frame1", {36, 68, 78, 18}},
    Place{"LabDDYY", "Frame1", {118, 68, 26, 18}},
    Place{"LabXX1", "Frame1", {8, 98, 24, 18}},
    Place{"LabX1", "Frame1", {36, 98, 78, 18}},
    Place{"LabXX11", "Frame1", {118, 98, 26, 18}},
    Place{"LabXX2", "Frame1", {8, 120, 24, 18}},
    Place{"LabX2", "Frame1", {36, 120, 78, 18}},
    Place{"LabXX22", "Frame1", {118, 120, 26, 18}},
    Place{"labDDx", "Frame1", {8, 142, 24, 18}},
    Place{"LabDx", "Frame1", {36, 142, 78, 18}},
    Place{"LabDDXX", "Frame1", {118, 142, 26, 18}},
};

TEST_F(FrmComPlaces, EveryControlStandsAtItsPlaceInItsParent) {
    load();
    for (const Place& place : kPlaces) {
        const auto& widget = control<QWidget>(place.name);
        EXPECT_EQ(widget.geometry(), place.pixels) << place.name;
        const QWidget* parent = place.parent != nullptr ? &control<QWidget>(place.parent) : form->centralWidget();
        EXPECT_EQ(widget.parentWidget(), parent) << place.name;
        EXPECT_TRUE(widget.isEnabled()) << place.name;
    }
}

TEST_F(FrmComPlaces, ClientAreaIs800By553BelowAMenuBarOf26AndCannotBeResized) {
    load();
    EXPECT_EQ(form->menuBar()->height(), 26);
    form->show();
    EXPECT_EQ(form->centralWidget()->size(), QSize(800, 553));
    EXPECT_EQ(form->minimumSize(), form->maximumSize());
}

TEST_F(FrmComPlaces, MarkersAndStandInsHaveTheirSizesAndAreHiddenAtStart) {
    load();
    form->show();
    for (int channel = 0; channel < kChannels; ++channel) {
        const auto& marker = control<QWidget>(qPrintable(elementName(u"image1"_s, channel)));
        const auto& standIn = control<QWidget>(qPrintable(elementName(u"ZLabel"_s, channel)));
        EXPECT_EQ(marker.size(), QSize(24, 14));
        EXPECT_EQ(standIn.size(), QSize(25, 17));
        EXPECT_TRUE(marker.isHidden());
        EXPECT_TRUE(standIn.isHidden());
        EXPECT_EQ(marker.property("caption").toString(), u"%1->"_s.arg(u"12ABCD"_s[channel]));
    }
    EXPECT_EQ(control<QWidget>("image2").size(), QSize(25, 14));
    EXPECT_EQ(control<QWidget>("image2").y(), 200);
    EXPECT_TRUE(control<QWidget>("image2").isHidden());
}

TEST_F(FrmComPlaces, CursorLinesStandAtTheirPlacesInTheirColour) {
    load();
    const auto expectLine = [this](const char* name, double x1, double y1, double x2, double y2) {
        const auto& line = dynamic_cast<const CursorLine&>(control<QObject>(name));
        EXPECT_EQ((std::array{line.X1(), line.Y1(), line.X2(), line.Y2()}), (std::array{x1, y1, x2, y2})) << name;
        EXPECT_EQ(line.colour(), 0x00FFFF80) << name;
        EXPECT_FALSE(line.isVisible()) << name << ": the cursor type is the first at start";
    };
    expectLine("Line1(0)", 0, 100, 604, 100);
    expectLine("Line1(1)", 0, 300, 604, 300);
    expectLine("Line2(0)", 180, 0, 180, 400);
    expectLine("Line2(1)", 420, 0, 420, 400);
}

TEST_F(FrmComPlaces, HiddenPicturesAndTheZeroLabelAreNotShown) {
    load();
    form->show();
    for (const char* name : {"picHidden(0)", "picHidden(1)", "picHidden(2)", "CenterPoint"}) {
        EXPECT_TRUE(control<QWidget>(name).isHidden()) << name;
    }
    EXPECT_TRUE(control<QWidget>("Picture2").isVisible());
}

TEST_F(FrmComPlaces, SixteenToolButtonsStandInARowWithGapsAt1And5And10And15) {
    load();
    // Left edges and widths added up by hand: a gap of 8, three of 28, a gap of 11 and so on.
    constexpr std::array kLeft{0, 8, 36, 64, 92, 103, 131, 159, 187, 215, 226, 254, 282, 310, 338, 349};
    constexpr std::array kWidth{8, 28, 28, 28, 11, 28, 28, 28, 28, 11, 28, 28, 28, 28, 11, 28};
    for (std::size_t i = 0; i < kLeft.size(); ++i) {
        const int index = static_cast<int>(i) + 1;
        const auto& button = control<QWidget>(qPrintable(elementName(u"Toolbar1"_s, index)));
        EXPECT_EQ(button.geometry(), QRect(kLeft[i], 3, kWidth[i], 28)) << index;
    }
}

TEST_F(FrmComPlaces, TabWalksFromTheListOverTimeAndVoltControlsAndCursorTypeToTheBar) {
    load();
    form->show();
    form->activateWindow();
    QStringList walked;
    for (int i = 0; i < 7; ++i) {
        QTest::keyClick(form.get(), Qt::Key_Tab);
        walked.append(form->focusWidget() != nullptr ? form->focusWidget()->objectName() : QString());
    }
    EXPECT_EQ(walked.join(QLatin1Char(' ')), u"List1 Combo1 UpDown2 Combo2 UpDown1 Combo3 VScroll1"_s);
}

struct MenuItem {
    const char* name;
    const char16_t* caption;
    bool visible = true;
    bool ticked = false;
};

void expectMenu(FrmCom& form, const char* menuName, const std::vector<MenuItem>& items) {
    const auto* menu = form.findChild<QMenu*>(QString::fromLatin1(menuName));
    ASSERT_NE(menu, nullptr) << menuName;
    const auto actions = menu->actions();
    ASSERT_EQ(actions.size(), std::ssize(items)) << menuName;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const QAction& action = *actions[static_cast<qsizetype>(i)];
        EXPECT_EQ(action.objectName(), QString::fromLatin1(items[i].name));
        EXPECT_EQ(action.isVisible(), items[i].visible) << items[i].name;
        EXPECT_EQ(action.isChecked(), items[i].ticked) << items[i].name;
        if (QString::fromUtf16(items[i].caption) == u"-"_s) {
            EXPECT_TRUE(action.isSeparator()) << items[i].name;
        } else {
            EXPECT_EQ(action.text(), QString::fromUtf16(items[i].caption));
        }
    }
}

TEST_F(FrmComPlaces, MenuTreeHasItsCaptionsHiddenItemsAndTicks) {
    load();
    expectMenu(*form, "mnuFile",
               {{"mnuNew", u"新建", false},
                {"mnuOpen", u"打开"},
                {"mnuSaveAs", u"另存为位图", false},
                {"mnuBar1", u"-"},
                {"mnuPageSet", u"页面设置"},
                {"mnuPrintView", u"打印预览"},
                {"mnuPrint", u"打印"},
                {"mnuPrintSet", u"打印机设置"},
                {"mnuBar2", u"-"},
                {"mnuExit", u"退出"}});
    expectMenu(*form, "mnuView",
               {{"mnuWaveXY", u"波形XY", true, true},
                {"mnuTabular", u"数值列表"},
                {"mnuBar3", u"-", false},
                {"mnuBar7", u"-"},
                {"MnuGridColor", u"GridColor"},
                {"mnubackgroundcolor", u"Background Color"},
                {"mnuGraticule", u"网格", true, true},
                {"mnuTools", u"工具栏", false, true},
                {"mnuStatus", u"状态栏", false, true}});
    expectMenu(*form, "mnuFormat",
               {{"mnuLine", u"数据线", true, true}, {"mnuPoint", u"数据点"}, {"bar1", u"-", false}});
    expectMenu(*form, "mnuCom",
               {{"mnuComSet", u"串口设置"},
                {"mnubar11", u"-"},
                {"mnuAcquire", u"手动获取(&A)"},
                {"mnubar22", u"-"},
                {"mnuautoget", u"自动获取"},
                {"mnutimeselect", u"时间间隔", false},
                {"mnustop", u"停止"},
                {"mnurun", u"运行", false}});
    expectMenu(*form, "mnutimeselect", {{"mnuone", u"1S"}, {"mnutwo", u"2S"}, {"mnuthree", u"3S"}, {"mnufive", u"5S"}});
    expectMenu(*form, "mnuLanguage", {{"mnuEnglish", u"English"}, {"mnuChinese", u"Chinese", true, true}});
    expectMenu(*form, "mnuHelp", {{"mnuContent", u"目录"}, {"mnuBar5", u"-"}, {"mnuAbout", u"关于"}});
    QStringList bar;
    for (const QAction* action : form->menuBar()->actions()) {
        bar.append(action->objectName() + action->text());
    }
    EXPECT_EQ(bar.join(QLatin1Char(' ')),
              u"mnuFile文件(&F) mnuView视图(&V) mnuFormat格式(&O) mnuCom通讯(&C) mnuLanguage语言(&L) "
              "mnuHelp帮助(&H)"_s);
}

TEST_F(FrmComPlaces, ChoosingAnItemLeavesItsTickToTheHandler) {
    load();
    item("mnuWaveXY").trigger();
    EXPECT_TRUE(item("mnuWaveXY").isChecked());
}

TEST_F(FrmComPlaces, WithoutLanguageFilesTheLabelsBearTheCaptionsOfTheDesign) {
    load();
    const std::array<std::pair<const char*, const char16_t*>, 16> captions{{{"Label1", u"刻度          位置        "},
                                                                            {"Label2", u"刻度          位置        "},
                                                                            {"Label3", u"类型"},
                                                                            {"LabP", u""},
                                                                            {"LabPP", u"频率："},
                                                                            {"LabMax", u"峰峰值："},
                                                                            {"LabYY1", u"y1:"},
                                                                            {"LabYY2", u"y2:"},
                                                                            {"Labddy", u"dy:"},
                                                                            {"LabXX1", u"x1:"},
                                                                            {"LabXX2", u"x2:"},
                                                                            {"labDDx", u"dx:"},
                                                                            {"LabDDYY", u""},
                                                                            {"LabDDXX", u""},
                                                                            {"Label4", u""},
                                                                            {"Label5", u""}}};
    for (const auto& [name, caption] : captions) {
        EXPECT_EQ(captionOf(control<QObject>(name)), QString::fromUtf16(caption)) << name;
    }
}

TEST_F(FrmComPlaces, EveryItemThatIsShownIsEnabledWithoutACapture) {
    load();
    int items = 0;
    for (const QAction* action : form->menuBar()->findChildren<QAction*>()) {
        // The toolkit counts a hidden item as disabled.
        const bool isReachable = action->isVisible() && !action->isSeparator();
        EXPECT_EQ(action->isEnabled(), action->isVisible()) << action->objectName().toStdString();
        items += isReachable ? 1 : 0;
    }
    // Six menus with 6, 5, 2, 4, 2 and 2 items, and four choices of the interval inside their hidden menu.
    EXPECT_EQ(items, 31);
}

TEST_F(FrmComPlaces, TheHiddenToolbarItemTouchesNeitherTheToolbarNorItsTickNorTheSettings) {
    load();
    form->show();
    const QByteArray settings = read(u"vkq.ini"_s);
    item("mnuTools").trigger();
    item("mnuStatus").trigger();
    EXPECT_TRUE(control<QWidget>("Toolbar1").isVisible());
    EXPECT_TRUE(item("mnuTools").isChecked());
    EXPECT_TRUE(item("mnuStatus").isChecked());
    EXPECT_EQ(read(u"vkq.ini"_s), settings);
}

} // namespace
} // namespace sixtrace::test
