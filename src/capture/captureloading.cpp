// SPDX-License-Identifier: MIT
#include "capture/captureloading.h"

#include "capture/capturefile.h"
#include "platform/dialogs.h"
#include "platform/labels.h"
#include "platform/programfolder.h"

#include <QFileInfo>

namespace sixtrace {

CaptureLoading::CaptureLoading(publicM& model, const ChannelSelection& selection, Dialogs& dialogs, CaptureView& steps,
                               CaptureLoadingNeighbours& neighbours, PathLabel& Label4,
                               std::function<QString()> applicationFolder, QObject* parent)
    : QObject(parent)
    , m_model(model)
    , m_selection(selection)
    , m_dialogs(dialogs)
    , m_steps(steps)
    , m_neighbours(neighbours)
    , m_Label4(Label4)
    , m_applicationFolder(std::move(applicationFolder)) {}

void CaptureLoading::beginOpen() {
    m_steps.unloadTable();
    m_model.AppDir = withSeparator(m_applicationFolder());
}

void CaptureLoading::mnuOpen_Click() {
    beginOpen();
    const QString folder = m_model.AppDir + QStringLiteral("dat");
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
    SimpleWav(path);
    m_Label4.setCaption(path);
    m_neighbours.MarkerClamp(m_selection.CurChannel);
}

void CaptureLoading::mnuNew_Click() {
    // The model, the list and the markers keep their content: the next frame brings the traces back.
    m_neighbours.clearScreen();
}

void CaptureLoading::SimpleWav(const QString& path) {
    sixtrace::SimpleWav(path, m_model, m_steps);
}

void CaptureLoading::OpenBinFile() {
    const auto choice = m_dialogs.ShowOpen(
        {.fileName = {}, .filter = QStringLiteral("KQX bin (*.bin)|*.bin"), .filterIndex = 1, .initialFolder = {}});
    if (!choice) {
        return;
    }
    switch (sixtrace::OpenBinFile(choice->fileName, m_model, m_steps)) {
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
