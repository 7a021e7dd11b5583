// SPDX-License-Identifier: MIT
// The data table of a full capture: numbers to text against snprintf, its text file against fprintf and against one
// write of its bytes, its workbooks against libxlsxwriter alone, its window against a table widget filled with items.
#include "capture/capturefile.h"
#include "output/frmdata.h"
#include "output/tableexport.h"
#include "output/tablefill.h"
#include "platform/controls/look.h"
#include "platform/desktop/dialogs.h"
#include "platform/text/plainnumerals.h"
#include "ratios.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>

#include <xlsxwriter.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <memory>

namespace {

using namespace sixtrace;

/// What an instrument sends: 25 counts a division, and divisions from 5 mV to 500 mV.
constexpr std::array kInstrumentFactors{0.2F, 0.4F, 0.8F, 2.0F, 4.0F, 20.0F};

/// Where files are measured: in memory where there is such a folder, since a disk's own time would hide the program's.
QString fileFolder() {
    const QString memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + QStringLiteral("/bench_table-XXXXXX");
}

/// A model of six full channels. `scale` on the factors fills all seven digits.
std::unique_ptr<publicM> fullModel(float scale) {
    auto model = std::make_unique<publicM>();
    model->fillTables();
    for (int c = 0; c < kChannels; ++c) {
        const auto at = static_cast<std::size_t>(c);
        model->ChannelPresent[at] = 1;
        model->SampleCount[at] = kSampleRows;
        model->VoltPerCount[at] = kInstrumentFactors.at(at) * scale;
        for (int i = 0; i < kSampleRows; ++i) {
            model->SampleData(c, i) = static_cast<std::int16_t>(std::lround(120 * std::sin(i * 0.01 * (c + 1))));
        }
    }
    return model;
}

struct FullTable {
    std::unique_ptr<publicM> model = fullModel(1);
    TableCells cells{u'.'};
    TableExport what{cells, kUnitCaption};
    QTemporaryDir folder{fileFolder()};

    FullTable() {
        TableFill fill(cells, *model);
        while (fill.step()) {
        }
    }
    [[nodiscard]] QString path(const char* name) const { return folder.filePath(QLatin1String(name)); }
};

/// Calls `use` with all 61,386 values.
template<typename Use>
void eachValue(const publicM& model, Use use) {
    for (int i = 0; i < kSampleRows; ++i) {
        for (int c = 0; c < kChannels; ++c) {
            use(static_cast<float>(model.SampleData(c, i)) * model.VoltPerCount[c]);
        }
    }
}

void ownNumbers(benchmark::State& state, float scale) {
    const auto model = fullModel(scale);
    for ([[maybe_unused]] auto _ : state) {
        eachValue(*model, [](float value) { benchmark::DoNotOptimize(numberText(value)); });
    }
}

void printedNumbers(benchmark::State& state, float scale) {
    const auto model = fullModel(scale);
    std::array<char, 32> text{};
    for ([[maybe_unused]] auto _ : state) {
        eachValue(*model, [&](float value) {
            std::snprintf(text.data(), text.size(), "%.7g", static_cast<double>(value));
            benchmark::DoNotOptimize(text);
        });
    }
}

void textFile(benchmark::State& state) {
    const FullTable table;
    const QString path = table.path("t.txt");
    for ([[maybe_unused]] auto _ : state) {
        if (!SaveTextTable(table.what, path)) {
            state.SkipWithError("the file cannot be written");
        }
    }
}

void printedFile(benchmark::State& state) {
    const FullTable table;
    const QByteArray path = QFile::encodeName(table.path("t.txt"));
    for ([[maybe_unused]] auto _ : state) {
        std::FILE* file = std::fopen(path.constData(), "wb");
        if (file == nullptr) {
            state.SkipWithError("the file cannot be written");
            return;
        }
        std::fprintf(file, "%s\r\n", table.what.unit.toLocal8Bit().constData());
        for (int row = 0; row < table.cells.Rows(); ++row) {
            for (int col = 0; col < TableCells::kCols; ++col) {
                const std::string_view text = row == 0 ? table.cells.head(col) : table.cells.cell(row, col).view();
                std::fprintf(file, "%-14.*s", static_cast<int>(text.size()), text.data());
            }
            std::fprintf(file, "\r\n");
        }
        std::fclose(file);
    }
}

void oneWrite(benchmark::State& state) {
    const FullTable table;
    const QByteArray bytes = textTable(table.what);
    const QString path = table.path("t.txt");
    for ([[maybe_unused]] auto _ : state) {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write(bytes) != bytes.size()) {
            state.SkipWithError("the file cannot be written");
        }
    }
}

void workbook(benchmark::State& state, const char* name) {
    const FullTable table;
    const QString path = table.path(name);
    for ([[maybe_unused]] auto _ : state) {
        if (!SaveExcelTable(table.what, path)) {
            state.SkipWithError("the file cannot be written");
        }
    }
}

void bareWorkbook(benchmark::State& state) {
    const FullTable table;
    const QByteArray path = QFile::encodeName(table.path("t.xlsx"));
    std::vector<double> numbers;
    for (int row = 1; row < table.cells.Rows(); ++row) {
        for (int col = 0; col < TableCells::kCols; ++col) {
            const std::string_view text = table.cells.cell(row, col).view();
            std::from_chars(text.data(), text.data() + text.size(), numbers.emplace_back());
        }
    }
    for ([[maybe_unused]] auto _ : state) {
        lxw_workbook* const book = workbook_new(path.constData());
        lxw_worksheet* const sheet = workbook_add_worksheet(book, nullptr);
        worksheet_write_string(sheet, 0, 0, "unit", nullptr);
        for (int col = 1; col < TableCells::kCols; ++col) {
            worksheet_write_string(sheet, 0, static_cast<lxw_col_t>(col), table.cells.head(col).c_str(), nullptr);
        }
        std::size_t next = 0;
        for (int row = 1; row < table.cells.Rows(); ++row) {
            for (int col = 0; col < TableCells::kCols; ++col) {
                worksheet_write_number(sheet, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(col), numbers[next++],
                                       nullptr);
            }
        }
        workbook_close(book);
    }
}

/// No dialog opens here.
class NoDialogs final : public Dialogs {
public:
    std::optional<FileChoice> ShowOpen(const FileRequest&) override { return std::nullopt; }
    std::optional<FileChoice> ShowSave(const FileRequest&) override { return std::nullopt; }
    std::optional<Colour> ShowColor(Colour, const QString&) override { return std::nullopt; }
    void message(const QString&, MessageIcon, const QString&) override {}
    Answer question(const QString&, MessageIcon, const QString&) override { return Answer::No; }
    std::optional<QString> input(const QString&, const QString&, const QString&) override { return std::nullopt; }
};

/// The whole window with its whole fill, painted.
void openTable(benchmark::State& state) {
    const auto model = fullModel(1);
    NoDialogs dialogs;
    for ([[maybe_unused]] auto _ : state) {
        frmData window(*model, dialogs);
        window.show();
        while (!window.isFilled()) {
            QApplication::processEvents();
        }
        QApplication::processEvents(); // paints what has come last
    }
}

void openItems(benchmark::State& state) {
    const FullTable table;
    for ([[maybe_unused]] auto _ : state) {
        QTableWidget widget(table.cells.Rows() - 1, TableCells::kCols);
        for (int row = 1; row < table.cells.Rows(); ++row) {
            for (int col = 0; col < TableCells::kCols; ++col) {
                widget.setItem(row - 1, col, new QTableWidgetItem(table.cells.TextMatrix(row, col)));
            }
        }
        widget.resize(728, 444); // as large as the table in its window
        widget.show();
        QApplication::processEvents();
    }
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    applyLook(*qApp);
    const PlainNumerals plain; // snprintf and fprintf would write the locale's mark
    constexpr float kAllDigits = 1.0F / 3;
    benchmark::RegisterBenchmark("numbers", ownNumbers, 1.0F);
    benchmark::RegisterBenchmark("numbers_snprintf", printedNumbers, 1.0F);
    benchmark::RegisterBenchmark("all_digits", ownNumbers, kAllDigits);
    benchmark::RegisterBenchmark("all_digits_snprintf", printedNumbers, kAllDigits);
    benchmark::RegisterBenchmark("text_file", textFile);
    benchmark::RegisterBenchmark("text_file_fprintf", printedFile);
    benchmark::RegisterBenchmark("text_file_one_write", oneWrite);
    benchmark::RegisterBenchmark("xlsx", workbook, "t.xlsx");
    benchmark::RegisterBenchmark("xls", workbook, "t.xls");
    benchmark::RegisterBenchmark("bare_libxlsxwriter", bareWorkbook);
    benchmark::RegisterBenchmark("open_table", openTable);
    benchmark::RegisterBenchmark("open_items", openItems);
    return sixtrace::bench::runAndCompare(
        argc, argv,
        {{"61,386 numbers / snprintf", "numbers", "numbers_snprintf", 0.25},
         {"the same, seven digits each", "all_digits", "all_digits_snprintf", 0.25},
         {"text file / fprintf", "text_file", "text_file_fprintf", 0.25},
         {"text file / one write of its bytes", "text_file", "text_file_one_write", 4.0},
         {".xlsx / libxlsxwriter alone", "xlsx", "bare_libxlsxwriter", 1.2},
         {".xls / libxlsxwriter alone", "xls", "bare_libxlsxwriter", 1.0},
         {"table opened and filled / table widget of items", "open_table", "open_items", 0.25}});
}
