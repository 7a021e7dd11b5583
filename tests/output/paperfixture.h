// SPDX-License-Identifier: MIT
#pragma once

#include "output/printwindow.h"
#include "output/privatequeue.h"

#include "platform/printing/qtprinters.h"
#include "support/strings.h"

#include <QImage>

namespace sixtrace::test {

/// The background colour of the screen.
inline constexpr QRgb kGround = 0xFF400040;
/// The greatest mean difference of two equal pages, of 255. A page without its frame differs by about 60.
inline constexpr double kSamePage = 3;

/// The printers of the machine, with a dialog that is accepted without being shown.
class AcceptingPrinters : public QtPrinters {
public:
    int shown = 0;
    QString file; ///< the file that the user chooses instead of paper
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
    /// The only print server of this process, since the printing library keeps asking the first one. Null if it cannot
    /// start.
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
    /// Makes the main window with a capture and with printers of the machine.
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
    /// Expects each word of the channel list in the text of the page, and each label twice.
    void expectLegend(const QString& pageText) const {
        for (int channel = 0; channel < kChannels; ++channel) {
            const QStringList words = printing().inputs().rows[channel].split(u' ', Qt::SkipEmptyParts);
            for (const QString& word : words) {
                EXPECT_TRUE(pageText.contains(word)) << word.toStdString();
            }
            EXPECT_GE(pageText.count(words.front()), 2) << "legend and label";
        }
    }
    /// The mean difference of the colours of two pictures of a page, 0 to 255. Both are scaled to a third, where it
    /// does not matter on which pixel a thin line or the edge of a letter falls.
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
    /// The share of a trace's pixels in the preview that are on the paper too, at most two pixels away; edges may be
    /// blurred.
    [[nodiscard]] double shareOfTrace(int channel, const QImage& onPaper, const QImage& shown) const {
        const QColor colour = toQColor(model->LineColor[channel]);
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
    /// The rectangle of the frame in a picture: it encloses all pixels in the background colour of the screen.
    [[nodiscard]] static QRect groundOf(const QImage& picture) {
        QRect ground;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QRgb pixel = picture.pixel(x, y);
                // 0x400040, which the renderer may change a little by rounding.
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

} // namespace sixtrace::test
