// SPDX-License-Identifier: MIT
// A page on its way to paper: through a real print queue, and as PDF, read back by programs that are not ours.
#include "output/printwindow.h"
#include "output/privatequeue.h"

#include "platform/desktop/qtdialogs.h"
#include "platform/files/wholefile.h"
#include "platform/printing/pdfprinter.h"
#include "platform/printing/qtprinters.h"
#include "support/strings.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QImage>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTimer>

namespace sixtrace::test {
namespace {

constexpr QRgb kGround = 0xFF400040; // of the screen
constexpr double kSamePage = 3;      // of 255; a page without its frame is some 60 away

/// The machine's printers, whose dialog is answered as soon as it would show.
class AcceptingPrinters : public QtPrinters {
public:
    int shown = 0;
    QString file; ///< where the user wants the page instead
    bool ShowPrinter(PrinterDialog& dialog, quintptr) override {
        ++shown;
        dialog.ColorMode = 2;
        dialog.PaperSize = 9;
        dialog.OutputFile = file;
        return true;
    }
};

class PaperTest : public PrintWindow {
protected:
    static void TearDownTestSuite() { sharedQueue().reset(); }
    /// The one print server of this process: whoever has talked to one goes on asking it. Null where it cannot start.
    static PrivateQueue* startedQueue() {
        if (sharedQueue() == nullptr) {
            sharedQueue() = std::make_unique<PrivateQueue>();
            if (!sharedQueue()->start()) {
                ADD_FAILURE() << sharedQueue()->error.toStdString();
                return nullptr;
            }
        }
        return sharedQueue().get();
    }
    /// The main window with a capture, over printers of the machine.
    void openOver(PrintDevices& machine) {
        form = std::make_unique<FrmCom>(
            *model,
            FrmComServices{
                answering, [this] { return path(u"."_s); }, [this] { ++ends; }, [](const QString&) {}, {}, &machine});
        form->show();
        loadSix();
    }
    /// A PDF document rendered at 96 dots per inch, the preview's resolution.
    [[nodiscard]] QImage rendered(const QByteArray& pdf) const {
        write(u"rendered.pdf"_s, pdf);
        static_cast<void>(outputOf(u"pdftoppm"_s, {u"-r"_s, u"96"_s, u"-png"_s, u"-singlefile"_s,
                                                   path(u"rendered.pdf"_s), path(u"rendered"_s)}));
        return QImage(path(u"rendered.png"_s)).convertToFormat(QImage::Format_RGB32);
    }
    [[nodiscard]] QString textOf(const QByteArray& pdf) const {
        write(u"text.pdf"_s, pdf);
        return QString::fromUtf8(outputOf(u"pdftotext"_s, {u"-layout"_s, path(u"text.pdf"_s), u"-"_s}));
    }
    /// Every row of the list stands in the text of the page, and every label once more.
    void expectLegend(const QString& pageText) const {
        for (int channel = 0; channel < kChannels; ++channel) {
            const QStringList words =
                printing().inputs().rows[static_cast<std::size_t>(channel)].split(u' ', Qt::SkipEmptyParts);
            for (const QString& word : words) {
                EXPECT_TRUE(pageText.contains(word)) << word.toStdString();
            }
            EXPECT_GE(pageText.count(words.front()), 2) << "legend and label";
        }
    }
    /// How far two pictures of a page are apart: the mean difference of their colours, 0 to 255, at a third of their
    /// size, where it no longer counts on which pixel a thin line or the edge of a letter falls.
    [[nodiscard]] static double difference(const QImage& first, const QImage& second) {
        const QSize size = first.size() / 3;
        const QImage a = first.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        const QImage b = second.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        double sum = 0;
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                const QRgb p = a.pixel(x, y);
                const QRgb q = b.pixel(x, y);
                sum += std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) + std::abs(qBlue(p) - qBlue(q));
            }
        }
        return sum / 3 / (static_cast<double>(size.width()) * size.height());
    }
    /// Which share of a trace's pixels in the preview lies on paper, too, give or take two pixels and a blurred edge.
    [[nodiscard]] double shareOfTrace(int channel, const QImage& onPaper, const QImage& shown) const {
        const QColor colour = toQColor(model->LineColor[static_cast<std::size_t>(channel)]);
        const auto apart = [&colour](QRgb pixel) {
            return std::abs(qRed(pixel) - colour.red()) + std::abs(qGreen(pixel) - colour.green()) +
                   std::abs(qBlue(pixel) - colour.blue());
        };
        // A line that falls between two pixels colours both of them by half.
        const double limit = apart(kGround) * 0.6;
        const auto near = [&](int x, int y) {
            for (int dy = -2; dy <= 2; ++dy) {
                for (int dx = -2; dx <= 2; ++dx) {
                    if (onPaper.valid(x + dx, y + dy) && apart(onPaper.pixel(x + dx, y + dy)) < limit) {
                        return true;
                    }
                }
            }
            return false;
        };
        int all = 0;
        int found = 0;
        const QRect frame = groundOf(shown);
        for (int y = frame.top(); y <= frame.bottom(); ++y) {
            for (int x = frame.left(); x <= frame.right(); ++x) {
                if (apart(shown.pixel(x, y)) == 0) {
                    ++all;
                    found += near(x, y) ? 1 : 0;
                }
            }
        }
        return all < 100 ? 0 : static_cast<double>(found) / all;
    }
    void expectSamePage(const QImage& onPaper, const QImage& shown, const QImage& flattened) const {
        EXPECT_NEAR(onPaper.width(), shown.width(), 1);
        EXPECT_NEAR(onPaper.height(), shown.height(), 1);
        expectSamePlace(groundOf(onPaper), groundOf(shown));
        EXPECT_LT(difference(onPaper, shown), kSamePage);
        for (int channel = 0; channel < kChannels; ++channel) {
            EXPECT_GT(shareOfTrace(channel, onPaper, shown), 0.97) << channel;
        }
        EXPECT_LT(shareOfTrace(0, onPaper, flattened), 0.5) << "another trace would be seen";
    }
    void flattenFirstTrace() const {
        for (int row = 0; row < kSampleRows; ++row) {
            model->SampleData(0, row) = 0;
        }
    }
    /// The frame's outline in a picture: the rectangle of pixels in the colour of the screen's ground.
    [[nodiscard]] static QRect groundOf(const QImage& picture) {
        QRect ground;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QRgb pixel = picture.pixel(x, y);
                // 0x400040, or what the renderer's arithmetic makes of it.
                if (std::abs(qRed(pixel) - 0x40) < 4 && qGreen(pixel) < 4 && std::abs(qBlue(pixel) - 0x40) < 4) {
                    ground |= QRect(x, y, 1, 1);
                }
            }
        }
        return ground;
    }
    static void expectSamePlace(const QRect& a, const QRect& b) {
        EXPECT_NEAR(a.left(), b.left(), 1);
        EXPECT_NEAR(a.top(), b.top(), 1);
        EXPECT_NEAR(a.right(), b.right(), 1);
        EXPECT_NEAR(a.bottom(), b.bottom(), 1);
    }

private:
    static std::unique_ptr<PrivateQueue>& sharedQueue() {
        static std::unique_ptr<PrivateQueue> queue;
        return queue;
    }
};

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
    // The dashed box is the preview's alone: the left line of it stands at 567 twips, 37 pixels.
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
    model->SampleCount[5] = 0; // ends the page behind its legend
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
    EXPECT_NEAR(sheet.value().Width, 11906, 20); // 210 mm, to the point
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
    // The driver reaches from 18, 36 to 577, 806 points of A4's 595 by 842.
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

/// Looks at the toolkit's print dialog as soon as it shows, and lets it go.
class DialogWatch : public QTimer {
public:
    explicit DialogWatch(std::function<void(QPrintDialog&)> look) {
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
    dialog.Flags = 0x80004; // the preview's, which knows no print to file
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

/// The machine's printers where the machine has none.
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
    EXPECT_EQ(printing().settings().PaperWidth, 11900); // A4 to the point
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
