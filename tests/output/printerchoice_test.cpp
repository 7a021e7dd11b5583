// SPDX-License-Identifier: MIT
#include "output/printerchoice.h"
#include "output/scriptedprinters.h"
#include "support/strings.h"

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
    EXPECT_EQ(shown.PrinterName, u"Office"_s);
    EXPECT_EQ(shown.DriverName, u"driver of Office"_s);
    EXPECT_EQ(shown.Port, u"port of Office"_s);
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
        box.PrinterName = u"Lab"_s;
        box.Copies = 9;
        return false;
    };
    EXPECT_TRUE(printer.TrackDefault);
    const Outcome chosen = choosePrinter(printer, dialog, kPrintFlags, 0);
    ASSERT_FALSE(chosen);
    EXPECT_EQ(chosen.error().code(), 32755);
    EXPECT_EQ(printer.properties().value(), before);
    EXPECT_FALSE(printer.TrackDefault);
    devices.standard = u"Lab"_s;
    EXPECT_EQ(printer.properties().value().DeviceName, u"Office"_s) << "the default no longer moves it";
}

TEST_F(PrinterChoice, WithTrackDefaultThePrinterFollowsTheSystem) {
    EXPECT_EQ(printer.properties().value().DeviceName, u"Office"_s);
    devices.standard = u"Lab"_s;
    EXPECT_EQ(printer.properties().value().DeviceName, u"Lab"_s);
}

TEST_F(PrinterChoice, WhatIsChosenInThePreviewStaysWhereverTheSystemsDefaultGoesAndItsFileToo) {
    devices.answer = [](PrinterDialog& box) {
        box.OutputFile = u"/somewhere/page.pdf"_s;
        box.Copies = 2;
        return true;
    };
    const auto copies = showPrinterForPreview(printer, kPrintFlags, 0);
    ASSERT_TRUE(copies);
    EXPECT_EQ(copies.value(), 2);
    devices.standard = u"Lab"_s;
    const PrinterProperties set = printer.properties().value();
    EXPECT_EQ(set.DeviceName, u"Office"_s);
    EXPECT_EQ(set.OutputFile, u"/somewhere/page.pdf"_s);
    EXPECT_EQ(set.Copies, 1) << "each document is one copy";
    setCopies(printer, copies.value());
    EXPECT_EQ(printer.properties().value().Copies, 2);
}

TEST_F(PrinterChoice, ANameInOtherCaseIsNoChange) {
    auto known = printer.properties().value();
    known.DriverName = u"kept"_s;
    printer.set(known);
    devices.answer = [](PrinterDialog& box) {
        box.PrinterName = u"OFFICE"_s;
        return true;
    };
    EXPECT_TRUE(choose());
    EXPECT_EQ(printer.properties().value().DriverName, u"kept"_s) << "choosing it anew would reset it";
    EXPECT_EQ(printer.properties().value().DeviceName, u"Office"_s);
}

TEST_F(PrinterChoice, AnotherNameChoosesTheFirstPrinterOfThatNameWhateverItsCase) {
    devices.installed = {u"Office"_s, u"lab"_s, u"LAB"_s};
    devices.answer = [](PrinterDialog& box) {
        box.PrinterName = u"Lab"_s;
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
    EXPECT_EQ(set.DeviceName, u"lab"_s);
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
        box.PrinterName = u"Nowhere"_s;
        return true;
    };
    EXPECT_TRUE(choose());
    EXPECT_EQ(printer.properties().value().DeviceName, u"Office"_s);
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
    QLoggingCategory::setFilterRules(u"sixtrace.print.debug=true"_s);
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
    QLoggingCategory::setFilterRules(u"sixtrace.print.debug=true"_s);
    devices.answer = [](PrinterDialog& box) {
        box.Copies = 3;
        box.Orientation = 2;
        box.ColorMode = 1;
        box.Duplex = 2;
        return true;
    };
    EXPECT_TRUE(choose());
    tracePrinter(printer, dialog);
    const QStringList expected{u"Copies = 3"_s,
                               u"Orientation = Landscape. "_s,
                               u"ColorMode = Black and White. "_s,
                               u"Horizontal/Long Edge. "_s,
                               u"PaperBin = 7"_s,
                               u"PaperSize = 9"_s,
                               u"Height=11900"_s,
                               u"Width=16840"_s,
                               u"PrintQuality = 600"_s,
                               u"Print to File Not Selected"_s,
                               u"hDC = 0"_s};
    EXPECT_EQ(LogLines::lines(), expected);
    LogLines::lines().clear();
    devices.answer = {};
    EXPECT_FALSE(choose());
    EXPECT_EQ(LogLines::lines(), QStringList{u"Cancel Selected"_s});
}

TEST_F(PrinterChoice, TheTraceReducesSettingsToWords) {
    const LogLines log;
    QLoggingCategory::setFilterRules(u"sixtrace.print.debug=true"_s);
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
    EXPECT_EQ(traced(1, 2, 1, kPrintSetFlags), (QStringList{u"Orientation = Portrait. "_s, u"ColorMode = Color. "_s,
                                                            u"None. "_s, u"Print to File Not Selected"_s}));
    EXPECT_EQ(traced(2, 1, 3, kPrintSetFlags | PrinterDialog::kPrintToFile),
              (QStringList{u"Orientation = Landscape. "_s, u"ColorMode = Black and White. "_s,
                           u"Vertical/Short Edge. "_s, u"Print to File Selected"_s}));
    EXPECT_EQ(traced(2, 1, 0, 0)[2], u"Unknown. "_s);
}

} // namespace
} // namespace sixtrace::test
