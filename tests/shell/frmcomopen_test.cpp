// SPDX-License-Identifier: MIT
// The main window opens captures, by the menu and by the toolbar.
#include "shell/frmcomfixture.h"

#include "capture/scenes.h"
#include "platform/controls/labels.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/markerlabel.h"
#include "platform/controls/picturebox.h"
#include "platform/controls/ticklist.h"
#include "platform/controls/toolbar.h"
#include "support/strings.h"

#include <QMenuBar>

namespace sixtrace::test {
namespace {

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
    EXPECT_DOUBLE_EQ(control<MarkerLabel>("image1(2)").Top().number(), 6030 * 50 / 200.0 - 105);
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
