// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "output/frmdata.h"

#include <QObject>

#include <memory>

namespace sixtrace {

class Dialogs;

/// Owns the data table's window: loads it unseen behind every capture, unloads it before the next, shows it on demand.
class DataTable : public QObject {
public:
    DataTable(publicM& model, Dialogs& dialogs, QObject* parent);
    ~DataTable() override;

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
