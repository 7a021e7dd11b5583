// SPDX-License-Identifier: MIT
// kqx table: the data table of a capture, in the files that the program saves it in, and as CSV.
#include "commands.h"

#include "capture/mdllan.h"
#include "capture/plaincaptureview.h"
#include "output/tableexport.h"
#include "output/tablefill.h"
#include "platform/numbers.h"
#include "platform/programfolder.h"
#include "platform/wholefile.h"

#include <QFileInfo>

#include <array>
#include <optional>

namespace sixtrace::kqx {

namespace {

using Columns = std::array<bool, TableCells::kCols>;

/// The columns named by "0,1,3"; nothing where that is no list of columns.
std::optional<Columns> columnsOf(const QString& list) {
    Columns columns{};
    for (const QString& entry : list.split(u',')) {
        bool isNumber = false;
        const int col = entry.trimmed().toInt(&isNumber);
        if (!isNumber || col < 0 || col >= TableCells::kCols) {
            return std::nullopt;
        }
        columns[static_cast<std::size_t>(col)] = true;
    }
    return columns;
}

using Save = Outcome (*)(const TableExport& table, const QString& path);

Outcome saveCsv(const TableExport& table, const QString& path) {
    return writeWhole(path, csvTable(table));
}

/// How a file of this name is written; null for an unknown extension.
Save saverOf(const QString& path) {
    const QString extension = QFileInfo(path).suffix().toLower();
    if (extension == u"txt") {
        return SaveTextTable;
    }
    if (extension == u"csv") {
        return saveCsv;
    }
    return extension == u"xls" || extension == u"xlsx" ? SaveExcelTable : nullptr;
}

} // namespace

int table(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Writes the samples of a capture as numbers, in millivolts: as the text file (.txt) or the "
                       "workbook (.xls, .xlsx) that the program's data table saves, or as comma-separated values "
                       "(.csv) with one header row and a point as decimal mark. OUT's extension chooses."));
    const QCommandLineOption columns(
        QStringLiteral("columns"),
        QStringLiteral("Write only these columns: 0 is the sequence number, 1 to 6 are ch1, ch2, A, B, C and D."),
        QStringLiteral("list"), QStringLiteral("0,1,2,3,4,5,6"));
    const QCommandLineOption language(QStringLiteral("language"),
                                      QStringLiteral("Language of the unit line: 0 Chinese, 1 English."),
                                      QStringLiteral("id"), QStringLiteral("0"));
    parser.addOptions({columns, language});
    if (const auto code =
            parse(parser, QStringLiteral("table"), arguments, {QStringLiteral("FILE"), QStringLiteral("OUT")})) {
        return *code;
    }
    const std::optional<Columns> ticked = columnsOf(parser.value(columns));
    if (!ticked) {
        return fail(WrongUse, QStringLiteral("--columns takes numbers from 0 to 6, separated by commas"));
    }
    const QString id = parser.value(language);
    if (id != u"0" && id != u"1") {
        return fail(WrongUse, QStringLiteral("--language takes 0 or 1"));
    }
    const QString file = parser.positionalArguments().at(0);
    const QString target = parser.positionalArguments().at(1);
    const Save save = saverOf(target);
    if (save == nullptr) {
        return fail(WrongUse, QStringLiteral("%1: the name has to end in .txt, .csv, .xls or .xlsx").arg(target));
    }

    const auto model = defaultModel();
    model->AppDir = withSeparator(programFolder());
    SetLanFile(*model, id.toInt());
    PlainCaptureView view(*model);
    const auto code = openCapture(file, *model, view);
    if (!code) {
        return Failed;
    }
    TableCells cells(NumberMarks::system().decimal);
    TableFill fill(cells, *model);
    while (fill.step()) {
    }
    const QString unit = GetLanString(*model, QStringLiteral("frmData"), QStringLiteral("Label1"), kUnitCaption);
    const Outcome written = save(TableExport{cells, unit, *ticked}, target);
    if (!written) {
        return fail(Failed, QStringLiteral("%1: %2").arg(target, written.error().description));
    }
    return *code;
}

} // namespace sixtrace::kqx
