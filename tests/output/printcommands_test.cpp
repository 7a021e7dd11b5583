// SPDX-License-Identifier: MIT
#include "output/printwindow.h"

#include "platform/controls/toolbar.h"
#include "support/strings.h"

namespace sixtrace::test {
namespace {

class PrintCommands : public PrintWindow {
protected:
    void SetUp() override {
        PrintWindow::SetUp();
        openWithCapture();
    }
    void answerWith(const char* name, int copies = 1, int orientation = 1) {
        devices.answer = [=](PrinterDialog& box) {
            box.PrinterName = QString::fromLatin1(name);
            box.Copies = copies;
            box.Orientation = orientation;
            return true;
        };
    }
};

TEST_F(PrintCommands, PrintMakesOneDocumentAndLeavesCopiesToTheDriver) {
    answerWith("Office", 4);
    item("mnuPrint").trigger();
    ASSERT_EQ(devices.documents.size(), 1U);
    EXPECT_EQ(devices.documents[0].properties.Copies, 4);
    EXPECT_EQ(devices.documents[0].pdf.count("/Type /Page\n"), 1) << "of one page";
    EXPECT_EQ(devices.shown[0].Flags, 0x10C);
    EXPECT_TRUE(answering.messages.isEmpty());
}

TEST_F(PrintCommands, ToolButton4PrintsAnd3Previews) {
    answerWith("Office");
    control<ToolBar>("Toolbar1").button(4).click();
    EXPECT_EQ(devices.documents.size(), 1U);
    control<ToolBar>("Toolbar1").button(3).click();
    EXPECT_NE(printing().preview(), nullptr);
}

TEST_F(PrintCommands, PrinterChosenInMnuPrintSetIsUsedByLaterPrintsAndPreviews) {
    answerWith("LAB", 1, 2);
    item("mnuPrintSet").trigger();
    EXPECT_EQ(devices.shown[0].Flags, 0x14C);
    EXPECT_TRUE(devices.documents.empty());
    openPreview();
    EXPECT_EQ(printing().settings().PaperWidth, 16840) << "its paper lies on its side";
    devices.answer = [](PrinterDialog&) { return true; };
    item("mnuPrint").trigger();
    ASSERT_EQ(devices.documents.size(), 1U);
    EXPECT_EQ(devices.documents[0].properties.DeviceName, u"Lab"_s);
    EXPECT_EQ(devices.documents[0].properties.Orientation, 2);
}

TEST_F(PrintCommands, WhatIsSetInOneDialogIsFilledIntoTheNextOnes) {
    devices.standing = [](PrinterProperties& properties) { properties.Duplex = 2; };
    devices.answer = [](PrinterDialog& box) {
        box.Copies = 2;
        box.Duplex = 3;
        box.ColorMode = 1;
        return true;
    };
    item("mnuPrintSet").trigger();
    ASSERT_EQ(devices.shown.size(), 1U);
    EXPECT_EQ(devices.shown[0].Duplex, 2) << "as the device stands of itself";
    EXPECT_EQ(devices.shown[0].Copies, 1);
    devices.answer = [](PrinterDialog&) { return true; };
    item("mnuPrint").trigger();
    ASSERT_EQ(devices.shown.size(), 2U);
    EXPECT_EQ(devices.shown[1].Copies, 2);
    EXPECT_EQ(devices.shown[1].Duplex, 3);
    EXPECT_EQ(devices.shown[1].ColorMode, 1);
    ASSERT_EQ(devices.documents.size(), 1U);
    EXPECT_EQ(devices.documents[0].properties.Duplex, 3) << "accepted untouched, nothing changes";
    EXPECT_EQ(devices.documents[0].properties.Copies, 2);
    openPreview();
    choose("mnuPrint");
    ASSERT_EQ(devices.shown.size(), 3U);
    EXPECT_EQ(devices.shown[2].Copies, 2);
    EXPECT_EQ(devices.documents.size(), 3U) << "each copy from the preview is a document";
    EXPECT_EQ(devices.documents[2].properties.Copies, 1);
    item("mnuPrint").trigger();
    EXPECT_EQ(devices.shown[3].Copies, 2) << "and the setting outlasts it";
}

TEST_F(PrintCommands, TheDialogThatOnlySetsThePrinterBearsTheNameOfItsCommand) {
    installLanguages();
    for (const auto& [language, title] : {std::pair("mnuChinese", "打印机设置"), {"mnuEnglish", "Printer Setup"}}) {
        item(language).trigger();
        item("mnuPrintSet").trigger();
        EXPECT_EQ(devices.shown.back().Title, QString::fromUtf8(title));
        item("mnuPrint").trigger();
        EXPECT_TRUE(devices.shown.back().Title.isEmpty());
    }
}

TEST_F(PrintCommands, NameInOtherCaseThanDeviceNameIsNoChange) {
    auto kept = printing().printer().properties().value();
    kept.DriverName = u"kept"_s;
    printing().printer().set(kept);
    answerWith("oFFICE");
    item("mnuPrintSet").trigger();
    EXPECT_EQ(printing().printer().properties().value().DriverName, u"kept"_s);
}

TEST_F(PrintCommands, CancelInThePrinterDialogLeavesPrinterAsItWasButTrackDefaultFalse) {
    const PrinterProperties before = printing().printer().properties().value();
    EXPECT_TRUE(printing().printer().TrackDefault);
    item("mnuPrint").trigger();
    EXPECT_EQ(printing().printer().properties().value(), before);
    EXPECT_FALSE(printing().printer().TrackDefault);
    EXPECT_TRUE(devices.documents.empty());
    EXPECT_TRUE(answering.messages.isEmpty());
}

TEST_F(PrintCommands, WithoutAnyPrinterBothCommandsTellError482) {
    devices.installed.clear();
    devices.standard.clear();
    item("mnuPrint").trigger();
    item("mnuPrintSet").trigger();
    EXPECT_EQ(answering.messages, QStringList(2, u"482\r\nPrinter error"_s));
    EXPECT_EQ(answering.messageIcons, std::vector(2, MessageIcon::Exclamation));
}

TEST_F(PrintCommands, APrinterThatFailsInPrintingIsTold) {
    answerWith("Office");
    devices.broken = true;
    item("mnuPrint").trigger();
    EXPECT_EQ(answering.messages, QStringList{u"482\r\nPrinter error"_s});
    devices.broken = false;
    item("mnuPrint").trigger();
    EXPECT_EQ(devices.documents.size(), 1U) << "and the next print works again";
}

TEST_F(PrintCommands, AfterAPageTheNextFrameBringsTheScreensPositionsBack) {
    const std::int32_t onScreen = model->PlotX(0, 40);
    const float step = model->MsPerPixel[0];
    answerWith("Office");
    item("mnuPrint").trigger();
    EXPECT_NE(model->PlotX(0, 40), onScreen);
    EXPECT_NE(model->MsPerPixel[0], step);
    item("mnuGraticule").trigger();
    EXPECT_EQ(model->PlotX(0, 40), onScreen);
    EXPECT_EQ(model->MsPerPixel[0], step);
}

} // namespace
} // namespace sixtrace::test
