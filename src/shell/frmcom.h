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

/// What the main window needs from outside.
struct FrmComServices {
    Dialogs& dialogs;
    /// Gives the program folder, with or without a separator at its end.
    std::function<QString()> applicationFolder;
    /// Ends the process at once, whatever is running. Tests only count the calls.
    std::function<void()> endProcess;
    /// Opens a file in the program that the desktop has for it.
    std::function<void(const QString& path)> openFile = {};
    /// How the instrument is reached. A member that stays empty stands for the machine's.
    InstrumentAccess acquisition{};
    /// Null stands for the printers of the machine.
    PrintDevices* printers = nullptr;
};

/// The main window. It makes its controls, the state of the screen and the objects that hold the rules, and connects
/// menu and toolbar to their commands. Its own behaviour is start-up and the two ways to end the program. The model has
/// to outlive it.
class FrmCom : public QMainWindow, private AcquisitionNeighbours {
public:
    FrmCom(publicM& model, FrmComServices services);
    ~FrmCom() override;

    /// What the window shows besides the model.
    [[nodiscard]] ScreenState& state() { return m_state; }
    /// Makes the controls show the state after it has been changed from outside.
    void showState() { m_widgets->display().show(); }
    [[nodiscard]] ScopeScreen& pictures() { return *m_pictures; }
    /// The message window. The first call makes it.
    [[nodiscard]] FrmMessageOut& messageOut();
    [[nodiscard]] Acquisition& acquisition() { return *m_acquisition; }
    [[nodiscard]] DataTable& dataTable() { return *m_table; }
    [[nodiscard]] Printing& printing() { return *m_printing; }
    /// Opens a capture that the desktop hands over. Not to be called while a dialog waits for an answer.
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
    [[nodiscard]] QAction& action(const QString& name) const;
    void centre();

    // What acquisition has the window do.
    void loadCapture(const QString& path) override;
    void showCapturePath(const QString& path) override;
    void enableVScroll1(bool enabled) override;
    void enableToolButton(int index, bool enabled) override;
    void setMessageOut(const QString& text) override;

    publicM& m_model;
    FrmComServices m_services;
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
    std::unique_ptr<FrmMessageOut> m_messageOut; ///< null until its first text
    Acquisition* m_acquisition = nullptr;
    Printing* m_printing = nullptr;
    BitmapSave* m_bitmapSave = nullptr;
};

} // namespace sixtrace
