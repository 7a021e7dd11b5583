// SPDX-License-Identifier: MIT
#include "shell/frmcomfixture.h"

#include "capture/capturefile.h"
#include "capture/scenes.h"
#include "platform/controls/labels.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/markerlabel.h"
#include "platform/controls/picturebox.h"
#include "platform/controls/positionbar.h"
#include "platform/controls/ticklist.h"
#include "platform/controls/toolbar.h"
#include "support/strings.h"
#include "view/geometry.h"

#include <QMenuBar>
#include <QScreen>

#include <algorithm>

namespace sixtrace::test {
namespace {

/// The picture of an empty screen, drawn without the window.
struct EmptyScreen {
    Picture picture{kSurfaceWidth, kSurfaceHeight};

    explicit EmptyScreen(publicM& model) {
        Picture copy(kSurfaceWidth, kSurfaceHeight);
        picture.BackColor = 4194368;
        FrameRenderer().PicReDrawT(model, FrameInputs{}, picture, copy);
    }
};

bool samePixels(const Picture& one, const Picture& other) {
    return one.view() == other.view();
}

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

class FrmComOpen : public FrmComTest {
protected:
    void open(const QString& name) {
        dialogs.files.emplace_back(FileChoice{path(name), 1});
        item("mnuOpen").trigger();
    }
    void writeScene(const char* name, const char* tag = "V11") {
        const auto blocks = sceneBlocks(QString::fromLatin1(name), 1);
        ASSERT_TRUE(blocks.has_value());
        write(u"capture.bin"_s, captureBytes(*captureForm(tag), *blocks));
    }
};

TEST_F(FrmComOpen, AsksForACaptureInTheDatFolderOfTheProgram) {
    load();
    item("mnuOpen").trigger();
    ASSERT_EQ(dialogs.fileRequests.size(), 1U);
    EXPECT_EQ(dialogs.fileRequests[0].fileName, path(u"dat/*.bin"_s));
    EXPECT_EQ(dialogs.fileRequests[0].filter, u"KQX bin (*.bin)|*.bin|所有文件|*.*"_s);
    EXPECT_EQ(dialogs.fileRequests[0].filterIndex, 1);
    EXPECT_TRUE(control<PathLabel>("Label4").text().isEmpty()) << "a cancelled dialog changes nothing";
}

TEST_F(FrmComOpen, SixTracesAreTickedDrawnAndTheLastBlocksRowIsCurrent) {
    load();
    writeScene("six");
    form->show();
    open(u"capture.bin"_s);
    const auto& list = control<TickList>("List1");
    for (int channel = 0; channel < kChannels; ++channel) {
        EXPECT_TRUE(list.Selected(channel));
        EXPECT_TRUE(control<QWidget>(qPrintable(elementName(u"image1"_s, channel))).isVisible());
    }
    EXPECT_EQ(list.ListIndex(), 5);
    EXPECT_EQ(form->state().CurChannel, 5);
    EXPECT_EQ(control<PathLabel>("Label4").text(), path(u"capture.bin"_s));
    EXPECT_TRUE(control<PathLabel>("Label5").text().isEmpty());
    EXPECT_FALSE(samePixels(control<PictureBox>("Picture2").picture(), EmptyScreen(*model).picture));
    EXPECT_EQ(control<MarkerLabel>("image1(5)").backColor(), QColor(255, 128, 0)) << "the selected marker stands out";
    EXPECT_EQ(control<MarkerLabel>("image1(0)").backColor(), QColor(0, 255, 255)) << "the others blend in";
}

TEST_F(FrmComOpen, MarkersStandWhereTheFilesZeroLevelsSay) {
    load();
    CaptureBlock block{.id = 'A', .screenPoints = 4, .sampleCount = 4, .zeroLevel = 50, .samples = {0, 1, 2, 3}};
    write(u"capture.bin"_s, captureBytes(*captureForm("V11"), {block}));
    open(u"capture.bin"_s);
    // 100 - 50 of 200 steps down a strip of 6030 twips, less half a marker's 210.
    EXPECT_DOUBLE_EQ(control<MarkerLabel>("image1(2)").Top(), 6030 * 50 / 200.0 - 105);
}

TEST_F(FrmComOpen, MissingFileIsReportedAndNothingElseHappens) {
    load();
    open(u"none.bin"_s);
    EXPECT_EQ(dialogs.messages, QStringList{u" no this file!\n\r\n\r"_s + path(u"none.bin"_s)});
    ASSERT_EQ(dialogs.messageIcons.size(), 1U);
    EXPECT_EQ(dialogs.messageIcons[0], MessageIcon::Critical);
    EXPECT_TRUE(control<PathLabel>("Label4").text().isEmpty());
}

TEST_F(FrmComOpen, FolderInPlaceOfACaptureIsNoFile) {
    load();
    ASSERT_TRUE(QDir().mkpath(path(u"folder.bin"_s)));
    open(u"folder.bin"_s);
    EXPECT_EQ(dialogs.messages.size(), 1);
}

TEST_F(FrmComOpen, RefusedFileLeavesTheCaptureOnTheScreenWithoutAMessage) {
    load();
    writeScene("six");
    open(u"capture.bin"_s);
    const QImage before = control<PictureBox>("Picture2").picture().view().copy();
    for (const char* content : {"", "KQ", "PNG and more", "KQXV02"}) {
        write(u"bad.bin"_s, content);
        open(u"bad.bin"_s);
        EXPECT_EQ(control<PictureBox>("Picture2").picture().view(), before) << content;
    }
    EXPECT_EQ(model->FileKind, 0) << "the tag was the last reason";
    EXPECT_TRUE(dialogs.messages.isEmpty());
}

TEST_F(FrmComOpen, RefusedFileBeforeAnyCaptureIsSurvived) {
    load();
    write(u"bad.bin"_s, "nothing");
    open(u"bad.bin"_s);
    EXPECT_EQ(form->state().CurChannel, -1);
}

TEST_F(FrmComOpen, HeaderOnlyUnticksAllRowsAndShowsTheGraticuleOnly) {
    load();
    writeScene("six");
    open(u"capture.bin"_s);
    writeScene("empty");
    form->show();
    open(u"capture.bin"_s);
    for (int channel = 0; channel < kChannels; ++channel) {
        EXPECT_FALSE(control<TickList>("List1").Selected(channel));
        // The Open command ends with the clamp of the current channel's marker, which shows the marker.
        EXPECT_EQ(control<QWidget>(qPrintable(elementName(u"image1"_s, channel))).isHidden(), channel != 5);
    }
    EXPECT_EQ(control<TickList>("List1").ListIndex(), 5) << "clearing a clear tick still moves the row";
    EXPECT_TRUE(samePixels(control<PictureBox>("Picture2").picture(), EmptyScreen(*model).picture));
}

TEST_F(FrmComOpen, LoadOfTheOtherFamilyRelabelsTheTimeList) {
    load();
    writeScene("sine", "V01");
    open(u"capture.bin"_s);
    EXPECT_EQ(control<ListCombo>("Combo1").List(2), u"25 nS"_s);
    writeScene("sine", "W11");
    open(u"capture.bin"_s);
    EXPECT_EQ(control<ListCombo>("Combo1").List(2), u"20 nS"_s);
    EXPECT_EQ(control<ListCombo>("Combo1").List(26), u"2   S"_s);
    EXPECT_EQ(model->FileKind, 5);
}

TEST_F(FrmComOpen, NewClearsTheScreenAndTheNextFrameBringsTheTracesBack) {
    load();
    writeScene("six");
    open(u"capture.bin"_s);
    const QImage traces = control<PictureBox>("Picture2").picture().view().copy();
    item("mnuNew").setVisible(true); // the item is hidden and so cannot be chosen, but its command works
    item("mnuNew").trigger();
    const Picture& picture = control<PictureBox>("Picture2").picture();
    EXPECT_EQ(picture.Point(0, 0), 4194368);
    EXPECT_TRUE(control<TickList>("List1").Selected(0));
    control<TickList>("List1").setSelected(0, true);
    EXPECT_EQ(picture.view(), traces);
}

TEST_F(FrmComOpen, ToolButton2Opens) {
    load();
    control<ToolBar>("Toolbar1").button(2).click();
    EXPECT_EQ(dialogs.fileRequests.size(), 1U);
}

TEST_F(FrmComOpen, ToolButtonsWithoutAHandlerDoNothing) {
    load();
    const QImage before = control<PictureBox>("Picture2").picture().view().copy();
    QStringList chosen;
    for (const QAction* action : form->findChildren<QAction*>()) {
        QObject::connect(action, &QAction::triggered, action, [&chosen, action] { chosen << action->objectName(); });
    }
    for (const int index : {1, 5, 10, 15}) {
        control<ToolBar>("Toolbar1").button(index).click();
        EXPECT_EQ(chosen, QStringList()) << index;
    }
    control<ToolBar>("Toolbar1").button(7).click();
    EXPECT_EQ(chosen, QStringList{u"mnuGraticule"_s}) << "as the buttons beside them do";
    control<ToolBar>("Toolbar1").button(7).click();
    EXPECT_TRUE(dialogs.fileRequests.empty());
    EXPECT_EQ(control<PictureBox>("Picture2").picture().view(), before);
    EXPECT_EQ(ends, 0);
}

TEST_F(FrmComOpen, EachToolButtonRunsItsMenuItem) {
    load();
    const std::array<std::pair<int, const char*>, 12> commands{{{2, "mnuOpen"},
                                                                {3, "mnuPrintView"},
                                                                {4, "mnuPrint"},
                                                                {6, "mnuTabular"},
                                                                {7, "mnuGraticule"},
                                                                {8, "mnuLine"},
                                                                {9, "mnuPoint"},
                                                                {11, "mnuComSet"},
                                                                {12, "mnuAcquire"},
                                                                {13, "mnuautoget"},
                                                                {14, "mnustop"},
                                                                {16, "mnuContent"}}};
    QStringList chosen;
    for (QAction* action : form->menuBar()->findChildren<QAction*>()) {
        // The handlers of these items would show dialogs, print and fetch.
        QObject::disconnect(action, &QAction::triggered, nullptr, nullptr);
        QObject::connect(action, &QAction::triggered, form.get(),
                         [&chosen, action] { chosen.append(action->objectName()); });
    }
    for (const auto& [button, name] : commands) {
        chosen.clear();
        control<ToolBar>("Toolbar1").button(button).click();
        EXPECT_EQ(chosen, QStringList{QString::fromLatin1(name)}) << button;
    }
}

} // namespace
} // namespace sixtrace::test
