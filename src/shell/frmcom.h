// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/acquisition.h"
#include "capture/captureloading.h"
#include "shell/frmcomcontrols.h"
#include "shell/screenwidgets.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class QAction;

namespace sixtrace {

class BitmapSave;
class DataTable;
class Dialogs;
class FrmMessageOut;
class HelpCommands;
class LanguageMenus;
class PrintDevices;
class Printing;

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
    InstrumentAccess acquisition{};
    /// The printers; the machine's own where it is empty.
    PrintDevices* printers = nullptr;
};

/// The main window. It makes its controls at their places, the screen's state and the rules that drive it, and connects
/// menu and toolbar to their commands; it has no behaviour of its own but start-up and the two ways out. The model is
/// handed in and outlives it.
class FrmCom : public QMainWindow, private AcquisitionNeighbours {
public:
    FrmCom(publicM& model, FrmComSurroundings surroundings);
    ~FrmCom() override;

    /// What the window shows besides the model.
    [[nodiscard]] ScreenState& state() { return m_state; }
    /// The controls take what the state says, after it has been changed from outside.
    void showState() { m_widgets->show(); }
    [[nodiscard]] ScopeScreen& pictures() { return *m_pictures; }
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

    void makeScreen();
    void makeCommands();
    void connectCommands();
    void showTicksOnToolbar();
    void Toolbar1_ButtonClick(int index);
    [[nodiscard]] QAction& action(const QString& name) const;
    void centre();

    // Timed acquisition and transfers.
    void loadCapture(const QString& path) override;
    void showCapturePath(const QString& path) override;
    void enableVScroll1(bool enabled) override;
    void enableToolButton(int index, bool enabled) override;
    void setMessageOut(const QString& text) override;

    publicM& m_model;
    FrmComSurroundings m_surroundings;
    FrmComControls m_controls{};
    ScreenState m_state;
    std::unique_ptr<ScopeScreen> m_pictures;
    std::unique_ptr<ScreenMouse> m_mouse;
    std::unique_ptr<Appearance> m_appearance;
    std::unique_ptr<CaptureLoading> m_loading;
    ScreenWidgets* m_widgets = nullptr;
    DataTable* m_table = nullptr;
    LanguageMenus* m_languages = nullptr;
    HelpCommands* m_help = nullptr;
    std::unique_ptr<FrmMessageOut> m_messageOut; ///< loaded by its first text
    Acquisition* m_acquisition = nullptr;
    Printing* m_printing = nullptr;
    BitmapSave* m_bitmapSave = nullptr;
};

} // namespace sixtrace
