// SPDX-License-Identifier: MIT
// The captions of the preview and of the page setup, and the help text.
#include "output/printwindow.h"

#include "capture/mdllan.h"
#include "platform/controls/captions.h"
#include "support/strings.h"

#include <QMenuBar>

namespace sixtrace::test {
namespace {

TEST_F(Preview, InEnglishTitleAndMenusFollow) {
    item("mnuEnglish").trigger();
    frmPrintPreview& preview = openPreview();
    EXPECT_EQ(preview.windowTitle(), u"Print preview ( Show Scale：100%)"_s);
    EXPECT_EQ(in<QAction>(preview, "mnuViewFullPage").text(), u"Full Page"_s);
    EXPECT_EQ(in<QAction>(preview, "mnuHelp").text(), u"&Help"_s);
    typePercent("x");
    EXPECT_EQ(answering.prompts[0], u"Please input the percent:"_s);
    EXPECT_EQ(answering.messages.back(), u"Input error ,please try again"_s);
}

TEST_F(Preview, HelpIsOneMessageOfFourLines) {
    openPreview();
    choose("mnuHelp");
    ASSERT_EQ(answering.messages.size(), 1);
    const QStringList lines = answering.messages[0].split(u"\r\n"_s);
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(lines[0], u"1. 虚线是代表列印的边界，真正列印时不会印出来。"_s);
    EXPECT_EQ(lines[1], u"2. 这个程式没有卷轴，但是用滑鼠拖曳图片就可以看到所有的列印资料。"_s);
    EXPECT_EQ(lines[2], u"3.如果要在每次改变显示比例时都重新绘图，请至功能表的 /档案/版面设定/ 内设定。"_s);
    EXPECT_EQ(lines[3], u"4. 在表单上按滑鼠右键亦可显示 \"检视\" 功能表。"_s);
    item("mnuEnglish").trigger();
    choose("mnuHelp");
    EXPECT_EQ(answering.messages.back(), answering.messages.front()) << "in every language";
}

TEST_F(Preview, HasTheMenusOfItsDesignInChinese) {
    frmPrintPreview& preview = openPreview();
    const std::array expected{std::pair("mnuSetup", u"页面设定 ..."_s),
                              std::pair("mnuPrint", u"打印 ..."_s),
                              std::pair("mnuClose", u"关闭"_s),
                              std::pair("mnuView100", u"100%"_s),
                              std::pair("mnuViewFullPage", u"整页"_s),
                              std::pair("mnuViewCustomize", u"自订百分比 ..."_s),
                              std::pair("mnuViewPage", u"切换页码 ..."_s),
                              std::pair("mnuHelp", u"说明"_s)};
    for (const auto& [name, caption] : expected) {
        EXPECT_EQ(in<QAction>(preview, name).text(), caption) << name;
    }
}

TEST_F(Preview, EveryCaptionOfBothWindowsStandsInBothLanguageFiles) {
    for (const char* language : {"mnuChinese", "mnuEnglish"}) {
        item(language).trigger();
        const std::array<QWidget*, 2> windows{&openPreview(), &openSetup()};
        for (QWidget* window : windows) {
            int captions = 0;
            for (const QObject* control : window->findChildren<QObject*>()) {
                if (control->objectName().isEmpty() || captionKind(*control) == CaptionKind::None) {
                    continue;
                }
                ++captions;
                const QString key = control->objectName().remove(u'(').remove(u')');
                EXPECT_EQ(GetLanString(*model, window->objectName(), key, u"(none)"_s), captionOf(*control))
                    << language << " " << key.toStdString();
            }
            EXPECT_GE(captions, 9);
            window->close();
        }
        unloadClosed();
    }
}

class PrintWindowsOfTheDesign : public PrintWindow {};

TEST_F(PrintWindowsOfTheDesign, WithoutLanguageFilesTheyKeepTheirCaptions) {
    openWithCapture();
    item("mnuEnglish").trigger(); // what the files do not say stays Chinese
    const auto captions = [](QWidget& window, const QStringList& names) {
        QStringList found;
        for (const QString& name : names) {
            const QObject* control = window.findChild<QAction*>(name); // a menu bears the name of its item, too
            if (control == nullptr) {
                control = window.findChild<QObject*>(name);
            }
            found << (control == nullptr ? u"(none)"_s : captionOf(*control));
        }
        return found;
    };
    frmPrintPreview& preview = openPreview();
    EXPECT_EQ(captions(*preview.menuBar(),
                       {u"mnuFile"_s, u"mnuSetup"_s, u"mnuPrint"_s, u"mnuClose"_s, u"mnuView"_s, u"mnuView100"_s,
                        u"mnuViewFullPage"_s, u"mnuViewCustomize"_s, u"mnuViewPage"_s, u"mnuHelp"_s}),
              (QStringList{u"文件(&F)"_s, u"页面设定 ..."_s, u"打印 ..."_s, u"关闭"_s, u"检视(&V)"_s, u"100%"_s,
                           u"整页"_s, u"自订百分比 ..."_s, u"切换页码 ..."_s, u"说明"_s}));
    frmPrintSetup& setup = openSetup();
    EXPECT_EQ(setup.windowTitle(), u"页面设置"_s);
    EXPECT_EQ(
        captions(setup, {u"Labela(0)"_s, u"Labela(1)"_s, u"Labela(2)"_s, u"Labela(3)"_s, u"optRePrint(0)"_s,
                         u"optRePrint(1)"_s, u"cmdDefault"_s, u"cmdYes"_s, u"cmdNo"_s}),
        (QStringList{u"上边界："_s, u"下边界："_s, u"左边界："_s, u"右边界："_s, u"每次改变显示比例时都重新绘图"_s,
                     u"不重新绘图，但是重新设定原始图片的比例"_s, u"预设值"_s, u"确定"_s, u"取消"_s}));
}

} // namespace
} // namespace sixtrace::test
