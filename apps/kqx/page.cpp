// SPDX-License-Identifier: MIT
// kqx page: the page that the program prints after opening a capture with default settings.
#include "commands.h"

#include "capture/plaincaptureview.h"
#include "output/pagesetup.h"
#include "output/printresult.h"
#include "platform/pdfprinter.h"
#include "platform/wholefile.h"

namespace sixtrace::kqx {

namespace {

/// The paper of a name, whatever its case: "A4", "Letter" ...
std::optional<QPageSize> paperNamed(const QString& name) {
    for (int id = 0; id <= QPageSize::LastPageSize; ++id) {
        const auto known = static_cast<QPageSize::PageSizeId>(id);
        if (known != QPageSize::Custom && QPageSize::key(known).compare(name, Qt::CaseInsensitive) == 0) {
            return QPageSize(known);
        }
    }
    return std::nullopt;
}

/// Top, bottom, left and right in centimetres, checked like the fields of the page setup.
bool readMargins(const QString& list, MdlPrinter& settings) {
    const QStringList texts = list.split(u',');
    const std::array targets{&settings.PrintMarginTop, &settings.PrintMarginBottom, &settings.PrintMarginLeft,
                             &settings.PrintMarginRight};
    if (texts.size() != static_cast<qsizetype>(targets.size())) {
        return false;
    }
    for (std::size_t i = 0; i < targets.size(); ++i) {
        const auto margin = marginOfText(texts.at(static_cast<qsizetype>(i)), NumberMarks{});
        if (!margin) {
            return false;
        }
        *targets[i] = *margin;
    }
    return true;
}

Result<QByteArray> composePage(publicM& model, const PlainCaptureView& view, MdlPrinter& settings, PdfPrinter& paper) {
    PageInputs inputs;
    inputs.frame.selected = view.ticks;
    inputs.frame.markerTop = view.markerTops;
    inputs.rows = view.rows;
    Printer printer(paper);
    PageComposer composer(model, settings, printer);
    const Outcome done = composer.PrintResult(printer, 100, inputs);
    return done ? Result<QByteArray>(paper.document()) : done.error();
}

} // namespace

int page(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Writes the page of a capture as a PDF document, as the program prints it after opening the file with default "
        "settings: a legend of its channels, their labels and the framed screen."));
    const QCommandLineOption paperOption(QStringLiteral("paper"), QStringLiteral("Size of the paper: A4, Letter ..."),
                                         QStringLiteral("name"), QStringLiteral("A4"));
    const QCommandLineOption landscape(QStringLiteral("landscape"), QStringLiteral("Lay the paper on its side."));
    const QCommandLineOption margins(
        QStringLiteral("margins"),
        QStringLiteral("Top, bottom, left and right margin in centimetres, each above 0 and at most 10."),
        QStringLiteral("T,B,L,R"), QStringLiteral("1,1,1,1"));
    parser.addOptions({paperOption, landscape, margins});
    if (const auto code =
            parse(parser, QStringLiteral("page"), arguments, {QStringLiteral("FILE"), QStringLiteral("OUT.pdf")})) {
        return *code;
    }
    const auto paper = paperNamed(parser.value(paperOption));
    if (!paper) {
        return fail(WrongUse, QStringLiteral("--paper: no paper is called %1").arg(parser.value(paperOption)));
    }
    MdlPrinter settings;
    if (!readMargins(parser.value(margins), settings)) {
        return fail(WrongUse,
                    QStringLiteral("--margins takes four numbers above 0 and not above 10, parted by commas"));
    }
    const QString file = parser.positionalArguments().at(0);
    const QString target = parser.positionalArguments().at(1);

    const auto model = defaultModel();
    PlainCaptureView view(*model);
    const auto code = openCapture(file, *model, view);
    if (!code) {
        return Failed;
    }
    PdfPrinter printer(*paper, parser.isSet(landscape));
    const auto document = composePage(*model, view, settings, printer);
    if (!document) {
        return fail(Failed,
                    QStringLiteral("%1: the page could not be composed: %2").arg(file, document.error().description));
    }
    const Outcome written = writeWhole(target, document.value());
    if (!written) {
        return fail(Failed, QStringLiteral("%1: %2").arg(target, written.error().description));
    }
    return *code;
}

} // namespace sixtrace::kqx
