// SPDX-License-Identifier: MIT
#include "output/datatable.h"

#include "platform/desktop/windowtofront.h"

namespace sixtrace {

DataTable::DataTable(publicM& model, Dialogs& dialogs, QObject* parent)
    : QObject(parent)
    , m_model(model)
    , m_dialogs(dialogs) {}

DataTable::~DataTable() {
    unloadTable();
}

void DataTable::mnuTabular_Click() {
    loadTable();
    bringToFront(*m_window);
}

void DataTable::loadTable() {
    if (m_window == nullptr) {
        m_window = std::make_unique<frmData>(m_model, m_dialogs);
    }
}

void DataTable::unloadTable() {
    frmData::unload(std::move(m_window));
}

} // namespace sixtrace
