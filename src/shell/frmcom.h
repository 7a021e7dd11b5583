// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/acquisition.h"
#include "capture/channelselection.h"
#include "capture/publicm.h"
#include "shell/frmcomcontrols.h"
#include "shell/frmcomlinks.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class QAction;

namespace sixtrace {

class Appearance;
class BitmapSave;
class CaptureLoading;
class ChannelList;
class Cursors;
class DataTable;
class Dialogs;
class FrmMessageOut;
class HelpCommands;
class LanguageMenus;
class MarkerStrip;
class PrintDevices;
class Printing;
class ScreenArea;
class TimeVoltControls;

/// What the main window needs of the world around it.
struct FrmComSurroundings {
    Dialogs& dialogs;
    /// App.Path, with or without a separator at its end.
    std::function<QString()> applicationFolder;
    /// Ends the process at once, whatever runs. Tests put something milder here.
    std::function<void()> endProcess;
    /// Hands a file to the desktop's program for it.
    std::function<void(const QString& path)> openFile = {};
    /// The ways to the instrument; what stays empty is the machine's own.
    AcquisitionLinks acquisition{};
    /// The printers; the machine's own where it is empty.
    PrintDevices* printers = nullptr;
};

/// The main window. It makes its controls at their places, makes the areas that own their behaviour and connects menu
/// and toolbar to them; it has no behaviour of its own but start-up and the two ways out. The model is handed in and
/// outlives it.
class FrmCom : public QMainWindow {
public:
    FrmCom(publicM& model, FrmComSurroundings surroundings);
    ~FrmCom() override;

    [[nodiscard]] const ChannelSelection& selection() const { return m_selection; }
    /// The message window, loaded by its first use.
    [[nodiscard]] FrmMessageOut& messageOut();
    [[nodiscard]] Acquisition& acquisition() { return *m_acquisition; }
    [[nodiscard]] DataTable& dataTable() { return *m_table; }
    [[nodiscard]] Printing& printing() { return *m_printing; }
    /// Opens a capture that the desktop hands over; no dialog waits for an answer then.
    void openFromDesktop(const QString& path);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void Form_Load();
    void Form_Unload();
    void mnuExit_Click();

    void makeAreas();
    void connectCommands();
    void showTicksOnToolbar();
    void Toolbar1_ButtonClick(int index);
    [[nodiscard]] QAction& action(const QString& name) const;
    void centre();

    publicM& m_model;
    FrmComSurroundings m_surroundings;
    ChannelSelection m_selection;
    FrmComLinks m_links;
    FrmComControls m_controls{};
    ChannelList* m_channelList = nullptr;
    CaptureLoading* m_loading = nullptr;
    ScreenArea* m_screen = nullptr;
    MarkerStrip* m_markers = nullptr;
    TimeVoltControls* m_timeVolt = nullptr;
    Cursors* m_cursors = nullptr;
    Appearance* m_appearance = nullptr;
    DataTable* m_table = nullptr;
    LanguageMenus* m_languages = nullptr;
    HelpCommands* m_help = nullptr;
    std::unique_ptr<FrmMessageOut> m_messageOut; ///< loaded by its first text
    Acquisition* m_acquisition = nullptr;
    Printing* m_printing = nullptr;
    BitmapSave* m_bitmapSave = nullptr;
};

} // namespace sixtrace
