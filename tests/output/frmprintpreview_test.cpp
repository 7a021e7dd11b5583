// SPDX-License-Identifier: MIT
// Paper of 11900 by 16840 twips; the window shows 11400 by 9210 twips of it, 760 by 614 pixels.
#include "output/printwindow.h"

#include "support/strings.h"

#include <QMenuBar>
#include <QTimer>

#include <string_view>

namespace sixtrace::test {
namespace {

TEST_F(Preview, ShowsThePageAt100PercentAtTheOrigin) {
    frmPrintPreview& preview = openPreview();
    EXPECT_FALSE(preview.isModal());
    EXPECT_EQ(preview.menuBar()->height(), 26) << "what is above the page counts with it";
    EXPECT_EQ(preview.windowTitle(), u"打印预览 ( 显示比例：100%)"_s);
    EXPECT_EQ(printing().settings().PaperWidth, 11900);
    EXPECT_EQ(printing().settings().PaperHeight, 16840);
    EXPECT_EQ(page().Width().number(), 11900);
    EXPECT_EQ(page().Height().number(), 16840);
    EXPECT_EQ(page().pos(), QPoint(0, 0));
    EXPECT_EQ(page().size(), QSize(793, 1123));
    ASSERT_FALSE(page().Picture().isNull());
    // The frame is in the screen's colour; 500 twips from its corner there is nothing but ground and traces.
    EXPECT_EQ(page().Picture().pixel(10, 10), 0xFFFFFFFFU);
    EXPECT_TRUE(in<PageBox>(preview, "picPrint").isHidden());
    EXPECT_EQ(printing().settings().PreviewOwner, &printing());
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
    EXPECT_EQ(page().Width().number(), 5950);
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
        EXPECT_EQ(page().Width().number(), 17850);
        EXPECT_EQ(page().Height().number(), 25260);
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
    EXPECT_EQ(page().Width().number(), 8420);
    EXPECT_EQ(page().Height().number(), 5950);
    EXPECT_EQ(page().Left().number(), 1490);
}

TEST_F(Preview, FullPageFitsTheWindow) {
    frmPrintPreview& preview = openPreview();
    choose("mnuViewFullPage");
    EXPECT_EQ(preview.ViewPercent, 54); // (9210 - 200) / 16840
    EXPECT_EQ(preview.windowTitle(), u"打印预览 ( 显示比例：54%)"_s);
    EXPECT_EQ(page().Left().number(), (11400 - 6426) / 2);
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
    EXPECT_EQ(page().Width().number(), 23800);
}

TEST_F(Preview, WithRedrawingEveryScaleComposesThePageAnew) {
    printing().previewScale().RePrintOnZoom = true;
    openPreview();
    EXPECT_EQ(page().Picture().width(), 794);
    typePercent("200");
    EXPECT_EQ(page().Picture().width(), 1587);
    choose("mnuViewFullPage"); // at 54 % the page is composed at a scale of 0.5
    EXPECT_EQ(page().Picture().width(), 397);
    EXPECT_EQ(page().Width().number(), 6426);
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

TEST_F(Preview, APageThatCannotBeComposedIsShownAsFarAsItCame) {
    model->SampleCount[5] = 0; // a division by the number of samples fails
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
    EXPECT_EQ(page().Width().number(), 11907);
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

TEST_F(Preview, AnyPercentIsSurvived) {
    printing().previewScale().RePrintOnZoom = true;
    frmPrintPreview& preview = openPreview();
    for (const char* percent : {"0.2", "1", "3000", "1000000", "2147483647"}) {
        typePercent(percent);
        preview.grab();
        if (preview.ViewPercent > 100) {
            EXPECT_EQ(page().Left().number(), 0) << percent;
            EXPECT_EQ(page().Top().number(), 0) << percent;
        }
        drag(-100, 100);
    }
    choose("mnuView100");
    EXPECT_EQ(page().size(), QSize(793, 1123));
}

} // namespace
} // namespace sixtrace::test
