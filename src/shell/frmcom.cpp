// SPDX-License-Identifier: MIT
#include "shell/frmcom.h"

#include "capture/capturefile.h"
#include "capture/channellist.h"
#include "capture/settings.h"
#include "output/bitmapsave.h"
#include "output/frmdata.h"
#include "output/printing.h"
#include "output/printresult.h"
#include "platform/controls/labels.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/look.h"
#include "platform/controls/picturebox.h"
#include "platform/controls/toolbar.h"
#include "shell/conveniences.h"
#include "shell/frmmessageout.h"
#include "shell/helpcommands.h"
#include "shell/languagemenus.h"
#include "shell/mainmenu.h"
#include "shell/maintoolbar.h"
#include "shell/programicon.h"
#include "shell/screenfit.h"
#include "view/cursors.h"
#include "view/timevoltcontrols.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>

namespace sixtrace {

FrmCom::FrmCom(publicM& model, FrmComServices services)
    : m_model(model)
    , m_services(std::move(services)) {
    setObjectName(QStringLiteral("FrmCom"));
    setWindowTitle(QStringLiteral("通讯"));
    setWindowIcon(programIcon());
    menuBar()->setNativeMenuBar(false);
    menuBar()->setFixedHeight(kMenuBarHeight);
    fillMainMenu(*menuBar());
    auto* client = new QWidget(this);
    m_controls = makeFrmComControls(*client);
    fitToScreen(*this, *client, {kClientWidth, kClientHeight}, kMenuBarHeight, screen()->availableGeometry());
    // Keys reach no control until the user picks one by mouse or by Tab.
    client->setFocus();
    makeScreen();
    makeCommands();
    connectCommands();
    addConveniences(*this, m_controls, *m_mouse, action(QStringLiteral("mnuChinese")));
    Form_Load();
}

FrmCom::~FrmCom() = default;

QAction& FrmCom::action(const QString& name) const {
    return *menuBar()->findChild<QAction*>(name);
}

void FrmCom::makeScreen() {
    const FrmComControls& c = m_controls;
    m_pictures = std::make_unique<ScopeScreen>(
        m_model, m_state,
        ScopeScreen::Pictures{c.Picture2->picture(),
                              {&c.picHidden[0]->picture(), &c.picHidden[1]->picture(), &c.picHidden[2]->picture()}});
    m_mouse = std::make_unique<ScreenMouse>(m_pictures->scope(), *m_pictures);
    m_appearance = std::make_unique<Appearance>(*m_pictures, m_services.dialogs);
    m_loading = std::make_unique<CaptureLoading>(m_pictures->scope(), m_services.dialogs, m_services.applicationFolder);
    m_widgets = new ScreenWidgets(*m_pictures, *m_mouse, *m_appearance, c,
                                  {&action(QStringLiteral("mnuGraticule")), &action(QStringLiteral("mnuLine")),
                                   &action(QStringLiteral("mnuPoint"))},
                                  this);
}

void FrmCom::makeCommands() {
    const FrmComControls& c = m_controls;
    m_languages = new LanguageMenus(
        m_model, {this, c.Toolbar1, &action(QStringLiteral("mnuEnglish")), &action(QStringLiteral("mnuChinese"))},
        [this] {
            m_widgets->display().takeListTexts();
            List1_Click(m_pictures->scope());
            showState();
        },
        this);
    m_table = new DataTable(m_model, m_services.dialogs, this);
    m_pictures->setTable([this] { m_table->unloadTable(); }, [this] { m_table->loadTable(); });
    m_help = new HelpCommands(m_model, {m_services.dialogs, m_services.applicationFolder, m_services.openFile}, *this);
    m_acquisition =
        new Acquisition(m_model,
                        {.mnuComSet = &action(QStringLiteral("mnuComSet")),
                         .mnuAcquire = &action(QStringLiteral("mnuAcquire")),
                         .mnuautoget = &action(QStringLiteral("mnuautoget")),
                         .mnustop = &action(QStringLiteral("mnustop")),
                         .mnurun = &action(QStringLiteral("mnurun")),
                         .intervals = {&action(QStringLiteral("mnuone")), &action(QStringLiteral("mnutwo")),
                                       &action(QStringLiteral("mnuthree")), &action(QStringLiteral("mnufive"))},
                         .lastTransfer = c.Label4},
                        m_services.dialogs, *this, m_services.acquisition, this);
    m_printing = new Printing(m_model, m_services.dialogs, m_services.printers,
                              {.inputs = [this] { return pageInputs(m_state); },
                               .setupTitle = [this] { return action(QStringLiteral("mnuPrintSet")).iconText(); }},
                              *this);
    m_bitmapSave = new BitmapSave({c.Picture3, c.Picture2}, m_services.dialogs, this);
}

void FrmCom::connectCommands() {
    const auto connectItem = [this](const QString& name, auto* owner, auto handler) {
        connect(&action(name), &QAction::triggered, owner, handler);
    };
    // After a command that changes the state of the screen the widgets show the new state.
    const auto connectScreen = [this](const QString& name, auto* owner, auto handler) {
        connect(&action(name), &QAction::triggered, this, [this, owner, handler] {
            (owner->*handler)();
            showState();
        });
    };
    connectScreen(QStringLiteral("mnuOpen"), m_loading.get(), &CaptureLoading::mnuOpen_Click);
    connectScreen(QStringLiteral("mnuNew"), m_loading.get(), &CaptureLoading::mnuNew_Click);
    connectItem(QStringLiteral("mnuTabular"), m_table, &DataTable::mnuTabular_Click);
    connectScreen(QStringLiteral("MnuGridColor"), m_appearance.get(), &Appearance::MnuGridColor_Click);
    connectScreen(QStringLiteral("mnubackgroundcolor"), m_appearance.get(), &Appearance::mnubackgroundcolor_Click);
    connectScreen(QStringLiteral("mnuGraticule"), m_appearance.get(), &Appearance::mnuGraticule_Click);
    connectScreen(QStringLiteral("mnuLine"), m_appearance.get(), &Appearance::mnuLine_Click);
    connectScreen(QStringLiteral("mnuPoint"), m_appearance.get(), &Appearance::mnuPoint_Click);
    connectItem(QStringLiteral("mnuContent"), m_help, &HelpCommands::mnuContent_Click);
    connectItem(QStringLiteral("mnuAbout"), m_help, &HelpCommands::mnuAbout_Click);
    connectItem(QStringLiteral("mnuPageSet"), m_printing, &Printing::mnuPageSet_Click);
    connectItem(QStringLiteral("mnuPrintView"), m_printing, &Printing::mnuPrintView_Click);
    connectItem(QStringLiteral("mnuPrint"), m_printing, &Printing::mnuPrint_Click);
    connectItem(QStringLiteral("mnuPrintSet"), m_printing, &Printing::mnuPrintSet_Click);
    connectItem(QStringLiteral("mnuSaveAs"), m_bitmapSave, &BitmapSave::mnuSaveAs_Click);
    connectItem(QStringLiteral("mnuExit"), this, &FrmCom::mnuExit_Click);
    connectMainToolbar(*m_controls.Toolbar1, *menuBar());
}

void FrmCom::centre() {
    move(centredPlace(size(), screen()->geometry(), screen()->availableGeometry()));
}

void FrmCom::Form_Load() {
    centre();
    setProgramFolder(m_model, m_services.applicationFolder());
    setDefaultMargins(m_printing->settings());
    const StartSettings settings = readStartSettings(m_model.IniFile);
    prepareModel(m_model, settings);
    m_state.stripColor = settings.stripColor;
    m_pictures->setScreenColor(settings.screenColor);
    m_state.graticule = settings.Graticule ? Graticule::Dotted : Graticule::Cross;
    m_state.lineTicked = settings.DrawLine;
    m_state.pointTicked = settings.DrawPoint;
    m_languages->tick(languageOf(m_model));
    for (int row = 0; row < 4; ++row) {
        // The language file names the four cursor types.
        m_controls.Combo3->addItem(QStringLiteral(" "));
    }
    Combo3_Click(m_pictures->scope());
    beginStart(m_pictures->scope());
    showState();
    if (languageOf(m_model) == Language::English) {
        m_languages->mnuEnglish_Click();
    } else {
        m_languages->mnuChinese_Click();
    }
    endStart(m_pictures->scope());
    showState();
}

void FrmCom::closeEvent(QCloseEvent* event) {
    event->accept();
    Form_Unload();
}

void FrmCom::openFromDesktop(const QString& path) {
    m_loading->openDropped(path);
    showState();
}

FrmMessageOut& FrmCom::messageOut() {
    if (m_messageOut == nullptr) {
        m_messageOut = std::make_unique<FrmMessageOut>(m_model);
    }
    return *m_messageOut;
}

void FrmCom::Form_Unload() {
    m_messageOut.reset();
    // The settings file holds every setting already, and the end of the process ends a running transfer.
    m_services.endProcess();
}

void FrmCom::loadCapture(const QString& path) {
    SimpleWav(path, m_pictures->scope());
    showState();
}

void FrmCom::showCapturePath(const QString& path) {
    m_state.showPath(path);
    showState();
}

void FrmCom::enableVScroll1(bool enabled) {
    m_state.barEnabled = enabled;
    if (enabled) {
        showTrueChoices(m_pictures->scope());
    }
    showState();
}

void FrmCom::enableToolButton(int index, bool enabled) {
    m_controls.Toolbar1->button(index).setEnabled(enabled);
}

void FrmCom::setMessageOut(const QString& text) {
    messageOut().Label1().setText(text);
}

void FrmCom::mnuExit_Click() {
    m_services.endProcess();
}

} // namespace sixtrace
