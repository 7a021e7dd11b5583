// SPDX-License-Identifier: MIT
#pragma once

#include "output/tablecells.h"
#include "output/tableexport.h"
#include "output/tablefill.h"

#include <QTimer>
#include <QWidget>

#include <array>

class QCheckBox;
class QLabel;
class QMenu;
class QPushButton;

namespace sixtrace {

class Dialogs;
class FramePanel;
class TableModel;
class TableView;

/// The data table: the samples of the capture as numbers, and their export. It is filled in the background from its
/// making on, shown or not, and reads the model as it goes; DataTable makes it anew for every capture.
class frmData : public QWidget {
public:
    frmData(publicM& model, Dialogs& dialogs);

    void CmdSave_Click();
    void CmdExit_Click();
    void mnuSelectAll_Click();
    void mnuSelectNone_Click();

    [[nodiscard]] const TableCells& MSFlexGrid1() const { return m_cells; }
    [[nodiscard]] bool isFilled() const { return m_fill.finished(); }

    /// Takes the window down. It goes at once, or, while a save of it waits for an answer, behind that save: the user
    /// gets the table that he asked for.
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
    /// From the file dialog to the written file. Ok also where the user keeps an existing file.
    Outcome save();

    publicM& m_model;
    Dialogs& m_dialogs;
    TableCells m_cells;
    TableFill m_fill;
    QTimer m_Timer1;
    QTimer m_turns; ///< one stretch of the fill for each turn of the event loop
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

} // namespace sixtrace
