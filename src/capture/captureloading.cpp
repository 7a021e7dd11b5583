// SPDX-License-Identifier: MIT
#include "capture/captureloading.h"

#include "capture/capturefile.h"
#include "capture/zeromarkers.h"
#include "platform/desktop/dialogs.h"
#include "platform/files/filenames.h"
#include "platform/files/programfolder.h"

#include <QFileInfo>

namespace sixtrace {

void CaptureLoading::beginOpen() {
    m_scope.duties.closeTable();
    m_scope.model.AppDir = withSeparator(m_applicationFolder());
}

void CaptureLoading::mnuOpen_Click() {
    beginOpen();
    const QString folder = m_scope.model.AppDir + QStringLiteral("dat");
    ensureFolder(folder);
    const auto choice = m_dialogs.ShowOpen({.fileName = withSeparator(folder) + QStringLiteral("*.bin"),
                                            .filter = QStringLiteral("KQX bin (*.bin)|*.bin|所有文件|*.*"),
                                            .filterIndex = 1,
                                            .initialFolder = folder});
    if (choice) {
        openChosen(choice->fileName);
    }
}

void CaptureLoading::openDropped(const QString& path) {
    beginOpen();
    openChosen(path);
}

void CaptureLoading::openChosen(const QString& path) {
    // A folder is no file, and reading a device or a pipe might never end.
    if (!QFileInfo(path).isFile()) {
        m_dialogs.message(QStringLiteral(" no this file!\n\r\n\r") + path, MessageIcon::Critical);
        return;
    }
    SimpleWav(path, m_scope);
    m_scope.screen.showPath(path);
    MarkerClamp(m_scope.screen, m_scope.screen.CurChannel);
}

void CaptureLoading::mnuNew_Click() {
    // The model, the list and the markers keep their content: the next frame brings the traces back.
    m_scope.duties.blankDue();
}

void CaptureLoading::OpenBinFile() {
    const auto choice = m_dialogs.ShowOpen(
        {.fileName = {}, .filter = QStringLiteral("KQX bin (*.bin)|*.bin"), .filterIndex = 1, .initialFolder = {}});
    if (!choice) {
        return;
    }
    switch (sixtrace::OpenBinFile(choice->fileName, m_scope)) {
    case BinFileOutcome::Loaded:
        break;
    case BinFileOutcome::MissingFile:
        m_dialogs.message(QStringLiteral(" no this file!"), MessageIcon::Critical);
        break;
    case BinFileOutcome::NotACapture:
        m_dialogs.message(QStringLiteral("not KQX bin file!"), MessageIcon::Plain);
        break;
    }
}

} // namespace sixtrace
