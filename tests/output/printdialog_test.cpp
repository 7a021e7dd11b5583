// SPDX-License-Identifier: MIT
// The dialog of the printers: what it starts with, and what an answer changes.
#include "output/paperfixture.h"

#include "platform/desktop/qtdialogs.h"
#include "platform/printing/qtprinters.h"
#include "support/strings.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPrintDialog>
#include <QSpinBox>
#include <QTimer>

namespace sixtrace::test {
namespace {

/// Inspects the toolkit's print dialog as soon as it is shown, and closes it.
class DialogWatch : public QTimer {
public:
    explicit DialogWatch(const std::function<void(QPrintDialog&)>& look) {
        connect(this, &QTimer::timeout, this, [this, look] {
            if (auto* const box = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget())) {
                ++seen;
                stop();
                look(*box);
            }
        });
        start(10);
    }
    int seen = 0;
};

QString acceptButton(const QPrintDialog& box) {
    const auto* strip = box.findChild<QDialogButtonBox*>();
    for (QAbstractButton* button : strip->buttons()) {
        if (strip->buttonRole(button) == QDialogButtonBox::AcceptRole) {
            return button->text();
        }
    }
    return {};
}

TEST_F(PaperTest, TheDialogStartsFromWhatIsSetAndAcceptedUntouchedChangesNothing) {
    ASSERT_NE(startedQueue(), nullptr);
    QtPrinters machine;
    PrinterDialog dialog;
    dialog.PrinterName = u"Test"_s;
    dialog.PrintQuality = 600;
    dialog.PaperSize = 9;
    dialog.Orientation = 2;
    dialog.Copies = 2;
    dialog.Duplex = 3;
    dialog.ColorMode = 1;
    dialog.Flags = 0x10C;
    showToolkitInEnglish();
    DialogWatch watch([](QPrintDialog& box) {
        EXPECT_TRUE(acceptButton(box).contains(u"Print"_s));
        box.accept();
    });
    EXPECT_TRUE(machine.ShowPrinter(dialog, 0));
    EXPECT_EQ(watch.seen, 1);
    EXPECT_EQ(dialog.PrinterName, u"Test"_s);
    EXPECT_EQ(dialog.Copies, 2);
    EXPECT_EQ(dialog.Duplex, 3);
    EXPECT_EQ(dialog.ColorMode, 1);
    EXPECT_EQ(dialog.Orientation, 2);
    EXPECT_EQ(dialog.PaperSize, 9);
    EXPECT_TRUE(dialog.OutputFile.isEmpty());
}

TEST_F(PaperTest, TheSetupIsASetupByTitleAndButtonAndHasNoPagesToChoose) {
    ASSERT_NE(startedQueue(), nullptr);
    QtPrinters machine;
    PrinterDialog dialog;
    dialog.Title = u"Printer Setup"_s;
    dialog.PrinterName = u"Test"_s;
    dialog.PrintQuality = 600;
    dialog.PaperSize = 9;
    dialog.Orientation = 1;
    dialog.Flags = 0x14C;
    showToolkitInEnglish();
    DialogWatch watch([](QPrintDialog& box) {
        EXPECT_EQ(box.windowTitle(), u"Printer Setup"_s);
        EXPECT_TRUE(acceptButton(box).contains(u"OK"_s)) << acceptButton(box).toStdString();
        for (const char* name : {"gbPrintRange", "filename", "fileBrowser", "lOutput"}) {
            const auto* part = box.findChild<QWidget*>(QLatin1String(name));
            ASSERT_NE(part, nullptr) << name;
            EXPECT_FALSE(part->isVisible()) << name;
        }
        auto* copies = box.findChild<QSpinBox*>(u"copies"_s);
        ASSERT_NE(copies, nullptr);
        EXPECT_TRUE(copies->isVisible()) << "what a printer is set to can be seen";
        copies->setValue(3);
        box.accept();
    });
    EXPECT_TRUE(machine.ShowPrinter(dialog, 0));
    EXPECT_EQ(watch.seen, 1);
    EXPECT_EQ(dialog.Copies, 3);
}

TEST_F(PaperTest, TheDevicesEndWithThePdfDeviceWhichIsChosenLikeAnyOther) {
    ASSERT_NE(startedQueue(), nullptr);
    QtPrinters machine;
    EXPECT_EQ(machine.names().last(), u"Sixtrace PDF"_s);
    EXPECT_TRUE(machine.names().contains(u"Test"_s));
    EXPECT_EQ(machine.defaultName(), u"Test"_s) << "a real printer comes first";
    PrinterDialog dialog;
    dialog.PrinterName = u"Test"_s;
    dialog.PrintQuality = 600;
    dialog.Orientation = 1;
    dialog.Flags = 0x80004; // the flags of the preview, which has no printing to a file
    const QString file = path(u"chosen.pdf"_s);
    DialogWatch watch([&file](QPrintDialog& box) {
        auto* list = box.findChild<QComboBox*>(u"printers"_s);
        ASSERT_NE(list, nullptr);
        EXPECT_EQ(list->itemText(list->count() - 1), u"Sixtrace PDF"_s);
        list->setCurrentIndex(list->count() - 1);
        box.findChild<QLineEdit*>(u"filename"_s)->setText(file);
        box.accept();
    });
    EXPECT_TRUE(machine.ShowPrinter(dialog, 0));
    EXPECT_EQ(dialog.PrinterName, u"Sixtrace PDF"_s);
    EXPECT_EQ(dialog.OutputFile, file);
}

TEST_F(PaperTest, APrinterThatHasGoneStillGetsADialogToChooseAnother) {
    ASSERT_NE(startedQueue(), nullptr);
    QtPrinters machine;
    PrinterDialog dialog;
    dialog.PrinterName = u"Gone"_s;
    dialog.PrintQuality = 600;
    dialog.Orientation = 1;
    int shown = 0;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, &answer, [&shown] {
        if (auto* const box = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget())) {
            ++shown;
            box->reject();
        }
    });
    answer.start(10);
    EXPECT_FALSE(machine.ShowPrinter(dialog, 0));
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(dialog.PrinterName, u"Gone"_s) << "Cancel leaves what was filled in";
}

} // namespace
} // namespace sixtrace::test
