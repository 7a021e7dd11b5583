// SPDX-License-Identifier: MIT
#pragma once

#include "output/tablecells.h"
#include "output/tableexport.h"
#include "output/tablefill.h"

#include <QTimer>
#include <QWidget>

#include <array>
#include <memory>

class QCheckBox;
class QLabel;
class QMenu;
class QPushButton;

namespace sixtrace {

class Dialogs;
class FramePanel;
class TableModel;
class TableView;

/// The data table: the samples of the capture as numbers, and their export. From its construction on it fills itself in
/// the background, whether it is shown or not, and reads the model while it does. Each capture gets a new one.
class frmData : public QWidget {
public:
    frmData(publicM& model, Dialogs& dialogs);

    void CmdSave_Click();
    void CmdExit_Click();
    void mnuSelectAll_Click();
    void mnuSelectNone_Click();

    [[nodiscard]] const TableCells& MSFlexGrid1() const { return m_cells; }
    [[nodiscard]] bool isFilled() const { return m_fill.finished(); }

    /// Closes and deletes the window. While one of its dialogs for saving is open it is deleted after that, so that the
    /// user gets the table that is being saved.
    static void unload(std::unique_ptr<frmData> form);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void Form_Load();
    void makeTable();
    void makeSaveFrame();
    void makeSelectMenu();
    void Timer1_Timer();
    void fillOn();
    void tickAll(bool ticked);
    [[nodiscard]] TableExport exported() const;
    /// Asks for a file and writes it. It is a success, too, when the user keeps an existing file.
    Outcome save();

    publicM& m_model;
    Dialogs& m_dialogs;
    TableCells m_cells;
    TableFill m_fill;
    QTimer m_Timer1;
    QTimer m_turns; ///< continues the fill, once in each turn of the event loop
    bool m_saving = false;
    bool m_unloaded = false;

    TableModel* m_tableModel = nullptr;
    TableView* m_MSFlexGrid1 = nullptr;
    QLabel* m_Label1 = nullptr;
    FramePanel* m_Frame1 = nullptr;
    std::array<QCheckBox*, TableCells::kCols> m_SaveCheck{};
    QPushButton* m_CmdSave = nullptr;
    QPushButton* m_CmdExit = nullptr;
    QMenu* m_mnuSelect = nullptr;
};

/// Owns the data table's window. It is loaded hidden after each capture and unloaded before the next one.
class DataTable : public QObject {
public:
    DataTable(publicM& model, Dialogs& dialogs, QObject* parent);
    ~DataTable() override;

    /// Shows the window, which is loaded first when it is not loaded yet.
    void mnuTabular_Click();
    void loadTable();
    void unloadTable();

    /// The window, or null while it is not loaded.
    [[nodiscard]] frmData* window() const { return m_window.get(); }

private:
    publicM& m_model;
    Dialogs& m_dialogs;
    std::unique_ptr<frmData> m_window;
};

} // namespace sixtrace
