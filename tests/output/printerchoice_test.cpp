// SPDX-License-Identifier: MIT
#include "output/printerchoice.h"
#include "output/scriptedprinters.h"
#include "support/printing.h"

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

/// Collects what goes to the log.
class LogLines {
public:
    LogLines() {
        lines().clear();
        m_before = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& text) { lines().append(text); });
    }
    ~LogLines() {
        qInstallMessageHandler(m_before);
        QLoggingCategory::setFilterRules(QString());
    }
    LogLines(const LogLines&) = delete;
    LogLines& operator=(const LogLines&) = delete;
    static QStringList& lines() {
        static QStringList collected;
        return collected;
    }

private:
    QtMessageHandler m_before;
};

class PrinterChoice : public ::testing::Test {
protected:
    bool choose(int flags = kPrintFlags) { return choosePrinter(printer, dialog, flags, 0).ok(); }
    ScriptedPrinters devices;
    Printer printer{devices};
    PrinterDialog dialog;
};

TEST_F(PrinterChoice, TheDialogIsFilledFromThePrinter) {
    EXPECT_FALSE(choose(kPrintSetFlags));
    ASSERT_EQ(devices.shown.size(), 1U);
    const PrinterDialog& shown = devices.shown.front();
    EXPECT_EQ(shown.PrinterName, QStringLiteral("Office"));
    EXPECT_EQ(shown.DriverName, QStringLiteral("driver of Office"));
    EXPECT_EQ(shown.Port, QStringLiteral("port of Office"));
    EXPECT_EQ(shown.PaperBin, 7);
    EXPECT_EQ(shown.PaperSize, 9);
    EXPECT_EQ(shown.PrintQuality, 600);
    EXPECT_EQ(shown.Orientation, 1);
    EXPECT_EQ(shown.Flags, 0x14C);
    EXPECT_EQ(kPrintFlags, 0x10C);
}

TEST_F(PrinterChoice, CancelLeavesThePrinterAsItWasButTrackDefaultFalse) {
    const PrinterProperties before = printer.properties().value();
    devices.answer = [](PrinterDialog& box) {
        box.PrinterName = QStringLiteral("Lab");
        box.Copies = 9;
        return false;
    };
    EXPECT_TRUE(printer.TrackDefault);
    const Outcome chosen = choosePrinter(printer, dialog, kPrintFlags, 0);
    ASSERT_FALSE(chosen);
    EXPECT_EQ(chosen.error().code(), 32755);
    EXPECT_EQ(printer.properties().value(), before);
    EXPECT_FALSE(printer.TrackDefault);
    devices.standard = QStringLiteral("Lab");
    EXPECT_EQ(printer.properties().value().DeviceName, QStringLiteral("Office")) << "the default no longer moves it";
}

TEST_F(PrinterChoice, WithTrackDefaultThePrinterFollowsTheSystem) {
    EXPECT_EQ(printer.properties().value().DeviceName, QStringLiteral("Office"));
    devices.standard = QStringLiteral("Lab");
    EXPECT_EQ(printer.properties().value().DeviceName, QStringLiteral("Lab"));
}

TEST_F(PrinterChoice, WhatIsChosenInThePreviewStaysWhereverTheSystemsDefaultGoesAndItsFileToo) {
    devices.answer = [](PrinterDialog& box) {
        box.OutputFile = QStringLiteral("/somewhere/page.pdf");
        box.Copies = 2;
        return true;
    };
    const auto copies = showPrinterForPreview(printer, kPrintFlags, 0);
    ASSERT_TRUE(copies);
    EXPECT_EQ(copies.value(), 2);
    devices.standard = QStringLiteral("Lab");
    const PrinterProperties set = printer.properties().value();
    EXPECT_EQ(set.DeviceName, QStringLiteral("Office"));
    EXPECT_EQ(set.OutputFile, QStringLiteral("/somewhere/page.pdf"));
    EXPECT_EQ(set.Copies, 1) << "each document is one copy";
    setCopies(printer, copies.value());
    EXPECT_EQ(printer.properties().value().Copies, 2);
}

TEST_F(PrinterChoice, ANameInOtherCaseIsNoChange) {
    auto known = printer.properties().value();
    known.DriverName = QStringLiteral("kept");
    printer.set(known);
    devices.answer = [](PrinterDialog& box) {
        box.PrinterName = QStringLiteral("OFFICE");
        return true;
    };
    EXPECT_TRUE(choose());
    EXPECT_EQ(printer.properties().value().DriverName, QStringLiteral("kept")) << "choosing it anew would reset it";
    EXPECT_EQ(printer.properties().value().DeviceName, QStringLiteral("Office"));
}

TEST_F(PrinterChoice, AnotherNameChoosesTheFirstPrinterOfThatNameWhateverItsCase) {
    devices.installed = {QStringLiteral("Office"), QStringLiteral("lab"), QStringLiteral("LAB")};
    devices.answer = [](PrinterDialog& box) {
        box.PrinterName = QStringLiteral("Lab");
        box.Copies = 2;
        box.Orientation = 2;
        box.ColorMode = 1;
        box.Duplex = 3;
        box.PaperBin = 4;
        box.PaperSize = 11;
        box.PrintQuality = 300;
        return true;
    };
    EXPECT_TRUE(choose());
    const PrinterProperties set = printer.properties().value();
    EXPECT_EQ(set.DeviceName, QStringLiteral("lab"));
    EXPECT_EQ(set.Copies, 2);
    EXPECT_EQ(set.Orientation, 2);
    EXPECT_EQ(set.ColorMode, 1);
    EXPECT_EQ(set.Duplex, 3);
    EXPECT_EQ(set.PaperBin, 4);
    EXPECT_EQ(set.PaperSize, 11);
    EXPECT_EQ(set.PrintQuality, 300);
}

TEST_F(PrinterChoice, ANameThatTheMachineDoesNotKnowChangesNoDevice) {
    devices.answer = [](PrinterDialog& box) {
        box.PrinterName = QStringLiteral("Nowhere");
        return true;
    };
    EXPECT_TRUE(choose());
    EXPECT_EQ(printer.properties().value().DeviceName, QStringLiteral("Office"));
}

TEST_F(PrinterChoice, WithoutAnyPrinterNoDialogShows) {
    devices.installed.clear();
    devices.standard.clear();
    const auto chosen = choosePrinter(printer, dialog, kPrintFlags, 0);
    ASSERT_FALSE(chosen);
    EXPECT_EQ(chosen.error().code(), 482);
    EXPECT_TRUE(devices.shown.empty());
}

TEST_F(PrinterChoice, ThereIsNoTraceOfAPrinterThatHasGoneSinceItWasChosen) {
    const LogLines log;
    QLoggingCategory::setFilterRules(QStringLiteral("sixtrace.print.debug=true"));
    ASSERT_TRUE(printer.properties());
    devices.gone = true;
    tracePrinter(printer, dialog);
    EXPECT_TRUE(LogLines::lines().isEmpty());
    devices.gone = false;
    tracePrinter(printer, dialog);
    EXPECT_EQ(LogLines::lines().size(), 11);
}

TEST_F(PrinterChoice, TheTraceIsSilentUnlessAskedFor) {
    const LogLines log;
    devices.answer = [](PrinterDialog&) { return true; };
    EXPECT_TRUE(choose());
    tracePrinter(printer, dialog);
    EXPECT_TRUE(LogLines::lines().isEmpty());
}

TEST_F(PrinterChoice, TheTraceTellsEverySettingInItsOrder) {
    const LogLines log;
    QLoggingCategory::setFilterRules(QStringLiteral("sixtrace.print.debug=true"));
    devices.answer = [](PrinterDialog& box) {
        box.Copies = 3;
        box.Orientation = 2;
        box.ColorMode = 1;
        box.Duplex = 2;
        return true;
    };
    EXPECT_TRUE(choose());
    tracePrinter(printer, dialog);
    const QStringList expected{QStringLiteral("Copies = 3"),
                               QStringLiteral("Orientation = Landscape. "),
                               QStringLiteral("ColorMode = Black and White. "),
                               QStringLiteral("Horizontal/Long Edge. "),
                               QStringLiteral("PaperBin = 7"),
                               QStringLiteral("PaperSize = 9"),
                               QStringLiteral("Height=11900"),
                               QStringLiteral("Width=16840"),
                               QStringLiteral("PrintQuality = 600"),
                               QStringLiteral("Print to File Not Selected"),
                               QStringLiteral("hDC = 0")};
    EXPECT_EQ(LogLines::lines(), expected);
    LogLines::lines().clear();
    devices.answer = {};
    EXPECT_FALSE(choose());
    EXPECT_EQ(LogLines::lines(), QStringList{QStringLiteral("Cancel Selected")});
}

TEST_F(PrinterChoice, TheTraceReducesSettingsToWords) {
    const LogLines log;
    QLoggingCategory::setFilterRules(QStringLiteral("sixtrace.print.debug=true"));
    const auto traced = [this](int orientation, int colorMode, int duplex, int flags) {
        auto set = printer.properties().value();
        set.Orientation = orientation;
        set.ColorMode = colorMode;
        set.Duplex = duplex;
        printer.set(set);
        dialog.Flags = flags;
        LogLines::lines().clear();
        tracePrinter(printer, dialog);
        const QStringList lines = LogLines::lines();
        return QStringList{lines.value(1), lines.value(2), lines.value(3), lines.value(9)};
    };
    EXPECT_EQ(traced(1, 2, 1, kPrintSetFlags),
              (QStringList{QStringLiteral("Orientation = Portrait. "), QStringLiteral("ColorMode = Color. "),
                           QStringLiteral("None. "), QStringLiteral("Print to File Not Selected")}));
    EXPECT_EQ(traced(2, 1, 3, kPrintSetFlags | PrinterDialog::kPrintToFile),
              (QStringList{QStringLiteral("Orientation = Landscape. "), QStringLiteral("ColorMode = Black and White. "),
                           QStringLiteral("Vertical/Short Edge. "), QStringLiteral("Print to File Selected")}));
    EXPECT_EQ(traced(2, 1, 0, 0)[2], QStringLiteral("Unknown. "));
}

} // namespace
} // namespace sixtrace::test
