// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "output/mdlprinter.h"
#include "platform/drawing/lengths.h"

#include <QMainWindow>

#include <functional>

class QMenu;

namespace sixtrace {

class Dialogs;
class PageBox;
class PageDesk;
class PageView;
class Printer;

/// The preview shows the page as it will be printed, at a scale that the user chooses. The user can drag the page and
/// print it. MdlPrinter's PreviewOwner composes the page. The object is made for one showing of the window.
class frmPrintPreview : public QMainWindow {
public:
    /// `showSetup` shows the page setup over a window, and returns when it is closed.
    frmPrintPreview(publicM& model, MdlPrinter& settings, PreviewScale& scale, Dialogs& dialogs, Printer& printer,
                    std::function<void(QWidget& owner)> showSetup);

    void mnuSetup_Click();
    void mnuPrint_Click();
    void mnuView100_Click();
    void mnuViewFullPage_Click();
    void mnuViewCustomize_Click();
    void mnuViewPage_Click();
    void mnuHelp_Click();

    /// Composes the page again, from the present capture and for the present printer; scale and place stay.
    void showPresent();
    /// Shows the scale in the title.
    void changeCaption();
    void PlacePage();

    std::int32_t PageCount = 1;
    std::int16_t PageNow = 1;
    std::int32_t ViewPercent = 100; ///< scale of the display

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void makeMenus();
    void Form_Load();
    void compose(std::int32_t percent);
    void takePaper();
    void applyScale();
    void takeViewSize();
    void movePage(Twips dx, Twips dy);
    [[nodiscard]] Twips windowWidth() const; ///< inside of the form
    [[nodiscard]] Twips windowHeight() const;
    void frameA_MouseDown(Qt::MouseButton Button, Twips X, Twips Y);
    void frameA_MouseMove(Qt::MouseButtons Button, Twips X, Twips Y);

    publicM& m_model;
    MdlPrinter& m_settings;
    PreviewScale& m_scale;
    Dialogs& m_dialogs;
    Printer& m_printer;
    std::function<void(QWidget& owner)> m_showSetup;
    QMenu* m_mnuView = nullptr;
    PageDesk* m_frameA;
    PageView* m_imgView;
    PageBox* m_picPrint;
    Twips X0; ///< where in the widget the mouse button was pressed, a whole number
    Twips Y0;
};

} // namespace sixtrace
