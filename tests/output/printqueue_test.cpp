// SPDX-License-Identifier: MIT
// Pages in a real print queue and as PDF. Programs of others read the results.
#include "output/paperfixture.h"

#include "platform/printing/pdfprinter.h"
#include "platform/printing/qtprinters.h"
#include "support/strings.h"

#include <QImage>

namespace sixtrace::test {
namespace {

TEST_F(PaperTest, APageAsPdfHasItsTextAndLooksAsThePreview) {
    openWithCapture();
    PdfPrinter paper(QPageSize(QPageSize::A4), QPageLayout::Portrait);
    Printer pdf(paper);
    PageComposer composer(*model, printing().settings(), pdf);
    ASSERT_TRUE(composer.PrintResult(pdf, 100, printing().inputs()));
    expectLegend(textOf(paper.document()));

    const auto sheet = pdf.sheet();
    ASSERT_TRUE(sheet);
    printing().settings().PaperWidth = sheet.value().Width;
    printing().settings().PaperHeight = sheet.value().Height;
    PicturePage preview(96);
    ASSERT_TRUE(composer.PrintResult(preview, 100, printing().inputs()));
    const QImage onPaper = rendered(paper.document());
    const QImage shown = preview.Image();
    ASSERT_FALSE(onPaper.isNull());
    flattenFirstTrace();
    PicturePage flattened(96);
    ASSERT_TRUE(composer.PrintResult(flattened, 100, printing().inputs()));
    expectSamePage(onPaper, shown, flattened.Image());
    // Only the preview has the dashed box, whose left line is at 567 twips, pixel 37.
    int dashes = 0;
    int printed = 0;
    for (int y = shown.height() / 2 + 100; y < shown.height() - 60; ++y) {
        dashes += (shown.pixel(37, y) & 0xFFFFFF) == 0xC0C0C0 ? 1 : 0;
        printed += (onPaper.pixel(37, y) & 0xFFFFFF) != 0xFFFFFF ? 1 : 0;
    }
    EXPECT_GT(dashes, 50);
    EXPECT_EQ(printed, 0);
}

TEST_F(PaperTest, APageGoesThroughARealPrintQueue) {
    PrivateQueue* const queue = startedQueue();
    ASSERT_NE(queue, nullptr);
    AcceptingPrinters machine;
    ASSERT_TRUE(machine.names().contains(u"Test"_s)) << machine.names().join(u' ').toStdString();
    openOver(machine);
    frmPrintPreview& preview = openPreview();
    const QImage shown = in<PageView>(preview, "imgView(1)").Picture();
    item("mnuPrint").trigger();
    EXPECT_EQ(machine.shown, 1);
    ASSERT_TRUE(answering.messages.isEmpty()) << answering.messages.join(u' ').toStdString();

    const QByteArray job = queue->waitForJob();
    ASSERT_FALSE(job.isEmpty());
    expectLegend(textOf(job));
    const QImage onPaper = rendered(job);
    ASSERT_FALSE(onPaper.isNull());
    EXPECT_NEAR(onPaper.width(), 794, 1); // A4
    EXPECT_NEAR(onPaper.height(), 1123, 1);
    flattenFirstTrace();
    PicturePage flattened(96);
    ASSERT_TRUE(printing().PrintResult(flattened, 100));
    expectSamePage(onPaper, shown, flattened.Image());
}

TEST_F(PaperTest, APageForAFileComesWholeAndAFailureLeavesTheOldFile) {
    PrivateQueue* const queue = startedQueue();
    ASSERT_NE(queue, nullptr);
    AcceptingPrinters machine;
    machine.file = path(u"page.pdf"_s);
    write(u"page.pdf"_s, "old");
    openOver(machine);
    const std::int32_t held = model->SampleCount[5];
    model->SampleCount[5] = 0; // ends the page after its legend
    item("mnuPrint").trigger();
    EXPECT_EQ(answering.messages, QStringList{u"11\r\nDivision by zero"_s});
    EXPECT_EQ(read(u"page.pdf"_s), "old");

    model->SampleCount[5] = held;
    item("mnuPrint").trigger();
    const QByteArray document = read(u"page.pdf"_s);
    EXPECT_TRUE(document.startsWith("%PDF"));
    expectLegend(textOf(document));

    machine.file = path(u"no/such/page.pdf"_s);
    item("mnuPrint").trigger();
    EXPECT_EQ(answering.messages.back(), u"76\r\nPath not found"_s);
}

TEST_F(PaperTest, AQueueTellsItsPaperAndAPrinterThatHasGoneIsError482) {
    ASSERT_NE(startedQueue(), nullptr);
    const QtPrinters machine;
    const PrinterProperties present = machine.initial(u"Test"_s);
    EXPECT_EQ(present.PaperSize, 9);
    EXPECT_EQ(present.Orientation, 1);
    const auto sheet = machine.sheet(present);
    ASSERT_TRUE(sheet);
    EXPECT_NEAR(sheet.value().Width, 11906, 20); // 210 mm, within a point
    EXPECT_NEAR(sheet.value().Height, 16838, 20);
    EXPECT_LE(sheet.value().ScaleWidth, sheet.value().Width);

    PrinterProperties gone;
    gone.DeviceName = u"Gone"_s;
    const auto missing = machine.sheet(gone);
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().code(), 482);
}

TEST_F(PaperTest, APageThatTheQueueRefusesIsTold) {
    PrivateQueue* const queue = startedQueue();
    ASSERT_NE(queue, nullptr);
    ASSERT_TRUE(queue->run(u"cupsreject"_s, {u"Test"_s})) << queue->error.toStdString();
    AcceptingPrinters machine;
    openOver(machine);
    item("mnuPrint").trigger();
    ASSERT_TRUE(queue->run(u"cupsaccept"_s, {u"Test"_s})) << queue->error.toStdString();
    EXPECT_EQ(answering.messages, QStringList{u"482\r\nPrinter error"_s});
    EXPECT_EQ(answering.messageIcons, std::vector{MessageIcon::Exclamation});
    item("mnuPrint").trigger();
    EXPECT_EQ(answering.messages.size(), 1) << "a queue that takes the page is silent";
}

TEST_F(PaperTest, AQueueStandsAsItsOwnDefaultsSay) {
    PrivateQueue* const queue = startedQueue();
    ASSERT_NE(queue, nullptr);
    ASSERT_TRUE(queue->add(u"Sides"_s, u"Duplex=DuplexTumble"_s));
    const QtPrinters machine;
    EXPECT_EQ(machine.initial(u"Sides"_s).Duplex, 3);
    EXPECT_EQ(machine.initial(u"Test"_s).Duplex, 1);
}

TEST_F(PaperTest, PaperOnItsSideTurnsTheEdgesThatTheDeviceCannotReach) {
    ASSERT_NE(startedQueue(), nullptr);
    const QtPrinters machine;
    PrinterProperties properties = machine.initial(u"Test"_s);
    // The driver can print from (18, 36) to (577, 806) on A4, which has 595 by 842 points.
    const Sheet upright = machine.sheet(properties).value();
    EXPECT_EQ(upright.ScaleWidth, 11180);
    EXPECT_EQ(upright.ScaleHeight, 15400);
    EXPECT_EQ(upright.left, 360);
    EXPECT_EQ(upright.top, 720);
    properties.Orientation = 2;
    const Sheet lying = machine.sheet(properties).value();
    EXPECT_EQ(lying.Width, 16840);
    EXPECT_EQ(lying.Height, 11900);
    EXPECT_EQ(lying.ScaleWidth, 15400);
    EXPECT_EQ(lying.ScaleHeight, 11180);
    EXPECT_EQ(lying.left, 720);
    EXPECT_EQ(lying.top, 360);
}

/// The printers of a machine that has none.
class NoQueues : public QtPrinters {
public:
    QStringList names() const override { return {pdfDevice()}; }
    QString defaultName() const override { return pdfDevice(); }
    QString file;
    bool ShowPrinter(PrinterDialog& dialog, quintptr) override {
        dialog.OutputFile = file;
        return true;
    }
};

TEST_F(PaperTest, WithoutAnyQueuePreviewAndPrintingWorkOnThePdfDevice) {
    NoQueues machine;
    machine.file = path(u"page.pdf"_s);
    openOver(machine);
    openPreview();
    ASSERT_FALSE(page().Picture().isNull());
    EXPECT_EQ(printing().settings().PaperWidth, 11900); // A4, within a point
    EXPECT_EQ(printing().settings().PaperHeight, 16840);
    EXPECT_TRUE(groundOf(page().Picture()).isValid()) << "a page with its frame, not a blank sheet";
    item("mnuPrint").trigger();
    EXPECT_TRUE(answering.messages.isEmpty()) << answering.messages.join(u'/').toStdString();
    const QByteArray document = read(u"page.pdf"_s);
    ASSERT_TRUE(document.startsWith("%PDF"));
    expectLegend(textOf(document));
    machine.file.clear();
    item("mnuPrint").trigger();
    EXPECT_EQ(answering.messages, QStringList{u"52\r\nBad file name or number"_s}) << "a document needs a name";
}

} // namespace
} // namespace sixtrace::test
