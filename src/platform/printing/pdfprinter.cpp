// SPDX-License-Identifier: MIT
#include "platform/printing/pdfprinter.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPdfWriter>

#include <cmath>

namespace sixtrace {

namespace {

constexpr double kTwipsPerPoint = 20;

class PdfJob final : public PrintJob {
public:
    PdfJob(const QPageLayout& layout, int resolution, QByteArray& target)
        : m_target(target) {
        m_buffer.open(QIODevice::WriteOnly);
        m_writer = std::make_unique<QPdfWriter>(&m_buffer);
        m_writer->setPageLayout(layout);
        m_writer->setResolution(resolution);
        m_writer->setTitle(QStringLiteral("Sixtrace"));
        m_writer->setCreator(QStringLiteral("Sixtrace " SIXTRACE_VERSION));
    }

    QPagedPaintDevice& device() override { return *m_writer; }
    Outcome finish() override {
        m_writer.reset();
        m_target = m_buffer.data();
        return success();
    }
    void drop() override {}

private:
    QByteArray& m_target;
    QBuffer m_buffer;
    std::unique_ptr<QPdfWriter> m_writer;
};

} // namespace

Sheet sheetOf(const QPageSize& paper, bool landscape) {
    const QSizeF points = landscape ? paper.size(QPageSize::Point).transposed() : paper.size(QPageSize::Point);
    Sheet sheet;
    sheet.Width = static_cast<int>(std::lround(points.width() * kTwipsPerPoint));
    sheet.Height = static_cast<int>(std::lround(points.height() * kTwipsPerPoint));
    sheet.ScaleWidth = sheet.Width;
    sheet.ScaleHeight = sheet.Height;
    return sheet;
}

PdfPrinter::PdfPrinter(const QPageSize& paper, bool landscape)
    : m_paper(paper)
    , m_landscape(landscape) {}

PrinterProperties PdfPrinter::initial(const QString& name) const {
    PrinterProperties properties;
    properties.DeviceName = name;
    properties.PaperSize = m_paper.windowsId();
    properties.Orientation = m_landscape ? 2 : 1;
    return properties;
}

Result<Sheet> PdfPrinter::sheet(const PrinterProperties& properties) const {
    return sheetOf(m_paper, properties.Orientation == 2);
}

Result<std::unique_ptr<PrintJob>> PdfPrinter::begin(const PrinterProperties& properties) {
    const auto side = properties.Orientation == 2 ? QPageLayout::Landscape : QPageLayout::Portrait;
    QPageLayout layout(m_paper, side, QMarginsF());
    layout.setMode(QPageLayout::FullPageMode);
    return std::unique_ptr<PrintJob>(std::make_unique<PdfJob>(layout, properties.PrintQuality, m_document));
}

} // namespace sixtrace
