// SPDX-License-Identifier: MIT
// kqx page: the page that the program prints after opening a capture with default settings.
#include "commands.h"
#include "jsontext.h"

#include "output/pagesetup.h"
#include "output/printresult.h"
#include "platform/printing/pdfprinter.h"

#include <mutex>

namespace sixtrace::kqx {

namespace {

/// The paper of a name in any case: "A4", "Letter" ...
std::optional<QPageSize> paperNamed(const QString& name) {
    for (int id = 0; id <= QPageSize::LastPageSize; ++id) {
        const auto known = static_cast<QPageSize::PageSizeId>(id);
        if (known != QPageSize::Custom && QPageSize::key(known).compare(name, Qt::CaseInsensitive) == 0) {
            return QPageSize(known);
        }
    }
    return std::nullopt;
}

/// Reads the top, bottom, left and right margin in centimetres, under the rules of the page setup; false for a wrong
/// list.
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

Result<QByteArray> composePage(publicM& model, const ScreenState& screen, MdlPrinter& settings, PdfPrinter& paper) {
    const PageInputs inputs = pageInputs(screen);
    Printer printer(paper);
    PageComposer composer(model, settings, printer);
    const Outcome done = composer.PrintResult(printer, 100, inputs);
    return done ? Result<QByteArray>(paper.document()) : done.error();
}

const Usage& usage() {
    static const Usage made{
        "page", "FILE OUT.pdf | FILE...",
        "Writes the page of captures as PDF documents, as the program prints it after opening the file with default "
        "settings: a legend of its channels, their labels and the framed screen. OUT may be - for standard output.",
        withOptions(
            {{"paper", "name", "Size of the paper: A4 (default), Letter ..."},
             {"landscape", nullptr, "Lay the paper on its side."},
             {"margins", "T,B,L,R", "Top, bottom, left and right margin in centimetres, each above 0 and at most 10."}},
            writingOptions("The kind of file; only pdf."))};
    return made;
}

/// What the user wants of a page.
struct PageWishes {
    QPageSize paper;
    QPageLayout::Orientation side = QPageLayout::Portrait;
    MdlPrinter settings;
};

void compose(const Task& task, const PageWishes& wishes, Existing existing, Answer& answer) {
    // The libraries that draw text cannot draw two pages at the same time.
    static std::mutex onePage;
    const auto model = defaultModel();
    UnseenScreen view(*model);
    CaptureReader reader;
    if (!openCapture(task.file, view.scope(), reader, answer)) {
        return;
    }
    MdlPrinter settings = wishes.settings;
    const std::unique_lock lock(onePage);
    PdfPrinter printer(wishes.paper, wishes.side);
    const auto document = composePage(*model, view.state, settings, printer);
    if (!document) {
        answer.fail(validUtf8(task.file) +
                    ": the page could not be composed: " + document.error().description.toStdString());
        return;
    }
    deliver(task, document.value(), existing, answer);
}

} // namespace

ExitCode page(const std::vector<std::string>& arguments) {
    Arguments given;
    if (const auto code = given.parse(usage(), arguments)) {
        return *code;
    }
    const std::string name = given.value("paper", "A4");
    const auto paper = paperNamed(QString::fromStdString(name));
    if (!paper) {
        return failWith(WrongUse, "--paper: there is no paper size called " + name);
    }
    PageWishes wishes{*paper, given.has("landscape") ? QPageLayout::Landscape : QPageLayout::Portrait, {}};
    if (!readMargins(QString::fromStdString(given.value("margins", "1,1,1,1")), wishes.settings)) {
        return failWith(WrongUse, "--margins takes four numbers above 0 and not above 10, separated by commas");
    }
    const auto tasks = filesToWrite(usage(), given, {"pdf"});
    if (!tasks) {
        return tasks.error();
    }
    const auto jobs = jobsOf(given);
    if (!jobs) {
        return jobs.error();
    }
    const Tasks& all = tasks.value();
    return runBatch(all.tasks.size(), jobs.value(), [&]() -> Work {
        return [&](std::size_t i, Answer& answer) { compose(all.tasks[i], wishes, all.existing, answer); };
    });
}

} // namespace sixtrace::kqx
