// SPDX-License-Identifier: MIT
#include "platform/printing/printer.h"

#include <QPagedPaintDevice>
#include <QPainter>

namespace sixtrace {

namespace {
constexpr double kLineWidth = 15; // twips: 1/96 inch
}

Printer::Printer(PrintDevices& devices)
    : m_devices(devices) {}

Printer::~Printer() {
    KillDoc();
}

Result<PrinterProperties> Printer::properties() {
    const QString standard = m_devices.defaultName();
    const bool follows = TrackDefault && !standard.isEmpty() && standard != m_properties.DeviceName;
    if (m_properties.DeviceName.isEmpty() || follows) {
        const QStringList names = m_devices.names();
        if (standard.isEmpty() && names.isEmpty()) {
            return RuntimeError::of(ErrorNumber::Printer);
        }
        choose(standard.isEmpty() ? names.constFirst() : standard);
    }
    return m_properties;
}

Result<Sheet> Printer::sheet() {
    const auto present = properties();
    return present ? m_devices.sheet(present.value()) : present.error();
}

void Printer::choose(const QString& deviceName) {
    m_properties = m_devices.initial(deviceName);
}

void Printer::NewPage() {
    m_pageFull = true;
}

Outcome Printer::beginDocument() {
    const auto present = sheet();
    if (!present) {
        return present.error();
    }
    auto job = m_devices.begin(m_properties);
    if (!job) {
        return job.error();
    }
    m_job = std::move(job.value());
    return beginPainter(present.value());
}

Outcome Printer::beginPainter(const Sheet& sheet) {
    m_painter = std::make_unique<QPainter>();
    if (!m_painter->begin(&m_job->device())) {
        return RuntimeError::of(ErrorNumber::Printer);
    }
    QPagedPaintDevice& device = m_job->device();
    m_painter->scale(device.logicalDpiX() / kTwipsPerInch, device.logicalDpiY() / kTwipsPerInch);
    m_painter->translate(sheet.left, sheet.top);
    // The frame is drawn in few plain colours, which a lossy picture would blur.
    m_painter->setRenderHint(QPainter::LosslessImageRendering);
    return success();
}

QPainter* Printer::painter() {
    if (!m_state) {
        return nullptr;
    }
    if (m_painter == nullptr) {
        m_state = beginDocument();
        if (!m_state) {
            return nullptr;
        }
    } else if (m_pageFull && !m_job->device().newPage()) {
        m_state = RuntimeError::of(ErrorNumber::Printer);
        return nullptr;
    }
    m_pageFull = false;
    return m_painter.get();
}

void Printer::close() {
    m_painter.reset();
    m_job.reset();
    m_pageFull = false;
    m_state = success();
    CurrentX = 0;
    CurrentY = 0;
}

Outcome Printer::EndDoc() {
    Outcome done = m_state;
    if (!done) {
        KillDoc();
        return done;
    }
    if (m_painter != nullptr) {
        done = m_painter->end() ? m_job->finish() : RuntimeError::of(ErrorNumber::Printer);
    }
    close();
    return done;
}

void Printer::KillDoc() {
    m_painter.reset();
    if (m_job != nullptr) {
        m_job->drop();
    }
    close();
}

void Printer::drawLine(double x1, double y1, double x2, double y2) {
    QPainter* const page = painter();
    if (page == nullptr) {
        return;
    }
    QPen pen(QColor::fromRgb(pixelOfColour(ForeColor)), kLineWidth, Qt::SolidLine, Qt::FlatCap);
    if (DrawStyle != sixtrace::DrawStyle::Solid) {
        pen.setDashPattern({3, 3});
    }
    page->setPen(pen);
    page->drawLine(QPointF(x1, y1), QPointF(x2, y2));
}

void Printer::drawText(double left, double baseline, const QString& text, const QFont& font) {
    QPainter* const page = painter();
    if (page == nullptr) {
        return;
    }
    page->setPen(QColor::fromRgb(pixelOfColour(ForeColor)));
    page->setFont(font);
    page->drawText(QPointF(left, baseline), text);
}

void Printer::drawPicture(const QImage& picture, const QRectF& place) {
    if (QPainter* const page = painter()) {
        page->drawImage(place, picture);
    }
}

} // namespace sixtrace
