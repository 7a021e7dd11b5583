// SPDX-License-Identifier: MIT
// kqx table: the data table of captures, in the files that the program saves it in, and as CSV.
#include "commands.h"
#include "jsontext.h"

#include "capture/mdllan.h"
#include "output/tableexport.h"
#include "output/tablefill.h"
#include "platform/text/numbers.h"

#include <QFileInfo>

#include <algorithm>
#include <optional>

namespace sixtrace::kqx {

namespace {

const Usage& usage() {
    static const Usage made{
        "table", "FILE OUT | FILE...",
        "Writes the samples of each capture as a table, in millivolts at the instrument's input: as the text file "
        "(.txt) or the workbook (.xls, .xlsx) that the program's data table saves, or as comma-separated values (.csv) "
        "with one header line and a point as decimal mark. The extension of OUT, or --to, chooses the kind. OUT may be "
        "- for standard output.",
        withOptions(
            {{"columns", "list",
              "Write only these columns, in this order, separated by commas: 0 is the sample number, 1 to 6 are ch1, "
              "ch2, A, B, C and D. In a workbook each column keeps its place."},
             {"language", "id", "Language of the line that names the unit: 0 Chinese (default), 1 English."},
             {"time", nullptr, "Only for .csv: add a column with the time in seconds."},
             {"volts", nullptr, "Only for .csv: write volts at the probe's tip instead of millivolts."}},
            writingOptions("The kind of file: txt, csv, xls or xlsx. Needed for several FILEs."))};
    return made;
}

/// The columns of a list such as "0,1,3", each of them once; nothing when it is no such list.
std::optional<std::vector<int>> columnsOf(const std::string& list) {
    std::vector<int> columns;
    for (const QString& entry : QString::fromStdString(list).split(u',')) {
        const auto col = wholeNumber(entry.trimmed().toStdString(), 0, TableCells::kCols - 1);
        if (!col) {
            return std::nullopt;
        }
        if (std::find(columns.begin(), columns.end(), *col) == columns.end()) {
            columns.push_back(*col);
        }
    }
    return columns;
}

/// The language file of the program. It is looked for in the program folder, beside kqx and in the folder of an
/// install.
QString languageFile(int language) {
    const auto model = std::make_unique<publicM>();
    QString file;
    const QString shared = kqxFolder() + QStringLiteral("/" SIXTRACE_SHARED_FROM_PROGRAMS);
    for (const QString& folder : {kqxProgramFolder(), kqxFolder(), shared}) {
        model->AppDir = folder.endsWith(u'/') ? folder : folder + u'/';
        SetLanFile(*model, language);
        if (file.isEmpty() || !QFileInfo::exists(file)) {
            file = model->LanFile;
        }
    }
    return file;
}

/// What the user wants in a table.
struct TableWishes {
    std::vector<int> columns;
    QString languageFile;
    bool time = false;
    bool volts = false;
};

Result<QByteArray> tableOf(const TableExport& table, const std::string& extension) {
    if (extension == "txt") {
        return textTable(table);
    }
    if (extension == "csv") {
        return csvTable(table);
    }
    return workbookTable(table, extension == "xlsx" ? WorkbookKind::OfficeOpen : WorkbookKind::Biff);
}

/// Empties the cells of samples that a cut file does not hold, since zeros would look like samples.
void emptyMissing(TableCells& cells, const CaptureRecord& record) {
    for (std::size_t c = 0; c < record.channels.size(); ++c) {
        if (record.channels[c].present) {
            for (int row = static_cast<int>(record.channels[c].heldSamples()) + 1; row < cells.Rows(); ++row) {
                cells.setCell(row, static_cast<int>(c) + 1, CellText::empty());
            }
        }
    }
}

void write(const Task& task, const Tasks& tasks, const TableWishes& wishes, Answer& answer) {
    const auto model = defaultModel();
    model->LanFile = wishes.languageFile;
    UnseenScreen view(*model);
    CaptureReader reader;
    if (!openCapture(task.file, view.scope(), reader, answer)) {
        return;
    }
    TableCells cells(NumberMarks::system().decimal);
    TableFill fill(cells, *model);
    while (fill.step()) {
    }
    if (tasks.extension == "csv") {
        emptyMissing(cells, reader.record);
    }
    TableExport table{cells, GetLanString(*model, QStringLiteral("frmData"), QStringLiteral("Label1"), kUnitCaption)};
    table.ticked.fill(false);
    for (const int col : wishes.columns) {
        table.ticked[col] = true;
    }
    table.order = wishes.columns;
    if (wishes.time || wishes.volts) {
        deliver(task, analysisTable(table, reader.record, {wishes.time, wishes.volts}), tasks.existing, answer);
        return;
    }
    const auto content = tableOf(table, tasks.extension);
    if (!content) {
        answer.fail(validUtf8(task.file) + ": " + content.error().description.toStdString());
        return;
    }
    deliver(task, content.value(), tasks.existing, answer);
}

} // namespace

ExitCode table(const std::vector<std::string>& arguments) {
    Arguments given;
    if (const auto code = given.parse(usage(), arguments)) {
        return *code;
    }
    const auto columns = columnsOf(given.value("columns", "0,1,2,3,4,5,6"));
    if (!columns) {
        return failWith(WrongUse, "--columns takes numbers from 0 to 6, separated by commas");
    }
    const auto language = wholeNumber(given.value("language", "0"), 0, 1);
    if (!language) {
        return failWith(WrongUse, "--language takes 0 or 1");
    }
    const auto tasks = filesToWrite(usage(), given, {"txt", "csv", "xls", "xlsx"});
    if (!tasks) {
        return tasks.error();
    }
    const auto jobs = jobsOf(given);
    if (!jobs) {
        return jobs.error();
    }
    const TableWishes wishes{*columns, languageFile(*language), given.has("time"), given.has("volts")};
    if ((wishes.time || wishes.volts) && tasks.value().extension != "csv") {
        return failWith(WrongUse, "--time and --volts are for .csv only");
    }
    const Tasks& all = tasks.value();
    return runBatch(all.tasks.size(), jobs.value(), [&]() -> Work {
        return [&](std::size_t i, Answer& answer) { write(all.tasks[i], all, wishes, answer); };
    });
}

} // namespace sixtrace::kqx
