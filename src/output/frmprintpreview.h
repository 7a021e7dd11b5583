// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "output/mdlprinter.h"

#include <QMainWindow>

#include <functional>

class QMenu;

namespace sixtrace {

class Dialogs;
class PageBox;
class PageDesk;
class PageView;
class Printer;

/// The preview: the page as it will be printed, at a scale that the user chooses, to be dragged about and printed from.
/// Whoever composes the page is known as MdlPrinter's PreviewOwner only. Made for one showing.
class frmPrintPreview : public QMainWindow {
public:
    struct Surroundings {
        Dialogs& dialogs;
        Printer& printer;
        /// Shows the page setup over a window and waits until it is gone.
        std::function<void(QWidget& owner)> showSetup;
    };

    frmPrintPreview(publicM& model, MdlPrinter& settings, PreviewScale& scale, Surroundings surroundings);

    void mnuSetup_Click();
    void mnuPrint_Click();
    void mnuView100_Click();
    void mnuViewFullPage_Click();
    void mnuViewCustomize_Click();
    void mnuViewPage_Click();
    void mnuHelp_Click();

    /// Composes the page anew, from the capture and the printer of the moment; scale and place stay.
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
    void movePage(double dx, double dy);
    [[nodiscard]] double windowWidth() const; ///< inside of the form, twips
    [[nodiscard]] double windowHeight() const;
    void frameA_MouseDown(Qt::MouseButton Button, double X, double Y);
    void frameA_MouseMove(Qt::MouseButtons Buttons, double X, double Y);

    publicM& m_model;
    MdlPrinter& m_settings;
    PreviewScale& m_scale;
    Surroundings m_surroundings;
    QMenu* m_mnuView = nullptr;
    PageDesk* m_frameA;
    PageView* m_imgView;
    PageBox* m_picPrint;
    std::int32_t X0 = 0; ///< the pointer at the press
    std::int32_t Y0 = 0;
};

} // namespace sixtrace
