// SPDX-License-Identifier: MIT
#include "shell/frmcomfixture.h"

#include "platform/controls/listcombo.h"
#include "platform/controls/picturebox.h"
#include "platform/controls/positionbar.h"
#include "platform/controls/ticklist.h"
#include "platform/controls/toolbar.h"
#include "support/strings.h"

#include <QScreen>

#include <algorithm>

namespace sixtrace::test {
namespace {

class FrmComStart : public FrmComTest {};

TEST_F(FrmComStart, FirstStartIsChineseWithLinesAndGraticuleAndLeavesJustTheLanguageKey) {
    load();
    EXPECT_EQ(read(u"vkq.ini"_s).simplified(), QByteArray("[Common] Language=0"));
    EXPECT_EQ(model->LanguageId, 0);
    EXPECT_TRUE(item("mnuChinese").isChecked());
    EXPECT_TRUE(item("mnuLine").isChecked());
    EXPECT_FALSE(item("mnuPoint").isChecked());
    EXPECT_TRUE(item("mnuGraticule").isChecked());
}

TEST_F(FrmComStart, RowsShowLabelTimeVoltsAndTheExponentBehindEightBlanks) {
    load();
    const auto& list = control<TickList>("List1");
    const QString rest = u"          5  nS          5.00mV        / 1"_s;
    EXPECT_EQ(list.count(), 6);
    EXPECT_EQ(list.List(0), u"ch1"_s + rest);
    EXPECT_EQ(list.List(1), u"ch2"_s + rest);
    EXPECT_EQ(list.List(2), u"A  "_s + rest);
    EXPECT_EQ(list.List(3), u"B  "_s + rest);
    EXPECT_EQ(list.List(4), u"C  "_s + rest);
    EXPECT_EQ(list.List(5), u"D  "_s + rest);
}

TEST_F(FrmComStart, FirstRowIsCurrentWithoutAnyTickWhileNoChannelIsChosen) {
    load();
    const auto& list = control<TickList>("List1");
    EXPECT_EQ(list.ListIndex(), 0);
    for (int row = 0; row < 6; ++row) {
        EXPECT_FALSE(list.Selected(row));
    }
    EXPECT_EQ(form->state().CurChannel, -1);
    EXPECT_TRUE(form->state().ScrollLive);
}

TEST_F(FrmComStart, ListsAreFilledAndTheBarStandsInTheMiddleOfRowZero) {
    load();
    const auto& times = control<ListCombo>("Combo1");
    const auto& volts = control<ListCombo>("Combo2");
    EXPECT_EQ(times.ListCount(), 28);
    EXPECT_EQ(times.List(27), u"5   S"_s);
    EXPECT_EQ(times.ListIndex(), 0);
    EXPECT_EQ(volts.ListCount(), 10);
    EXPECT_EQ(volts.List(0), u"50.0mV"_s) << "the probe exponent is 1 before any load";
    EXPECT_EQ(volts.ListIndex(), 0);
    const auto& cursorTypes = control<ListCombo>("Combo3");
    EXPECT_EQ(cursorTypes.ListCount(), 4);
    for (int row = 0; row < 4; ++row) {
        EXPECT_EQ(cursorTypes.List(row), u" "_s) << "its texts stand in the language files";
    }
    EXPECT_EQ(cursorTypes.ListIndex(), 0);
    EXPECT_EQ(control<PositionBar>("VScroll1").Max(), 800);
    EXPECT_EQ(control<PositionBar>("VScroll1").Value(), 400);
}

TEST_F(FrmComStart, EmptyScreenIsDrawnAndCopiedToTheHiddenPicture) {
    load();
    const EmptyScreen expected(*model);
    EXPECT_TRUE(samePixels(control<PictureBox>("Picture2").picture(), expected.picture));
    const Picture& hidden = form->pictures().background();
    EXPECT_EQ(hidden.Point(0, 0), 16776960) << "the border";
    EXPECT_EQ(hidden.Point(600, 200), 4194368) << "the copy is 600 by 400";
}

TEST_F(FrmComStart, SettingsReachColoursTicksAndLanguage) {
    write(u"vkq.ini"_s, "[LineColor]\n0=1193046\n[GridColor]\nGrid= 255\n[Pic3Color]\nback=65280\n"
                        "[Pic2Color]\nBackColor=8388608\n"
                        "[Common]\nLanguage=1\nGraticule=False\nDrawLine=False\nDrawPoint=False\n");
    load();
    EXPECT_EQ(model->LineColor[0], 1193046);
    EXPECT_EQ(model->BackColor, 8388608);
    EXPECT_EQ(control<PictureBox>("Picture2").picture().BackColor, 8388608);
    for (const char* hidden : {"picHidden(0)", "picHidden(1)", "picHidden(2)"}) {
        EXPECT_EQ(control<PictureBox>(hidden).picture().BackColor, 8388608) << hidden;
    }
    EXPECT_EQ(control<PictureBox>("Picture2").picture().Point(0, 0), 255);
    EXPECT_EQ(control<QWidget>("Picture3").palette().color(QPalette::Window), QColor(0, 255, 0));
    EXPECT_EQ(control<QWidget>("CenterPoint").palette().color(QPalette::Window), QColor(0, 0, 128));
    EXPECT_FALSE(item("mnuGraticule").isChecked());
    EXPECT_FALSE(item("mnuLine").isChecked());
    EXPECT_FALSE(item("mnuPoint").isChecked());
    EXPECT_TRUE(item("mnuEnglish").isChecked());
    EXPECT_FALSE(item("mnuChinese").isChecked());
    EXPECT_EQ(control<TickList>("List1").chipColour(0), 1193046);
    EXPECT_EQ(control<TickList>("List1").chipBack(), 8388608);
}

TEST_F(FrmComStart, SettingsFileOfAnyBytesStartsTheProgram) {
    QByteArray bytes;
    for (int i = 0; i < 4096; ++i) {
        bytes.append(static_cast<char>((i * 31 + i / 256) & 0xFF));
    }
    write(u"vkq.ini"_s, bytes);
    load();
    EXPECT_EQ(model->GridColor, 16776960);
}

TEST_F(FrmComStart, SettingsThatCannotBeWrittenAreNoMatterOfAMessage) {
    ASSERT_TRUE(QDir().mkpath(iniFile())); // a folder in its place, so that every write fails
    load();
    item("mnuEnglish").trigger();
    EXPECT_EQ(model->LanguageId, 1) << "for this run";
    EXPECT_TRUE(dialogs.messages.isEmpty());
}

TEST_F(FrmComStart, WindowStandsInTheMiddleOfTheScreen) {
    load();
    const QRect area = form->screen()->geometry();
    EXPECT_EQ(form->pos(), QPoint((area.width() - 800) / 2, (area.height() - 579) / 2) + area.topLeft());
}

TEST_F(FrmComStart, ToolButtonsShowTheTicksOfTheirItems) {
    load();
    const auto& bar = control<ToolBar>("Toolbar1");
    EXPECT_TRUE(bar.button(7).isTicked());
    EXPECT_TRUE(bar.button(8).isTicked());
    EXPECT_FALSE(bar.button(9).isTicked());
    EXPECT_FALSE(bar.button(13).isTicked());
    item("mnuPoint").setChecked(true);
    EXPECT_TRUE(bar.button(9).isTicked());
}

class FrmComEnd : public FrmComTest {};

TEST_F(FrmComEnd, ClosingTheWindowEndsTheProcess) {
    load();
    form->show();
    form->close();
    EXPECT_EQ(ends, 1);
}

TEST_F(FrmComEnd, ClosingTheWindowUnloadsTheMessageWindowAndExitDoesNot) {
    load();
    const auto messageWindows = [] {
        const auto windows = QApplication::topLevelWidgets();
        return std::count_if(windows.begin(), windows.end(),
                             [](const QWidget* w) { return w->objectName() == u"FrmMessageOut"_s; });
    };
    static_cast<void>(form->messageOut());
    item("mnuExit").trigger();
    EXPECT_EQ(messageWindows(), 1);
    form->close();
    EXPECT_EQ(messageWindows(), 0);
}

TEST_F(FrmComEnd, ExitEndsTheProcessAtOnce) {
    load();
    item("mnuExit").trigger();
    EXPECT_EQ(ends, 1);
}

TEST_F(FrmComEnd, NothingIsSavedAtTheEnd) {
    load();
    write(u"vkq.ini"_s, "; emptied\n");
    form->close();
    EXPECT_EQ(read(u"vkq.ini"_s), QByteArray("; emptied\n"));
}

} // namespace
} // namespace sixtrace::test
