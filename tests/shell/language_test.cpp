// SPDX-License-Identifier: MIT
#include "shell/frmcomfixture.h"

#include "capture/applylanguage.h"
#include "capture/mdllan.h"
#include "capture/scenes.h"
#include "platform/controls/framepanel.h"
#include "platform/controls/labels.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/toolbar.h"
#include "support/strings.h"

#include <QDialogButtonBox>
#include <QLibraryInfo>

namespace sixtrace::test {
namespace {

TEST_F(Languages, EnglishFileRelabelsTheWindowFromItsSections) {
    installLanguages();
    load();
    item("mnuEnglish").trigger();
    EXPECT_EQ(form->windowTitle(), u"Sixtrace"_s);
    EXPECT_EQ(item("mnuFile").text(), u"&File"_s);
    EXPECT_EQ(item("mnuCom").text(), u"&Comm"_s);
    EXPECT_EQ(control<ReadoutLabel>("LabP").text(), u"Period:"_s);
    EXPECT_EQ(item("MnuGridColor").text(), u"Grid Color"_s);
    EXPECT_EQ(control<ReadoutLabel>("LabMax").text(), u"Peak-peak:"_s);
    EXPECT_EQ(control<QLabel>("Label1").text(), u"Scale          Step"_s);
    const auto& cursorTypes = control<ListCombo>("Combo3");
    EXPECT_EQ(cursorTypes.List(0), u"Off"_s);
    EXPECT_EQ(cursorTypes.List(1), u"Voltage"_s);
    EXPECT_EQ(cursorTypes.List(2), u"Time"_s);
    EXPECT_EQ(cursorTypes.List(3), u"Both"_s);
    EXPECT_EQ(cursorTypes.ListIndex(), 0);
    EXPECT_EQ(control<FramePanel>("Frame2").caption(), u"ch1 TimeBase"_s);
    EXPECT_TRUE(read(u"vkq.ini"_s).contains("Language=1"));
}

TEST_F(Languages, ChineseFileBringsTheChineseCaptionsBack) {
    installLanguages();
    load();
    item("mnuEnglish").trigger();
    item("mnuChinese").trigger();
    EXPECT_EQ(item("mnuFile").text(), u"文件(&F)"_s);
    EXPECT_EQ(item("MnuGridColor").text(), u"网格颜色"_s);
    EXPECT_EQ(item("mnubackgroundcolor").text(), u"背景颜色"_s);
    EXPECT_EQ(item("mnuChinese").text(), u"中文"_s);
    EXPECT_EQ(item("mnuEnglish").text(), u"English"_s) << "who looks for it reads this";
    EXPECT_EQ(control<ReadoutLabel>("LabP").text(), u"周期："_s);
    EXPECT_EQ(control<QLabel>("Label1").text(), u"刻度          位置        "_s) << "to the blank";
    EXPECT_EQ(control<ListCombo>("Combo3").List(3), u"全部"_s);
    EXPECT_EQ(control<FramePanel>("Frame1").caption(), u"ch1 光标"_s);
    EXPECT_TRUE(item("mnuChinese").isChecked());
    EXPECT_FALSE(item("mnuEnglish").isChecked());
}

TEST_F(Languages, WithBothFilesMissingTheInterfaceIsChineseButForWhatCodeComposes) {
    write(u"vkq.ini"_s, "[Common]\nLanguage=1\n");
    load();
    EXPECT_EQ(item("mnuFile").text(), u"文件(&F)"_s);
    EXPECT_EQ(form->windowTitle(), u"通讯"_s);
    EXPECT_EQ(control<FramePanel>("Frame2").caption(), u"ch1 TimeBase"_s);
    EXPECT_EQ(control<ToolBar>("Toolbar1").button(2).toolTip(), u"Open"_s);
}

TEST_F(Languages, LanguageId5LoadsEnglishAndWrites1Back) {
    installLanguages();
    write(u"vkq.ini"_s, "[Common]\nLanguage=5\n");
    load();
    EXPECT_EQ(item("mnuFile").text(), u"&File"_s);
    EXPECT_TRUE(item("mnuEnglish").isChecked());
    EXPECT_EQ(model->LanguageId, 1);
    EXPECT_TRUE(read(u"vkq.ini"_s).contains("Language=1"));
}

TEST_F(Languages, ElementOfAControlArrayIsLookedUpByNameAndThenWithItsIndex) {
    write(u"ChineseS.Lan"_s, "[form]\nLabel1=plain\nLabel13=third\n");
    model->AppDir = path(QString()) + QLatin1Char('/');
    SetLanFile(*model, 0);
    QWidget window;
    window.setObjectName(u"form"_s);
    QLabel second(&window);
    second.setObjectName(u"Label1(2)"_s);
    QLabel third(&window);
    third.setObjectName(u"Label1(3)"_s);
    ApplyLanguage(window, *model);
    EXPECT_EQ(second.text(), u"plain"_s);
    EXPECT_EQ(third.text(), u"third"_s);
}

TEST_F(Languages, ValueLongerThan127CharactersIsCut) {
    write(u"ChineseS.Lan"_s, "[FrmCom]\nCaption=" + QByteArray(200, 'x') + "\n");
    load();
    EXPECT_EQ(form->windowTitle(), QString(127, QLatin1Char('x')));
}

TEST_F(Languages, CaptionThatAFileLacksKeepsItsPresentText) {
    write(u"English.Lan"_s, "[FrmCom]\nmnuFile=&File\n");
    load();
    item("mnuEnglish").trigger();
    EXPECT_EQ(item("mnuFile").text(), u"&File"_s);
    EXPECT_EQ(item("mnuView").text(), u"视图(&V)"_s);
}

TEST_F(Languages, BothFilesOverrideNeitherListNorReadouts) {
    installLanguages();
    load();
    item("mnuEnglish").trigger();
    EXPECT_EQ(control<ListCombo>("Combo1").List(0), u"5  nS"_s);
    EXPECT_TRUE(control<ReadoutLabel>("LabPe").text().isEmpty());
}

TEST_F(Languages, ToolTipsAndAccessibleNamesFollowTheLanguage) {
    load();
    const auto& bar = control<ToolBar>("Toolbar1");
    EXPECT_EQ(bar.button(13).toolTip(), u"自动获取"_s);
    item("mnuEnglish").trigger();
    EXPECT_EQ(bar.button(11).toolTip(), u"ports-settings"_s);
    EXPECT_EQ(bar.button(13).toolTip(), u"Auto Get Data"_s);
    EXPECT_EQ(bar.button(16).accessibleName(), u"Help"_s);
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

TEST_F(Languages, TheToolkitsOwnWordsFollowAtOnce) {
    const auto ok = [] { return QDialogButtonBox(QDialogButtonBox::Cancel).buttons().front()->text(); };
    load();
    const QString translations = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    ASSERT_TRUE(QFile::exists(translations + u"/qtbase_zh_CN.qm"_s)) << "they come with the toolkit";
    EXPECT_EQ(ok(), u"取消"_s);
    item("mnuEnglish").trigger();
    EXPECT_EQ(ok(), u"Cancel"_s);
    item("mnuChinese").trigger();
    item("mnuChinese").trigger();
    EXPECT_EQ(ok(), u"取消"_s);
    item("mnuEnglish").trigger();
    EXPECT_EQ(ok(), u"Cancel"_s);
}

TEST_F(Languages, AFileCanGiveTimeAndVoltTextsUntilALoadRewritesThem) {
    write(u"ChineseS.Lan"_s, "[FrmComCombo1]\n0=five\n2=twenty-five\n[FrmComCombo2]\n3=fifty\n");
    load();
    const auto& times = control<ListCombo>("Combo1");
    const auto& volts = control<ListCombo>("Combo2");
    EXPECT_EQ(times.List(2), u"twenty-five"_s);
    EXPECT_EQ(times.List(1), u"10 nS"_s) << "a row without a key keeps its text";
    EXPECT_EQ(model->TimeBaseText[2], u"25 nS"_s) << "the list alone is relabelled";
    write(u"one.bin"_s, captureBytes(*captureForm("V11"), *sceneBlocks(u"sine"_s, 1)));
    dialogs.files.emplace_back(FileChoice{path(u"one.bin"_s), 1});
    item("mnuOpen").trigger();
    EXPECT_EQ(times.List(2), u"25 nS"_s) << "one of the nine rows that a load writes";
    EXPECT_EQ(times.List(0), u"five"_s);
    EXPECT_EQ(volts.List(3), u"50.0mV"_s);
}

TEST_F(Languages, EveryToolButtonWithACommandHasItsToolTipInBothLanguages) {
    struct Tip {
        int button;
        const char16_t* chinese;
        const char16_t* english;
    };
    load();
    const auto& bar = control<ToolBar>("Toolbar1");
    for (const bool isEnglish : {false, true}) {
        item(isEnglish ? "mnuEnglish" : "mnuChinese").trigger();
        int tips = 0;
        for (const Tip& tip :
             {Tip{2, u"打开", u"Open"}, Tip{3, u"打印预览", u"Print Preview"}, Tip{4, u"打印", u"Print"},
              Tip{6, u"数值列表", u"Data Table"}, Tip{7, u"网格", u"Gridlines"}, Tip{8, u"数据线", u"Data Line"},
              Tip{9, u"数据点", u"Data Point"}, Tip{11, u"端口设置", u"ports-settings"},
              Tip{12, u"手动获取", u"Get Data"}, Tip{13, u"自动获取", u"Auto Get Data"}, Tip{14, u"停止", u"Stop"},
              Tip{16, u"帮助", u"Help"}}) {
            EXPECT_EQ(bar.button(tip.button).toolTip(), QString::fromUtf16(isEnglish ? tip.english : tip.chinese));
            ++tips;
        }
        EXPECT_EQ(tips, 12);
    }
}

TEST_F(Languages, TheFileInUseIsChineseFor0AndEnglishForAnyOtherNumber) {
    model->AppDir = u"/somewhere/"_s;
    SetLanFile(*model, 0);
    EXPECT_EQ(model->LanFile, u"/somewhere/ChineseS.Lan"_s);
    for (const int id : {1, 5, -1}) {
        SetLanFile(*model, id);
        EXPECT_EQ(model->LanFile, u"/somewhere/English.Lan"_s) << id;
    }
}

TEST_F(Languages, ATextIsTheFallbackWhereFileKeyOrValueIsMissing) {
    write(u"English.Lan"_s, "[form]\nfull=text\nempty=\nlong=" + QByteArray(128, 'x') + "\n");
    model->AppDir = path(QString()) + QLatin1Char('/');
    SetLanFile(*model, 1);
    const auto textOf = [this](const char* key) {
        return GetLanString(*model, u"form"_s, QString::fromLatin1(key), u"fallback"_s);
    };
    EXPECT_EQ(textOf("full"), u"text"_s);
    EXPECT_EQ(textOf("empty"), u"fallback"_s);
    EXPECT_EQ(textOf("absent"), u"fallback"_s);
    EXPECT_EQ(textOf("long"), QString(127, QLatin1Char('x')));
    // The program checks at each call whether the file exists.
    ASSERT_TRUE(QFile::remove(model->LanFile));
    EXPECT_EQ(textOf("full"), u"fallback"_s);
}

} // namespace
} // namespace sixtrace::test
