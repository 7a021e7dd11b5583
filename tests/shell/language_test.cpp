// SPDX-License-Identifier: MIT
#include "shell/frmcomfixture.h"

#include "capture/applylanguage.h"
#include "capture/mdllan.h"
#include "platform/framepanel.h"
#include "platform/labels.h"
#include "platform/listcombo.h"
#include "platform/toolbar.h"

namespace sixtrace {
namespace {

class Languages : public FrmComTest {};

TEST_F(Languages, EnglishFileRelabelsTheWindowFromItsSections) {
    installLanguages();
    load();
    item("mnuEnglish").trigger();
    EXPECT_EQ(form->windowTitle(), QStringLiteral("Sixtrace"));
    EXPECT_EQ(item("mnuFile").text(), QStringLiteral("&File"));
    EXPECT_EQ(item("mnuCom").text(), QStringLiteral("&Comm"));
    EXPECT_EQ(control<ReadoutLabel>("LabP").text(), QStringLiteral("Period:"));
    EXPECT_EQ(control<ReadoutLabel>("LabMax").text(), QStringLiteral("Peak-peak:"));
    EXPECT_EQ(control<QLabel>("Label1").text(), QStringLiteral("Scale          Step"));
    const auto& cursorTypes = control<ListCombo>("Combo3");
    EXPECT_EQ(cursorTypes.List(0), QStringLiteral("Off"));
    EXPECT_EQ(cursorTypes.List(1), QStringLiteral("Voltage"));
    EXPECT_EQ(cursorTypes.List(2), QStringLiteral("Time"));
    EXPECT_EQ(cursorTypes.List(3), QStringLiteral("Both"));
    EXPECT_EQ(cursorTypes.ListIndex(), 0);
    EXPECT_EQ(control<FramePanel>("Frame2").caption(), QStringLiteral("ch1 TimeBase"));
    EXPECT_TRUE(read(QStringLiteral("vkq.ini")).contains("Language=1"));
}

TEST_F(Languages, ChineseFileBringsTheChineseCaptionsBack) {
    installLanguages();
    load();
    item("mnuEnglish").trigger();
    item("mnuChinese").trigger();
    EXPECT_EQ(item("mnuFile").text(), QStringLiteral("文件(&F)"));
    EXPECT_EQ(control<ReadoutLabel>("LabP").text(), QStringLiteral("周期："));
    EXPECT_EQ(control<QLabel>("Label1").text(), QStringLiteral("刻度          位置        ")) << "to the blank";
    EXPECT_EQ(control<ListCombo>("Combo3").List(3), QStringLiteral("全部"));
    EXPECT_EQ(control<FramePanel>("Frame1").caption(), QStringLiteral("ch1 光标"));
    EXPECT_TRUE(item("mnuChinese").isChecked());
    EXPECT_FALSE(item("mnuEnglish").isChecked());
}

TEST_F(Languages, WithBothFilesMissingTheInterfaceIsChineseButForWhatCodeComposes) {
    write(QStringLiteral("vkq.ini"), "[Common]\nLanguage=1\n");
    load();
    EXPECT_EQ(item("mnuFile").text(), QStringLiteral("文件(&F)"));
    EXPECT_EQ(form->windowTitle(), QStringLiteral("通讯"));
    EXPECT_EQ(control<FramePanel>("Frame2").caption(), QStringLiteral("ch1 TimeBase"));
    EXPECT_EQ(control<ToolBar>("Toolbar1").button(2).toolTip(), QStringLiteral("Open"));
}

TEST_F(Languages, LanguageId5LoadsEnglishAndWrites1Back) {
    installLanguages();
    write(QStringLiteral("vkq.ini"), "[Common]\nLanguage=5\n");
    load();
    EXPECT_EQ(item("mnuFile").text(), QStringLiteral("&File"));
    EXPECT_TRUE(item("mnuEnglish").isChecked());
    EXPECT_EQ(model->LanguageId, 1);
    EXPECT_TRUE(read(QStringLiteral("vkq.ini")).contains("Language=1"));
}

TEST_F(Languages, ElementOfAControlArrayIsLookedUpByNameAndThenWithItsIndex) {
    write(QStringLiteral("ChineseS.Lan"), "[form]\nLabel1=plain\nLabel13=third\n");
    model->AppDir = path(QString()) + QLatin1Char('/');
    SetLanFile(*model, 0);
    QWidget window;
    window.setObjectName(QStringLiteral("form"));
    QLabel second(&window);
    second.setObjectName(QStringLiteral("Label1(2)"));
    QLabel third(&window);
    third.setObjectName(QStringLiteral("Label1(3)"));
    ApplyLanguage(window, *model);
    EXPECT_EQ(second.text(), QStringLiteral("plain"));
    EXPECT_EQ(third.text(), QStringLiteral("third"));
}

TEST_F(Languages, ValueLongerThan127CharactersIsCut) {
    write(QStringLiteral("ChineseS.Lan"), "[FrmCom]\nCaption=" + QByteArray(200, 'x') + "\n");
    load();
    EXPECT_EQ(form->windowTitle(), QString(127, QLatin1Char('x')));
}

TEST_F(Languages, CaptionThatAFileLacksKeepsItsPresentText) {
    write(QStringLiteral("English.Lan"), "[FrmCom]\nmnuFile=&File\n");
    load();
    item("mnuEnglish").trigger();
    EXPECT_EQ(item("mnuFile").text(), QStringLiteral("&File"));
    EXPECT_EQ(item("mnuView").text(), QStringLiteral("视图(&V)"));
}

TEST_F(Languages, BothFilesOverrideNeitherListNorReadouts) {
    installLanguages();
    load();
    item("mnuEnglish").trigger();
    EXPECT_EQ(control<ListCombo>("Combo1").List(0), QStringLiteral("5  nS"));
    EXPECT_TRUE(control<ReadoutLabel>("LabPe").text().isEmpty());
}

TEST_F(Languages, ToolTipsAndAccessibleNamesFollowTheLanguage) {
    load();
    const auto& bar = control<ToolBar>("Toolbar1");
    EXPECT_EQ(bar.button(13).toolTip(), QStringLiteral("自动获取"));
    item("mnuEnglish").trigger();
    EXPECT_EQ(bar.button(11).toolTip(), QStringLiteral("ports-settings"));
    EXPECT_EQ(bar.button(13).toolTip(), QStringLiteral("Auto Get Data"));
    EXPECT_EQ(bar.button(16).accessibleName(), QStringLiteral("Help"));
    EXPECT_TRUE(bar.button(5).toolTip().isEmpty());
}

TEST_F(Languages, EveryCaptionOfTheWindowFitsItsLabelInBothLanguages) {
    installLanguages();
    load();
    for (const char* language : {"mnuChinese", "mnuEnglish"}) {
        item(language).trigger();
        for (const char* name : {"LabP", "LabPP", "LabMax", "Label3", "LabYY1", "labDDx"}) {
            EXPECT_EQ(control<ReadoutLabel>(name).paintedPixels(), 13) << language << " " << name;
        }
    }
}

} // namespace
} // namespace sixtrace
