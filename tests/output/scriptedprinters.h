// SPDX-License-Identifier: MIT
#pragma once

#include "platform/printing/printer.h"
#include "support/strings.h"

#include <QBuffer>
#include <QPdfWriter>

#include <functional>
#include <utility>
#include <vector>

namespace sixtrace::test {

/// Printers for tests. They keep each document as PDF with the settings it was begun with, and answer the printer
/// dialog by script. The paper has 11900 by 16840 twips, with a border of 300 that cannot be printed.
class ScriptedPrinters : public PrintDevices {
public:
    struct Document {
        PrinterProperties properties;
        QByteArray pdf;
    };

    QStringList installed{u"Office"_s, u"Lab"_s};
    QString standard = u"Office"_s;
    std::vector<Document> documents; ///< finished ones
    int dropped = 0;
    std::vector<PrinterDialog> shown;                 ///< dialogs as they were filled
    std::function<bool(PrinterDialog&)> answer;       ///< without one the dialog is cancelled
    int unprintable = 600;                            ///< twips of width and height, both edges together
    std::function<void(PrinterProperties&)> standing; ///< changes the default settings of the devices
    bool gone = false;                                ///< whether asking for the sheet fails
    bool broken = false;                              ///< whether beginning a document fails

    QStringList names() const override { return installed; }
    QString defaultName() const override { return standard; }
    PrinterProperties initial(const QString& name) const override {
        PrinterProperties properties;
        properties.DeviceName = name;
        properties.DriverName = u"driver of "_s + name;
        properties.Port = u"port of "_s + name;
        if (standing) {
            standing(properties);
        }
        return properties;
    }
    Result<Sheet> sheet(const PrinterProperties& properties) const override {
        if (gone) {
            return RuntimeError::of(ErrorNumber::Printer);
        }
        const bool upright = properties.Orientation == 1;
        Sheet sheet;
        sheet.Width = upright ? 11900 : 16840;
        sheet.Height = upright ? 16840 : 11900;
        sheet.ScaleWidth = sheet.Width - unprintable;
        sheet.ScaleHeight = sheet.Height - unprintable;
        sheet.left = 300;
        sheet.top = 300;
        return sheet;
    }
    Result<std::unique_ptr<PrintJob>> begin(const PrinterProperties& properties) override {
        if (broken) {
            return RuntimeError::of(ErrorNumber::Printer);
        }
        return std::unique_ptr<PrintJob>(std::make_unique<Job>(*this, properties));
    }
    bool ShowPrinter(PrinterDialog& dialog, quintptr) override {
        shown.push_back(dialog);
        return answer && answer(dialog);
    }

private:
    class Job : public PrintJob {
    public:
        Job(ScriptedPrinters& owner, PrinterProperties properties)
            : m_owner(owner)
            , m_properties(std::move(properties)) {
            m_buffer.open(QIODevice::WriteOnly);
            m_writer = std::make_unique<QPdfWriter>(&m_buffer);
            m_writer->setPageSize(QPageSize(QPageSize::A4));
            m_writer->setResolution(150);
        }
        QPagedPaintDevice& device() override { return *m_writer; }
        Outcome finish() override {
            m_writer.reset();
            m_owner.documents.push_back({m_properties, m_buffer.data()});
            return success();
        }
        void drop() override { ++m_owner.dropped; }

    private:
        ScriptedPrinters& m_owner;
        PrinterProperties m_properties;
        QBuffer m_buffer;
        std::unique_ptr<QPdfWriter> m_writer;
    };
};

} // namespace sixtrace::test
