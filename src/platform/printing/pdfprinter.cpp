// SPDX-License-Identifier: MIT
#include "platform/printing/pdfprinter.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPdfWriter>

#include <cmath>

namespace sixtrace {

namespace {

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

/// The sheet of a paper; all of it can be printed.
Sheet sheetOf(const QPageSize& paper, QPageLayout::Orientation side) {
    const QSizeF upright = paper.size(QPageSize::Point);
    const QSizeF points = side == QPageLayout::Landscape ? upright.transposed() : upright;
    Sheet sheet;
    sheet.Width = static_cast<int>(std::lround(points.width() * kTwipsPerPoint));
    sheet.Height = static_cast<int>(std::lround(points.height() * kTwipsPerPoint));
    sheet.ScaleWidth = sheet.Width;
    sheet.ScaleHeight = sheet.Height;
    return sheet;
}

} // namespace

PdfPrinter::PdfPrinter(const QPageSize& paper, QPageLayout::Orientation side)
    : m_paper(paper)
    , m_side(side) {}

PrinterProperties PdfPrinter::initial(const QString& name) const {
    PrinterProperties properties;
    properties.DeviceName = name;
    properties.PaperSize = m_paper.windowsId();
    properties.Orientation = PrinterProperties::numberOf(m_side);
    return properties;
}

Result<Sheet> PdfPrinter::sheet(const PrinterProperties& properties) const {
    return sheetOf(m_paper, properties.side());
}

Result<std::unique_ptr<PrintJob>> PdfPrinter::begin(const PrinterProperties& properties) {
    QPageLayout layout(m_paper, properties.side(), QMarginsF());
    layout.setMode(QPageLayout::FullPageMode);
    return std::unique_ptr<PrintJob>(std::make_unique<PdfJob>(layout, properties.PrintQuality, m_document));
}

} // namespace sixtrace
