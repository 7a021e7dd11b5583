// SPDX-License-Identifier: MIT
// Paper of 11900 by 16840 twips; the window shows 11400 by 9210 twips of it, 760 by 614 pixels.
#include "output/printwindow.h"

#include "capture/mdllan.h"
#include "platform/controls/captions.h"
#include "support/strings.h"

#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QTimer>

#include <string_view>

namespace sixtrace::test {
namespace {

class Preview : public PrintWindow {
protected:
    void SetUp() override {
        PrintWindow::SetUp();
        installLanguages();
        openWithCapture();
    }
    /// A drag with the left button, in pixels of the picture.
    void drag(int dx, int dy) {
        const QPoint start = QPoint(400, 300) - page().pos();
        QTest::mousePress(&page(), Qt::LeftButton, {}, start);
        move(page(), start + QPoint(dx, dy), Qt::LeftButton);
        QTest::mouseRelease(&page(), Qt::LeftButton, {}, start);
    }
    static void move(QWidget& widget, QPoint to, Qt::MouseButtons buttons) {
        QMouseEvent event(QEvent::MouseMove, QPointF(to), widget.mapToGlobal(QPointF(to)), Qt::NoButton, buttons, {});
        QCoreApplication::sendEvent(&widget, &event);
    }
    void typePercent(const char* answer) {
        answering.inputs.emplace_back(QString::fromLatin1(answer));
        choose("mnuViewCustomize");
    }
};

TEST_F(Preview, ShowsThePageAt100PercentAtTheOrigin) {
    frmPrintPreview& preview = openPreview();
    EXPECT_FALSE(preview.isModal());
    EXPECT_EQ(preview.menuBar()->height(), 26) << "what is above the page counts with it";
    EXPECT_EQ(preview.windowTitle(), u"打印预览 ( 显示比例：100%)"_s);
    EXPECT_EQ(printing().settings().PaperWidth, 11900);
    EXPECT_EQ(printing().settings().PaperHeight, 16840);
    EXPECT_EQ(page().Width(), 11900);
    EXPECT_EQ(page().Height(), 16840);
    EXPECT_EQ(page().pos(), QPoint(0, 0));
    EXPECT_EQ(page().size(), QSize(793, 1123));
    ASSERT_FALSE(page().Picture().isNull());
    // The frame is in the screen's colour; 500 twips from its corner there is nothing but ground and traces.
    EXPECT_EQ(page().Picture().pixel(10, 10), 0xFFFFFFFFU);
    EXPECT_TRUE(in<PageBox>(preview, "picPrint").isHidden());
    EXPECT_EQ(printing().settings().PreviewOwner, &printing());
}

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

TEST_F(Preview, CustomPercent0IsRefusedAndAskedForAgain) {
    openPreview();
    answering.inputs = {u"0"_s, u"-50"_s, u"1,5"_s, u"50"_s};
    choose("mnuViewCustomize");
    EXPECT_EQ(answering.prompts.size(), 4);
    EXPECT_EQ(answering.prompts[0], u"请输入欲显示的百分比，"_s);
    EXPECT_EQ(answering.presets[0], u"100"_s);
    EXPECT_EQ(answering.messages, QStringList(3, u"您输入的数值有误，请重新输入"_s));
    EXPECT_EQ(answering.messageIcons, std::vector(3, MessageIcon::Critical));
    EXPECT_EQ(page().Width(), 5950);
    EXPECT_EQ(printing().preview()->windowTitle(), u"打印预览 ( 显示比例：50%)"_s);
}

TEST_F(Preview, CustomPercent150WithTheSameViewPercentRedrawsNothing) {
    printing().previewScale().RePrintOnZoom = true;
    frmPrintPreview& preview = openPreview();
    typePercent("150");
    EXPECT_EQ(preview.ViewPercent, 150);
    drag(-100, -100);
    const QPoint dragged = page().pos();
    EXPECT_NE(dragged, QPoint(0, 0));
    const qint64 composed = page().Picture().cacheKey();
    typePercent("150");
    EXPECT_EQ(page().Picture().cacheKey(), composed);
    EXPECT_EQ(page().pos(), dragged);
    typePercent("151");
    EXPECT_NE(page().Picture().cacheKey(), composed);
}

TEST_F(Preview, EmptyAndCancelledPercentsChangeNothing) {
    frmPrintPreview& preview = openPreview();
    typePercent("");
    answering.inputs.emplace_back(std::nullopt);
    choose("mnuViewCustomize");
    EXPECT_EQ(preview.ViewPercent, 100);
    EXPECT_TRUE(answering.messages.isEmpty());
}

TEST_F(Preview, Page2OfOnePageGetsTheRangeMessageWith1AsTheUpperLimit) {
    frmPrintPreview& preview = openPreview();
    answering.inputs.emplace_back(u"2"_s);
    choose("mnuViewPage");
    EXPECT_EQ(answering.prompts, QStringList{u"请输入欲显示的页码，"_s});
    EXPECT_EQ(answering.presets, QStringList{u"1"_s});
    EXPECT_EQ(answering.messages, QStringList{u"请输入大于 0 并且不大于 1 之整数"_s});
    EXPECT_EQ(answering.messageIcons, std::vector{MessageIcon::Critical});
    answering.inputs.emplace_back(u"1"_s);
    choose("mnuViewPage");
    EXPECT_EQ(answering.messages.size(), 1);
    EXPECT_EQ(preview.PageNow, 1);
}

TEST_F(Preview, PictureSmallerThanTheWindowOnAnAxisStandsCentredAndCannotBeDraggedOnThatAxis) {
    openPreview();
    typePercent("70"); // 8330 by 11788: narrower than 11400, taller than 9210
    EXPECT_EQ(page().Left(), 1535);
    EXPECT_EQ(page().Top(), 0);
    drag(-40, -40);
    EXPECT_EQ(page().Left(), 1535);
    EXPECT_EQ(page().Top(), -600);
    typePercent("40"); // 4760 by 6736
    EXPECT_EQ(page().Left(), 3320);
    EXPECT_EQ(page().Top(), 1237);
    drag(40, -40);
    EXPECT_EQ(page().Left(), 3320);
    EXPECT_EQ(page().Top(), 1237);
}

TEST_F(Preview, DraggingNeverBringsTheNearEdgeInsideNorLetsTheFarEdgeLeave) {
    openPreview();
    drag(10, 10);
    EXPECT_EQ(page().Left(), 0);
    drag(-20, -100);
    EXPECT_EQ(page().Left(), -300);
    EXPECT_EQ(page().Top(), -1500);
    drag(-300, -300);
    EXPECT_EQ(page().Left(), 11400 - 11900);
    EXPECT_EQ(page().Top(), -6000);
    drag(-10, -300);
    EXPECT_EQ(page().Top(), 9210 - 16840);
    drag(5, 0);
    EXPECT_EQ(page().Left(), -425);
    drag(300, 600);
    EXPECT_EQ(page().pos(), QPoint(0, 0));
}

TEST_F(Preview, ThePointOfThePressStaysThroughAllMovesOfADrag) {
    openPreview();
    const QPoint press(300, 200);
    QTest::mousePress(&page(), Qt::LeftButton, {}, press);
    // The place is told inside of the picture, which follows: a hand that moves by 20 and then rests is 20 away from
    // the press once, and at it from then on.
    move(page(), press + QPoint(0, -20), Qt::LeftButton);
    EXPECT_EQ(page().Top(), -300);
    move(page(), press, Qt::LeftButton);
    EXPECT_EQ(page().Top(), -300);
    move(page(), press + QPoint(-3, -40), Qt::LeftButton);
    EXPECT_EQ(page().Left(), -45);
    EXPECT_EQ(page().Top(), -900);
    move(page(), press + QPoint(2, 10), Qt::LeftButton);
    EXPECT_EQ(page().Left(), -15);
    EXPECT_EQ(page().Top(), -750);
    QTest::mouseRelease(&page(), Qt::LeftButton, {}, press);
}

TEST_F(Preview, AScaleChosenBeforeASetupIsThePresentOneBehindIt) {
    for (const bool redraws : {false, true}) {
        printing().previewScale().RePrintOnZoom = redraws;
        frmPrintPreview& preview = openPreview();
        typePercent("150");
        drag(-100, -100);
        QTimer::singleShot(0, form.get(), [this] {
            field(*printing().setup(), "txtMargin(1)").setText(u"2"_s);
            press(*printing().setup(), "cmdYes");
        });
        choose("mnuSetup");
        EXPECT_EQ(preview.ViewPercent, 150);
        EXPECT_EQ(page().Width(), 17850);
        EXPECT_EQ(page().Height(), 25260);
        EXPECT_EQ(page().pos(), QPoint(0, 0)) << "it is applied again";
        EXPECT_EQ(preview.windowTitle(), u"打印预览 ( 显示比例：150%)"_s);
        preview.close();
        unloadClosed();
    }
}

TEST_F(Preview, ChosenAgainItShowsTheCaptureOfTheMomentAtTheSamePlaceAndScale) {
    for (const bool redraws : {false, true}) {
        printing().previewScale().RePrintOnZoom = redraws;
        frmPrintPreview& preview = openPreview();
        typePercent("200");
        drag(-40, -60);
        const QPoint place = page().pos();
        const QImage before = page().Picture();
        model->LineColor[0] = 0x00112233;
        item("mnuPrintView").trigger();
        EXPECT_EQ(printing().preview(), &preview);
        EXPECT_NE(page().Picture(), before);
        EXPECT_EQ(page().Picture().size(), before.size());
        EXPECT_EQ(page().pos(), place);
        EXPECT_EQ(preview.ViewPercent, 200);
        model->LineColor[0] = 0x000000FF;
        item("mnuPrintView").trigger();
        EXPECT_EQ(page().Picture(), before);
        preview.close();
        unloadClosed();
    }
}

TEST_F(Preview, ChosenAgainItHasThePaperOfThePrinterOfTheMoment) {
    openPreview();
    typePercent("50");
    auto lying = printing().printer().properties().value();
    lying.Orientation = 2;
    printing().printer().set(lying);
    item("mnuPrintView").trigger();
    EXPECT_EQ(page().Width(), 8420);
    EXPECT_EQ(page().Height(), 5950);
    EXPECT_EQ(page().Left(), 1490);
}

TEST_F(Preview, ArrowKeysBringWhatLiesInTheirDirectionIntoSightAndEscapeCloses) {
    frmPrintPreview& preview = openPreview();
    QTest::keyClick(&preview, Qt::Key_Down);
    EXPECT_EQ(page().Top(), -600);
    QTest::keyClick(&preview, Qt::Key_Right);
    EXPECT_EQ(page().Left(), 11400 - 11900) << "the far edge does not leave";
    QTest::keyClick(&preview, Qt::Key_Left);
    EXPECT_EQ(page().Left(), 0);
    QTest::keyClick(&preview, Qt::Key_Up);
    EXPECT_EQ(page().Top(), 0);
    QTest::keyClick(&preview, Qt::Key_Up);
    EXPECT_EQ(page().Top(), 0);
    QTest::keyClick(&preview, Qt::Key_A);
    EXPECT_TRUE(preview.isVisible());
    QTest::keyClick(&preview, Qt::Key_Escape);
    unloadClosed();
    EXPECT_EQ(printing().preview(), nullptr);
}

TEST_F(Preview, MovesWithoutTheLeftButtonLeaveThePage) {
    openPreview();
    move(page(), QPoint(10, 10), Qt::NoButton);
    move(page(), QPoint(-90, -90), Qt::RightButton);
    EXPECT_EQ(page().pos(), QPoint(0, 0));
}

TEST_F(Preview, RightButtonOpensTheViewMenu) {
    frmPrintPreview& preview = openPreview();
    auto& view = in<QMenu>(preview, "mnuView");
    QTest::mousePress(&page(), Qt::RightButton, {}, QPoint(20, 20));
    EXPECT_TRUE(view.isVisible());
    view.close();
    typePercent("40");
    QTest::mousePress(&in<PageDesk>(preview, "frameA"), Qt::RightButton, {}, QPoint(5, 5));
    EXPECT_TRUE(view.isVisible());
    view.close();
}

TEST_F(Preview, FullPageFitsTheWindow) {
    frmPrintPreview& preview = openPreview();
    choose("mnuViewFullPage");
    EXPECT_EQ(preview.ViewPercent, 54); // (9210 - 200) / 16840
    EXPECT_EQ(preview.windowTitle(), u"打印预览 ( 显示比例：54%)"_s);
    EXPECT_EQ(page().Left(), (11400 - 6426) / 2);
    choose("mnuView100");
    EXPECT_EQ(preview.ViewPercent, 100);
}

TEST_F(Preview, WithoutRedrawingThePageIsComposedOnceAndStretched) {
    printing().previewScale().BaseZoom = 50;
    openPreview();
    const QImage composed = page().Picture();
    EXPECT_EQ(composed.width(), 397); // 5950 twips
    typePercent("200");
    EXPECT_EQ(page().Picture().cacheKey(), composed.cacheKey());
    EXPECT_EQ(page().Width(), 23800);
}

TEST_F(Preview, WithRedrawingEveryScaleComposesThePageAnew) {
    printing().previewScale().RePrintOnZoom = true;
    openPreview();
    EXPECT_EQ(page().Picture().width(), 794);
    typePercent("200");
    EXPECT_EQ(page().Picture().width(), 1587);
    choose("mnuViewFullPage"); // 54 % is composed at a scale of 0.5
    EXPECT_EQ(page().Picture().width(), 397);
    EXPECT_EQ(page().Width(), 6426);
}

TEST_F(Preview, MarginsChangedInTheSetupComposeThePageOnceMore) {
    openPreview();
    const qint64 before = page().Picture().cacheKey();
    const auto inSetup = [this](auto act) {
        QTimer::singleShot(0, form.get(), [this, act] {
            frmPrintSetup* setup = printing().setup();
            ASSERT_NE(setup, nullptr);
            EXPECT_TRUE(setup->isModal());
            act(*setup);
        });
        choose("mnuSetup");
    };
    inSetup([](frmPrintSetup& setup) { press(setup, "cmdNo"); });
    EXPECT_EQ(page().Picture().cacheKey(), before);
    inSetup([](frmPrintSetup& setup) {
        field(setup, "txtMargin(1)").setText(u"3"_s);
        press(setup, "cmdYes");
    });
    EXPECT_NE(page().Picture().cacheKey(), before);
    EXPECT_EQ(printing().setup(), nullptr);
}

TEST_F(Preview, EachMarginAndTheScaleOfTheSetupComposeThePageOnceMore) {
    openPreview();
    for (const char* changed : {"txtMargin(1)", "txtMargin(2)", "txtMargin(3)", "txtMargin(4)", "txtZoom"}) {
        const qint64 before = page().Picture().cacheKey();
        QTimer::singleShot(0, form.get(), [this, changed] {
            frmPrintSetup* setup = printing().setup();
            ASSERT_NE(setup, nullptr);
            field(*setup, changed).setText(u"5"_s);
            press(*setup, "cmdYes");
        });
        choose("mnuSetup");
        if (std::string_view(changed) == "txtZoom") {
            EXPECT_EQ(page().Picture().width(), 80) << "composed at 0.1: 1190 twips, 79 pixels and a part of one";
        } else {
            EXPECT_NE(page().Picture().cacheKey(), before) << changed;
        }
    }
}

TEST_F(Preview, Copies3GivesThreeSeparatePrintJobs) {
    openPreview();
    devices.answer = [](PrinterDialog& box) {
        box.PrinterName = u"Lab"_s;
        box.Copies = 3;
        return true;
    };
    choose("mnuPrint");
    ASSERT_EQ(devices.documents.size(), 3U);
    for (const auto& document : devices.documents) {
        EXPECT_EQ(document.properties.Copies, 1) << "or each of them would come three times";
        EXPECT_EQ(document.properties.DeviceName, u"Lab"_s);
        EXPECT_TRUE(document.pdf.startsWith("%PDF"));
    }
    EXPECT_EQ(devices.shown.front().Flags, 0x80004);
}

TEST_F(Preview, CancelledPrintEndsWithoutAWord) {
    openPreview();
    choose("mnuPrint");
    EXPECT_TRUE(devices.documents.empty());
    EXPECT_TRUE(answering.messages.isEmpty());
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

TEST_F(Preview, APageThatCannotBeComposedIsShownAsFarAsItCame) {
    model->SampleCount[5] = 0; // its trace divides by the samples held
    frmPrintPreview& preview = openPreview();
    ASSERT_FALSE(page().Picture().isNull());
    EXPECT_TRUE(answering.messages.isEmpty());
    EXPECT_EQ(preview.ViewPercent, 100);
    devices.answer = [](PrinterDialog&) { return true; };
    choose("mnuPrint");
    EXPECT_EQ(answering.messages, QStringList{u"11\r\nDivision by zero"_s});
    EXPECT_TRUE(devices.documents.empty());
}

TEST_F(Preview, WithoutAPrinterTheFiguresOfA4Stand) {
    devices.installed.clear();
    devices.standard.clear();
    openPreview();
    EXPECT_EQ(printing().settings().PaperWidth, 11907);
    EXPECT_EQ(printing().settings().PaperHeight, 16840);
    EXPECT_EQ(page().Width(), 11907);
    choose("mnuPrint");
    EXPECT_EQ(answering.messages, QStringList{u"482\r\nPrinter error"_s});
}

TEST_F(Preview, ClosingLosesScaleAndRuleButNoMargins) {
    printing().previewScale() = {80, true};
    printing().settings().PrintMarginTop = 1000;
    openPreview();
    choose("mnuClose");
    unloadClosed();
    EXPECT_EQ(printing().preview(), nullptr);
    EXPECT_EQ(printing().previewScale().BaseZoom, 0);
    EXPECT_FALSE(printing().previewScale().RePrintOnZoom);
    EXPECT_EQ(printing().settings().PrintMarginTop, 1000);
}

TEST_F(Preview, ResizingTheWindowPlacesThePageAnew) {
    frmPrintPreview& preview = openPreview();
    drag(-20, -100);
    preview.resize(1000, 1226); // 15000 by 18000 twips inside
    EXPECT_EQ(page().Left(), 1550);
    EXPECT_EQ(page().Top(), 580);
    preview.resize(760, 640);
    EXPECT_EQ(page().pos(), QPoint(0, 0));
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

TEST_F(Preview, AnyPercentIsSurvived) {
    printing().previewScale().RePrintOnZoom = true;
    frmPrintPreview& preview = openPreview();
    for (const char* percent : {"0.2", "1", "3000", "1000000", "2147483647"}) {
        typePercent(percent);
        preview.grab();
        if (preview.ViewPercent > 100) {
            EXPECT_EQ(page().Left(), 0) << percent;
            EXPECT_EQ(page().Top(), 0) << percent;
        }
        drag(-100, 100);
    }
    choose("mnuView100");
    EXPECT_EQ(page().size(), QSize(793, 1123));
}

} // namespace
} // namespace sixtrace::test
