// SPDX-License-Identifier: MIT
#pragma once

#include "capture/captureview.h"
#include "capture/channelselection.h"
#include "capture/publicm.h"

#include <QObject>

#include <functional>

namespace sixtrace {

class Dialogs;
class PathLabel;

/// What loading asks of the other areas beside the steps of a load itself.
class CaptureLoadingNeighbours {
public:
    CaptureLoadingNeighbours() = default;
    CaptureLoadingNeighbours(const CaptureLoadingNeighbours&) = delete;
    CaptureLoadingNeighbours& operator=(const CaptureLoadingNeighbours&) = delete;
    virtual ~CaptureLoadingNeighbours() = default;

    virtual void MarkerClamp(int Index) = 0;
    virtual void clearScreen() = 0;
};

/// The Open and New commands, and the one entry by which others load a capture that they have fetched.
class CaptureLoading : public QObject {
public:
    /// `applicationFolder` gives App.Path, with or without a separator at its end.
    CaptureLoading(publicM& model, const ChannelSelection& selection, Dialogs& dialogs, CaptureView& steps,
                   CaptureLoadingNeighbours& neighbours, PathLabel& Label4, std::function<QString()> applicationFolder,
                   QObject* parent);

    void mnuOpen_Click();
    /// The same with a file that the desktop hands over, dropped onto the window or double-clicked, in place of one
    /// that was chosen in the dialog.
    void openDropped(const QString& path);
    void mnuNew_Click();
    void SimpleWav(const QString& path);
    /// The older reader with its own dialog and its two messages. No command reaches it.
    void OpenBinFile();

private:
    void beginOpen();
    void openChosen(const QString& path);

    publicM& m_model;
    const ChannelSelection& m_selection;
    Dialogs& m_dialogs;
    CaptureView& m_steps;
    CaptureLoadingNeighbours& m_neighbours;
    PathLabel& m_Label4;
    std::function<QString()> m_applicationFolder;
};

} // namespace sixtrace
