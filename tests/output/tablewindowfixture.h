// SPDX-License-Identifier: MIT
#pragma once

#include "output/frmdata.h"
#include "output/tablefixture.h"
#include "platform/text/numbers.h"
#include "shell/frmcomfixture.h"
#include "support/strings.h"

#include <QCheckBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTest>

namespace sixtrace::test {

/// A block of a capture file with these samples.
inline CaptureBlock block(char id, float voltPerCount, const std::vector<std::int16_t>& samples, int probeExp = 0) {
    const auto count = static_cast<std::int32_t>(samples.size());
    return {.id = id,
            .screenPoints = count,
            .sampleCount = count,
            .probeExp = static_cast<std::int16_t>(probeExp),
            .voltPerCount = voltPerCount,
            .samples = samples};
}

/// The main window with its data table, operated by the commands of the menus.
class TableWindow : public FrmComTest {
protected:
    /// Opens a capture of these blocks through the menu.
    void open(const std::vector<CaptureBlock>& blocks) {
        write(u"capture.bin"_s, captureBytes(*captureForm("V11"), blocks));
        dialogs.files.emplace_back(FileChoice{path(u"capture.bin"_s), 1});
        item("mnuOpen").trigger();
    }
    /// The same, with the table filled.
    void openAndFill(const std::vector<CaptureBlock>& blocks) {
        open(blocks);
        fill();
    }
    void fill() {
        ASSERT_NE(table(), nullptr);
        ASSERT_TRUE(QTest::qWaitFor([this] { return table()->isFilled(); }, 20000));
    }
    [[nodiscard]] frmData* table() { return form->dataTable().window(); }
    template<typename Control>
    [[nodiscard]] Control& part(const char* name) {
        auto* found = table()->findChild<Control*>(QString::fromUtf8(name));
        if (found == nullptr) {
            throw std::runtime_error(std::string("no control ") + name);
        }
        return *found;
    }
    [[nodiscard]] QAbstractItemModel& cells() { return *part<QTableView>("MSFlexGrid1").model(); }
    /// A cell as the window shows it; row 0 is the head.
    [[nodiscard]] QString shown(int row, int col) {
        return row == 0 ? cells().headerData(col, Qt::Horizontal).toString()
                        : cells().index(row - 1, col).data().toString();
    }
    [[nodiscard]] QCheckBox& box(int col) { return part<QCheckBox>(qPrintable(u"SaveCheck(%1)"_s.arg(col))); }

    /// Clicks "Save As ..." and answers its dialog.
    void saveAs(const QString& file, int filterIndex = 1) {
        dialogs.files.emplace_back(FileChoice{file, filterIndex});
        part<QPushButton>("CmdSave").click();
    }
    /// A number as this desktop writes it.
    static QString marked(const char* number) {
        return QString::fromUtf8(number).replace(u'.', NumberMarks::system().decimal);
    }
};

/// Suites about the window are in more than one file.
class DataTableWindow : public TableWindow {};

} // namespace sixtrace::test
