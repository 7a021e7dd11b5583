// SPDX-License-Identifier: MIT
#include "shell/frmcomfixture.h"
#include "shell/frmmessageout.h"

#include "capture/applylanguage.h"
#include "capture/capturefile.h"
#include "capture/mdllan.h"
#include "capture/scenes.h"
#include "output/frmdata.h"
#include "output/frmprintpreview.h"
#include "output/frmprintsetup.h"
#include "output/printing.h"
#include "platform/controls/framepanel.h"
#include "platform/controls/labels.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/toolbar.h"
#include "platform/desktop/dialogsheet.h"
#include "platform/files/profilefile.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLibraryInfo>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

namespace sixtrace::test {
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
    EXPECT_EQ(item("MnuGridColor").text(), QStringLiteral("Grid Color"));
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
    EXPECT_EQ(item("MnuGridColor").text(), QStringLiteral("网格颜色"));
    EXPECT_EQ(item("mnubackgroundcolor").text(), QStringLiteral("背景颜色"));
    EXPECT_EQ(item("mnuChinese").text(), QStringLiteral("中文"));
    EXPECT_EQ(item("mnuEnglish").text(), QStringLiteral("English")) << "who looks for it reads this";
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

TEST_F(Languages, AWindowThatIsOpenKeepsItsCaptionsUntilItIsLoadedAgain) {
    installLanguages();
    QFile english(path(QStringLiteral("English.Lan")));
    ASSERT_TRUE(english.open(QIODevice::ReadOnly));
    // A key in the main window's section that names a control of another window changes nothing.
    write(QStringLiteral("English.Lan"), english.readAll().replace("[FrmCom]", "[FrmCom]\ncmdOK=main"));
    load();
    item("mnuAbout").trigger();
    const QPointer<QPushButton> button = &control<QPushButton>("cmdOK");
    const QString chinese = button->text();
    const QString title = button->window()->windowTitle();
    item("mnuEnglish").trigger();
    EXPECT_EQ(button->text(), chinese);
    EXPECT_EQ(button->window()->windowTitle(), title);
    button->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_TRUE(button.isNull());
    item("mnuAbout").trigger();
    EXPECT_EQ(control<QPushButton>("cmdOK").text(), QStringLiteral("OK"));
}

/// A dialog that is made once and loaded before every use.
class ReusedDialog : public DialogSheet {
public:
    ReusedDialog()
        : DialogSheet(200, 100) {
        setObjectName(QStringLiteral("reused"));
        setWindowTitle(QStringLiteral("设计 "));
        label = addLabel("Label1", QStringLiteral("标签"), QRect(0, 0, 50, 20));
        button = addButton("Command1", QStringLiteral("按钮"), 0, 20);
        list = new QComboBox(this);
        list->setObjectName(QStringLiteral("Combo1"));
        list->addItems({QStringLiteral("一"), QStringLiteral("二")});
    }
    QLabel* label;
    QPushButton* button;
    QComboBox* list;
};

TEST_F(Languages, ADialogThatWasUnloadedStartsFromItsDesignAtTheNextLoad) {
    write(QStringLiteral("English.Lan"),
          "[reused]\nCaption=Design\nLabel1=label\nCommand1=button\n[reusedCombo1]\n0=one\n1=two\n");
    model->AppDir = path(QString()) + QLatin1Char('/');
    ReusedDialog dialog;
    SetLanFile(*model, 1);
    ApplyLanguage(dialog, *model);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Design"));
    EXPECT_EQ(dialog.label->text(), QStringLiteral("label"));
    EXPECT_EQ(dialog.list->itemText(1), QStringLiteral("two"));
    SetLanFile(*model, 0); // the Chinese file is missing
    ApplyLanguage(dialog, *model);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("设计 "));
    EXPECT_EQ(dialog.label->text(), QStringLiteral("标签"));
    EXPECT_EQ(dialog.button->text(), QStringLiteral("按钮"));
    EXPECT_EQ(dialog.list->itemText(0), QStringLiteral("一"));
    EXPECT_EQ(dialog.list->itemText(1), QStringLiteral("二"));
    // A list that has other entries by then keeps them, and a control that has been deleted is left out.
    dialog.list->addItem(QStringLiteral("three"));
    delete dialog.button;
    ApplyLanguage(dialog, *model);
    EXPECT_EQ(dialog.list->itemText(2), QStringLiteral("three"));
}

TEST_F(Languages, WindowsThatAreUnloadedFollowALanguageWhoseFileIsMissing) {
    QFile::copy(QStringLiteral(SIXTRACE_SOURCE_DIR "/lang/English.Lan"), path(QStringLiteral("English.Lan")));
    load();
    const auto titleOfTransfer = [this] {
        QString title;
        QString caption;
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
            if (auto* dialog = dynamic_cast<DialogSheet*>(QApplication::activeModalWidget())) {
                title = dialog->windowTitle();
                caption = dialog->findChild<QLabel*>(QStringLiteral("Label2"))->text();
                dialog->close();
            }
        });
        watch.start(0);
        item("mnuAcquire").trigger();
        return QString(title + QLatin1Char('/') + caption);
    };
    item("mnuEnglish").trigger();
    EXPECT_EQ(titleOfTransfer(), QStringLiteral("USB Transmission /Save as:"));
    item("mnuChinese").trigger();
    EXPECT_EQ(titleOfTransfer(), QStringLiteral("USB Transmission /存储为："));
    // Cancel only hides the window of the serial transfer. It stays loaded, and keeps its language.
    ASSERT_TRUE(writeProfile(QStringLiteral("Common"), QStringLiteral("ComPort"), QStringLiteral("1"), iniFile()));
    EXPECT_EQ(titleOfTransfer(), QStringLiteral("正在接收数据/存储为："));
    item("mnuEnglish").trigger();
    EXPECT_EQ(titleOfTransfer(), QStringLiteral("正在接收数据/存储为："));
}

TEST_F(Languages, WindowsThatAreLoadedKeepTheirLanguageThroughASwitch) {
    installLanguages();
    load();
    item("mnuEnglish").trigger();
    const QWidget& message = form->messageOut();
    item("mnuTabular").trigger();
    item("mnuPageSet").trigger();
    item("mnuPrintView").trigger();
    const QWidget& table = *form->dataTable().window();
    const QWidget& setup = *form->printing().setup();
    const QWidget& preview = *form->printing().preview();
    const auto texts = [&] {
        QStringList found;
        for (const QWidget* window : {&message, &table, &setup, &preview}) {
            found << window->windowTitle();
            for (const char* name : {"Command1", "CmdExit", "cmdNo"}) {
                if (const auto* button = window->findChild<QPushButton*>(QString::fromLatin1(name))) {
                    found << button->text();
                }
            }
        }
        return found;
    };
    const QStringList english = texts();
    ASSERT_EQ(english.size(), 7);
    EXPECT_TRUE(english.contains(QStringLiteral("Data Table")));
    item("mnuChinese").trigger();
    EXPECT_EQ(texts(), english);
    item("mnuTabular").trigger(); // shown again, not loaded again
    EXPECT_EQ(texts(), english);
}

TEST_F(Languages, EveryLoadOfAWindowChoosesTheLanguageFileAnew) {
    installLanguages();
    load();
    item("mnuEnglish").trigger();
    const auto loaded = [this](const char* command) {
        model->LanFile = path(QStringLiteral("elsewhere.Lan"));
        item(command).trigger();
        return model->LanFile == path(QStringLiteral("English.Lan"));
    };
    for (const char* command : {"mnuAbout", "mnuTabular", "mnuPageSet", "mnuPrintView"}) {
        EXPECT_TRUE(loaded(command)) << command;
    }
    model->LanFile = path(QStringLiteral("elsewhere.Lan"));
    EXPECT_EQ(form->messageOut().windowTitle(), QStringLiteral("Message"));
    EXPECT_EQ(model->LanFile, path(QStringLiteral("English.Lan")));
}

TEST_F(Languages, TheToolkitsOwnWordsFollowAtOnce) {
    const auto ok = [] { return QDialogButtonBox(QDialogButtonBox::Cancel).buttons().front()->text(); };
    load();
    const QString translations = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    ASSERT_TRUE(QFile::exists(translations + QStringLiteral("/qtbase_zh_CN.qm"))) << "they come with the toolkit";
    EXPECT_EQ(ok(), QStringLiteral("取消"));
    item("mnuEnglish").trigger();
    EXPECT_EQ(ok(), QStringLiteral("Cancel"));
    item("mnuChinese").trigger();
    item("mnuChinese").trigger();
    EXPECT_EQ(ok(), QStringLiteral("取消"));
    item("mnuEnglish").trigger();
    EXPECT_EQ(ok(), QStringLiteral("Cancel"));
}

TEST_F(Languages, AFileCanGiveTimeAndVoltTextsUntilALoadRewritesThem) {
    write(QStringLiteral("ChineseS.Lan"), "[FrmComCombo1]\n0=five\n2=twenty-five\n[FrmComCombo2]\n3=fifty\n");
    load();
    const auto& times = control<ListCombo>("Combo1");
    const auto& volts = control<ListCombo>("Combo2");
    EXPECT_EQ(times.List(2), QStringLiteral("twenty-five"));
    EXPECT_EQ(times.List(1), QStringLiteral("10 nS")) << "a row without a key keeps its text";
    EXPECT_EQ(model->TimeBaseText[2], QStringLiteral("25 nS")) << "the list alone is relabelled";
    write(QStringLiteral("one.bin"), captureBytes(*captureForm("V11"), *sceneBlocks(QStringLiteral("sine"), 1)));
    dialogs.files.emplace_back(FileChoice{path(QStringLiteral("one.bin")), 1});
    item("mnuOpen").trigger();
    EXPECT_EQ(times.List(2), QStringLiteral("25 nS")) << "one of the nine rows that a load writes";
    EXPECT_EQ(times.List(0), QStringLiteral("five"));
    EXPECT_EQ(volts.List(3), QStringLiteral("50.0mV"));
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
    model->AppDir = QStringLiteral("/somewhere/");
    SetLanFile(*model, 0);
    EXPECT_EQ(model->LanFile, QStringLiteral("/somewhere/ChineseS.Lan"));
    for (const int id : {1, 5, -1}) {
        SetLanFile(*model, id);
        EXPECT_EQ(model->LanFile, QStringLiteral("/somewhere/English.Lan")) << id;
    }
}

TEST_F(Languages, ATextIsTheFallbackWhereFileKeyOrValueIsMissing) {
    write(QStringLiteral("English.Lan"), "[form]\nfull=text\nempty=\nlong=" + QByteArray(128, 'x') + "\n");
    model->AppDir = path(QString()) + QLatin1Char('/');
    SetLanFile(*model, 1);
    const auto textOf = [this](const char* key) {
        return GetLanString(*model, QStringLiteral("form"), QString::fromLatin1(key), QStringLiteral("fallback"));
    };
    EXPECT_EQ(textOf("full"), QStringLiteral("text"));
    EXPECT_EQ(textOf("empty"), QStringLiteral("fallback"));
    EXPECT_EQ(textOf("absent"), QStringLiteral("fallback"));
    EXPECT_EQ(textOf("long"), QString(127, QLatin1Char('x')));
    // The program checks at each call whether the file exists.
    ASSERT_TRUE(QFile::remove(model->LanFile));
    EXPECT_EQ(textOf("full"), QStringLiteral("fallback"));
}

} // namespace
} // namespace sixtrace::test
